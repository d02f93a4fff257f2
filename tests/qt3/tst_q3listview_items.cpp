// SPDX-License-Identifier: MIT
#include "tests/qt3/listfixture.h"
#include "tests/support/tavitest.h"

#include <QRandomGenerator>

#include <memory>

namespace {

/// An item that tells when it goes, and how high it is.
class Item : public Q3ListViewItem
{
public:
    Item(Q3ListView *view, Q3ListViewItem *after, int *alive) : Q3ListViewItem(view, after), alive_(alive)
    {
        ++*alive_;
    }
    Item(Q3ListViewItem *parent, Q3ListViewItem *after, int *alive) : Q3ListViewItem(parent, after), alive_(alive)
    {
        ++*alive_;
    }
    ~Item() override { --*alive_; }
    void setup() override
    {
        ++setups;
        setHeight(wanted);
    }
    void grow(int height)
    {
        wanted = height;
        setHeight(height);
    }

    int wanted = 20;
    int setups = 0;

private:
    int *alive_;
};

/// Where an item is, told by walking.
int walkedPosition(const Q3ListView &view, const Q3ListViewItem *item)
{
    int y = 0;
    for (Q3ListViewItem *one = view.firstChild(); one && one != item; one = one->itemBelow())
        y += one->height();
    return y;
}

} // namespace

class TestQ3ListViewItems : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void construction()
    {
        Q3ListView view;
        Q3ListViewItem item(&view);
        QCOMPARE(item.listView(), &view);
        QCOMPARE(item.parent(), nullptr);
        QCOMPARE(item.depth(), 0);
        QCOMPARE(item.childCount(), 0);
        QCOMPARE(item.firstChild(), nullptr);
        QCOMPARE(item.nextSibling(), nullptr);
        QCOMPARE(item.text(0), QString());
        QCOMPARE(item.pixmap(0), nullptr);
        QCOMPARE(item.rtti(), 0);
        QVERIFY(!item.isOpen() && !item.isExpandable() && !item.isSelected());
        QVERIFY(item.isSelectable() && item.isEnabled() && item.isVisible());
        QVERIFY(!item.dragEnabled() && !item.dropEnabled() && !item.multiLinesEnabled() && !item.renameEnabled(0));
        QVERIFY(!item.acceptDrop(nullptr));
    }

    void newItemsStandFirst()
    {
        ListFixture list(0);
        new Q3ListViewItem(&list, QStringLiteral("a"));
        new Q3ListViewItem(&list, QStringLiteral("b"));
        QCOMPARE(list.rows(), QStringLiteral("b a"));
    }

    void newItemsStandBehindTheOneGiven()
    {
        ListFixture list(0);
        auto *a = new Q3ListViewItem(&list, QStringLiteral("a"));
        auto *c = new Q3ListViewItem(&list, a, QStringLiteral("c"));
        new Q3ListViewItem(&list, a, QStringLiteral("b"));
        new Q3ListViewItem(&list, c, QStringLiteral("d"));
        new Q3ListViewItem(&list, static_cast<Q3ListViewItem *>(nullptr), QStringLiteral("first"));
        QCOMPARE(list.rows(), QStringLiteral("first a b c d"));
    }

    void anItemOfElsewhereDoesNotTellThePlace()
    {
        ListFixture list(2);
        auto *child = new Q3ListViewItem(list.at(0), QStringLiteral("child"));
        new Q3ListViewItem(&list, child, QStringLiteral("new"));
        QCOMPARE(list.rows(), QStringLiteral("new row 0 row 1"));
    }

    void eightLabels()
    {
        ListFixture list(0);
        const auto s = [](const char *text) {
            return QString::fromLatin1(text);
        };
        Q3ListViewItem top(&list, s("1"), s("2"), s("3"), s("4"), s("5"), s("6"), s("7"), s("8"));
        QCOMPARE(top.text(0), s("1"));
        QCOMPARE(top.text(7), s("8"));
        QCOMPARE(top.text(8), QString());
        QCOMPARE(top.text(-1), QString());
        auto *child = new Q3ListViewItem(&top, s("a"), s("b"));
        auto *second = new Q3ListViewItem(&top, child, s("c"), s("d"));
        QCOMPARE(child->text(1), s("b"));
        QCOMPARE(child->nextSibling(), second);
        QCOMPARE(second->parent(), &top);
        QCOMPARE(second->depth(), 1);
    }

    void setTextTakesColumnsOnly()
    {
        ListFixture list(1);
        list.at(0)->setText(-1, QStringLiteral("x"));
        list.at(0)->setText(2000000000, QStringLiteral("x"));
        list.at(0)->setText(5, QStringLiteral("far"));
        QCOMPARE(list.at(0)->text(5), QStringLiteral("far"));
        QCOMPARE(list.at(0)->text(0), QStringLiteral("row 0"));
        QCOMPARE(list.at(0)->text(4), QString());
    }

    void pixmaps()
    {
        ListFixture list(1);
        QPixmap pixmap(16, 40);
        pixmap.fill(Qt::red);
        list.at(0)->setPixmap(1, pixmap);
        QVERIFY(list.at(0)->pixmap(1));
        QCOMPARE(list.at(0)->pixmap(1)->size(), QSize(16, 40));
        QCOMPARE(list.at(0)->pixmap(0), nullptr);
        list.at(0)->setPixmap(-1, pixmap);
        QVERIFY(list.at(0)->totalHeight() >= 40);
        list.at(0)->setPixmap(1, QPixmap());
        QCOMPARE(list.at(0)->pixmap(1), nullptr);
    }

    void deletingDeletesChildren()
    {
        int alive = 0;
        ListFixture list(0);
        auto *top = new Item(&list, nullptr, &alive);
        auto *child = new Item(top, nullptr, &alive);
        new Item(child, nullptr, &alive);
        new Item(child, nullptr, &alive);
        QCOMPARE(alive, 4);
        delete child;
        QCOMPARE(alive, 1);
        QCOMPARE(top->childCount(), 0);
        list.clear();
        QCOMPARE(alive, 0);
        QCOMPARE(list.childCount(), 0);
        QCOMPARE(list.firstChild(), nullptr);
    }

    void theViewDeletesItsItems()
    {
        int alive = 0;
        auto list = std::make_unique<ListFixture>(0);
        new Item(new Item(list.get(), nullptr, &alive), nullptr, &alive);
        list.reset();
        QCOMPARE(alive, 0);
    }

    void takenItemsStayWithoutAView()
    {
        int alive = 0;
        ListFixture list(3);
        auto *top = new Item(&list, nullptr, &alive);
        auto *child = new Item(top, nullptr, &alive);
        list.takeItem(top);
        QCOMPARE(top->listView(), nullptr);
        QCOMPARE(child->listView(), nullptr);
        QCOMPARE(child->parent(), top);
        QCOMPARE(list.childCount(), 3);
        list.at(1)->insertItem(top);
        QCOMPARE(top->parent(), list.at(1));
        QCOMPARE(child->listView(), &list);
        QCOMPARE(child->depth(), 2);
        list.at(1)->takeItem(top);
        list.insertItem(top);
        QCOMPARE(list.firstChild(), top);
        list.removeItem(top);
        delete top;
        QCOMPARE(alive, 0);
    }

    void anItemCannotBePutIntoItself()
    {
        ListFixture list(1);
        auto *child = new Q3ListViewItem(list.at(0));
        list.takeItem(list.at(0));
        child->insertItem(list.at(0));
        list.at(0)->insertItem(list.at(0));
        QCOMPARE(list.at(0)->parent(), nullptr);
        list.insertItem(list.at(0));
        list.insertItem(list.at(0)); // it has a parent already
        QCOMPARE(list.childCount(), 1);
    }

    void takeItemOfTheParentIsCalled()
    {
        struct Parent : Q3ListViewItem {
            using Q3ListViewItem::Q3ListViewItem;
            void takeItem(Q3ListViewItem *item) override
            {
                ++taken;
                Q3ListViewItem::takeItem(item);
            }
            int taken = 0;
        };
        ListFixture list(0);
        auto *parent = new Parent(&list);
        delete new Q3ListViewItem(parent);
        QCOMPARE(parent->taken, 1);
        QCOMPARE(parent->childCount(), 0);
    }

    void moveItem()
    {
        ListFixture list(4);
        list.at(0)->moveItem(list.at(2));
        QCOMPARE(list.rows(1), QStringLiteral("1 2 0 3"));
        list.at(3)->moveItem(list.at(1));
        QCOMPARE(list.rows(1), QStringLiteral("1 3 2 0"));
        list.at(3)->moveItem(list.at(3));
        list.at(3)->moveItem(nullptr);
        list.at(3)->moveItem(new Q3ListViewItem(list.at(0)));
        QCOMPARE(list.rows(1), QStringLiteral("1 3 2 0"));
        list.setSorting(1);
        QCOMPARE(list.rows(1), QStringLiteral("0 1 2 3"));
        list.at(0)->moveItem(list.at(2));
        QCOMPARE(list.rows(1), QStringLiteral("0 1 2 3"));
    }

    void rowsFollowTheTree()
    {
        ListFixture list(3);
        auto *b = new Q3ListViewItem(list.at(1), QStringLiteral("b"));
        auto *a = new Q3ListViewItem(list.at(1), QStringLiteral("a"));
        auto *deep = new Q3ListViewItem(b, QStringLiteral("deep"));
        QCOMPARE(list.rows(), QStringLiteral("row 0 row 1 row 2"));
        list.at(1)->setOpen(true);
        QCOMPARE(list.rows(), QStringLiteral("row 0 row 1 a b row 2"));
        b->setOpen(true);
        QCOMPARE(list.rows(), QStringLiteral("row 0 row 1 a b deep row 2"));
        QCOMPARE(list.at(2)->itemAbove(), deep);
        QCOMPARE(deep->itemAbove(), b);
        QCOMPARE(a->itemAbove(), list.at(1));
        QCOMPARE(list.at(0)->itemAbove(), nullptr);
        QCOMPARE(list.at(2)->itemBelow(), nullptr);
        a->setVisible(false);
        QCOMPARE(list.rows(), QStringLiteral("row 0 row 1 b deep row 2"));
        QCOMPARE(b->itemAbove(), list.at(1));
        b->setVisible(false);
        QCOMPARE(list.rows(), QStringLiteral("row 0 row 1 row 2"));
        QCOMPARE(list.at(2)->itemAbove(), list.at(1));
        QCOMPARE(list.lastItem(), list.at(2));
        delete list.at(2);
        QCOMPARE(list.lastItem(), deep);
    }

    void hiddenRowsInBulkAreStepped()
    {
        ListFixture list(2000);
        list.updateGeometry();
        QVERIFY(list.itemPos(list.at(1999)) > 0);
        for (int row = 1; row < 1999; ++row)
            list.at(row)->setVisible(false);
        QCOMPARE(list.at(0)->itemBelow(), list.at(1999));
        QCOMPARE(list.at(1999)->itemAbove(), list.at(0));
        QCOMPARE(list.itemPos(list.at(1999)), list.at(0)->height());
        QCOMPARE(list.at(0)->itemBelow(), list.at(1999));
        QCOMPARE(list.at(1999)->itemAbove(), list.at(0));
        QCOMPARE(list.at(1998)->itemBelow(), list.at(1999));
    }

    void openMeansChildrenAreShown()
    {
        ListFixture list(1);
        list.at(0)->setOpen(true);
        QVERIFY(!list.at(0)->isOpen());
        auto *child = new Q3ListViewItem(list.at(0));
        QVERIFY(list.at(0)->isOpen());
        QVERIFY(list.isOpen(list.at(0)));
        delete child;
        QVERIFY(!list.at(0)->isOpen());
    }

    void setOpenOfTheViewAsksWhetherItCan()
    {
        ListFixture list(2);
        list.setOpen(list.at(0), true);
        new Q3ListViewItem(list.at(0));
        QVERIFY(!list.at(0)->isOpen());
        list.setOpen(list.at(0), true);
        QVERIFY(list.at(0)->isOpen());
        list.setOpen(list.at(0), false);
        QVERIFY(!list.at(0)->isOpen());
        list.setOpen(nullptr, true);
    }

    void totalHeights()
    {
        int alive = 0;
        ListFixture list(0);
        auto *top = new Item(&list, nullptr, &alive);
        auto *child = new Item(top, nullptr, &alive);
        auto *deep = new Item(child, nullptr, &alive);
        QCOMPARE(top->totalHeight(), 20);
        QCOMPARE(child->setups, 0);
        top->setOpen(true);
        QCOMPARE(top->totalHeight(), 40);
        child->setOpen(true);
        QCOMPARE(top->totalHeight(), 60);
        deep->grow(50);
        QCOMPARE(top->totalHeight(), 90);
        child->setVisible(false);
        QCOMPARE(top->totalHeight(), 20);
        QCOMPARE(child->totalHeight(), 0);
        child->setVisible(true);
        top->setOpen(false);
        QCOMPARE(top->totalHeight(), 20);
        QCOMPARE(top->setups, 1);
        QCOMPARE(deep->setups, 1);
        list.clear();
    }

    void fontsSetUpAnew()
    {
        int alive = 0;
        ListFixture list(0);
        auto *item = new Item(&list, nullptr, &alive);
        QCOMPARE(item->totalHeight(), 20);
        QFont font = list.font();
        font.setPointSize(font.pointSize() + 4);
        list.setFont(font);
        QCOMPARE(item->totalHeight(), 20);
        QCOMPARE(item->setups, 2);
    }

    void positionsAgreeWithAWalkThroughAnyChanges()
    {
        int alive = 0;
        QRandomGenerator random(4711);
        ListFixture list(0);
        list.setRootIsDecorated(true);
        std::vector<Item *> items;
        for (int round = 0; round < 1500; ++round) {
            const int what = random.bounded(10);
            Item *any =
                items.empty() ? nullptr : items[static_cast<size_t>(random.bounded(static_cast<int>(items.size())))];
            if (!any || what < 4) {
                Item *made = any && random.bounded(2) && any->depth() < 4
                                 ? new Item(any, static_cast<Q3ListViewItem *>(nullptr), &alive)
                                 : new Item(&list, any && !any->parent() ? any : nullptr, &alive);
                made->wanted = 2 + random.bounded(30);
                items.push_back(made);
            } else if (what < 6) {
                any->setOpen(!any->isOpen());
            } else if (what == 6) {
                any->setVisible(!any->isVisible());
            } else if (what == 7) {
                any->grow(random.bounded(40) + 1);
            } else if (what == 8 && items.size() > 40) {
                delete any;
                // Its children are gone with it: what is left is asked of the view.
                items.clear();
                for (Q3ListViewItemIterator it(&list); it.current(); ++it)
                    items.push_back(static_cast<Item *>(it.current()));
            } else if (what == 9) {
                Q3ListViewItem *parent = any->parent();
                parent ? parent->takeItem(any) : list.takeItem(any);
                list.insertItem(any);
            }
            if (random.bounded(3) != 0)
                continue;
            int count = 0;
            for (Q3ListViewItem *row = list.firstChild(); row; row = row->itemBelow())
                ++count;
            if (count == 0)
                continue;
            Q3ListViewItem *row = list.firstChild();
            if (!row->isVisible())
                row = row->itemBelow();
            for (int steps = random.bounded(count); steps > 0 && row && row->itemBelow(); --steps)
                row = row->itemBelow();
            if (!row || !row->isVisible())
                continue;
            int y = 0;
            for (Q3ListViewItem *one = list.firstChild(); one != row; one = one->itemBelow())
                y += one->isVisible() ? one->totalHeight() - (one->isOpen() ? one->totalHeight() - one->height() : 0)
                                      : 0;
            QCOMPARE(row->itemPos(), y);
        }
        QVERIFY(items.size() > 100);
        list.clear();
        QCOMPARE(alive, 0);
    }

    void itemAtAndItemRectAgree()
    {
        ListFixture list(1000);
        QVERIFY(list.showAndWait());
        list.setContentsPos(0, 3000);
        Q3ListViewItem *first = list.itemAt(QPoint(5, 0));
        QVERIFY(first);
        QCOMPARE(walkedPosition(list, first), first->itemPos());
        for (Q3ListViewItem *item = first; item && list.itemRect(item).isValid(); item = item->itemBelow()) {
            const QRect rect = list.itemRect(item);
            QCOMPARE(rect.height(), item->height());
            QCOMPARE(list.itemAt(QPoint(5, rect.center().y())), item);
            QCOMPARE(rect.y() + list.contentsY(), list.itemPos(item));
        }
        QVERIFY(!list.itemRect(list.at(0)).isValid());
        QVERIFY(!list.itemRect(nullptr).isValid());
        QCOMPARE(list.itemAt(QPoint(250, 10)), nullptr); // beside the columns
    }

    void nothingBelowTheLastRow()
    {
        ListFixture list(2);
        QVERIFY(list.showAndWait());
        QCOMPARE(list.itemAt(QPoint(5, 2 * list.at(0)->height() - 1)), list.at(1));
        QCOMPARE(list.itemAt(QPoint(5, 2 * list.at(0)->height())), nullptr);
        QCOMPARE(list.itemAt(QPoint(5, -1)), nullptr);
    }

    void ensureItemVisibleOpensAndScrolls()
    {
        ListFixture list(200);
        QVERIFY(list.showAndWait());
        auto *child = new Q3ListViewItem(list.at(150));
        auto *deep = new Q3ListViewItem(child);
        list.ensureItemVisible(deep);
        QVERIFY(list.at(150)->isOpen() && child->isOpen());
        QVERIFY(list.viewport()->rect().contains(list.itemRect(deep)));
        const int before = list.contentsY();
        list.ensureItemVisible(child);
        QCOMPARE(list.contentsY(), before);
        list.ensureItemVisible(list.at(0));
        QCOMPARE(list.contentsY(), 0);
        list.ensureItemVisible(nullptr);
    }

    void lastRowIsReachedRightAfterInserting()
    {
        ListFixture list(0);
        QVERIFY(list.showAndWait());
        Q3ListViewItem *last = nullptr;
        for (int row = 0; row < 5000; ++row)
            last = new Q3ListViewItem(&list, last, QString::number(row));
        list.ensureItemVisible(last);
        QVERIFY(list.viewport()->rect().contains(list.itemRect(last)));
        QCOMPARE(list.contentsHeight(), last->itemPos() + last->height());
    }

    void findItem_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("flags");
        QTest::addColumn<QString>("found");
        using L = Q3ListView;
        QTest::newRow("exact") << "Cyan" << int(L::ExactMatch | L::CaseSensitive) << "3";
        QTest::newRow("exact, case matters") << "cyan" << int(L::ExactMatch | L::CaseSensitive) << "";
        QTest::newRow("exact, case does not") << "cyan" << int(L::ExactMatch) << "3";
        QTest::newRow("begins") << "cyan" << int(L::BeginsWith) << "1";
        QTest::newRow("ends") << "CYAN" << int(L::EndsWith) << "0";
        QTest::newRow("contains") << "yan" << int(L::Contains) << "0";
        QTest::newRow("exact comes first") << "cyan" << int(L::ExactMatch | L::BeginsWith | L::Contains) << "3";
        QTest::newRow("then beginning") << "cya" << 26 << "1";
        QTest::newRow("then end") << "yan" << int(L::EndsWith | L::Contains) << "0";
        QTest::newRow("at last the middle") << "ght" << 26 << "0";
        QTest::newRow("nothing") << "Magenta" << 26 << "";
        QTest::newRow("child") << "below" << 26 << "4";
        QTest::newRow("no comparison is the exact one") << "Cyan" << 0 << "3";
    }
    void findItem()
    {
        ListFixture list(0);
        Q3ListViewItem *last = nullptr;
        int row = 0;
        for (const char *text : {"light Cyan", "cyan 50", "Yellow", "Cyan"})
            last = new Q3ListViewItem(&list, last, QString::fromLatin1(text), QString::number(row++));
        new Q3ListViewItem(last, QStringLiteral("Below"), QString::number(row));
        QFETCH(QString, text);
        QFETCH(int, flags);
        const Q3ListViewItem *found = list.findItem(text, 0, static_cast<uint>(flags));
        QTEST(found ? found->text(1) : QString(), "found");
        QCOMPARE(list.findItem(text, 7, 26), nullptr);
    }

    void equalItemsKeepTheirOrder()
    {
        ListFixture list(60);
        for (Q3ListViewItem *item : list.items)
            item->setText(0, QStringLiteral("the same"));
        const QString before = list.rows(1);
        list.setSorting(0);
        QCOMPARE(list.rows(1), before);
        list.at(0)->moveItem(list.at(9)); // it sorts, so that nothing is moved by hand
        QCOMPARE(list.rows(1), before);
        list.setSorting(0, false);
        list.sort();
        QCOMPARE(list.rows(1), before);
    }

    void itemsAreMeasuredAnewInAnotherView()
    {
        ListFixture big(2);
        QFont font = big.font();
        font.setPixelSize(60);
        big.setFont(font);
        ListFixture small(2);
        Q3ListViewItem *item = big.at(0);
        QVERIFY(big.itemPos(big.at(1)) > 0);
        QVERIFY(item->height() >= 60);
        big.takeItem(item);
        small.insertItem(item);
        const int below = small.itemPos(small.at(1));
        QCOMPARE(below, 2 * small.at(1)->height());
        QCOMPARE(item->height(), small.at(0)->height());
    }

    void viewsAreToldWhatGoes()
    {
        struct Watching : ListFixture {
            void takeItem(Q3ListViewItem *item) override
            {
                taken.append(item);
                Q3ListView::takeItem(item);
            }
            QVector<Q3ListViewItem *> taken;
        } list;
        new Q3ListViewItem(list.at(1), QStringLiteral("child"));
        const QVector<Q3ListViewItem *> goes{list.at(1)};
        delete list.at(1);
        QCOMPARE(list.taken, goes);
    }

    void heightsAreNotNegative()
    {
        struct Flat : Q3ListViewItem {
            using Q3ListViewItem::Q3ListViewItem;
            void setup() override { setHeight(-5); }
        };
        ListFixture list(2);
        auto *flat = new Flat(&list, list.at(0));
        const int below = list.at(1)->itemPos();
        QCOMPARE(below, list.at(0)->height());
        QCOMPARE(flat->height(), 0);
    }

    void equalItemsAmongOthersKeepTheirOrder()
    {
        ListFixture list(60);
        QStringList even;
        QStringList odd;
        for (int row = 0; row < 60; ++row) {
            list.at(row)->setText(0, row % 2 ? QStringLiteral("a") : QStringLiteral("b"));
            (row % 2 ? odd : even).append(QString::number(row));
        }
        list.setSorting(0);
        QCOMPARE(list.rows(1), (odd + even).join(QLatin1Char(' ')));
    }
};

TAVI_GUI_TEST_MAIN(TestQ3ListViewItems)

#include "tst_q3listview_items.moc"
