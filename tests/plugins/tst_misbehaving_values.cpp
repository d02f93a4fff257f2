// SPDX-License-Identifier: MIT
#include "tavilib/tavilist.h"
#include "tests/plugins/misbehavingfixture.h"

#include <cmath>
#include <limits>

namespace {

constexpr double no_number = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double largest = std::numeric_limits<double>::max();

const QString lab_fault = "OrloInstrument: processLabFromInstrument: The instrument sent a colour that is no number";
const QString density_fault =
    "OrloInstrument: processDensityFromInstrument: The instrument sent a density that is no number";
const QString negative_fault =
    "OrloInstrument: processDensityFromInstrument: Some of the density values read were negative.";

/// Equal, where one that is no number equals another.
bool same(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

} // namespace

/// Instruments that send what no instrument measures. Nothing is made up in its place and nothing left out, because a
/// chart would be one patch short; the user sees it, and the log says so.
class TestMisbehavingValues : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aColourComesAsItWasSent_data()
    {
        QTest::addColumn<double>("L");
        QTest::addColumn<double>("a");
        QTest::addColumn<double>("b");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("named");
        QTest::addColumn<bool>("fault");
        const auto row = [](const char *name, double L, double a, double b, const QString &shown,
                            const QString &named, bool fault) {
            QTest::newRow(name) << L << a << b << shown << named << fault;
        };
        row("no numbers", no_number, no_number, no_number, "L:nan, a:nan, b:nan", "nan, nan, nan", true);
        row("no b", 50, 1, no_number, "L:50.000, a:1.000, b:nan", "50.00, 1.00, nan", true);
        row("infinite", infinity, -infinity, infinity, "L:inf, a:-inf, b:inf", "inf, -inf, inf", true);
        row("out of all bounds", 1000, -1e6, 1e6, "L:1000.000, a:-1000000.000, b:1000000.000",
            "1000.00, -1000000.00, 1000000.00", false);
        const QString digits = QString::asprintf("%.0f", largest);
        row("largest", largest, -largest, 0, "L:" + digits + ".000, a:-" + digits + ".000, b:0.000",
            digits + ".00, -" + digits + ".00, 0.00", false);
        row("smallest", 5e-324, -5e-324, 0, "L:0.000, a:-0.000, b:0.000", "0.00, -0.00, 0.00", false);
        row("negative zero", -0.0, -0.0, -0.0, "L:0.000, a:0.000, b:0.000", "-0.00, -0.00, -0.00", false);
        // Below zero is the end of a series where one is gathered.
        row("negative", -0.5, 3, 4, "L:-0.500, a:3.000, b:4.000", QString(), false);
        row("negative infinite", -infinity, 0, 0, "L:-inf, a:0.000, b:0.000", QString(), true);
    }

    void aColourComesAsItWasSent()
    {
        QFETCH(double, L);
        QFETCH(double, a);
        QFETCH(double, b);
        QFETCH(QString, shown);
        QFETCH(QString, named);
        QFETCH(bool, fault);
        MisbehavingFixture f;
        f.addBad();
        const auto measure = [&](const ScriptedPlugin::Read &read) {
            read.sendLab(70, 0, 0);
            read.sendLab(L, a, b);
            read.sendLab(80, 0, 0);
            read.say(0, nullptr, "Measurement complete");
            return 0;
        };
        f.bad->on_spot_lab = measure;
        f.bad->on_chart = [&](const ScriptedPlugin::Read &read, TAVICOMBOCOLOUR *, unsigned long, unsigned long) {
            return measure(read);
        };
        QStringList texts;
        connect(f.messageLine(), &QLineEdit::textChanged, this, [&](const QString &text) { texts.append(text); });
        f.chooseBad();
        if (fault)
            expectLog(lab_fault, 3);

        // As single colours.
        f.press();
        QTRY_COMPARE(f.messageLine()->text(), QString("Measurement complete"));
        QCOMPARE(texts.value(1), shown);
        const QVariantList emitted = f.spots->at(f.spots->count() - 2);
        QVERIFY(same(emitted[0].toDouble(), L) && same(emitted[1].toDouble(), a) && same(emitted[2].toDouble(), b));
        QCOMPARE(f.lightnessOfNewSpots().size(), size_t(3));
        f.press();

        // As a series: one that ends in the middle is flushed in two.
        f.buddy->fireAllLab();
        f.press();
        f.buddy->setBufferAllMeasurements(true);
        QTRY_COMPARE(f.messageLine()->text(), QString("Measurement complete"));
        f.press();
        QStringList all;
        for (size_t i = 1; i < f.series.size(); ++i)
            all += f.names(f.series[i]);
        QStringList expected = {"70.00, 0.00, 0.00", named, "80.00, 0.00, 0.00"};
        expected.removeAll(QString());
        QCOMPARE(all, expected);
        QCOMPARE(f.series.size(), size_t(named.isNull() ? 3 : 2));

        // As a line of a chart, in which every value counts.
        TAVICOMBOCOLOUR_CC chart(TAVICOMBOCOLOUR_CC::newMeasuredPatch(1, 2, 3));
        f.buddy->setMode(SpectroBuddy::CHART_MODE);
        f.buddy->setBufferLineMeasurements(true);
        f.buddy->setComboChart(chart.head(), 3, 0, 0);
        f.chooseBad();
        f.press();
        QTRY_COMPARE(f.lines.size(), size_t(1));
        const QString in_line = named.isNull() ? QString::asprintf("%.2f, %.2f, %.2f", L, a, b) : named;
        QCOMPARE(f.names(f.lines[0]), (QStringList{"70.00, 0.00, 0.00", in_line, "80.00, 0.00, 0.00"}));
        f.press();

        f.buddy->setBufferLineMeasurements(false);
        QCOMPARE(f.names(f.series[0]), (QStringList{"30.00, 3.00, 3.00", "40.00, 4.00, 4.00"}));
        QVERIFY(f.goodInstrumentMeasures());
    }

    void aDensityComesAsItWasSentUnlessItIsNegative_data()
    {
        QTest::addColumn<double>("sent");
        QTest::addColumn<double>("received");
        QTest::addColumn<QString>("log"); // empty: nothing
        QTest::newRow("no number") << no_number << no_number << density_fault;
        QTest::newRow("infinite") << infinity << infinity << density_fault;
        QTest::newRow("negative infinite") << -infinity << 0.001 << negative_fault;
        QTest::newRow("negative") << -0.5 << 0.001 << negative_fault;
        QTest::newRow("smallest negative") << -5e-324 << 0.001 << negative_fault;
        QTest::newRow("negative zero") << -0.0 << -0.0 << QString();
        QTest::newRow("largest") << largest << largest << QString();
    }

    /// Of the driver: its control group is another one.
    void aDensityComesAsItWasSentUnlessItIsNegative()
    {
        QFETCH(double, sent);
        QFETCH(double, received);
        QFETCH(QString, log);
        MisbehavingFixture f;
        f.addBad()->flags = 0x0733;
        f.bad->on_spot_densities = [&](const ScriptedPlugin::Read &read, DENSITYSTANDARD, SPECTROSEPTYPE *) {
            PATCHDENSITY patches[3] = {};
            patches[0].header.next = &patches[1];
            patches[1].header.next = &patches[2];
            patches[1].density_c = sent;
            patches[2].density = 1.5;
            read.density(read.context, patches);
            return 0;
        };
        if (!log.isEmpty())
            expectLog(log);
        std::vector<PATCHDENSITY> came;
        ReadersFolder::forgetInstruments();
        OrloInstrument instrument;
        SPECTROSEPTYPE separation = SPECTROSEP_CYAN;
        QCOMPARE(instrument.open("Bad", true), 0);
        const auto take = [](void *context, PATCHDENSITY *patches) {
            for (; patches; patches = NextInList(patches))
                static_cast<std::vector<PATCHDENSITY> *>(context)->push_back(*patches);
            return 0;
        };
        QCOMPARE(instrument.readSpotDensity(&separation, take, &came), 0);
        QTRY_COMPARE(came.size(), size_t(3));
        QVERIFY2(same(came[1].density_c, received), QByteArray::number(came[1].density_c).constData());
        QCOMPARE(came[1].density, 0.0);
        QCOMPARE(came[2].density, 1.5);
        QVERIFY(f.allIsAsBefore());
    }
};

TAVI_GUI_TEST_MAIN(TestMisbehavingValues)
#include "tst_misbehaving_values.moc"
