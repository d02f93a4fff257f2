// SPDX-License-Identifier: MIT
#include "tavilib/calc.h"
#include "tavilib/tavilist.h"
#include "tests/support/tavitest.h"

#include <climits>
#include <vector>

namespace {

/// A chart of @a count patches.
class Chart
{
public:
    explicit Chart(size_t count) : patches_(count)
    {
        for (size_t i = 0; i + 1 < count; ++i)
            patches_[i].header.next = &patches_[i + 1];
    }
    const TAVICOMBOCOLOUR *head() const { return patches_.empty() ? nullptr : patches_.data(); }

private:
    std::vector<TAVICOMBOCOLOUR> patches_;
};

} // namespace

class TestCalc : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void eachBandHasItsSeparation_data()
    {
        QTest::addColumn<uint>("band");
        QTest::addColumn<int>("separation");
        QTest::newRow("cyan") << uint(TAVIBANDTYPE_CYAN) << int(SPECTROSEP_CYAN);
        QTest::newRow("magenta") << uint(TAVIBANDTYPE_MAGENTA) << int(SPECTROSEP_MAGENTA);
        QTest::newRow("yellow") << uint(TAVIBANDTYPE_YELLOW) << int(SPECTROSEP_YELLOW);
        QTest::newRow("black") << uint(TAVIBANDTYPE_BLACK) << int(SPECTROSEP_BLACK);
        QTest::newRow("light cyan") << uint(TAVIBANDTYPE_LIGHT_CYAN) << int(SPECTROSEP_LIGHT_CYAN);
        QTest::newRow("light magenta") << uint(TAVIBANDTYPE_LIGHT_MAGENTA) << int(SPECTROSEP_LIGHT_MAGENTA);
        QTest::newRow("light black") << uint(TAVIBANDTYPE_LIGHT_BLACK) << int(SPECTROSEP_BLACK);
        QTest::newRow("orange") << uint(TAVIBANDTYPE_ORANGE) << int(SPECTROSEP_ORANGE);
        QTest::newRow("green") << uint(TAVIBANDTYPE_GREEN) << int(SPECTROSEP_GREEN);
        QTest::newRow("spot") << uint(TAVIBANDTYPE_SPOT) << int(SPECTROSEP_NONE);
        QTest::newRow("unknown") << 10U << int(SPECTROSEP_NONE);
        QTest::newRow("far out") << UINT_MAX << int(SPECTROSEP_NONE);
    }
    void eachBandHasItsSeparation()
    {
        QFETCH(uint, band);
        QFETCH(int, separation);
        QCOMPARE(int(TaviBandTypeToSpectroSepType(band)), separation);
    }

    void tintsAreEvenlySpacedFromPaperToSolid_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<QVector<double>>("tints");
        QTest::newRow("1") << 1 << QVector<double>{100};
        QTest::newRow("2") << 2 << QVector<double>{0, 100};
        QTest::newRow("5") << 5 << QVector<double>{0, 25, 50, 75, 100};
        QTest::newRow("11") << 11 << QVector<double>{0, 10, 20, 30, 40, 50, 60, 70, 80, 90, 100};
    }
    void tintsAreEvenlySpacedFromPaperToSolid()
    {
        QFETCH(int, count);
        QFETCH(QVector<double>, tints);
        DENSITYLUTBAND band = {};
        const DENSITYLUT lut = {{}, 1, &band};
        QVector<double> values(count + 1, -7);
        QCOMPARE(GenerateHandheldLinearisationChart(&lut, values.data(), ulong(count)), count);
        QCOMPARE(values.takeLast(), -7.0);
        QCOMPARE(values, tints);
    }

    void withoutATableThereAreNoTints()
    {
        DENSITYLUTBAND band = {};
        const DENSITYLUT lut = {{}, 1, &band};
        const DENSITYLUT empty = {};
        double value = -7;
        QCOMPARE(GenerateHandheldLinearisationChart(nullptr, &value, 1), 0);
        QCOMPARE(GenerateHandheldLinearisationChart(&empty, &value, 1), 0);
        QCOMPARE(GenerateHandheldLinearisationChart(&lut, nullptr, 1), 0);
        QCOMPARE(GenerateHandheldLinearisationChart(&lut, &value, 0), 0);
        QCOMPARE(value, -7.0);
    }

    void aChartHasSoManyPatchesToALine_data()
    {
        QTest::addColumn<int>("patches");
        QTest::addColumn<ulong>("wish");
        QTest::addColumn<int>("line");
        const auto row = [](int patches, ulong wish, int line) {
            QTest::addRow("%d patches, %lu wished", patches, wish) << patches << wish << line;
        };
        row(0, 0, 0);
        row(0, 5, 0);
        row(1, 0, 1);
        row(2, 0, 2);
        row(4, 0, 2);
        row(5, 0, 3);
        row(9, 0, 3);
        row(10, 0, 4);
        row(1617, 0, 41);
        row(72, 1, 1);
        row(72, 24, 24);
        row(72, 72, 72);
        row(72, 73, 72);
        row(72, ULONG_MAX, 72);
    }
    void aChartHasSoManyPatchesToALine()
    {
        QFETCH(int, patches);
        QFETCH(ulong, wish);
        QFETCH(int, line);
        const Chart chart{size_t(patches)};
        QCOMPARE(GenerateHandheldComboColourChart(chart.head(), wish), line);
    }
};

TAVI_TEST_MAIN(TestCalc)
#include "tst_calc.moc"
