// SPDX-License-Identifier: MIT
#include "instruments/orloinstrument.h"
#include "taviapp/tavicombocolour_cc.h"
#include "tavilib/tavilist.h"
#include "tests/plugins/simspectroplugin.h"
#include "tests/support/instruments/readersfolder.h"
#include "tests/support/shortsleeps.h"
#include "tests/support/tavitest.h"

#include <QEventLoop>
#include <QTimer>

#include <cmath>

namespace {

constexpr int patch_count = 40;
constexpr int cycle_count = 1000;
constexpr const char *instrument_name = "Simulated spectrophotometer";

/// Patch "7" has L 7 and a visual density of 0.07.
QByteArray measurements()
{
    QByteArray rows;
    for (int i = 0; i < patch_count; ++i) {
        const QByteArray number = QByteArray::number(i);
        const QByteArray density = QByteArray::number(i / 100.0);
        rows += number + " " + number + " 0 0 " + density + " " + density + " " + density + " " + density + "\n";
    }
    return cgatsTable("SAMPLE_ID LAB_L LAB_A LAB_B D_RED D_GREEN D_BLUE D_VIS", rows);
}

TAVICOMBOCOLOUR_CC wholeChart()
{
    TAVICOMBOCOLOUR_CC chart;
    for (int i = 0; i < patch_count; ++i) {
        TAVICOMBOCOLOUR *patch = TAVICOMBOCOLOUR_CC::newMeasuredPatch(0, 0, 0);
        std::free(patch->name);
        patch->name = strdup(std::to_string(i).c_str());
        chart.insertCombo(patch);
    }
    return chart;
}

/// Takes the values of one read, which are the file's from its beginning on.
struct Listener {
    int count = 0;
    int texts = 0;
    bool in_order = true;
    int awaited = 0;
    QEventLoop loop;

    void take(double number)
    {
        in_order = in_order && std::abs(number - count++) < 1e-6;
        if (count == awaited)
            loop.quit();
    }
    /// Runs the event loop until so many have come, or none come any more.
    bool awaitCount(int wanted)
    {
        awaited = wanted;
        QTimer::singleShot(std::chrono::seconds(20), &loop, &QEventLoop::quit);
        if (count < wanted)
            loop.exec();
        return count >= wanted;
    }
    static int lab(void *context, double L, double, double)
    {
        if (L >= 0.0)
            static_cast<Listener *>(context)->take(L);
        return 0;
    }
    static int density(void *context, PATCHDENSITY *patch)
    {
        for (; patch; patch = NextInList(patch))
            static_cast<Listener *>(context)->take(patch->density_k * 100.0);
        return 0;
    }
    static int text(void *context, char const *)
    {
        ++static_cast<Listener *>(context)->texts;
        return 0;
    }
};

} // namespace

/// The driver over the simulated instrument, stopped at any moment of a read: of use under the thread sanitizer most.
/// A driver looks in steps of a second whether a stopped read has ended, which would make a thousand stops a quarter
/// of an hour; a timer's signal ends each step early, after two milliseconds, and leaves all else as it is.
class TestSimspectroStops : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aThousandReadsAreStoppedAtAnyMoment()
    {
        const ShortSleeps short_sleeps;
        const SimspectroFile file(measurements());
        SimspectroEnvironment environment(file.path());
        environment.set("SIMSPECTRO_PRINTER", "1");
        ReadersFolder readers;
        readers.addUnloaded(SimspectroPlugin::path(), "simspectro.so");
        const TAVICOMBOCOLOUR_CC chart = wholeChart();

        OrloInstrument instrument;
        int done_count = 0;
        connect(&instrument, &OrloInstrument::done, this, [&](int) { ++done_count; });
        QCOMPARE(instrument.open(instrument_name, true), 0);
        int reads_with_values = 0;
        int whole_reads = 0;
        for (int cycle = 0; cycle < cycle_count; ++cycle) {
            Listener listener;
            instrument.setMessageCallback(Listener::text, &listener);
            QCOMPARE(start(instrument, cycle, chart.head(), listener), 0);
            // From "before the worker has begun" to "when the read is over, or waits for its end".
            QVERIFY(listener.awaitCount(cycle / 4 % (patch_count + 1)));
            int stopped_at = listener.count;
            // By the stop itself, by the next read, or by closing the device.
            if (cycle % 5 == 1) {
                Listener next;
                QCOMPARE(instrument.readSpotLab(Listener::lab, &next), 0);
                QVERIFY(next.awaitCount(1));
                QVERIFY(next.in_order);
                QCOMPARE(listener.count, stopped_at);
                instrument.abort();
            } else if (cycle % 5 == 3) {
                instrument.close();
                QCOMPARE(instrument.open(instrument_name, true), 0);
            } else {
                instrument.abort();
            }
            const int texts = listener.texts;
            QCoreApplication::processEvents();
            QCOMPARE(listener.count, stopped_at);
            QCOMPARE(listener.texts, texts);
            QVERIFY(listener.in_order);
            reads_with_values += stopped_at > 0;
            whole_reads += stopped_at == patch_count;
        }
        QVERIFY(reads_with_values > cycle_count / 2);
        QVERIFY(whole_reads > 0 && whole_reads < cycle_count);
        QTRY_COMPARE(done_count, cycle_count / 4); // one for each print, stopped or not
    }

private:
    /// One of four kinds of read.
    int start(OrloInstrument &instrument, int cycle, TAVICOMBOCOLOUR *chart, Listener &listener)
    {
        switch (cycle % 4) {
        case 0:
            return instrument.readSpotLab(Listener::lab, &listener);
        case 1:
            return instrument.readSpotDensity(&separation, Listener::density, &listener);
        case 2:
            return instrument.readComboChart(chart, 8, 0, Listener::lab, &listener);
        default:
            return instrument.printNReadComboChart(nullptr, {1, 2}, {3, 4}, {5, 6}, chart, 8, 0, 0, Listener::lab,
                                                   &listener);
        }
    }

    SPECTROSEPTYPE separation = SPECTROSEP_BLACK;
};

TAVI_TEST_MAIN(TestSimspectroStops)
#include "tst_simspectro_stops.moc"
