// SPDX-License-Identifier: MIT
#ifndef TESTS_INSTRUMENTS_ORLOINSTRUMENTREADTEST_H
#define TESTS_INSTRUMENTS_ORLOINSTRUMENTREADTEST_H

#include "instruments/orloinstrument.h"
#include "tavilib/tavilist.h"
#include "tests/support/instruments/readersfolder.h"
#include "tests/support/tavitest.h"

#include <QThread>

#include <functional>
#include <memory>
#include <thread>
#include <vector>

struct Lab {
    double L;
    double a;
    double b;
    bool operator==(const Lab &) const = default;
};

struct Density {
    int sep_type;
    uint32_t sep_index;
    int patch_index;
    double selected;
    double k, c, m, y;
    bool operator==(const Density &) const = default;
};

/// Takes everything that a driver delivers, and checks on which thread it comes.
struct Listener {
    std::vector<Lab> labs;
    std::vector<Density> densities;
    std::vector<size_t> density_lists;
    QStringList texts;
    bool wrong_thread = false;
    std::function<void()> on_lab;

    void checkThread()
    {
        wrong_thread = wrong_thread || QThread::currentThread() != QCoreApplication::instance()->thread();
    }

    static int lab(void *context, double L, double a, double b)
    {
        auto *self = static_cast<Listener *>(context);
        self->checkThread();
        self->labs.push_back({L, a, b});
        if (self->on_lab) {
            const auto action = self->on_lab; // the action may replace itself
            action();
        }
        return 0;
    }
    static int density(void *context, PATCHDENSITY *patches)
    {
        auto *self = static_cast<Listener *>(context);
        self->checkThread();
        self->density_lists.push_back(static_cast<size_t>(ListLength(patches)));
        for (; patches; patches = NextInList(patches))
            self->densities.push_back({patches->sep_type, patches->sep_index, patches->patch_index, patches->density,
                                       patches->density_k, patches->density_c, patches->density_m,
                                       patches->density_y});
        return 0;
    }
    static int text(void *context, char const *text)
    {
        auto *self = static_cast<Listener *>(context);
        self->checkThread();
        self->texts.append(QString::fromUtf8(text));
        return 0;
    }
};

/// A read that does nothing until it is told to stop.
inline int waitForAbort(const ScriptedPlugin::Read &read)
{
    while (!read.aborted())
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return 0;
}

/// For tests of reading: each function gets an open driver over a scripted plug-in, and a listener for its texts.
class OrloInstrumentReadTest : public TaviTest
{
protected:
    void setUp()
    {
        TaviTest::init();
        readers = std::make_unique<ReadersFolder>();
        plugin = readers->add("scripted", "one.so");
        instrument = std::make_unique<OrloInstrument>();
        QCOMPARE(instrument->open("Scripted", true), 0);
        instrument->setMessageCallback(Listener::text, &listener);
        listener = Listener();
    }

    void tearDown()
    {
        QVERIFY(!listener.wrong_thread);
        instrument.reset();
        readers.reset();
        TaviTest::cleanup();
    }

    std::unique_ptr<ReadersFolder> readers;
    ScriptedPlugin *plugin = nullptr;
    std::unique_ptr<OrloInstrument> instrument;
    Listener listener;
};

#endif
