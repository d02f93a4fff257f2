// SPDX-License-Identifier: MIT
#include "taviapp/tavicombocolour_cc.h"
#include "tests/support/allocfailure.h"
#include "tests/support/tavitest.h"

#include <QProcess>
#include <QTemporaryDir>

#include <clocale>
#include <limits>

// That nothing is leaked or freed twice is seen by the address sanitizer.

namespace {

QStringList namesOf(const TAVICOMBOCOLOUR *head)
{
    QStringList names;
    for (; head; head = NextInList(head))
        names.append(QString::fromUtf8(head->name));
    return names;
}

/// Patches named "1.00, 0.00, 0.00" and so on.
void fill(TAVICOMBOCOLOUR_CC &list, int count)
{
    for (int i = 1; i <= count; ++i)
        list.insertCombo(TAVICOMBOCOLOUR_CC::newMeasuredPatch(i, 0, 0));
}

} // namespace

class TestTaviComboColour : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aNewListIsEmpty()
    {
        TAVICOMBOCOLOUR_CC list;
        QVERIFY(!list.head());
        QCOMPARE(list.count(), size_t(0));
        QVERIFY(!list.take());
        list.insertCombo(nullptr);
        QCOMPARE(list.count(), size_t(0));
    }

    void insertComboAppends()
    {
        TAVICOMBOCOLOUR_CC list;
        fill(list, 3);
        QCOMPARE(list.count(), size_t(3));
        QCOMPARE(namesOf(list.head()), (QStringList{"1.00, 0.00, 0.00", "2.00, 0.00, 0.00", "3.00, 0.00, 0.00"}));
    }

    void aListIsTakenOverAndHandedOn()
    {
        TAVICOMBOCOLOUR_CC list;
        fill(list, 3);
        TAVICOMBOCOLOUR_CC other(list.take());
        QVERIFY(!list.head());
        QCOMPARE(list.count(), size_t(0));
        QCOMPARE(other.count(), size_t(3));
        fill(other, 1);
        QCOMPARE(namesOf(other.head()).last(), QString("1.00, 0.00, 0.00"));
        fill(list, 1);
        QCOMPARE(list.count(), size_t(1));
    }

    void copiesAreDeep()
    {
        TAVICOMBOCOLOUR_CC list;
        fill(list, 3);
        const TAVICOMBOCOLOUR_CC copy(list);
        TAVICOMBOCOLOUR_CC assigned;
        fill(assigned, 5);
        assigned = list;
        list.head()->name[0] = '9';
        fill(list, 1);
        for (const TAVICOMBOCOLOUR_CC *other : {&copy, static_cast<const TAVICOMBOCOLOUR_CC *>(&assigned)}) {
            QCOMPARE(other->count(), size_t(3));
            QCOMPARE(namesOf(other->head()),
                     (QStringList{"1.00, 0.00, 0.00", "2.00, 0.00, 0.00", "3.00, 0.00, 0.00"}));
        }
        QVERIFY(copy.head() != assigned.head());
        const TAVICOMBOCOLOUR_CC &same = assigned;
        assigned = same;
        QCOMPARE(assigned.count(), size_t(3));
        assigned = TAVICOMBOCOLOUR_CC();
        QVERIFY(!assigned.head());
    }

    void aMeasuredPatchIsBuiltTheDocumentedWay_data()
    {
        QTest::addColumn<double>("L");
        QTest::addColumn<double>("a");
        QTest::addColumn<double>("b");
        QTest::addColumn<QString>("name");
        QTest::newRow("plain") << 50.0 << 1.0 << -1.0 << QString("50.00, 1.00, -1.00");
        QTest::newRow("rounded") << 54.996 << -37.004 << -49.505001 << QString("55.00, -37.00, -49.51");
        QTest::newRow("negative zero") << 0.0 << -0.001 << 0.0 << QString("0.00, -0.00, 0.00");
        QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << 0.0 << 0.0
                                   << QString("nan, 0.00, 0.00");
        const double infinity = std::numeric_limits<double>::infinity();
        QTest::newRow("infinite") << infinity << -infinity << 0.0 << QString("inf, -inf, 0.00");
    }
    void aMeasuredPatchIsBuiltTheDocumentedWay()
    {
        QFETCH(double, L);
        QFETCH(double, a);
        QFETCH(double, b);
        QFETCH(QString, name);
        TAVICOMBOCOLOUR *patch = TAVICOMBOCOLOUR_CC::newMeasuredPatch(L, a, b);
        const TAVICOMBOCOLOUR_CC owner(patch);
        QVERIFY(patch);
        QCOMPARE(QString::fromUtf8(patch->name), name);
        QCOMPARE(patch->L, L);
        QCOMPARE(patch->a, a);
        QCOMPARE(patch->b, b);
        QCOMPARE(patch->flags, uint32_t(COMBOCOLOUR_FLAG_LAB));
        QCOMPARE(patch->percent, 100);
        QCOMPARE(patch->rgb, 0U);
        QCOMPARE(patch->tolerances, 0U);
        QCOMPARE(patch->device_count, 0U);
        QVERIFY(!patch->header.next);
    }

    /// With a window on the screen the C library writes numbers as the user's country does.
    void theLocaleDoesNotMatter()
    {
        QTemporaryDir locales;
        QProcess tool;
        tool.start("localedef", {"-i", "de_DE", "-f", "UTF-8", locales.filePath("de_DE.UTF-8")});
        QVERIFY(tool.waitForFinished());
        qputenv("LOCPATH", locales.path().toUtf8());
        const QByteArray former = std::setlocale(LC_NUMERIC, nullptr);
        QVERIFY2(std::setlocale(LC_NUMERIC, "de_DE.UTF-8"), "package locales is missing");
        const QByteArray comma = std::localeconv()->decimal_point;
        const TAVICOMBOCOLOUR_CC patch(TAVICOMBOCOLOUR_CC::newMeasuredPatch(95.3, 0.5, -1234.25));
        std::setlocale(LC_NUMERIC, former.constData());
        qunsetenv("LOCPATH");
        QCOMPARE(comma, QByteArray(","));
        QCOMPARE(namesOf(patch.head()), QStringList("95.30, 0.50, -1234.25"));
    }

    void absurdValuesHaveLongNames()
    {
        TAVICOMBOCOLOUR *patch = TAVICOMBOCOLOUR_CC::newMeasuredPatch(1e308, -1e308, 1e308);
        const TAVICOMBOCOLOUR_CC owner(patch);
        QVERIFY(QByteArray(patch->name).size() > 900);
        QVERIFY(QByteArray(patch->name).endsWith(".00"));
    }

    void movingLeavesTheSourceEmpty()
    {
        TAVICOMBOCOLOUR_CC list;
        fill(list, 3);
        const TAVICOMBOCOLOUR *head = list.head();
        TAVICOMBOCOLOUR_CC moved(std::move(list));
        QCOMPARE(moved.head(), head);
        QCOMPARE(moved.count(), size_t(3));

        TAVICOMBOCOLOUR_CC other;
        fill(other, 2); // freed by the assignment
        other = std::move(moved);
        QCOMPARE(other.head(), head);
        QCOMPARE(other.count(), size_t(3));
        TAVICOMBOCOLOUR_CC &same = other;
        other = std::move(same);
        QCOMPARE(other.count(), size_t(3));
    }

    void withoutMemoryThereIsNoPatch()
    {
        for (int number = 1; number <= 2; ++number) {
            AllocFailure failure(number);
            QVERIFY(!TAVICOMBOCOLOUR_CC::newMeasuredPatch(1, 2, 3));
            QVERIFY(failure.happened());
        }
    }

    void withoutMemoryACopyIsEmpty()
    {
        TAVICOMBOCOLOUR_CC list;
        fill(list, 3);
        AllocFailure failure(4);
        const TAVICOMBOCOLOUR_CC copy(list);
        QVERIFY(!copy.head());
        QCOMPARE(copy.count(), size_t(0));
        QVERIFY(failure.happened());
    }
};

TAVI_TEST_MAIN(TestTaviComboColour)
#include "tst_tavicombocolour_cc.moc"
