// SPDX-License-Identifier: MIT
#include "tests/qt3/listfixture.h"
#include "tests/support/tavitest.h"

namespace {

/// Compares the number in column 1.
class Number : public Q3ListViewItem
{
public:
    using Q3ListViewItem::Q3ListViewItem;
    int compare(Q3ListViewItem *i, int col, bool ascending) const override
    {
        ++compared;
        if (col != 1)
            return Q3ListViewItem::compare(i, col, ascending);
        return text(1).toInt() - i->text(1).toInt();
    }
    static inline int compared = 0;
};

void fill(ListFixture &list)
{
    for (const char *number : {"10", "9", "100", "9"})
        new Number(&list, list.lastItem(), QString::fromLatin1("n%1").arg(list.childCount()),
                   QString::fromLatin1(number));
}

} // namespace

class TestQ3ListViewSorting : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void byTheFirstColumnAtFirst()
    {
        Q3ListView list;
        QCOMPARE(list.sortColumn(), 0);
        QCOMPARE(list.sortOrder(), Qt::AscendingOrder);
        list.addColumn(QString());
        new Q3ListViewItem(&list, QStringLiteral("a"));
        new Q3ListViewItem(&list, QStringLiteral("b"));
        new Q3ListViewItem(&list, QStringLiteral("aa"));
        QCOMPARE(list.firstChild()->text(0), QStringLiteral("a"));
        QCOMPARE(list.firstChild()->itemBelow()->text(0), QStringLiteral("aa"));
        QCOMPARE(list.lastItem()->text(0), QStringLiteral("b"));
    }

    void byCompareAndStable()
    {
        ListFixture list(0);
        fill(list);
        list.setSorting(1);
        QCOMPARE(list.rows(), QStringLiteral("n1 n3 n0 n2"));
        list.setSorting(1, false);
        QCOMPARE(list.rows(), QStringLiteral("n2 n0 n1 n3"));
        list.setSortOrder(Qt::AscendingOrder);
        QCOMPARE(list.rows(), QStringLiteral("n1 n3 n0 n2"));
        list.setSortColumn(0);
        QCOMPARE(list.rows(), QStringLiteral("n0 n1 n2 n3"));
    }

    void positionsFollowTheOrder()
    {
        ListFixture list(200);
        QVERIFY(list.itemPos(list.at(199)) > 0);
        list.setSorting(1, false);
        QCOMPARE(list.at(99)->itemPos(), 0);
        QCOMPARE(list.firstChild(), list.at(99));
        auto *late = new Q3ListViewItem(&list, QStringLiteral("late"), QStringLiteral("991"));
        QCOMPARE(late->itemPos(), 0);
        QCOMPARE(list.at(99)->itemPos(), late->height());
    }

    void childrenAreSortedWhenTheyAreShown()
    {
        ListFixture list(1);
        Number::compared = 0;
        auto *a = new Number(list.at(0), QStringLiteral("x"), QStringLiteral("2"));
        auto *b = new Number(list.at(0), QStringLiteral("y"), QStringLiteral("1"));
        list.setSorting(1);
        list.firstChild();
        QCOMPARE(Number::compared, 0);
        list.setOpen(list.at(0), true);
        QCOMPARE(list.at(0)->itemBelow(), b);
        QCOMPARE(b->itemBelow(), a);
        QVERIFY(Number::compared > 0);
        list.setSorting(-1);
        a->moveItem(b);
        new Number(list.at(0), QStringLiteral("z"), QStringLiteral("9"));
        list.at(0)->sortChildItems(1, false);
        QCOMPARE(list.at(0)->firstChild()->text(0), QStringLiteral("z"));
    }

    void aChangedTextComesToItsPlace()
    {
        ListFixture list(5);
        list.setSorting(0);
        list.at(0)->setText(0, QStringLiteral("row 9"));
        QCOMPARE(list.rows(1), QStringLiteral("1 2 3 4 0"));
        list.at(1)->setText(1, QStringLiteral("z"));
        QCOMPARE(list.firstChild(), list.at(1));
    }

    void sortAsksAgain()
    {
        struct Changing : Q3ListViewItem {
            using Q3ListViewItem::Q3ListViewItem;
            QString text(int) const override { return name; }
            QString name;
        };
        ListFixture list(0);
        auto *a = new Changing(&list);
        auto *b = new Changing(&list);
        a->name = QStringLiteral("a");
        b->name = QStringLiteral("b");
        list.setSorting(0);
        QCOMPARE(list.rows(), QStringLiteral("a b"));
        a->name = QStringLiteral("c");
        QCOMPARE(list.rows(), QStringLiteral("c b"));
        list.sort();
        QCOMPARE(list.rows(), QStringLiteral("b c"));
    }

    void withoutSortingItemsStayWhereTheyWerePut()
    {
        ListFixture list(0);
        fill(list);
        QCOMPARE(list.rows(), QStringLiteral("n0 n1 n2 n3"));
        list.sort();
        QCOMPARE(list.rows(), QStringLiteral("n0 n1 n2 n3"));
        list.setSorting(7); // until the user clicks a heading
        QCOMPARE(list.rows(), QStringLiteral("n0 n1 n2 n3"));
        QCOMPARE(list.sortColumn(), 7);
        list.setSorting(-5);
        QCOMPARE(list.sortColumn(), -1);
    }

    void clicksOnTheHeader()
    {
        ListFixture list(0);
        fill(list);
        list.setSorting(1);
        list.setShowSortIndicator(true);
        QVERIFY(list.showAndWait());
        QCOMPARE(list.header()->sortIndicatorSection(), 1);
        const auto click = [&list](int column) {
            QTest::mouseClick(list.header(), Qt::LeftButton, Qt::NoModifier,
                              list.header()->sectionRect(column).center());
        };
        click(1);
        QCOMPARE(list.sortOrder(), Qt::DescendingOrder);
        QCOMPARE(list.header()->sortIndicatorOrder(), Qt::DescendingOrder);
        QCOMPARE(list.rows(), QStringLiteral("n2 n0 n1 n3"));
        click(0);
        QCOMPARE(list.sortColumn(), 0);
        QCOMPARE(list.header()->sortIndicatorSection(), 0);
        list.setSorting(-1);
        QCOMPARE(list.header()->sortIndicatorSection(), -1);
        click(1);
        QCOMPARE(list.sortColumn(), -1);
    }

    void columns()
    {
        ListFixture list(2);
        QCOMPARE(list.columns(), 2);
        QCOMPARE(list.columnText(1), QStringLiteral("Number"));
        QCOMPARE(list.columnWidthMode(0), Q3ListView::Manual);
        QCOMPARE(list.columnAlignment(0), int(Qt::AlignLeft));
        const int wide = list.addColumn(QStringLiteral("Wide"));
        QCOMPARE(wide, 2);
        QCOMPARE(list.columnWidthMode(2), Q3ListView::Maximum);
        const int before = list.columnWidth(2);
        list.at(0)->setText(2, QStringLiteral("a text that is much wider than the heading"));
        list.grab();
        QVERIFY(list.columnWidth(2) > before + 50);
        const int grown = list.columnWidth(2);
        list.at(0)->setText(2, QStringLiteral("x"));
        list.grab();
        QCOMPARE(list.columnWidth(2), grown); // it never shrinks
        list.adjustColumn(2);
        QVERIFY(list.columnWidth(2) < grown);
        list.setColumnText(0, QStringLiteral("Other"));
        list.setColumnText(1, QIcon(QPixmap(8, 8)), QStringLiteral("Icon"));
        QVERIFY(list.header()->iconSet(1));
        list.hideColumn(0);
        QCOMPARE(list.columnWidth(0), 0);
        list.setColumnAlignment(1, Qt::AlignRight);
        QCOMPARE(list.columnAlignment(1), int(Qt::AlignRight));
        list.removeColumn(0);
        QCOMPARE(list.columnText(0), QStringLiteral("Icon"));
        QCOMPARE(list.columnAlignment(0), int(Qt::AlignRight));
        list.removeColumn(9);
        list.setColumnWidth(9, 10);
        list.setColumnWidthMode(9, Q3ListView::Maximum);
        list.setColumnAlignment(9, 0);
        QCOMPARE(list.columns(), 2);
        list.setColumnWidthMode(0, Q3ListView::Maximum);
        QCOMPARE(list.columnWidthMode(0), Q3ListView::Maximum);
    }

    void resizeModes()
    {
        ListFixture list(2);
        QVERIFY(list.showAndWait());
        list.setResizeMode(Q3ListView::LastColumn);
        QCOMPARE(list.columnWidth(1), list.viewport()->width() - 120);
        list.resize(400, 200);
        QCoreApplication::processEvents();
        QCOMPARE(list.columnWidth(0), 120);
        QCOMPARE(list.contentsWidth(), list.viewport()->width());
        list.setResizeMode(Q3ListView::AllColumns);
        QCOMPARE(list.columnWidth(0), list.viewport()->width() / 2);
        QCOMPARE(list.resizeMode(), Q3ListView::AllColumns);
    }

    void theLastColumnIsTheLastOneThatCame()
    {
        Q3ListView list;
        list.setResizeMode(Q3ListView::LastColumn);
        list.addColumn(QStringLiteral("Name"), 60);
        QVERIFY(list.header()->isStretchEnabled(0));
        list.addColumn(QStringLiteral("Number"), 50);
        QVERIFY(!list.header()->isStretchEnabled(0));
        list.resize(300, 200);
        list.show();
        QVERIFY(QTest::qWaitForWindowExposed(&list));
        QTRY_COMPARE(list.columnWidth(1), list.viewport()->width() - 60);
        QCOMPARE(list.columnWidth(0), 60);
    }

    void theHeaderFollows()
    {
        ListFixture list(50);
        list.setColumnWidth(0, 400);
        QVERIFY(list.showAndWait());
        list.setContentsPos(77, 30);
        QCOMPARE(list.header()->offset(), 77);
        QCOMPARE(list.header()->width(), list.viewport()->width());
        QCOMPARE(list.header()->geometry().bottom() + 1, list.viewport()->geometry().top());
        list.header()->hide();
        list.triggerUpdate();
        QTRY_COMPARE(list.topMargin(), 0);
    }

    void headerClicksOnContextMenusReachTheView()
    {
        struct View : ListFixture {
            void contextMenuEvent(QContextMenuEvent *e) override
            {
                on_header = childAt(e->pos()) == header();
                e->accept();
            }
            bool on_header = false;
        };
        View list;
        QVERIFY(list.showAndWait());
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(10, 5), list.header()->mapToGlobal(QPoint(10, 5)));
        QApplication::sendEvent(list.header(), &event);
        QVERIFY(list.on_header);
    }
};

TAVI_GUI_TEST_MAIN(TestQ3ListViewSorting)

#include "tst_q3listview_sorting.moc"
