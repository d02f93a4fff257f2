// SPDX-License-Identifier: MIT
#include "taviapp/taviregistry.h"
#include "tests/support/tavitest.h"
#include "treeviews/headerstate_p.h"

#include <QStandardItemModel>

#include <algorithm>
#include <climits>
#include <numeric>
#include <random>

namespace {

const QByteArray one_section = QByteArray::fromHex("00000064"   // size 100
                                                   "00000002"   // visual index 2
                                                   "01"         // hidden
                                                   "00000001"   // descending
                                                   "00000003"); // section 3

/// "size@place" of each section, with "-" before a hidden one, then ":section order".
QString told(const QByteArray &bytes, int columns)
{
    const HeaderState state = HeaderState::fromBytes(bytes, columns);
    QString text;
    for (const HeaderSectionState &section : state.sections)
        text += QStringLiteral("%1%2@%3 ")
                    .arg(section.hidden ? QStringLiteral("-") : QString())
                    .arg(section.size)
                    .arg(section.visual_index);
    return text + QStringLiteral(":%1 %2").arg(state.sort_section).arg(state.sort_order);
}

} // namespace

/// The rules of header states that need no header.
class TestHeaderState : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void theFormatIsBigEndianWithOneByteForHidden()
    {
        HeaderState state;
        state.sections.append({100, 2, true});
        state.sort_order = 1;
        state.sort_section = 3;
        QCOMPARE(state.toBytes(), one_section);
        QCOMPARE(told(one_section, 1), QString("-100@2 :3 1"));
    }

    void aShortStateTellsAsMuchAsItHas_data()
    {
        QTest::addColumn<int>("bytes");
        QTest::addColumn<QString>("expected");
        QTest::newRow("all") << 17 << "-100@2 :3 1";
        QTest::newRow("half a sort section") << 15 << "-100@2 :0 1";
        QTest::newRow("no sort section") << 13 << "-100@2 :0 1";
        QTest::newRow("half a sort order") << 11 << "-100@2 :0 0";
        QTest::newRow("no sort order") << 9 << "-100@2 :0 0";
        QTest::newRow("no hidden flag") << 8 << ":0 0";
        QTest::newRow("half a place") << 6 << ":0 0";
        QTest::newRow("nothing") << 0 << ":0 0";
    }
    void aShortStateTellsAsMuchAsItHas()
    {
        QFETCH(const int, bytes);
        QFETCH(const QString, expected);
        QCOMPARE(told(one_section.left(bytes), 1), expected);
    }

    void orderOfAllSections_data()
    {
        QTest::addColumn<QVector<int>>("present");
        QTest::addColumn<QVector<int>>("wanted");
        QTest::addColumn<QVector<int>>("order");
        using V = QVector<int>;
        QTest::newRow("none") << V{} << V{} << V{};
        QTest::newRow("as it is") << V{0, 1, 2} << V{0, 1, 2} << V{0, 1, 2};
        // Where moving one section after the other in logical order goes wrong.
        QTest::newRow("four in a ring") << V{0, 1, 2, 3} << V{1, 2, 3, 0} << V{3, 0, 1, 2};
        QTest::newRow("four crossed") << V{0, 1, 2, 3} << V{2, 0, 3, 1} << V{1, 3, 0, 2};
        QTest::newRow("from another order") << V{3, 1, 0, 2} << V{2, 0, 3, 1} << V{1, 3, 0, 2};
        QTest::newRow("too few") << V{0, 1, 2, 3} << V{3} << V{1, 2, 3, 0};
        QTest::newRow("too few, from another order") << V{3, 2, 1, 0} << V{0, 2} << V{0, 3, 1, 2};
        QTest::newRow("too many") << V{0, 1} << V{1, 0, 2, 3} << V{1, 0};
        QTest::newRow("doubled") << V{0, 1, 2} << V{1, 1, 1} << V{1, 0, 2};
        QTest::newRow("negative") << V{0, 1, 2} << V{-1, 0, -7} << V{1, 0, 2};
        QTest::newRow("huge") << V{0, 1, 2} << V{INT_MAX, 0, INT_MIN} << V{1, 0, 2};
    }
    void orderOfAllSections()
    {
        QFETCH(const QVector<int>, present);
        QFETCH(const QVector<int>, wanted);
        QFETCH(const QVector<int>, order);
        QCOMPARE(orderOfSections(present, wanted), order);
    }

    void anyOrderOfAnyNumberOfSectionsComesBack()
    {
        std::mt19937 random(20240611);
        for (int count = 1; count <= 40; ++count) {
            QVector<int> present(count), order(count), wanted(count);
            std::iota(present.begin(), present.end(), 0);
            order = present;
            std::shuffle(present.begin(), present.end(), random);
            std::shuffle(order.begin(), order.end(), random);
            for (int place = 0; place < count; ++place)
                wanted[order.at(place)] = place;
            QCOMPARE(orderOfSections(present, wanted), order);
        }
    }

    void oldestSettings_data()
    {
        QTest::addColumn<QStringList>("settings"); // key, value, key, value ...
        QTest::addColumn<int>("columns");
        QTest::addColumn<QString>("state"); // as told(); empty if there is none
        const auto row = [](const char *name, const QStringList &settings, int columns, const char *state) {
            QTest::newRow(name) << settings << columns << QString::fromLatin1(state);
        };
        row("two columns", {"column_0", "1 1 100", "column_1", "0 0 50"}, 2, "100@1 -50@0 :1 0");
        row("white space of any kind", {"column_0", " \t0\n1\r\n 70  "}, 1, "70@0 :0 0");
        row("more words than three", {"column_0", "0 1 70 x"}, 1, "70@0 :0 0");
        row("any number but 0 is shown", {"column_0", "0 -3 70"}, 1, "70@0 :0 0");
        row("a negative width", {"column_0", "0 1 -70"}, 1, "-1@0 :0 0");
        row("no columns", {}, 0, ":0 0");
        row("nothing for one column", {}, 1, "");
        row("fewer keys than sections", {"column_0", "0 1 70"}, 2, "");
        row("more keys than sections", {"column_0", "0 1 70", "column_00", "0 1 70"}, 1, "");
        row("a key above the sections", {"column_0", "0 1 70", "column_1", "0 1 70"}, 1, "70@0 :0 0");
        row("a key without number", {"column_", "0 1 70"}, 1, "");
        row("a key with words", {"column_x", "0 1 70"}, 1, "");
        row("a huge key", {"column_99999999999999999999", "0 1 70"}, 1, "");
        row("a negative number in a key", {"column_-1", "0 1 70"}, 1, "70@0 :0 0");
        row("a hexadecimal number in a key", {"column_0x0", "0 1 70"}, 1, "");
        row("a position out of range", {"column_0", "1 1 70"}, 1, "");
        row("a negative position", {"column_0", "-1 1 70"}, 1, "");
        row("a huge position", {"column_0", "99999999999 1 70"}, 1, "");
        row("two numbers", {"column_0", "0 1"}, 1, "");
        row("no number", {"column_0", "left shown wide"}, 1, "");
        row("a fraction", {"column_0", "0 1 7.5"}, 1, "");
        row("empty", {"column_0", ""}, 1, "");
        row("one position for two columns", {"column_0", "0 1 70", "column_1", "0 1 80"}, 2, "70@0 80@0 :0 0");

        const QStringList three = {"column_0", "2 1 70", "column_1", "0 1 80", "column_2", "1 1 90"};
        const auto sorted = [&three](const char *value) {
            return QStringList(three) << "sorting" << value;
        };
        row("sorting tells a position", sorted("2 1"), 3, "70@2 80@0 90@1 :0 1");
        row("the first position", sorted("0 0"), 3, "70@2 80@0 90@1 :1 0");
        row("no sorting", three, 3, "70@2 80@0 90@1 :1 0");
        row("a sort column above the sections", sorted("3 1"), 3, "70@2 80@0 90@1 :1 0");
        row("a sort column that no position equals", sorted("-1 1"), 3, "70@2 80@0 90@1 :-1 1");
        row("a word for sorting", sorted("up"), 3, "70@2 80@0 90@1 :1 0");
        row("one number for sorting", sorted("2"), 3, "70@2 80@0 90@1 :1 0");
        row("a huge sort column", sorted("99999999999 1"), 3, "70@2 80@0 90@1 :1 0");
    }
    void oldestSettings()
    {
        QFETCH(const QStringList, settings);
        QFETCH(const int, columns);
        QFETCH(const QString, state);
        TaviRegistry registry;
        std::string section = "list";
        registry.putstring("list", "other", "kept");
        registry.putstring("list", "columns", "kept");
        registry.putstring("list", "Column_0", "kept");
        int keys_that_stay = 3;
        for (int at = 0; at < settings.size(); at += 2) {
            registry.putstring("list", settings.at(at).toLatin1().constData(), settings.at(at + 1).toLatin1());
            keys_that_stay += settings.at(at) == "column_" ? 1 : 0;
        }
        const QByteArray bytes = takeOldestHeaderSettings(registry, section, columns);
        if (state.isEmpty())
            QCOMPARE(bytes, QByteArray());
        else
            QCOMPARE(told(bytes, columns), state);
        // Gone all the same.
        QCOMPARE(int(registry.size("list")), keys_that_stay);
        QCOMPARE(registry.getstring("list", "other"), std::string("kept"));
    }

    void anEmptySortingTellsNothingAndStays()
    {
        TaviRegistry registry;
        std::string section = "list";
        registry.putstring("list", "column_0", "0 1 70");
        registry.putstring("list", "sorting", "");
        QCOMPARE(told(takeOldestHeaderSettings(registry, section, 1), 1), QString("70@0 :0 0"));
        QCOMPARE(registry.size("list"), size_t(1));
        QVERIFY(registry.exists("list", "sorting"));
    }

    // A walk over the store comes to column_10 before column_2.
    void theColumnsCountInTheOrderOfTheWalk()
    {
        TaviRegistry registry;
        std::string section = "list";
        for (int column = 0; column < 11; ++column) {
            registry.putstring("list", QByteArray("column_").append(QByteArray::number(column)).constData(),
                               QByteArray::number(column).append(" 1 ").append(QByteArray::number(100 + column)));
        }
        QCOMPARE(told(takeOldestHeaderSettings(registry, section, 11), 11),
                 QString("100@0 101@1 110@10 102@2 103@3 104@4 105@5 106@6 107@7 108@8 109@9 :0 0"));
    }

    void theLeastSizeOfTheStyleIsLiftedAndComesBack()
    {
        QHeaderView header(Qt::Horizontal);
        int lowered = -1;
        const int style = header.minimumSectionSize();
        QVERIFY(style > 0);
        {
            const SectionMinimumLifted lifted(&header, &lowered);
            QCOMPARE(header.minimumSectionSize(), 0);
        }
        QCOMPARE(header.minimumSectionSize(), style);
        QCOMPARE(lowered, -1);
    }

    void theLeastSizeStaysAsLowAsTheSmallestSectionNeeds_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("minimum");
        QTest::newRow("narrow") << 11 << 11;
        QTest::newRow("nothing below six") << 2 << 6;
        QTest::newRow("none") << 0 << 6;
    }
    void theLeastSizeStaysAsLowAsTheSmallestSectionNeeds()
    {
        QFETCH(const int, size);
        QFETCH(const int, minimum);
        QStandardItemModel model(1, 3);
        QHeaderView header(Qt::Horizontal);
        header.setModel(&model);
        const int style = header.minimumSectionSize();
        int lowered = -1;
        {
            const SectionMinimumLifted lifted(&header, &lowered);
            header.resizeSection(1, size);
            QCOMPARE(header.sectionSize(1), size);
        }
        QCOMPARE(lowered, minimum);
        QCOMPARE(header.minimumSectionSize(), minimum);
        QCOMPARE(header.sectionSize(1), minimum);
        {
            const SectionMinimumLifted lifted(&header, &lowered);
            header.resizeSection(1, 100);
        }
        QCOMPARE(lowered, -1);
        QCOMPARE(header.minimumSectionSize(), style);
    }

    void aLeastSizeSetOnPurposeStays()
    {
        QHeaderView header(Qt::Horizontal);
        header.setMinimumSectionSize(77);
        int lowered = -1;
        {
            const SectionMinimumLifted lifted(&header, &lowered);
            QCOMPARE(header.minimumSectionSize(), 77);
        }
        QCOMPARE(header.minimumSectionSize(), 77);
    }
};

TAVI_GUI_TEST_MAIN(TestHeaderState)
#include "tst_headerstate.moc"
