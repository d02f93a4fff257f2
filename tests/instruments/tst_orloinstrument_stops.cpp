// SPDX-License-Identifier: MIT
#include "tests/instruments/orloinstrumentreadtest.h"

#include <QElapsedTimer>

#include <atomic>
#include <thread>

/// Stopping a read: by the caller, by the next read, by closing, from inside a callback.
class TestOrloInstrumentStops : public OrloInstrumentReadTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void abortStopsTheReadAndDropsItsValues()
    {
        std::atomic<bool> sent{false};
        plugin->on_spot_lab = [&](const ScriptedPlugin::Read &read) {
            read.sendLab(1, 1, 1);
            read.say(0, nullptr, "Reset done");
            sent = true;
            return waitForAbort(read);
        };
        QCOMPARE(instrument->readSpotLab(Listener::lab, &listener), 0);
        while (!sent)
            std::this_thread::yield();
        instrument->abort();
        QVERIFY(instrument->enabled());
        QCoreApplication::processEvents();
        QVERIFY(listener.labs.empty());
        QVERIFY(listener.texts.isEmpty());
    }

    void abortWaitsInStepsOfASecond()
    {
        std::atomic<bool> started{false};
        plugin->on_spot_lab = [&](const ScriptedPlugin::Read &read) {
            started = true;
            return waitForAbort(read);
        };
        QCOMPARE(instrument->readSpotLab(Listener::lab, &listener), 0);
        while (!started)
            std::this_thread::yield();
        QElapsedTimer timer;
        timer.start();
        instrument->abort();
        QVERIFY2(timer.elapsed() >= 990 && timer.elapsed() < 1900, QByteArray::number(timer.elapsed()).constData());
        timer.start();
        instrument->abort(); // nothing runs: no wait
        QVERIFY(timer.elapsed() < 500);
    }

    void aNewReadEndsTheOldOneAndDropsItsValues()
    {
        std::atomic<bool> sent{false};
        plugin->on_spot_lab = [&](const ScriptedPlugin::Read &read) {
            if (sent) {
                read.sendLab(2, 2, 2);
                return 0;
            }
            read.sendLab(1, 1, 1);
            sent = true;
            return waitForAbort(read);
        };
        Listener old_listener;
        QCOMPARE(instrument->readSpotLab(Listener::lab, &old_listener), 0);
        while (!sent)
            std::this_thread::yield();
        QCOMPARE(instrument->readSpotLab(Listener::lab, &listener), 0);
        QTRY_COMPARE(listener.labs.size(), size_t(1));
        QCOMPARE(listener.labs[0], (Lab{2, 2, 2}));
        QVERIFY(old_listener.labs.empty());
        QCOMPARE(plugin->reads.load(), 2);
    }

    void closeReturnsOnlyAfterTheWorkerHasFinished()
    {
        std::atomic<bool> started{false};
        std::atomic<bool> finished{false};
        plugin->on_spot_lab = [&](const ScriptedPlugin::Read &read) {
            read.sendLab(1, 1, 1);
            started = true;
            waitForAbort(read);
            std::this_thread::sleep_for(std::chrono::milliseconds(1200)); // a device that takes its time
            read.sendLab(2, 2, 2);
            finished = true;
            return 0;
        };
        QCOMPARE(instrument->readSpotLab(Listener::lab, &listener), 0);
        while (!started)
            std::this_thread::yield();
        instrument->close();
        QVERIFY(finished);
        QVERIFY(!instrument->enabled());
        QCOMPARE(plugin->closes.load(), 1);
        QCoreApplication::processEvents();
        QVERIFY(listener.labs.empty());
    }

    void valuesSentAfterTheAbortWasSeenAreDroppedToo()
    {
        std::atomic<bool> started{false};
        plugin->on_spot_lab = [&](const ScriptedPlugin::Read &read) {
            started = true;
            waitForAbort(read);
            for (int i = 0; i < 1000; ++i)
                read.sendLab(i, 0, 0);
            return 0;
        };
        QCOMPARE(instrument->readSpotLab(Listener::lab, &listener), 0);
        while (!started)
            std::this_thread::yield();
        instrument->abort();
        QCoreApplication::processEvents();
        QVERIFY(listener.labs.empty());
    }

    void theDestructorWaitsForTheWorkerAndDropsItsValues()
    {
        std::atomic<bool> started{false};
        std::atomic<bool> finished{false};
        plugin->on_spot_lab = [&](const ScriptedPlugin::Read &read) {
            started = true;
            waitForAbort(read);
            read.sendLab(1, 1, 1);
            finished = true;
            return 0;
        };
        QCOMPARE(instrument->readSpotLab(Listener::lab, &listener), 0);
        while (!started)
            std::this_thread::yield();
        instrument.reset();
        QVERIFY(finished);
        QCoreApplication::processEvents();
        QVERIFY(listener.labs.empty());
    }

    void aCallbackMayCloseTheDriver()
    {
        plugin->on_spot_lab = [&](const ScriptedPlugin::Read &read) {
            for (int i = 0; i < 100; ++i)
                read.sendLab(i, 0, 0);
            return 0;
        };
        listener.on_lab = [this] {
            if (listener.labs.size() == 3)
                instrument->close();
        };
        QCOMPARE(instrument->readSpotLab(Listener::lab, &listener), 0);
        QTRY_VERIFY(!instrument->enabled());
        QCoreApplication::processEvents();
        QCOMPARE(listener.labs.size(), size_t(3));
    }

    void aCallbackMayDestroyTheDriver()
    {
        plugin->on_spot_lab = [&](const ScriptedPlugin::Read &read) {
            for (int i = 0; i < 100; ++i)
                read.sendLab(i, 0, 0);
            return 0;
        };
        listener.on_lab = [this] {
            instrument.reset();
        };
        QCOMPARE(instrument->readSpotLab(Listener::lab, &listener), 0);
        QTRY_VERIFY(!instrument);
        QCoreApplication::processEvents();
        QCOMPARE(listener.labs.size(), size_t(1));
    }

    void aCallbackMayStartTheNextRead()
    {
        plugin->on_spot_lab = [&](const ScriptedPlugin::Read &read) {
            for (int i = 0; i < 10; ++i)
                read.sendLab(i, plugin->reads.load(), 0);
            return 0;
        };
        listener.on_lab = [this] {
            listener.on_lab = nullptr;
            QCOMPARE(instrument->readSpotLab(Listener::lab, &listener), 0);
        };
        QCOMPARE(instrument->readSpotLab(Listener::lab, &listener), 0);
        QTRY_COMPARE(listener.labs.size(), size_t(11)); // one of the first read, all of the second
        QCOMPARE(listener.labs[1], (Lab{0, 2, 0}));
    }
};

TAVI_TEST_MAIN(TestOrloInstrumentStops)
#include "tst_orloinstrument_stops.moc"
