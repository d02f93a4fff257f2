// SPDX-License-Identifier: MIT
#include "tests/instruments/measurementfile.h"
#include "tests/support/tavitest.h"

#include "taviapp/densitylut_cc.h"

#include <thread>

namespace {

const QString ready = QStringLiteral("status: File importer ready");
const QString cancelled = QStringLiteral("status: Reading cancelled by user");

QString processed(int count)
{
    return QStringLiteral("status: File importer: processed %1 measurements").arg(count);
}

} // namespace

/// The text readers of densities and their linearisation.
class TestSpectroFromFileDensities : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    // Spot densities

    void spotDensitiesInBothOrders_data()
    {
        QTest::addColumn<bool>("black_first");
        QTest::newRow("CMYK") << false;
        QTest::newRow("KCMY") << true;
    }
    void spotDensitiesInBothOrders()
    {
        QFETCH(bool, black_first);
        MeasurementFile file("1.1 1.2 1.3 1.4\n1 2 3\n\n2.1 2.2 2.3 2.4 2.5");
        SPECTROSEPTYPE separation = SPECTROSEP_CYAN;
        QCOMPARE(file.readSpotDensities(&separation, black_first), 0);
        QCOMPARE(file.recorder.events(), QStringList({ready, "density", "density", processed(2)}));
        QCOMPARE(file.recorder.places(), QStringList({"spectro_fromfile/", "spectro_fromfile/"}));
        const std::vector<PATCHDENSITY> patches = file.recorder.densities();
        for (size_t i = 0; i < 2; ++i) {
            const double base = 1.0 + static_cast<double>(i);
            const PATCHDENSITY &patch = patches[i];
            QCOMPARE(patch.density_c, base + (black_first ? 0.2 : 0.1));
            QCOMPARE(patch.density_m, base + (black_first ? 0.3 : 0.2));
            QCOMPARE(patch.density_y, base + (black_first ? 0.4 : 0.3));
            QCOMPARE(patch.density_k, base + (black_first ? 0.1 : 0.4));
            QCOMPARE(patch.density, patch.density_c);
            QCOMPARE(patch.sep_type, SPECTROSEP_CYAN);
            QCOMPARE(patch.sep_index, 0U);
            QCOMPARE(patch.patch_index, 0);
            QVERIFY(!patch.header.next);
        }
    }

    void theSeparationSelectsTheSpotDensity_data()
    {
        QTest::addColumn<uint>("separation");
        QTest::addColumn<char>("channel");
        const char channels[] = "KCMYKCKMKKK";
        for (uint separation = 0; separation <= 10; ++separation)
            QTest::addRow("%u", separation) << separation << channels[separation];
        QTest::newRow("largest") << 0x7fffffffU << 'K';
    }
    void theSeparationSelectsTheSpotDensity()
    {
        QFETCH(uint, separation);
        QFETCH(char, channel);
        MeasurementFile file("1 2 3 4\n");
        auto word = static_cast<SPECTROSEPTYPE>(separation);
        file.readSpotDensities(&word);
        const PATCHDENSITY patch = file.recorder.densities().at(0);
        QCOMPARE(patch.sep_type, word);
        QCOMPARE(patch.density, 1.0 + QByteArray("CMYK").indexOf(channel));
    }

    void theSeparationIsLookedAtForEachLine()
    {
        MeasurementFile file("1 2 3 4\n1 2 3 4\n1 2 3 4\n");
        SPECTROSEPTYPE separation = SPECTROSEP_BLACK;
        file.recorder.on_reading = [&] {
            separation = file.recorder.count() == 1 ? SPECTROSEP_YELLOW : SPECTROSEP_MAGENTA;
        };
        file.readSpotDensities(&separation);
        QVector<double> densities;
        for (const PATCHDENSITY &patch : file.recorder.densities())
            densities.append(patch.density);
        QCOMPARE(densities, QVector<double>({4, 3, 2}));
    }

    void anAbortOfASpotDensityRead()
    {
        MeasurementFile file("1 2 3 4\n1 2 3 4\n1 2 3 4\n");
        SPECTROSEPTYPE separation = SPECTROSEP_BLACK;
        file.abortAfter(2);
        QCOMPARE(file.readSpotDensities(&separation), 0);
        QCOMPARE(file.recorder.events(), QStringList({ready, "density", "density", cancelled}));
        QCOMPARE(file.recorder.places().last(), QString("spectro_fromfile/SpectrophotometerReadSpotDensities"));
    }

    void anEmptyFileHasNoDensities()
    {
        MeasurementFile file("\n \n");
        SPECTROSEPTYPE separation = SPECTROSEP_BLACK;
        QCOMPARE(file.readSpotDensities(&separation), 0);
        QCOMPARE(file.recorder.events(), QStringList({ready, processed(0)}));
    }

    // Linearisation

    void aLinearisationWithoutTableIsRefused_data()
    {
        QTest::addColumn<bool>("black_first");
        QTest::newRow("CMYK") << false;
        QTest::newRow("KCMY") << true;
    }
    void aLinearisationWithoutTableIsRefused()
    {
        QFETCH(bool, black_first);
        MeasurementFile file("1 2 3 4\n");
        QCOMPARE(file.readLinearisation(5, nullptr, 0, 0, black_first), -1);
        DENSITYLUT without_bands = {};
        QCOMPARE(file.readLinearisation(5, &without_bands, 0, 0, black_first), 0);
        without_bands.separation_count = 4;
        QCOMPARE(file.readLinearisation(5, &without_bands, 0, 0, black_first), -1);
        QCOMPARE(file.recorder.events(), QStringList());
    }

    void aLinearisationFillsTheTableAndReturnsTheCount_data() { spotDensitiesInBothOrders_data(); }
    void aLinearisationFillsTheTableAndReturnsTheCount()
    {
        QFETCH(bool, black_first);
        QByteArray content;
        for (int line = 0; line < 9; ++line)
            content += QByteArray::number(line) + ".1 .2 .3 .4\n";
        MeasurementFile file(content);
        DENSITYLUT_CC lut;
        lut.appendSeparation(TAVIBANDTYPE_CYAN);
        lut.appendSeparation(TAVIBANDTYPE_BLACK);
        QCOMPARE(file.readLinearisation(3, lut.lut(), 0, 0, black_first), 6);
        QCOMPARE(file.recorder.events(),
                 QStringList({"status: Measure A1", "density", "status: Measure A2", "density", "status: Measure A3",
                              "density", "status: Measure B1", "density", "status: Measure B2", "density",
                              "status: Measure B3", "density"}));
        for (const QString &place : file.recorder.places())
            QCOMPARE(place, QString("spectro_fromfile/SpectrophotometerReadLinearisation"));
        const std::vector<PATCHDENSITY> patches = file.recorder.densities();
        for (uint i = 0; i < 6; ++i) {
            const PATCHDENSITY &patch = patches[i];
            QCOMPARE(patch.sep_type, i < 3 ? SPECTROSEP_CYAN : SPECTROSEP_BLACK);
            QCOMPARE(patch.sep_index, i / 3);
            QCOMPARE(patch.patch_index, static_cast<int>(i % 3));
            QCOMPARE(black_first ? patch.density_k : patch.density_c, i + 0.1);
            QCOMPARE(patch.density_m, black_first ? 0.3 : 0.2);
            QCOMPARE(patch.density_y, black_first ? 0.4 : 0.3);
            QCOMPARE(patch.density, i < 3 ? patch.density_c : patch.density_k);
        }
    }

    void theInkSelectsTheLinearisationDensity_data()
    {
        QTest::addColumn<uint>("band_type");
        QTest::addColumn<int>("separation");
        QTest::addColumn<double>("density");
        const auto row = [](const char *name, uint band_type, int separation, double density) {
            QTest::newRow(name) << band_type << separation << density;
        };
        row("black", TAVIBANDTYPE_BLACK, 0, 4);
        row("cyan", TAVIBANDTYPE_CYAN, 1, 1);
        row("magenta", TAVIBANDTYPE_MAGENTA, 2, 2);
        row("yellow", TAVIBANDTYPE_YELLOW, 3, 3);
        row("orange", TAVIBANDTYPE_ORANGE, 4, 2);
        row("light cyan", TAVIBANDTYPE_LIGHT_CYAN, 5, 1);
        row("green", TAVIBANDTYPE_GREEN, 6, 1);
        row("light magenta", TAVIBANDTYPE_LIGHT_MAGENTA, 7, 2);
        row("spot", TAVIBANDTYPE_SPOT, 8, 0);
        row("unknown", 1000, 8, 0);
    }
    void theInkSelectsTheLinearisationDensity()
    {
        QFETCH(uint, band_type);
        QFETCH(int, separation);
        QFETCH(double, density);
        // The line of an ink that selects something comes first: nothing of it may stay.
        MeasurementFile file("1 2 3 4\n1 2 3 4\n");
        DENSITYLUT_CC lut;
        lut.appendSeparation(TAVIBANDTYPE_YELLOW);
        lut.appendSeparation(band_type);
        QCOMPARE(file.readLinearisation(1, lut.lut()), 2);
        const PATCHDENSITY patch = file.recorder.densities().at(1);
        QCOMPARE(int(patch.sep_type), separation);
        QCOMPARE(patch.density, density);
    }

    void aLinearisationMayBeginInTheMiddle_data()
    {
        QTest::addColumn<int>("first_separation");
        QTest::addColumn<int>("first_patch");
        QTest::addColumn<QStringList>("prompts");
        const auto row = [](const char *name, int separation, int patch, const QStringList &prompts) {
            QTest::newRow(name) << separation << patch << prompts;
        };
        row("from the start", 0, 0, {"A1", "A2", "A3", "B1", "B2", "B3"});
        row("patch", 0, 2, {"A3", "B1", "B2", "B3"});
        row("separation", 1, 0, {"B1", "B2", "B3"});
        row("both", 1, 1, {"B2", "B3"});
        row("patch beyond", 0, 3, {"B1", "B2", "B3"});
        row("patch below", 1, -2, {"B1", "B2", "B3"});
        row("separation beyond", 2, 0, {});
        row("far beyond", 100, 0, {});
    }
    void aLinearisationMayBeginInTheMiddle()
    {
        QFETCH(int, first_separation);
        QFETCH(int, first_patch);
        QFETCH(QStringList, prompts);
        MeasurementFile file("1 2 3 4\n1 2 3 4\n1 2 3 4\n1 2 3 4\n1 2 3 4\n1 2 3 4\n1 2 3 4\n");
        DENSITYLUT_CC lut;
        lut.appendSeparation(TAVIBANDTYPE_CYAN);
        lut.appendSeparation(TAVIBANDTYPE_MAGENTA);
        QCOMPARE(file.readLinearisation(3, lut.lut(), static_cast<unsigned long>(first_separation), first_patch),
                 static_cast<int>(prompts.size()));
        QStringList expected;
        for (const QString &prompt : prompts)
            expected += {"status: Measure " + prompt, "density"};
        QCOMPARE(file.recorder.events(), expected);
        for (int i = 0; i < prompts.size(); ++i) {
            const PATCHDENSITY patch = file.recorder.densities().at(static_cast<size_t>(i));
            QCOMPARE(QString(QChar('A' + static_cast<int>(patch.sep_index))) + QString::number(patch.patch_index + 1),
                     prompts[i]);
        }
    }

    void noStepsAreNoPatches()
    {
        MeasurementFile file("1 2 3 4\n");
        DENSITYLUT_CC lut;
        lut.appendSeparation(TAVIBANDTYPE_CYAN);
        QCOMPARE(file.readLinearisation(0, lut.lut()), 0);
        QCOMPARE(file.recorder.events(), QStringList());
    }

    void aShortFileEndsTheLinearisationWithItsCount()
    {
        MeasurementFile file("1 2 3 4\n1 2 3 4\n");
        DENSITYLUT_CC lut;
        lut.appendSeparation(TAVIBANDTYPE_CYAN);
        QCOMPARE(file.readLinearisation(21, lut.lut()), 2);
        QCOMPARE(file.recorder.events(), QStringList({"status: Measure A1", "density", "status: Measure A2",
                                                      "density", "status: Measure A3", processed(2)}));
        QCOMPARE(file.recorder.places().last(), QString("spectro_fromfile/"));
    }

    void skippedLinesAreNotPromptedAgain()
    {
        MeasurementFile file("\n1 2 3\n1 2 3 4\n\n");
        DENSITYLUT_CC lut;
        lut.appendSeparation(TAVIBANDTYPE_CYAN);
        QCOMPARE(file.readLinearisation(2, lut.lut()), 1);
        QCOMPARE(file.recorder.events(),
                 QStringList({"status: Measure A1", "density", "status: Measure A2", processed(1)}));
    }

    void anAbortOfALinearisation()
    {
        MeasurementFile file("1 2 3 4\n1 2 3 4\n1 2 3 4\n");
        DENSITYLUT_CC lut;
        lut.appendSeparation(TAVIBANDTYPE_CYAN);
        file.abortAfter(1);
        QCOMPARE(file.readLinearisation(21, lut.lut()), 0);
        QCOMPARE(file.recorder.events(),
                 QStringList({"status: Measure A1", "density", "status: Measure A2", cancelled}));
        QCOMPARE(file.recorder.places().last(), QString("spectro_fromfile/SpectrophotometerReadLinearisation"));
    }

    void theEndOfTheFileGoesBeforeAnAbort()
    {
        MeasurementFile file("1 2 3 4\n");
        DENSITYLUT_CC lut;
        lut.appendSeparation(TAVIBANDTYPE_CYAN);
        file.abortAfter(1);
        QCOMPARE(file.readLinearisation(21, lut.lut()), 1);
        QCOMPARE(file.recorder.events().last(), processed(1));
    }

    void anAbortIsSeenWhileLinesAreSkipped()
    {
        MeasurementFile file("1 2 3 4\n\n\n");
        DENSITYLUT_CC lut;
        lut.appendSeparation(TAVIBANDTYPE_CYAN);
        file.abortAfter(1);
        QCOMPARE(file.readLinearisation(21, lut.lut()), 0);
        QCOMPARE(file.recorder.events().last(), cancelled);
    }

    // Threads

    void wordsOfTheApplicationAreReadWhileItWritesThem()
    {
        QByteArray content;
        for (int line = 0; line < 20000; ++line)
            content += "1 2 3 4\n";
        MeasurementFile file(content);
        SPECTROSEPTYPE separation = SPECTROSEP_CYAN;
        std::atomic<bool> ended = false;
        std::thread reader([&] {
            file.readSpotDensities(&separation);
            ended = true;
        });
        QTRY_VERIFY(file.recorder.count() > 0);
        std::atomic_ref<SPECTROSEPTYPE>(separation).store(SPECTROSEP_MAGENTA);
        QTRY_VERIFY(ended || file.recorder.densities().back().sep_type == SPECTROSEP_MAGENTA);
        file.setAborted(true);
        reader.join();
        for (const PATCHDENSITY &patch : file.recorder.densities())
            QCOMPARE(patch.density, patch.sep_type == SPECTROSEP_CYAN ? 1.0 : 2.0);
    }
};

TAVI_TEST_MAIN(TestSpectroFromFileDensities)
#include "tst_spectro_fromfile_densities.moc"
