// SPDX-License-Identifier: MIT
#include "tests/listviews/listrenamefixture.h"
#include "tests/treeviews/renamewalktest.h"

#include <QCheckBox>

/// The list's rename dialog changing the items of a list.
class TestTaviListViewRenameDlgWalk : public RenameWalkTest
{
    Q_OBJECT

protected:
    std::unique_ptr<RenameRows> makeRows(const QStringList &texts) override
    {
        return std::make_unique<RenameList>(texts);
    }

private Q_SLOTS:
    // Also where the text is as it was.
    void eachChangedItemGetsItsText_data()
    {
        QTest::addColumn<int>("method");
        QTest::addColumn<QString>("op");
        QTest::addColumn<QString>("with");
        QTest::addColumn<int>("changes");
        QTest::newRow("find") << 0 << "40"
                              << "50" << 3;
        QTest::newRow("by the same") << 0 << "40"
                                     << "40" << 3;
        QTest::newRow("find what isn't there") << 0 << "green"
                                               << "50" << 0;
        QTest::newRow("prefix") << 1 << "new "
                                << "" << 4;
        QTest::newRow("append") << 2 << "!"
                                << "" << 4;
        QTest::newRow("nothing") << 2 << ""
                                 << "" << 0;
    }
    void eachChangedItemGetsItsText()
    {
        QFETCH(const int, method);
        QFETCH(const QString, op);
        QFETCH(const QString, with);
        QFETCH(const int, changes);
        RenameList list;
        ListRenameDialog dialog(list);
        dialog.choose(method, op, with);
        QCOMPARE(dialog.apply("applyToAll"), changes);
        QCOMPARE(list.texts_set, changes);
    }

    // In every place, and the texts that it looks for without regard to case.
    void allPlacesInATextAreReplaced()
    {
        RenameList list({"aa bAb", "b"});
        ListRenameDialog dialog(list);
        dialog.choose(0, "A", "x");
        QCOMPARE(dialog.apply("applyToAll"), 1);
        QCOMPARE(list.texts(), QString("xx bxb|b"));
        dialog.choose(0, "B", "y");
        dialog.window.ignore_case_tick->setChecked(false);
        QCOMPARE(dialog.apply("applyToAll"), 0);
        QCOMPARE(list.texts(), QString("xx bxb|b"));
    }

    void theColumnIsTheOneWithTheId()
    {
        RenameList list;
        ListRenameDialog dialog(list, 1);
        list.view.setItemVisible(0, false);
        QCOMPARE(list.view.columnItemSection(1), 0);
        dialog.choose(2, "!");
        QCOMPARE(dialog.apply("applyToAll"), 4); // as the items can be renamed in section 0
        QCOMPARE(list.texts(0), QString("cyan 40!|magenta 40!|yellow 70!|black 40!"));
        list.view.setItemVisible(1, false);
        QCOMPARE(dialog.apply("applyToAll"), 0);
    }

    void childrenAreLeftAlone()
    {
        RenameList list({"a", "b"});
        auto *child = new RenameItem(&list, list.view.at(0), "child");
        child->setRenameEnabled(0, true);
        list.view.setOpen(list.view.at(0), true);
        list.view.setSelected(child, true);
        ListRenameDialog dialog(list);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToAll"), 2);
        QCOMPARE(dialog.apply("applyToSelected"), 0);
        QCOMPARE(dialog.apply("applyToCurrent"), 0);
        QCOMPARE(child->text(0), QString("child"));
    }

    void hiddenItemsAreRenamed()
    {
        RenameList list;
        list.view.setFilterKeyword("yellow");
        ListRenameDialog dialog(list);
        dialog.choose(0, "40", "50");
        QCOMPARE(dialog.apply("applyToAll"), 3);
        QCOMPARE(list.texts(), QString("cyan 50|magenta 50|yellow 70|black 50"));
    }

    // The first in the order of the view, however that is sorted.
    void theCurrentOneIsTheFirstInTheOrderOfTheView()
    {
        RenameList list({"a", "b", "c"});
        list.view.setSorting(0, false);
        list.selectRows({1, 2});
        QCOMPARE(list.selectedTexts(), QStringList({"b", "a"}));
        ListRenameDialog dialog(list);
        dialog.choose(2, "!");
        QCOMPARE(dialog.apply("applyToCurrent"), 1);
        QCOMPARE(list.texts(), QString("c|b!|a"));
    }

    void eachItemIsHandledOnceWhereverItIsSorted_data()
    {
        QTest::addColumn<QString>("op");
        QTest::addColumn<bool>("ascending");
        QTest::addColumn<bool>("sorts_meanwhile");
        for (const bool ascending : {true, false}) {
            for (const char *op : {"a", "z"}) {
                for (const bool meanwhile : {true, false}) {
                    QTest::addRow("%s, %s%s", op, ascending ? "ascending" : "descending",
                                  meanwhile ? ", sorted meanwhile" : "")
                        << op << ascending << meanwhile;
                }
            }
        }
    }
    void eachItemIsHandledOnceWhereverItIsSorted()
    {
        QFETCH(const QString, op);
        QFETCH(const bool, ascending);
        QFETCH(const bool, sorts_meanwhile);
        RenameList list({"b", "a", "d", "c", "e"});
        list.view.setSorting(0, ascending);
        QVERIFY(isVisibleWindow(&list.view));
        // firstChild() sorts.
        if (sorts_meanwhile)
            list.on_text = [](const Q3ListViewItem *item) {
                item->listView()->firstChild();
            };
        ListRenameDialog dialog(list);
        dialog.choose(1, op);
        QCOMPARE(dialog.apply("applyToAll"), 5);
        QCOMPARE(list.texts_set, 5);
        QStringList expected{op + "a", op + "b", op + "c", op + "d", op + "e"};
        if (!ascending)
            std::reverse(expected.begin(), expected.end());
        QCOMPARE(list.columnTexts(0), expected);
        QTRY_COMPARE(list.view.itemAt(QPoint(5, 5))->text(0), expected.first()); // and so it is shown
    }

    void itemsAreSortedOnceForAll()
    {
        class Counting : public RenameItem
        {
        public:
            using RenameItem::RenameItem;
            int compare(Q3ListViewItem *i, int col, bool ascending) const override
            {
                ++compared;
                return RenameItem::compare(i, col, ascending);
            }
            mutable int compared = 0;
        };
        constexpr int count = 500;
        RenameList list{QStringList()};
        std::vector<Counting *> items;
        for (const QString &text : numberedInks(count)) {
            items.push_back(new Counting(&list, &list.view, items.empty() ? nullptr : items.back(), text));
            items.back()->setRenameEnabled(0, true);
        }
        list.view.setSorting(0);
        QVERIFY(isVisibleWindow(&list.view));
        QTRY_COMPARE(list.view.itemAt(QPoint(5, 5))->text(0), QString("ink 0"));
        for (Counting *item : items)
            item->compared = 0;
        ListRenameDialog dialog(list);
        dialog.choose(0, "ink", "tone");
        QCOMPARE(dialog.apply("applyToAll"), count);
        int compared = 0;
        for (const Counting *item : items)
            compared += item->compared;
        QVERIFY2(compared <= count, QByteArray::number(compared)); // not even once: that is for the next painting
    }

    // In the order: what the dialog says, an update, the signal.
    void whatIsToldAtTheEnd()
    {
        RenameList list;
        ListRenameDialog dialog(list);
        dialog.choose(0, "40", "50");
        QString said;
        list.whenRenamed([&] { said = dialog.result(); });
        dialog.apply("applyToAll");
        QCOMPARE(said, QString("Found 3 items"));
    }

    void theListIsPaintedAgainEvenIfNothingChanged()
    {
        class Painted : public ListProbe
        {
        public:
            void preDrawContents() override { ++times; }
            int times = 0;
        };
        Painted view;
        view.fill(1, 3);
        QVERIFY(isVisibleWindow(&view));
        QTRY_VERIFY(view.times > 0);
        TaviRegistry registry;
        std::string section;
        TaviListViewRenameDLG dialog(&view, 0, registry, section);
        QCoreApplication::processEvents();
        view.times = 0;
        QCOMPARE(RenameUser(dialog).apply("applyToAll"), 0);
        QTRY_VERIFY(view.times > 0);
    }
};

TAVI_GUI_TEST_MAIN(TestTaviListViewRenameDlgWalk)
#include "tst_tavilistviewrenamedlg_walk.moc"
