// SPDX-License-Identifier: MIT
#include "tests/instruments/measurementfile.h"
#include "tests/support/tavitest.h"

#include "taviapp/tavicombocolour_cc.h"
#include "tavilib/tavialloc_p.h"

namespace {

const QByteArray five = "CGATS.17\nBEGIN_DATA_FORMAT\nSAMPLE_ID LAB_L LAB_A LAB_B\nEND_DATA_FORMAT\nBEGIN_DATA\n"
                        "1 95 0 -2\n2 nan 0 0\n3 55 -37 -50\n4 48 74 -3\n5 89 -5 93\nEND_DATA\n";

TAVICOMBOCOLOUR_CC chartOf(int patches)
{
    TAVICOMBOCOLOUR_CC chart;
    for (int i = 0; i < patches; ++i)
        chart.insertCombo(TAVICOMBOCOLOUR_CC::newMeasuredPatch(50, 0, 0));
    return chart;
}

} // namespace

/// The CGATS readers.
class TestSpectroFromFileCgats : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void openingTouchesNoFile()
    {
        const ChosenFile chosen(QString::fromUtf8("/nonexistent/M\xc3\xa4rz.ti3"));
        InstrumentRecorder recorder;
        void *handle = spectro_fromCGATS_SpectrophotometerOpen(InstrumentRecorder::message, &recorder);
        QVERIFY(handle);
        QCOMPARE(static_cast<const char *>(handle), "/nonexistent/M\xc3\xa4rz.ti3");
        QCOMPARE(recorder.events(), QStringList());
        spectro_fromCGATS_SpectrophotometerClose(handle, InstrumentRecorder::message, &recorder);
    }

    void openingWithoutMemoryFails()
    {
        const ChosenFile chosen("/nonexistent/file.ti3");
        InstrumentRecorder recorder;
        TaviAllocSetHook([](size_t, void *) { return false; }, nullptr);
        void *handle = spectro_fromCGATS_SpectrophotometerOpen(InstrumentRecorder::message, &recorder);
        TaviAllocSetHook(nullptr, nullptr);
        QVERIFY(!handle);
    }

    void patchesWithoutColourAreSkipped()
    {
        MeasurementFile file(five, MeasurementFile::Cgats);
        QCOMPARE(file.readSpotLab(), 0);
        const std::vector<RecordedLab> expected = {
            {95, 0, -2}, {55, -37, -50}, {48, 74, -3}, {89, -5, 93}, {-1, 0, 0}};
        QCOMPARE(file.recorder.colours(), expected);
        // No texts.
        QCOMPARE(file.recorder.events(), QStringList({"lab", "lab", "lab", "lab", "end"}));
    }

    void aChartLimitsTheColours_data()
    {
        QTest::addColumn<int>("patches");
        QTest::addColumn<int>("colours");
        for (int patches = 0; patches <= 6; ++patches)
            QTest::addRow("%d", patches) << patches << qMin(patches, 4);
    }
    void aChartLimitsTheColours()
    {
        QFETCH(int, patches);
        QFETCH(int, colours);
        MeasurementFile file(five, MeasurementFile::Cgats);
        const TAVICOMBOCOLOUR_CC chart = chartOf(patches);
        QCOMPARE(file.readChart(chart.head()), 0);
        const std::vector<RecordedLab> all = {{95, 0, -2}, {55, -37, -50}, {48, 74, -3}, {89, -5, 93}};
        std::vector<RecordedLab> expected(all.begin(), all.begin() + colours);
        expected.push_back({-1, 0, 0});
        QCOMPARE(file.recorder.colours(), expected);
        QCOMPARE(file.recorder.texts("status"), QStringList());
    }

    void aFileThatCannotBeImportedGivesTheEndMarker_data()
    {
        QTest::addColumn<bool>("chart");
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("spot, no CGATS") << false << QByteArray("Dear Sir,\n");
        QTest::newRow("chart, no CGATS") << true << QByteArray("Dear Sir,\n");
        QTest::newRow("spot, empty") << false << QByteArray();
        QTest::newRow("chart, empty") << true << QByteArray();
    }
    void aFileThatCannotBeImportedGivesTheEndMarker()
    {
        QFETCH(bool, chart);
        QFETCH(QByteArray, content);
        MeasurementFile file(content, MeasurementFile::Cgats);
        const TAVICOMBOCOLOUR_CC patches = chartOf(3);
        expectLog("iso12642: import: " + file.path());
        QCOMPARE(chart ? file.readChart(patches.head()) : file.readSpotLab(), 0);
        QCOMPARE(file.recorder.events(), QStringList("end"));
    }

    void aFileOfDeviceValuesGivesTheEndMarker()
    {
        MeasurementFile file("CGATS.17\nBEGIN_DATA_FORMAT\nSAMPLE_ID CMYK_C CMYK_M CMYK_Y CMYK_K\nEND_DATA_FORMAT\n"
                             "BEGIN_DATA\n1 100 0 0 0\n2 0 50 0 0\nEND_DATA\n",
                             MeasurementFile::Cgats);
        QCOMPARE(file.readSpotLab(), 0);
        QCOMPARE(file.recorder.events(), QStringList("end"));
    }

    void anAbortIsNotLookedAt()
    {
        MeasurementFile file(five, MeasurementFile::Cgats);
        file.setAborted(true);
        const TAVICOMBOCOLOUR_CC chart = chartOf(2);
        QCOMPARE(file.readSpotLab(), 0);
        QCOMPARE(file.readChart(chart.head()), 0);
        QCOMPARE(file.recorder.events(), QStringList({"lab", "lab", "lab", "lab", "end", "lab", "lab", "end"}));
    }

    void aPublishedCharacterisationSetComesWhole()
    {
        QFile published("/usr/share/color/icc/FOGRA39L.ti3");
        QVERIFY2(published.open(QIODevice::ReadOnly), "package icc-profiles-free is missing");
        MeasurementFile file(published.readAll(), MeasurementFile::Cgats);
        QCOMPARE(file.readSpotLab(), 0);
        QCOMPARE(file.recorder.count(), 1618);
        QCOMPARE(file.recorder.colours().front(), (RecordedLab{95.00, 0.00, -2.00}));
        QVERIFY(file.recorder.colours().back().isEndMarker());
    }
};

TAVI_TEST_MAIN(TestSpectroFromFileCgats)
#include "tst_spectro_fromfile_cgats.moc"
