// SPDX-License-Identifier: MIT
//
// What comes to a sorted list, or changes there, finds its place without the others being sorted anew.
#include "tests/qt3/listfixture.h"
#include "tests/support/tavitest.h"

#include <algorithm>
#include <random>

namespace {

/// Compares the number in column 1, and counts how often.
class Number : public Q3ListViewItem
{
public:
    template <typename Parent>
    Number(Parent *parent, Q3ListViewItem *after, int number)
        : Q3ListViewItem(parent, after, QStringLiteral("n"), QString::number(number))
    {}
    int compare(Q3ListViewItem *i, int col, bool) const override
    {
        ++compared;
        return text(col).toInt() - i->text(col).toInt();
    }
    void sortChildItems(int column, bool ascending) override
    {
        ++sorted;
        Q3ListViewItem::sortChildItems(column, ascending);
    }
    void paintCell(QPainter *p, const QColorGroup &cg, int column, int width, int align) override
    {
        if (column == 1)
            painted += text(1) + QLatin1Char(' ');
        Q3ListViewItem::paintCell(p, cg, column, width, align);
    }
    static inline QString painted;
    static inline int compared = 0;
    static inline int sorted = 0;
};

/// A list that is sorted by number, of even numbers.
struct SortedList : ListFixture {
    explicit SortedList(int rows) : ListFixture(0)
    {
        for (int row = 0; row < rows; ++row)
            new Number(this, nullptr, row * 7919 % rows * 2);
        setSorting(1);
        firstChild();
        Number::compared = 0;
    }
};

std::vector<Q3ListViewItem *> childrenOf(Q3ListView &list)
{
    std::vector<Q3ListViewItem *> items;
    for (Q3ListViewItem *item = list.firstChild(); item; item = item->nextSibling())
        items.push_back(item);
    return items;
}

} // namespace

class TestQ3ListViewPlacing : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void anInsertionAsksFewOthers_data()
    {
        QTest::addColumn<bool>("shown");
        QTest::newRow("shown") << true;
        QTest::newRow("not yet") << false;
    }

    void anInsertionAsksFewOthers()
    {
        QFETCH(bool, shown);
        SortedList list(1000);
        if (shown)
            QVERIFY(list.showAndWait());
        Number::compared = 0;
        for (int i = 0; i < 100; ++i) {
            auto *item = new Number(&list, nullptr, i * 20 + 1);
            QCOMPARE(list.firstChild()->text(1), QStringLiteral("0"));
            QCOMPARE(item->nextSibling()->text(1).toInt(), i * 20 + 2);
            if (shown) {
                const int y = item->itemPos();
                QCOMPARE(y, item->height() * (i * 11 + 1));
            }
        }
        QVERIFY2(Number::compared < 100 * 50, qPrintable(QString::number(Number::compared)));
    }

    void aChangedTextAsksFewOthers()
    {
        SortedList list(1000);
        Q3ListViewItem *item = list.firstChild();
        item->setText(1, QStringLiteral("999"));
        QCOMPARE(list.firstChild()->text(1), QStringLiteral("2"));
        QCOMPARE(item->nextSibling()->text(1), QStringLiteral("1000"));
        QVERIFY2(Number::compared < 50, qPrintable(QString::number(Number::compared)));
    }

    void manyAreSortedAllAtOnce()
    {
        SortedList list(1000);
        for (int i = 0; i < 5000; ++i)
            new Number(&list, nullptr, i * 7919 % 5000);
        const std::vector<Q3ListViewItem *> items = childrenOf(list);
        QCOMPARE(items.size(), size_t(6000));
        QVERIFY(std::is_sorted(items.begin(), items.end(),
                               [](const auto *a, const auto *b) { return a->text(1).toInt() < b->text(1).toInt(); }));
    }

    void anotherOrderIsAnotherSorting()
    {
        SortedList list(10);
        new Number(&list, nullptr, 5);
        list.setSorting(1, false);
        QCOMPARE(list.rows(1), QStringLiteral("18 16 14 12 10 8 6 5 4 2 0"));
        new Number(&list, nullptr, 7);
        list.setSorting(-1);
        QCOMPARE(list.rows(1), QStringLiteral("7 18 16 14 12 10 8 6 5 4 2 0"));
        list.setSorting(1, false);
        QCOMPARE(list.rows(1), QStringLiteral("18 16 14 12 10 8 7 6 5 4 2 0"));
    }

    void whatGoesBeforeItIsPlacedIsForgotten()
    {
        SortedList list(10);
        auto *gone = new Number(&list, nullptr, 5);
        auto *taken = new Number(&list, nullptr, 7);
        delete gone;
        list.takeItem(taken);
        QCOMPARE(list.rows(1), QStringLiteral("0 2 4 6 8 10 12 14 16 18"));
        list.insertItem(taken);
        QCOMPARE(list.rows(1), QStringLiteral("0 2 4 6 7 8 10 12 14 16 18"));
        list.setSelectionMode(Q3ListView::Multi); // in Single mode, clearing asks for the selected item
        new Number(&list, nullptr, 5);
        list.clear();
        new Number(&list, nullptr, 2);
        new Number(&list, nullptr, 1);
        QCOMPARE(list.rows(1), QStringLiteral("1 2"));
    }

    void derivedItemsSortTheirChildren()
    {
        SortedList list(1);
        Q3ListViewItem *parent = list.firstChild();
        parent->setOpen(true);
        new Number(parent, nullptr, 2);
        new Number(parent, nullptr, 1);
        Number::sorted = 0;
        QCOMPARE(list.rows(1), QStringLiteral("0 1 2"));
        QCOMPARE(Number::sorted, 1);
        new Number(parent, nullptr, 3);
        QCOMPARE(list.rows(1), QStringLiteral("0 1 2 3"));
        QCOMPARE(Number::sorted, 2);
        QCOMPARE(list.rows(1), QStringLiteral("0 1 2 3"));
        QCOMPARE(Number::sorted, 2);
    }

    void askedToSortChildrenTheyAllAreSorted()
    {
        SortedList list(1);
        Q3ListViewItem *parent = list.firstChild();
        parent->setOpen(true);
        for (int i = 0; i < 5; ++i)
            new Number(parent, nullptr, i);
        QCOMPARE(list.rows(1), QStringLiteral("0 0 1 2 3 4"));
        Number::compared = 0;
        parent->sortChildItems(1, true);
        QVERIFY(Number::compared >= 4);
        new Number(parent, nullptr, 2);
        parent->sortChildItems(1, false);
        QCOMPARE(parent->firstChild()->text(1), QStringLiteral("4"));
        QCOMPARE(list.rows(1), QStringLiteral("0 0 1 2 2 3 4"));
    }

    void rowsMoveOnTheScreen()
    {
        SortedList list(5);
        QVERIFY(list.showAndWait());
        QCoreApplication::processEvents();
        Number::painted.clear();
        list.firstChild()->setText(1, QStringLiteral("7"));
        QTRY_VERIFY(!Number::painted.isEmpty());
        QCOMPARE(list.rows(1), QStringLiteral("2 4 6 7 8"));
        QVERIFY2(Number::painted.startsWith(QStringLiteral("2 4 6 7")), qPrintable(Number::painted));
    }

    /// The same as if all were sorted, whatever happened between two questions.
    void asIfAllWereSorted_data()
    {
        QTest::addColumn<bool>("ascending");
        QTest::addColumn<int>("steps");
        for (const bool ascending : {true, false}) {
            for (const int steps : {1, 2, 5, 40})
                QTest::addRow("%s, %d at once", ascending ? "up" : "down", steps) << ascending << steps;
        }
    }

    void asIfAllWereSorted()
    {
        QFETCH(bool, ascending);
        QFETCH(int, steps);
        ListFixture list(0);
        list.setSorting(1, ascending);
        std::vector<Q3ListViewItem *> model;
        std::mt19937 random(static_cast<unsigned>(steps * 2 + ascending));
        const auto upTo = [&random](size_t count) {
            return static_cast<size_t>(random() % count);
        };
        constexpr int kinds = 6; // few, so that many are equal
        for (int round = 0; round < 400; ++round) {
            for (int step = 0; step < steps; ++step) {
                const size_t place = model.empty() ? 0 : upTo(model.size());
                const auto at = model.begin() + static_cast<std::ptrdiff_t>(place);
                const size_t what = model.empty() ? 0 : upTo(model.size() > 200 ? 7 : 5);
                if (what == 0) {
                    model.insert(model.begin(), new Number(&list, nullptr, static_cast<int>(upTo(kinds))));
                } else if (what <= 2) {
                    auto *item = new Number(&list, *at, static_cast<int>(upTo(kinds)));
                    model.insert(at + 1, item);
                } else if (what == 3) {
                    (*at)->setText(1, QString::number(upTo(kinds)));
                } else if (what == 4) {
                    (*at)->setVisible(!(*at)->isVisible());
                } else {
                    delete *at;
                    model.erase(at);
                }
            }
            std::stable_sort(model.begin(), model.end(), [ascending](const auto *a, const auto *b) {
                const int order = a->text(1).toInt() - b->text(1).toInt();
                return ascending ? order < 0 : order > 0;
            });
            QVERIFY(childrenOf(list) == model);
            int y = 0;
            for (Q3ListViewItem *item : model) {
                if (round % 3 == 0) // or it has not been asked
                    QCOMPARE(item->itemPos(), y);
                y += item->totalHeight();
            }
        }
    }
};

TAVI_GUI_TEST_MAIN(TestQ3ListViewPlacing)
#include "tst_q3listview_placing.moc"
