// SPDX-License-Identifier: MIT
#include "instruments/orloinstrument.h"
#include "taviapp/densitylut_cc.h"
#include "taviapp/tavicombocolour_cc.h"
#include "tests/instruments/measurementfile.h"
#include "tests/support/instruments/readersfolder.h"
#include "tests/support/tavitest.h"

#include <memory>

Q_DECLARE_METATYPE(RecordedLab)

namespace {

/// Five numbers that tell which column is which.
constexpr const char *text_line = "0.1 0.2 0.3 0.4 0.5\n";
constexpr const char *cgats_table = "NUMBER_OF_FIELDS 4\nBEGIN_DATA_FORMAT\nSAMPLE_ID LAB_L LAB_A LAB_B\n"
                                    "END_DATA_FORMAT\nNUMBER_OF_SETS 1\nBEGIN_DATA\n1 51 52 53\nEND_DATA\n";

QByteArrayList numbers(const PATCHDENSITY &patch)
{
    QByteArrayList found;
    for (const double value : {patch.density, patch.density_k, patch.density_c, patch.density_m, patch.density_y})
        found.append(QByteArray::number(value));
    return found;
}

} // namespace

/// The instruments that live in the library, driven from their names in the list to the values that come: that each
/// has its own functions and not its neighbour's.
class TestInternalInstruments : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void densitiesComeInTheOrderOfTheColumns_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<int>("band");
        QTest::addColumn<int>("separation");
        QTest::addColumn<QByteArray>("values"); // selected, K, C, M, Y
        const auto rows = [](const char *name, const QByteArray &channels, const QByteArray &cyan,
                             const QByteArray &black) {
            QTest::addRow("%s, cyan", name)
                << QByteArray(name) << int(TAVIBANDTYPE_CYAN) << int(SPECTROSEP_CYAN) << cyan + " " + channels;
            QTest::addRow("%s, black", name)
                << QByteArray(name) << int(TAVIBANDTYPE_BLACK) << int(SPECTROSEP_BLACK) << black + " " + channels;
        };
        rows("CMYK text file (CMYK sample order)", "0.4 0.1 0.2 0.3", "0.1", "0.4");
        rows("CMYK text file (KCMY sample order)", "0.1 0.2 0.3 0.4", "0.2", "0.1");
        rows("Lab text file (Lab sample order)", "0.4 0.1 0.2 0.3", "0.1", "0.4"); // announced by no flag
    }

    void densitiesComeInTheOrderOfTheColumns()
    {
        QFETCH(QByteArray, name);
        QFETCH(int, band);
        QFETCH(int, separation);
        QFETCH(QByteArray, values);
        open(name, text_line);

        auto spot_separation = static_cast<SPECTROSEPTYPE>(separation);
        QCOMPARE(instrument->readSpotDensity(&spot_separation, InstrumentRecorder::density, &recorded), 0);
        QTRY_COMPARE(recorded.count(), 1);
        QCOMPARE(numbers(recorded.densities().front()).join(' '), values);
        recorded.clear();

        DENSITYLUT_CC lut;
        lut.appendSeparation(static_cast<uint32_t>(band));
        QCOMPARE(instrument->readLinearisation(1, lut.lut(), 0, 0, InstrumentRecorder::density, &recorded), 0);
        QTRY_COMPARE(recorded.count(), 1);
        QCOMPARE(numbers(recorded.densities().front()).join(' '), values);
        QCOMPARE(int(recorded.densities().front().sep_type), separation);
    }

    void coloursCome_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("charts");
        QTest::addColumn<RecordedLab>("colour");
        const RecordedLab of_line = {0.1, 0.2, 0.3};
        QTest::newRow("cmyk") << QByteArray("CMYK text file (CMYK") << QByteArray(text_line) << false << of_line;
        QTest::newRow("kcmy") << QByteArray("CMYK text file (KCMY") << QByteArray(text_line) << false << of_line;
        QTest::newRow("lab") << QByteArray("Lab text file") << QByteArray(text_line) << true << of_line;
        QTest::newRow("cgats") << QByteArray("CGATS / ISO 12642 file") << QByteArray(cgats_table) << true
                               << RecordedLab{51, 52, 53};
    }

    void coloursCome()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, content);
        QFETCH(bool, charts);
        QFETCH(RecordedLab, colour);
        open(name, content);
        const std::vector<RecordedLab> expected = {colour, {-1, 0, 0}};
        QCOMPARE(instrument->readSpotLab(InstrumentRecorder::lab, &recorded), 0);
        QTRY_COMPARE(recorded.colours(), expected);
        recorded.clear();

        // More patches than measurements.
        TAVICOMBOCOLOUR_CC chart;
        chart.insertCombo(TAVICOMBOCOLOUR_CC::newMeasuredPatch(1, 2, 3));
        chart.insertCombo(TAVICOMBOCOLOUR_CC::newMeasuredPatch(4, 5, 6));
        QCOMPARE(instrument->readComboChart(chart.head(), 1, 0, InstrumentRecorder::lab, &recorded), charts ? 0 : -1);
        if (charts)
            QTRY_COMPARE(recorded.colours(), expected);
    }

private:
    void open(const QByteArray &name, const QByteArray &content)
    {
        readers = std::make_unique<ReadersFolder>();
        readers->addFile("measured.txt", content);
        const ChosenFile chosen(readers->path() + "/measured.txt");
        instrument = std::make_unique<OrloInstrument>();
        instrument->setMessageCallback([](void *, char const *) { return 0; }, nullptr);
        QCOMPARE(instrument->open(name.constData(), true), 0);
        QCOMPARE(chosen.asked, 1);
        recorded.clear();
    }

    std::unique_ptr<ReadersFolder> readers;
    InstrumentRecorder recorded;
    std::unique_ptr<OrloInstrument> instrument;
};

TAVI_TEST_MAIN(TestInternalInstruments)
#include "tst_internalinstruments.moc"
