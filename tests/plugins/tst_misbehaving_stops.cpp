// SPDX-License-Identifier: MIT
#include "instruments/orloinstrument.h"
#include "tests/plugins/misbehavingfixture.h"

#include <QElapsedTimer>
#include <QThread>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

/// Calls back late, as a plug-in's own thread does.
using LateCall = std::function<void(const ScriptedPlugin::Read &)>;
Q_DECLARE_METATYPE(LateCall)

namespace {

const QString late_fault =
    "orloinstrument: OrloInstrument: The instrument plug-in has called back after the end of its read";

/// Takes status texts, and looks on which thread they come.
struct Texts {
    QStringList texts;
    bool wrong_thread = false;

    static int take(void *context, char const *text)
    {
        auto *self = static_cast<Texts *>(context);
        self->wrong_thread = self->wrong_thread || QThread::currentThread() != QCoreApplication::instance()->thread();
        self->texts.append(QString::fromUtf8(text));
        return 0;
    }
};

/// Takes what a read sends, which all bears the read's number.
struct Heard {
    std::unique_ptr<OrloInstrument> driver;
    int awaited = 0;
    int colours = 0;
    int texts = 0;
    bool wrong = false;

    static int lab(void *context, double L, double, double)
    {
        auto *self = static_cast<Heard *>(context);
        ++self->colours;
        self->wrong = self->wrong || L != self->awaited;
        return 0;
    }
    static int text(void *context, char const *text)
    {
        auto *self = static_cast<Heard *>(context);
        ++self->texts;
        self->wrong = self->wrong || QByteArray(text) != "Ready for strip " + QByteArray::number(self->awaited);
        return 0;
    }
};

void onAnotherThread(const std::function<void()> &call)
{
    std::thread thread(call);
    thread.join();
}

} // namespace

/// Plug-ins that do not stop when they are told to, or go on behind the caller's back.
class TestMisbehavingStops : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aReadThatIgnoresTheStopIsWaitedFor_data()
    {
        QTest::addColumn<QString>("stopped_by");
        QTest::addColumn<int>("duration"); // ms
        QTest::newRow("the button") << "the button" << 3000;
        QTest::newRow("another mode") << "another mode" << 500;
        QTest::newRow("the end of the group") << "the end of the group" << 500;
    }

    void aReadThatIgnoresTheStopIsWaitedFor()
    {
        QFETCH(QString, stopped_by);
        QFETCH(int, duration);
        MisbehavingFixture f;
        f.addBad();
        std::atomic<bool> ended{false};
        f.bad->on_spot_lab = [&](const ScriptedPlugin::Read &read) {
            read.sendLab(50, 0, 0);
            f.waitForAbort(read);
            for (int i = 0; i < duration / 100; ++i) {
                read.sendLab(90, 0, 0);
                read.say(0, "Read", "Measure %c%lu", 'A', static_cast<unsigned long>(i));
                read.say(1, "Read", "Error %s", "x");
                std::this_thread::sleep_for(std::chrono::milliseconds(100));
            }
            ended = true;
            return 0;
        };
        f.chooseBad();
        f.press();
        QTRY_COMPARE(f.lightnessOfNewSpots(), std::vector<double>{50});
        QElapsedTimer timer;
        timer.start();
        if (stopped_by == "the button")
            f.press();
        else if (stopped_by == "another mode")
            f.buddy->setMode(SpectroBuddy::CHART_MODE);
        else
            f.buddy.reset();
        QVERIFY(ended);
        QVERIFY2(timer.elapsed() >= duration && timer.elapsed() < duration + 2000,
                 QByteArray::number(timer.elapsed()).constData());
        QCoreApplication::processEvents();
        QCOMPARE(f.bad->closes.load(), 1);
        // Nothing of what came behind the stop is shown or logged, and nothing of before is lost.
        QCOMPARE(f.lightnessOfNewSpots(), std::vector<double>{50});
        QVERIFY(recorder().lines().isEmpty());
        if (!f.buddy)
            return;
        QCOMPARE(f.messageLine()->text(), QString(stopped_by == "the button" ? "" : "L:50.000, a:0.000, b:0.000"));
        QCOMPARE(f.status->count(), 2);
        QVERIFY(f.looksOff());
        QVERIFY(f.allIsAsBefore());
    }

    void whatComesBehindTheEndOfAReadReachesNobody_data()
    {
        QTest::addColumn<LateCall>("call");
        QTest::addColumn<QString>("when");
        const std::pair<const char *, LateCall> calls[] = {{"colour",
                                                            [](const ScriptedPlugin::Read &read) {
                                                                read.sendLab(66, 6, 6);
                                                            }},
                                                           {"end marker",
                                                            [](const ScriptedPlugin::Read &read) {
                                                                read.sendLab(-1, 0, 0);
                                                            }},
                                                           {"no number",
                                                            [](const ScriptedPlugin::Read &read) {
                                                                read.sendLab(qQNaN(), 0, 0);
                                                            }},
                                                           {"status",
                                                            [](const ScriptedPlugin::Read &read) {
                                                                read.say(0, "Read", "Error %s", "x");
                                                            }},
                                                           {"fault", [](const ScriptedPlugin::Read &read) {
                                                                read.say(1, "Read", "Error %s", "x");
                                                            }}};
        for (const auto &[name, call] : calls) {
            for (const char *when : {"off", "on again", "next read", "gone"})
                QTest::addRow("%s, %s", name, when) << call << QString(when);
        }
    }

    void whatComesBehindTheEndOfAReadReachesNobody()
    {
        QFETCH(LateCall, call);
        QFETCH(QString, when);
        MisbehavingFixture f;
        f.addBad();
        std::optional<ScriptedPlugin::Read> first;
        const auto measure = [&](const ScriptedPlugin::Read &read) {
            if (!first)
                first = read;
            read.sendLab(50, 0, 0);
            return f.waitForAbort(read);
        };
        f.bad->on_spot_lab = measure;
        f.bad->on_chart = [&](const ScriptedPlugin::Read &read, TAVICOMBOCOLOUR *, unsigned long, unsigned long) {
            return measure(read);
        };
        TAVICOMBOCOLOUR_CC chart(TAVICOMBOCOLOUR_CC::newMeasuredPatch(1, 2, 3));
        f.buddy->setMode(when == "next read" ? SpectroBuddy::CHART_MODE : SpectroBuddy::SPOT_MODE);
        f.chooseBad();
        f.buddy->setComboChart(chart.head(), 1, 0, 0);
        f.press();
        QTRY_COMPARE(f.lightnessOfNewSpots(), std::vector<double>(1, 50.0));

        std::vector<double> expected(2, 50.0);
        if (when == "next read") {
            f.buddy->setComboChart(chart.head(), 1, 0, 0); // starts at once, and stops the first
        } else {
            f.press();
            if (when == "on again")
                f.press();
            else
                expected.pop_back();
        }
        if (when == "gone")
            f.buddy.reset();
        QTRY_COMPARE(f.lightnessOfNewSpots(), expected);
        const QString text = f.messageLine()->text();
        expectLog(late_fault);
        onAnotherThread([&] {
            call(*first);
            call(*first); // told once
        });
        QCoreApplication::processEvents();
        QCOMPARE(f.lightnessOfNewSpots(), expected);
        QCOMPARE(f.messageLine()->text(), text);
        QVERIFY(f.series.empty());
        if (!f.buddy)
            return;
        if (when != "off")
            f.press();
        QVERIFY(f.looksOff());
        QVERIFY(f.allIsAsBefore());
    }

    /// A read that returns and leaves its values to a thread of the plug-in's: they are the read's until it is
    /// stopped.
    void whatComesBeforeTheStopIsTheReads()
    {
        MisbehavingFixture f;
        f.addBad();
        std::optional<ScriptedPlugin::Read> kept;
        std::atomic<bool> returned{false};
        f.bad->on_spot_lab = [&](const ScriptedPlugin::Read &read) {
            kept = read;
            returned = true;
            return 0;
        };
        f.chooseBad();
        f.press();
        QTRY_VERIFY(returned);
        onAnotherThread([&] {
            kept->sendLab(55, 0, 0);
            kept->say(0, "Read", "Measurement complete");
        });
        QTRY_COMPARE(f.messageLine()->text(), QString("Measurement complete"));
        QCOMPARE(f.lightnessOfNewSpots(), std::vector<double>{55});
        f.press();
        QVERIFY(f.allIsAsBefore());
    }

    /// A thread of the plug-in's that never ends and calls back for every read there was, while others start and stop
    /// and drivers come and go.
    void aThreadThatGoesOnForEverReachesNoOtherRead()
    {
        MisbehavingFixture f;
        f.addBad();
        std::mutex mutex;
        std::vector<ScriptedPlugin::Read> reads; // the L of a colour is its read's place here
        const auto sendFor = [](const ScriptedPlugin::Read &read, size_t number) {
            read.sendLab(double(number), 0, 0);
            read.say(0, nullptr, "Ready for strip %lu", static_cast<unsigned long>(number));
        };
        f.bad->on_spot_lab = [&](const ScriptedPlugin::Read &read) {
            const std::scoped_lock lock(mutex);
            reads.push_back(read);
            return 0;
        };
        std::atomic<bool> over{false};
        std::thread plugin_thread([&] {
            while (!over) {
                std::vector<ScriptedPlugin::Read> all;
                {
                    const std::scoped_lock lock(mutex);
                    all = reads;
                }
                // The last few, of which all but one are over.
                for (size_t i = all.size() < 4 ? 0 : all.size() - 4; i < all.size(); ++i)
                    sendFor(all[i], i);
                std::this_thread::sleep_for(std::chrono::microseconds(200)); // or the driver's queue never ends
            }
        });
        ReadersFolder::forgetInstruments();
        constexpr int driver_count = 20;
        constexpr int read_count = 10;
        allowLog(late_fault);
        Heard heard;
        for (int i = 0; i < driver_count * read_count; ++i) {
            if (i % read_count == 0)
                heard.driver = std::make_unique<OrloInstrument>();
            heard.driver->setMessageCallback(Heard::text, &heard);
            QCOMPARE(heard.driver->open("Bad", true), 0);
            heard.awaited = i;
            heard.colours = heard.texts = 0;
            QCOMPARE(heard.driver->readSpotLab(Heard::lab, &heard), 0);
            QVERIFY(QTest::qWaitFor([&] { return heard.colours > 2 && heard.texts > 2; }));
            QVERIFY(!heard.wrong);
            if (i % 2 == 0)
                heard.driver->abort();
        }
        heard.driver.reset();
        over = true;
        plugin_thread.join();
        QVERIFY(!heard.wrong);
        // Each of those that are over is told of once, if at all: the thread may not have got round to it.
        const int told = recorder().count(late_fault);
        QVERIFY2(told > 0 && told <= driver_count * read_count, QByteArray::number(told).constData());
        QVERIFY(f.allIsAsBefore());
    }

    /// The callback of Open delivers at once, which on another thread than the group's must not be.
    void theMessageCallbackOfOpenServesOtherThreadsToo_data()
    {
        QTest::addColumn<int>("kind");
        QTest::newRow("status") << 0;
        QTest::newRow("fault") << 1;
    }

    void theMessageCallbackOfOpenServesOtherThreadsToo()
    {
        QFETCH(int, kind);
        MisbehavingFixture f;
        f.addBad();
        ReadersFolder::forgetInstruments();
        InstrumentMessageCallback say = nullptr;
        void *context = nullptr;
        f.bad->on_open = [&](InstrumentMessageCallback message, void *message_context) -> void * {
            say = message;
            context = message_context;
            return f.bad;
        };
        f.bad->on_spot_lab = [&](const ScriptedPlugin::Read &read) {
            say(context, kind, "bad", "Read", "Error %s", "x");
            // Nor does it matter which of its contexts a text comes with.
            read.message(context, kind, "bad", "Read", "Error %s", "y");
            return 0;
        };
        Texts texts;
        {
            OrloInstrument instrument;
            instrument.setMessageCallback(Texts::take, &texts);
            QCOMPARE(instrument.open("Bad", true), 0);
            QCOMPARE(instrument.readSpotLab([](void *, double, double, double) { return 0; }, nullptr), 0);
            const QStringList expected = {"Error x", "Error y"};
            if (kind == 0) {
                QTRY_COMPARE(texts.texts, expected);
                QVERIFY(!texts.wrong_thread);
            } else {
                expectLog("orloinstrument: OrloInstrument: Read Error x"); // at once, on the thread it came on
                expectLog("bad: Read: Error y");
                QTRY_COMPARE(recorder().lines().size(), 2);
            }
            texts.texts.clear();
        }
        // Nobody is there: it goes to the log, as it does on the driver's own thread.
        expectLog("orloinstrument: OrloInstrument: Read Error z");
        onAnotherThread([&] { say(context, kind, "bad", "Read", "Error %s", "z"); });
        QVERIFY(texts.texts.isEmpty());
        QVERIFY(f.allIsAsBefore());
    }
};

TAVI_GUI_TEST_MAIN(TestMisbehavingStops)
#include "tst_misbehaving_stops.moc"
