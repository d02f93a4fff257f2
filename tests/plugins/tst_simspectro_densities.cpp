// SPDX-License-Identifier: MIT
#include "taviapp/densitylut_cc.h"
#include "tests/plugins/simspectroplugin.h"
#include "tests/support/tavitest.h"

#include <cmath>

/// Densities and linearisation of the simulated instrument.
class TestSimspectroDensities : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void densitiesAreColorimetricWithoutColumns()
    {
        const SimspectroFile file(cgatsTable("XYZ_X XYZ_Y XYZ_Z",
                                             "96.42 100 82.49\n9.642 10 8.249\n9.642 1 82.49\n0 0 0\n"
                                             "97 101 99\n"));
        const SimspectroEnvironment environment(file.path());
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        SPECTROSEPTYPE separation = SPECTROSEP_BLACK;
        device.abortAfter(5);
        QCOMPARE(device.readSpotDensities(&separation), 0);
        const double expected[][4] = {{0, 0, 0, 0}, {1, 1, 1, 1}, {2, 1, 2, 0}, {4, 4, 4, 4}, {0, 0, 0, 0}};
        const std::vector<PATCHDENSITY> densities = device.recorder.densities();
        QCOMPARE(densities.size(), size_t(5));
        for (size_t i = 0; i < 5; ++i) {
            const PATCHDENSITY &patch = densities[i];
            const double got[] = {patch.density_k, patch.density_c, patch.density_m, patch.density_y};
            for (int channel = 0; channel < 4; ++channel)
                QVERIFY2(std::abs(got[channel] - expected[i][channel]) < 1e-9,
                         qPrintable(QString::number(got[channel])));
        }
    }

    void densityColumnsArePlayedAsTheyAre()
    {
        const SimspectroFile file(
            cgatsTable("D_RED D_GREEN D_BLUE D_VIS LAB_L LAB_A LAB_B", "1.1 1.2 1.3 1.4 50 0 0\n"));
        SimspectroEnvironment environment(file.path());
        environment.set("SIMSPECTRO_NOISE", "3");
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        SPECTROSEPTYPE separation = SPECTROSEP_YELLOW;
        device.abortAfter(1);
        device.readSpotDensities(&separation);
        const PATCHDENSITY patch = device.recorder.densities().at(0);
        QCOMPARE(patch.density_c, 1.1);
        QCOMPARE(patch.density_m, 1.2);
        QCOMPARE(patch.density_y, 1.3);
        QCOMPARE(patch.density_k, 1.4);
        QCOMPARE(patch.density, 1.3);
        QCOMPARE(patch.sep_type, SPECTROSEP_YELLOW);
        QCOMPARE(patch.sep_index, 0U);
        QCOMPARE(patch.patch_index, 0);
        QVERIFY(!patch.header.next);
    }

    void theSeparationMayChangeBetweenReadings()
    {
        QByteArray rows;
        for (int i = 0; i < 9; ++i)
            rows += "1 2 3 4 50 0 0\n";
        const SimspectroFile file(cgatsTable("D_RED D_GREEN D_BLUE D_VIS LAB_L LAB_A LAB_B", rows));
        const SimspectroEnvironment environment(file.path());
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        SPECTROSEPTYPE separation = SPECTROSEP_BLACK;
        device.recorder.on_reading = [&device, &separation] {
            separation = static_cast<SPECTROSEPTYPE>(device.recorder.count());
            if (device.recorder.count() == 9)
                device.abort();
        };
        device.readSpotDensities(&separation);
        const double expected[] = {4, 1, 2, 3, 2, 1, 1, 2, 4};
        const std::vector<PATCHDENSITY> densities = device.recorder.densities();
        QCOMPARE(densities.size(), size_t(9));
        for (size_t i = 0; i < 9; ++i) {
            QCOMPARE(densities[i].sep_type, static_cast<SPECTROSEPTYPE>(i));
            QCOMPARE(densities[i].density, expected[i]);
        }
    }

    void anotherDensityStandardIsDeclined()
    {
        const SimspectroFile file(cgatsTable("LAB_L LAB_A LAB_B", "50 0 0\n"));
        const SimspectroEnvironment environment(file.path());
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        SPECTROSEPTYPE separation = SPECTROSEP_BLACK;
        device.abortAfter(1);
        device.readSpotDensities(&separation, DENSITYSTANDARD_STATUS_T);
        QCOMPARE(device.recorder.events().first(),
                 QString("status: Instrument does not support setting density standard. Please use instrument "
                         "default"));
        QCOMPARE(device.recorder.count(), 1);
    }

    void aLinearisationWalksTheTable()
    {
        const SimspectroEnvironment environment(characterisation);
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        DENSITYLUT_CC lut;
        for (const uint32_t band : {TAVIBANDTYPE_CYAN, TAVIBANDTYPE_MAGENTA, TAVIBANDTYPE_YELLOW, TAVIBANDTYPE_BLACK})
            lut.appendSeparation(band);
        QCOMPARE(device.readLinearisation(21, lut.lut(), 1, 5), 16 + 21 + 21);
        const std::vector<PATCHDENSITY> densities = device.recorder.densities();
        QCOMPARE(densities.size(), size_t(58));
        QCOMPARE(densities.front().sep_index, 1U);
        QCOMPARE(densities.front().patch_index, 5);
        QCOMPARE(densities.front().sep_type, SPECTROSEP_MAGENTA);
        QCOMPARE(densities[16].sep_index, 2U);
        QCOMPARE(densities[16].patch_index, 0);
        QCOMPARE(densities[16].sep_type, SPECTROSEP_YELLOW);
        QCOMPARE(densities.back().sep_index, 3U);
        QCOMPARE(densities.back().patch_index, 20);
        QCOMPARE(densities.back().sep_type, SPECTROSEP_BLACK);
        for (size_t i = 1; i < densities.size(); ++i) {
            if (densities[i].sep_index == densities[i - 1].sep_index)
                QVERIFY2(densities[i].density > densities[i - 1].density, qPrintable(QString::number(i)));
        }
        const QStringList texts = device.recorder.texts("status");
        QCOMPARE(texts.size(), 59);
        QCOMPARE(texts[0], QString("Measure B6"));
        QCOMPARE(texts[16], QString("Measure C1"));
        QCOMPARE(texts[57], QString("Measure D21"));
        QCOMPARE(texts[58], QString("Measurement complete"));
    }

    void tintsBetweenThoseOfTheFileAreInterpolated()
    {
        const SimspectroFile file(
            cgatsTable("CMYK_C CMYK_M CMYK_Y CMYK_K XYZ_X XYZ_Y XYZ_Z",
                       "0 0 0 0 96.42 100 82.49\n0 0 0 100 0.9642 1 0.8249\n0 0 0 60 48.21 50 41.245\n"
                       "50 0 0 50 3 4 5\n100 0 0 0 9.642 20 41.245\n"));
        const SimspectroEnvironment environment(file.path());
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        DENSITYLUT_CC lut;
        lut.appendSeparation(TAVIBANDTYPE_BLACK);
        lut.appendSeparation(TAVIBANDTYPE_CYAN);
        QCOMPARE(device.readLinearisation(6, lut.lut()), 12);
        // Black at 0, 20 ... 100 percent: Y falls from 100 to 50 at 60, and to 1 at 100.
        const double luminance[] = {100, 250.0 / 3, 200.0 / 3, 50, 25.5, 1};
        const std::vector<PATCHDENSITY> densities = device.recorder.densities();
        for (size_t i = 0; i < 6; ++i)
            QVERIFY(std::abs(densities[i].density + std::log10(luminance[i] / 100.0)) < 1e-9);
        QVERIFY(std::abs(densities[11].density - 1.0) < 1e-9);
        QVERIFY(std::abs(densities[11].density_y + std::log10(0.5)) < 1e-9);
        QVERIFY(std::abs(densities[8].density + std::log10(0.64)) < 1e-9);
    }

    void aSeparationTheFileLacksFailsTheLinearisation_data()
    {
        QTest::addColumn<uint>("band");
        QTest::newRow("orange") << uint(TAVIBANDTYPE_ORANGE);
        QTest::newRow("light cyan") << uint(TAVIBANDTYPE_LIGHT_CYAN);
        QTest::newRow("no ramp") << uint(TAVIBANDTYPE_MAGENTA);
        QTest::newRow("channel missing") << uint(TAVIBANDTYPE_BLACK);
    }
    void aSeparationTheFileLacksFailsTheLinearisation()
    {
        QFETCH(uint, band);
        const SimspectroFile file(
            cgatsTable("CMY_C CMY_M CMY_Y LAB_L LAB_A LAB_B", "0 0 0 95 0 0\n100 0 0 55 -37 -50\n"));
        const SimspectroEnvironment environment(file.path());
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        DENSITYLUT_CC lut;
        lut.appendSeparation(TAVIBANDTYPE_CYAN);
        lut.appendSeparation(band);
        QCOMPARE(device.readLinearisation(2, lut.lut()), -1);
        QVERIFY(device.recorder.count() >= 2);
        QCOMPARE(device.recorder.events().last(), QString("status: Measurement of chart failed"));
        const QString fault = device.recorder.texts("fault").value(0);
        QVERIFY2(fault.contains(file.path()) && fault.contains("separation 2"), qPrintable(fault));
    }

    void aLinearisationWithNothingToDoReturnsAtOnce()
    {
        const SimspectroEnvironment environment(characterisation);
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        DENSITYLUT_CC lut;
        lut.appendSeparation(TAVIBANDTYPE_CYAN);
        QCOMPARE(device.readLinearisation(21, nullptr), -1);
        QCOMPARE(device.readLinearisation(21, lut.lut(), 1), 0);
        QCOMPARE(device.readLinearisation(21, lut.lut(), 0, 21), 0);
        QCOMPARE(device.recorder.count(), 0);
    }

    void linearisationChartsAreEvenlySpaced()
    {
        const SimspectroPlugin plugin;
        DENSITYLUT_CC lut;
        lut.appendSeparation(TAVIBANDTYPE_CYAN);
        double values[5] = {};
        QCOMPARE(plugin.getLinChart(lut.lut(), values, 5), 5);
        for (int i = 0; i < 5; ++i)
            QCOMPARE(values[i], 25.0 * i);
        QCOMPARE(plugin.getLinChart(lut.lut(), values, 1), 1);
        QCOMPARE(values[0], 100.0);
        QCOMPARE(plugin.getLinChart(nullptr, values, 5), 0);
        QCOMPARE(plugin.getLinChart(lut.lut(), nullptr, 5), 0);
        QCOMPARE(plugin.getLinChart(lut.lut(), values, 0), 0);
    }
};

TAVI_TEST_MAIN(TestSimspectroDensities)
#include "tst_simspectro_densities.moc"
