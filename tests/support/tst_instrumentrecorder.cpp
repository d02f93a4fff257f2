// SPDX-License-Identifier: MIT
#include "tests/support/instrumentrecorder.h"
#include "tests/support/tavitest.h"

#include <thread>

class TestInstrumentRecorder : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void keepsTheOrderOfAllThatComes()
    {
        InstrumentRecorder recorder;
        PATCHDENSITY patch = {};
        patch.density = 1.5;
        InstrumentRecorder::message(&recorder, 0, "unit", nullptr, "ready");
        InstrumentRecorder::lab(&recorder, 50.0, 1.0, 2.0);
        InstrumentRecorder::density(&recorder, &patch);
        InstrumentRecorder::message(&recorder, 1, "unit", "function", "%d of %s", 3, "all");
        InstrumentRecorder::lab(&recorder, -1.0, 0.0, 0.0);
        QCOMPARE(recorder.events(), QStringList({"status: ready", "lab", "density", "fault: 3 of all", "end"}));
        QCOMPARE(recorder.texts("status"), QStringList("ready"));
        QCOMPARE(recorder.texts("fault"), QStringList("3 of all"));
        QCOMPARE(recorder.places(), QStringList({"unit/", "unit/function"}));
        const std::vector<RecordedLab> colours = {{50, 1, 2}, {-1, 0, 0}};
        QCOMPARE(recorder.colours(), colours);
        QCOMPARE(recorder.densities().at(0).density, 1.5);
        QCOMPARE(recorder.count(), 3);
    }

    void aListOfReadingsIsRecordedOneByOne()
    {
        InstrumentRecorder recorder;
        PATCHDENSITY second = {};
        second.density = 2.0;
        PATCHDENSITY first = {};
        first.density = 1.0;
        first.header.next = &second;
        InstrumentRecorder::density(&recorder, &first);
        QCOMPARE(recorder.densities().size(), size_t(2));
        QCOMPARE(recorder.densities().at(0).density, 1.0);
        QVERIFY(!recorder.densities().at(0).header.next);
        QCOMPARE(recorder.densities().at(1).density, 2.0);
    }

    void clearForgetsAll()
    {
        InstrumentRecorder recorder;
        PATCHDENSITY patch = {};
        InstrumentRecorder::message(&recorder, 0, "unit", "function", "text");
        InstrumentRecorder::lab(&recorder, 1.0, 0.0, 0.0);
        InstrumentRecorder::density(&recorder, &patch);
        recorder.clear();
        QCOMPARE(recorder.events(), QStringList());
        QCOMPARE(recorder.places(), QStringList());
        QCOMPARE(recorder.count(), 0);
    }

    void hooksRunAfterRecording()
    {
        InstrumentRecorder recorder;
        QStringList seen;
        recorder.on_reading = [&] {
            seen.append(QString::number(recorder.count()));
        };
        recorder.on_text = [&](const QString &text) {
            seen.append(text + recorder.events().last());
        };
        PATCHDENSITY patch = {};
        InstrumentRecorder::lab(&recorder, 1.0, 0.0, 0.0);
        InstrumentRecorder::message(&recorder, 0, "unit", "function", "text");
        InstrumentRecorder::density(&recorder, &patch);
        QCOMPARE(seen, QStringList({"1", "textstatus: text", "2"}));
    }

    void threadsMaySend()
    {
        InstrumentRecorder recorder;
        std::thread sender([&recorder] {
            for (int i = 0; i < 100; ++i)
                InstrumentRecorder::lab(&recorder, i, 0.0, 0.0);
        });
        for (int i = 0; i < 100; ++i)
            InstrumentRecorder::message(&recorder, 0, "unit", "function", "%d", i);
        sender.join();
        QCOMPARE(recorder.count(), 100);
        QCOMPARE(recorder.events().size(), 200);
    }
};

TAVI_TEST_MAIN(TestInstrumentRecorder)
#include "tst_instrumentrecorder.moc"
