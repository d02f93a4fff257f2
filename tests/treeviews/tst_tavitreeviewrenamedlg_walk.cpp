// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/renamefixture.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QStandardItemModel>

#include <algorithm>
#include <memory>

namespace {

/// Presses "Find Next" or "Find Previous" and tells "<selected rows>: <what the label says>".
QString found(RenameDialog &dialog, const RenameTree &tree, bool forward)
{
    (forward ? dialog.window.find_next_button : dialog.window.find_prev_button)->click();
    return tree.view.selectedTexts().join('|') + ": " + dialog.result();
}

QStringList numbered(int count)
{
    QStringList texts;
    for (int number = 0; number < count; ++number)
        texts << QStringLiteral("ink %1").arg(number);
    return texts;
}

} // namespace

/// The rename dialog going over the rows of a view.
class TestTaviTreeViewRenameDlgWalk : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void findingGoesOnFromWhereItCameTo()
    {
        RenameTree tree;
        RenameDialog dialog(tree);
        dialog.choose(0, "40");
        QCOMPARE(found(dialog, tree, true), QString("cyan 40: Found"));
        QCOMPARE(found(dialog, tree, true), QString("magenta 40: Found"));
        tree.selectRows({0}); // which is of no account
        QCOMPARE(found(dialog, tree, true), QString("black 40: Found"));
        QCOMPARE(found(dialog, tree, true), QString("black 40: Not Found"));
        QCOMPARE(found(dialog, tree, true), QString("black 40: Not Found"));
        QCOMPARE(found(dialog, tree, false), QString("magenta 40: Found"));
        QCOMPARE(found(dialog, tree, false), QString("cyan 40: Found"));
        QCOMPARE(found(dialog, tree, false), QString("cyan 40: Not Found"));
    }

    void findingBackwardsBeginsAtTheLastRow()
    {
        RenameTree tree;
        RenameDialog dialog(tree);
        dialog.choose(0, "40");
        QCOMPARE(found(dialog, tree, false), QString("black 40: Found"));
        QCOMPARE(found(dialog, tree, false), QString("magenta 40: Found"));
    }

    // It stays where it came to: at the end, if it found nothing.
    void aSearchThatFailedStaysAtTheEnd()
    {
        RenameTree tree;
        RenameDialog dialog(tree);
        dialog.choose(0, "yellow");
        QCOMPARE(found(dialog, tree, true), QString("yellow 70: Found"));
        QCOMPARE(found(dialog, tree, true), QString("yellow 70: Not Found"));
        dialog.choose(0, "cyan");
        QCOMPARE(found(dialog, tree, true), QString("yellow 70: Not Found"));
        QCOMPARE(found(dialog, tree, false), QString("cyan 40: Found"));
    }

    void wrapGoesOnAtTheOtherEnd()
    {
        RenameTree tree;
        RenameDialog dialog(tree);
        dialog.window.wrap_tick->setChecked(true);
        dialog.choose(0, "40");
        for (int round = 0; round < 2; ++round) {
            QCOMPARE(found(dialog, tree, true), QString("cyan 40: Found"));
            QCOMPARE(found(dialog, tree, true), QString("magenta 40: Found"));
            QCOMPARE(found(dialog, tree, true), QString("black 40: Found"));
        }
        QCOMPARE(found(dialog, tree, false), QString("magenta 40: Found"));
        QCOMPARE(found(dialog, tree, false), QString("cyan 40: Found"));
        QCOMPARE(found(dialog, tree, false), QString("black 40: Found"));
    }

    void wrapFindsTheOnlyHitAgain_data()
    {
        QTest::addColumn<QStringList>("texts");
        QTest::newRow("among others") << QStringList{"cyan", "magenta", "yellow"};
        QTest::newRow("at the end") << QStringList{"cyan", "yellow", "magenta"};
        QTest::newRow("at the top") << QStringList{"magenta", "cyan", "yellow"};
        QTest::newRow("alone") << QStringList{"magenta"};
    }
    void wrapFindsTheOnlyHitAgain()
    {
        QFETCH(const QStringList, texts);
        RenameTree tree(texts);
        RenameDialog dialog(tree);
        dialog.window.wrap_tick->setChecked(true);
        dialog.choose(0, "magenta");
        for (const bool forward : {true, true, false, false, true})
            QCOMPARE(found(dialog, tree, forward), QString("magenta: Found"));
    }

    void wrapEndsWhereNothingIsFound()
    {
        RenameTree tree;
        RenameDialog dialog(tree);
        dialog.window.wrap_tick->setChecked(true);
        dialog.choose(0, "none");
        for (const bool forward : {true, true, false, false})
            QCOMPARE(found(dialog, tree, forward), QString(": Not Found"));
    }

    void anEmptyViewHasNothing()
    {
        RenameTree tree{QStringList()};
        RenameDialog dialog(tree);
        for (const bool wrap : {false, true}) {
            dialog.window.wrap_tick->setChecked(wrap);
            dialog.choose(0, "");
            QVERIFY(!dialog.window.nextCandidate().isValid());
            QVERIFY(!dialog.window.prevCandidate().isValid());
            QCOMPARE(found(dialog, tree, true), QString(": Not Found"));
            QCOMPARE(found(dialog, tree, false), QString(": Not Found"));
        }
        QCOMPARE(dialog.apply("applyToAll"), 0);
    }

    void candidates()
    {
        RenameTree tree;
        RenameDialog dialog(tree, 1);
        QCOMPARE(dialog.window.nextCandidate(), tree.view.model()->index(0, 1));
        QCOMPARE(dialog.window.prevCandidate(), tree.view.model()->index(3, 1));
        dialog.choose(0, "yellow");
        dialog.window.find_next_button->click();
        QCOMPARE(dialog.window.nextCandidate(), tree.view.model()->index(3, 1));
        QCOMPARE(dialog.window.prevCandidate(), tree.view.model()->index(1, 1));
        dialog.choose(0, "black");
        dialog.window.find_next_button->click();
        QVERIFY(!dialog.window.nextCandidate().isValid());
        dialog.window.wrap_tick->setChecked(true);
        QCOMPARE(dialog.window.nextCandidate(), tree.view.model()->index(0, 1));
        dialog.choose(0, "cyan");
        dialog.window.find_next_button->click();
        QCOMPARE(dialog.window.prevCandidate(), tree.view.model()->index(3, 1));
        dialog.window.wrap_tick->setChecked(false);
        QVERIFY(!dialog.window.prevCandidate().isValid());
    }

    void caseIsIgnoredOnlyWithTheTick()
    {
        RenameTree tree({"CYAN", "cyan"});
        RenameDialog dialog(tree);
        dialog.choose(0, "cyan");
        QCOMPARE(found(dialog, tree, true), QString("CYAN: Found"));
        dialog.window.ignore_case_tick->setChecked(false);
        QCOMPARE(found(dialog, tree, false), QString("CYAN: Not Found"));
        QCOMPARE(found(dialog, tree, true), QString("cyan: Found"));
    }

    void emptyTextIsFoundInEveryRow()
    {
        RenameTree tree;
        RenameDialog dialog(tree);
        dialog.choose(0, "");
        QCOMPARE(found(dialog, tree, true), QString("cyan 40: Found"));
        QCOMPARE(found(dialog, tree, true), QString("magenta 40: Found"));
    }

    void rowsAreThoseThatTheViewShowsInItsOrder()
    {
        RenameTree tree;
        tree.view.setSortingEnabled(true);
        tree.view.sortByColumn(0, Qt::DescendingOrder);
        RenameDialog dialog(tree);
        dialog.choose(0, "40");
        QCOMPARE(found(dialog, tree, true), QString("magenta 40: Found"));
        QCOMPARE(found(dialog, tree, true), QString("cyan 40: Found"));
        // It goes on from the row, wherever that has gone.
        tree.view.sortByColumn(0, Qt::AscendingOrder);
        QCOMPARE(found(dialog, tree, true), QString("magenta 40: Found"));
    }

    void hiddenRowsAreFoundAndChildrenAreNot()
    {
        RenameTree tree;
        auto *child = new TaviTreeItem(QList<QVariant>{"child 40", ""}, nullptr);
        child->setEditable(0, true);
        tree.model.appendItem(child, tree.model.itemAt(2));
        tree.view.filter("yellow");
        RenameDialog dialog(tree);
        dialog.choose(0, "40");
        QCOMPARE(found(dialog, tree, true), QString("cyan 40: Found"));
        QCOMPARE(found(dialog, tree, true), QString("magenta 40: Found"));
        QCOMPARE(found(dialog, tree, true), QString("black 40: Found"));
        dialog.choose(0, "40", "50");
        QCOMPARE(dialog.apply("applyToAll"), 3);
        QCOMPARE(tree.texts(), QString("cyan 50|magenta 50|yellow 70|black 50"));
        QCOMPARE(child->data(0, Qt::DisplayRole), QVariant("child 40"));
    }

    void aHitIsSelectedInPlaceOfOthersAndScrolledTo()
    {
        RenameTree tree(numbered(200));
        tree.view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&tree.view));
        tree.selectRows({1, 2, 3});
        RenameDialog dialog(tree, 1);
        dialog.choose(0, "ink 150");
        QCOMPARE(found(dialog, tree, true), QString("ink 150: Found"));
        QCOMPARE(tree.view.selectionModel()->selectedIndexes().size(), 2); // the whole row
        const QRect row = tree.view.visualRect(tree.view.model()->index(150, 0));
        QVERIFY(tree.view.viewport()->rect().contains(row.center()));
    }

    void findingNeedsTheFindMethod()
    {
        RenameTree tree;
        RenameDialog dialog(tree);
        dialog.choose(1, "40");
        QVERIFY(QMetaObject::invokeMethod(&dialog.window, "findNext"));
        QVERIFY(QMetaObject::invokeMethod(&dialog.window, "findPrev"));
        QCOMPARE(dialog.result(), QString());
        QVERIFY(tree.view.selectedTexts().isEmpty());
    }

    void rowsThatWentAreNotLookedAt()
    {
        RenameTree tree;
        RenameDialog dialog(tree);
        dialog.choose(0, "40");
        QCOMPARE(found(dialog, tree, true), QString("cyan 40: Found"));
        QCOMPARE(found(dialog, tree, true), QString("magenta 40: Found"));
        tree.model.removeItem(tree.model.itemAt(0));
        QCOMPARE(found(dialog, tree, true), QString("black 40: Found"));
        tree.model.removeItem(tree.model.itemAt(2)); // where it came to: from the top again
        QCOMPARE(found(dialog, tree, true), QString("magenta 40: Found"));
        tree.model.removeAllItems();
        QCOMPARE(found(dialog, tree, true), QString(": Not Found"));
    }

    void renaming_data()
    {
        QTest::addColumn<QString>("slot");
        QTest::addColumn<int>("method");
        QTest::addColumn<QVector<int>>("selected");
        QTest::addColumn<QString>("op");
        QTest::addColumn<QString>("with");
        QTest::addColumn<QString>("texts");
        QTest::addColumn<int>("changed");
        QTest::addColumn<QString>("result");
        const auto row = [](const char *name, const char *slot, int method, const QVector<int> &selected,
                            const char *op, const char *with, const char *texts, int changed, const char *result) {
            QTest::newRow(name) << slot << method << selected << op << with << texts << changed << result;
        };
        const char *const all = "applyToAll", *const selected = "applyToSelected", *const current = "applyToCurrent";
        const char *const same = "cyan 40|magenta 40|yellow 70|black 40";
        row("all found", all, 0, {}, "40", "50", "cyan 50|magenta 50|yellow 70|black 50", 3, "Found 3 items");
        row("one found", all, 0, {}, "yellow", "gelb", "cyan 40|magenta 40|gelb 70|black 40", 1, "Found 1 item");
        row("none found", all, 0, {}, "green", "gelb", same, 0, "Not Found");
        row("empty", all, 0, {}, "", "gelb", same, 0, "Not Found");
        row("all, selection is of no account", all, 0, {2}, "40", "50", "cyan 50|magenta 50|yellow 70|black 50", 3,
            "Found 3 items");
        row("by the same text counts", all, 0, {}, "40", "40", same, 3, "Found 3 items");
        row("prefix", all, 1, {}, "new ", "unused", "new cyan 40|new magenta 40|new yellow 70|new black 40", 4, "");
        row("empty prefix", all, 1, {}, "", "", same, 0, "");
        row("append", all, 2, {}, "!", "unused", "cyan 40!|magenta 40!|yellow 70!|black 40!", 4, "");
        row("selected", selected, 0, {0, 2}, "0", "1", "cyan 41|magenta 40|yellow 71|black 40", 2, "Found 2 items");
        row("selected, none found", selected, 0, {2}, "40", "50", same, 0, "Not Found");
        row("none selected", selected, 0, {}, "40", "50", same, 0, "Not Found");
        row("selected, append", selected, 2, {1, 3}, "!", "", "cyan 40|magenta 40!|yellow 70|black 40!", 2, "");
        row("current", current, 0, {1, 3}, "40", "50", "cyan 40|magenta 50|yellow 70|black 40", 1, "Found 1 item");
        row("current without a hit goes no further", current, 0, {2, 3}, "40", "50", same, 0, "Not Found");
        row("current, prefix", current, 1, {1, 2, 3}, "x", "", "cyan 40|xmagenta 40|yellow 70|black 40", 1, "");
        row("no current", current, 1, {}, "x", "", same, 0, "");
    }
    void renaming()
    {
        QFETCH(const QString, slot);
        QFETCH(const int, method);
        QFETCH(const QVector<int>, selected);
        QFETCH(const QString, op);
        QFETCH(const QString, with);
        QFETCH(const QString, texts);
        QFETCH(const int, changed);
        QFETCH(const QString, result);
        RenameTree tree;
        tree.selectRows(selected);
        RenameDialog dialog(tree);
        dialog.choose(method, op, with);
        QSignalSpy renamed(&tree.view, SIGNAL(itemsRenamed(int)));
        QSignalSpy data(tree.view.model(), &QAbstractItemModel::dataChanged);
        QCOMPARE(dialog.apply(slot.toLatin1().constData()), changed);
        QCOMPARE(tree.texts(), texts);
        QCOMPARE(tree.texts(1),
                 QString("remark of cyan 40|remark of magenta 40|remark of yellow 70|remark of black 40"));
        QCOMPARE(dialog.result(), result);
        QCOMPARE(renamed.count(), 1);
        QCOMPARE(renamed.at(0).at(0).toInt(), changed);
        QCOMPARE(data.count(), tree.texts() == "cyan 40|magenta 40|yellow 70|black 40" ? 0 : changed);
        QCOMPARE(tree.view.selectedRows().size(), selected.size());
    }

    void theButtonsRename_data()
    {
        QTest::addColumn<int>("which");
        QTest::addColumn<QString>("texts");
        QTest::newRow("all") << 0 << "xa|xb|xc";
        QTest::newRow("selected") << 1 << "a|xb|xc";
        QTest::newRow("current") << 2 << "a|xb|c";
    }
    void theButtonsRename()
    {
        QFETCH(const int, which);
        QFETCH(const QString, texts);
        RenameTree tree({"a", "b", "c"});
        tree.selectRows({1, 2});
        RenameDialog dialog(tree);
        dialog.choose(1, "x");
        QPushButton *const buttons[] = {dialog.window.apply_all_button, dialog.window.apply_selected_button,
                                        dialog.window.apply_current_button};
        QTest::mouseClick(buttons[which], Qt::LeftButton);
        QCOMPARE(tree.texts(), texts);
    }

    void aMethodThatDoesNotExistRenamesNothing()
    {
        RenameTree tree;
        RenameDialog dialog(tree);
        dialog.window.op_combo->addItem("Turn over");
        dialog.choose(3, "40", "50");
        QSignalSpy renamed(&tree.view, SIGNAL(itemsRenamed(int)));
        QCOMPARE(dialog.apply("applyToAll"), 0);
        dialog.window.op_combo->setCurrentIndex(-1);
        QCOMPARE(dialog.apply("applyToAll"), 0);
        QCOMPARE(renamed.count(), 0);
        QCOMPARE(dialog.result(), QString());
    }

    void rowsThatCannotBeEditedAreLeftOut()
    {
        RenameTree tree({"a", "a", "a"});
        tree.model.itemAt(0)->setEditable(0, false);
        tree.model.itemAt(0)->setEditable(1, true);
        RenameDialog dialog(tree);
        dialog.choose(0, "a", "b");
        QCOMPARE(dialog.apply("applyToAll"), 2);
        QCOMPARE(tree.texts(), QString("a|b|b"));
        QCOMPARE(dialog.result(), QString("Found 2 items"));
        // Nor do they end the walk for the current one.
        dialog.choose(1, "x");
        tree.selectRows({0, 1, 2});
        QCOMPARE(dialog.apply("applyToCurrent"), 1);
        QCOMPARE(tree.texts(), QString("a|xb|b"));
    }

    // What is selected is what the selection model says: not a row that can't be any more.
    void rowsThatCannotBeSelectedAnyMoreAreLeftOut()
    {
        RenameTree tree({"a", "a"});
        tree.selectRows({0, 1});
        tree.model.itemAt(0)->setSelectable(false);
        tree.model.itemAt(1)->setEnabled(false);
        QVERIFY(!tree.view.selectionModel()->isSelected(tree.view.model()->index(0, 0)));
        QVERIFY(tree.view.selectionModel()->isSelected(tree.view.model()->index(1, 0)));
        RenameDialog dialog(tree);
        dialog.choose(0, "a", "b");
        QCOMPARE(dialog.apply("applyToSelected"), 1);
        QCOMPARE(tree.texts(), QString("a|b"));
        QCOMPARE(dialog.apply("applyToAll"), 1); // which asks nobody
    }

    void eachRowIsHandledOnceWhereverItIsSorted_data()
    {
        QTest::addColumn<QString>("op");
        QTest::addColumn<int>("order");
        for (const Qt::SortOrder order : {Qt::AscendingOrder, Qt::DescendingOrder}) {
            for (const char *op : {"a", "z"})
                QTest::addRow("%s, %s", op, order == Qt::AscendingOrder ? "ascending" : "descending")
                    << op << int(order);
        }
    }
    void eachRowIsHandledOnceWhereverItIsSorted()
    {
        QFETCH(const QString, op);
        QFETCH(const int, order);
        RenameTree tree({"b", "a", "d", "c", "e"});
        tree.view.setSortingEnabled(true);
        tree.view.sortByColumn(0, Qt::SortOrder(order));
        RenameDialog dialog(tree);
        dialog.choose(1, op);
        QCOMPARE(dialog.apply("applyToAll"), 5);
        QCOMPARE(tree.texts(), QString("%1b|%1a|%1d|%1c|%1e").arg(op));
        tree.selectRows({0, 3});
        QCOMPARE(dialog.apply("applyToSelected"), 2);
        QCOMPARE(tree.texts(), QString("%1%1b|%1a|%1d|%1%1c|%1e").arg(op));
        // The rows are sorted by their new texts.
        QStringList shown = tree.view.shownTexts();
        QStringList sorted = shown;
        std::sort(sorted.begin(), sorted.end());
        if (order == Qt::DescendingOrder)
            std::reverse(sorted.begin(), sorted.end());
        QCOMPARE(shown, sorted);
    }

    void rowsAreSortedOnceForAll()
    {
        RenameTree tree;
        tree.view.setSortingEnabled(true);
        tree.view.sortByColumn(0, Qt::AscendingOrder);
        int sorted = 0;
        connect(tree.view.model(), &QAbstractItemModel::layoutChanged, this, [&sorted] { ++sorted; });
        RenameDialog dialog(tree);
        dialog.choose(0, "a", "z");
        QCOMPARE(dialog.apply("applyToAll"), 3);
        QCOMPARE(tree.view.shownTexts(), QStringList({"blzck 40", "cyzn 40", "mzgentz 40", "yellow 70"}));
        QCOMPARE(sorted, 1);
        // And one by one from then on, as before.
        QVERIFY(tree.view.proxyModel()->dynamicSortFilter());
        tree.model.setData(tree.model.index(0, 0), "x", Qt::DisplayRole);
        QCOMPARE(tree.view.shownTexts(), QStringList({"blzck 40", "mzgentz 40", "x", "yellow 70"}));
    }

    void sortingThatIsOffStaysOff()
    {
        RenameTree tree;
        tree.view.setSortingEnabled(true);
        tree.view.sortByColumn(0, Qt::AscendingOrder);
        tree.view.proxyModel()->setDynamicSortFilter(false);
        RenameDialog dialog(tree);
        dialog.choose(0, "black", "z");
        dialog.apply("applyToAll");
        QVERIFY(!tree.view.proxyModel()->dynamicSortFilter());
        QCOMPARE(tree.view.shownTexts(), QStringList({"z 40", "cyan 40", "magenta 40", "yellow 70"}));
    }

    void anExpressionOfTheApplicationIsAppliedToNewTexts()
    {
        RenameTree tree;
        tree.view.proxyModel()->setFilterRegExp("^[a-z]+ 40");
        QCOMPARE(tree.view.shownTexts(), QStringList({"cyan 40", "magenta 40", "black 40"}));
        RenameDialog dialog(tree);
        dialog.choose(0, "magenta 40", "50");
        QCOMPARE(dialog.apply("applyToAll"), 1);
        QCOMPARE(tree.view.shownTexts(), QStringList({"cyan 40", "black 40"}));
    }

    void aKeywordFollowsTheNewTexts()
    {
        RenameTree tree;
        tree.view.filter("50");
        QCOMPARE(tree.view.shownTexts(), QStringList());
        RenameDialog dialog(tree);
        dialog.choose(0, "40", "50");
        dialog.apply("applyToAll");
        QCOMPARE(tree.view.shownTexts(), QStringList({"cyan 50", "magenta 50", "black 50"}));
    }

    void rowsThatComeMeanwhileAreLeftAlone()
    {
        RenameTree tree({"a", "b"});
        const auto add = connect(&tree.model, &QAbstractItemModel::dataChanged, this, [&tree] {
            auto *item = new TaviTreeItem(QList<QVariant>{"new", ""}, nullptr);
            item->setEditable(0, true);
            tree.model.insertItem(0, item);
        });
        RenameDialog dialog(tree);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToAll"), 2);
        disconnect(add);
        QCOMPARE(tree.texts(), QString("new|new|xa|xb"));
    }

    void aSelectionFollowsRowsThatMoveMeanwhile()
    {
        RenameTree tree({"a", "b", "c", "d"});
        tree.selectRows({1, 3});
        const auto add = connect(&tree.model, &QAbstractItemModel::dataChanged, this, [&tree] {
            tree.model.insertItem(0, new TaviTreeItem(QList<QVariant>{"new", ""}, nullptr));
        });
        RenameDialog dialog(tree);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToSelected"), 2);
        disconnect(add);
        QCOMPARE(tree.texts(), QString("new|new|a|xb|c|xd"));
    }

    void theSelectionCountsAsItIsWhenARowsTurnComes()
    {
        RenameTree tree({"a", "b", "c", "d"});
        tree.selectRows({0, 1});
        const auto change = connect(&tree.model, &QAbstractItemModel::dataChanged, this, [&tree] {
            tree.selectRows({0, 3});
        });
        RenameDialog dialog(tree);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToSelected"), 2);
        disconnect(change);
        QCOMPARE(tree.texts(), QString("xa|b|c|xd"));
    }

    void aSlotMayRemoveRowsMeanwhile()
    {
        RenameTree tree({"a", "b", "c", "d", "e"});
        const auto remove = connect(&tree.model, &QAbstractItemModel::dataChanged, this, [&tree] {
            if (tree.model.rowCount() > 3)
                tree.model.removeItem(tree.model.itemAt(1));
        });
        RenameDialog dialog(tree);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToAll"), 4); // all but b, and c went afterwards
        disconnect(remove);
        QCOMPARE(tree.texts(), QString("xa|xd|xe"));
    }

    void aSlotMayRemoveTheRowThatIsRenamed()
    {
        RenameTree tree({"a", "b", "c"});
        const auto remove =
            connect(&tree.model, &QAbstractItemModel::dataChanged, &tree.model,
                    [&tree](const QModelIndex &at) { tree.model.removeItem(tree.model.itemAt(at.row())); });
        RenameDialog dialog(tree);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToAll"), 3);
        disconnect(remove);
        QCOMPARE(tree.model.rowCount(), 0);
    }

    void aRowThatBecameAChildIsLeftAlone()
    {
        RenameTree tree({"a", "b"});
        const auto move = connect(&tree.model, &QAbstractItemModel::dataChanged, this, [&tree] {
            if (tree.model.rowCount() == 2)
                tree.model.appendItem(tree.model.takeItem(tree.model.itemAt(1)), tree.model.itemAt(0));
        });
        RenameDialog dialog(tree);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToAll"), 1);
        disconnect(move);
        QCOMPARE(tree.model.itemAt(0)->child(0)->data(0, Qt::DisplayRole), QVariant("b"));
    }

    void aSlotMayResetOrEmptyTheModel()
    {
        RenameTree tree({"a", "b", "c"});
        auto change =
            connect(&tree.model, &QAbstractItemModel::dataChanged, this, [&tree] { tree.model.resetModel(); });
        RenameDialog dialog(tree);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToAll"), 3);
        QCOMPARE(tree.texts(), QString("xa|xb|xc"));
        disconnect(change);
        change =
            connect(&tree.model, &QAbstractItemModel::dataChanged, this, [&tree] { tree.model.removeAllItems(); });
        QCOMPARE(dialog.apply("applyToAll"), 1);
        disconnect(change);
    }

    void anotherModelEndsTheWalk()
    {
        RenameTree tree({"a", "b"});
        TaviTreeModel other({"Ink"});
        const auto change =
            connect(&tree.model, &QAbstractItemModel::dataChanged, this, [&] { tree.view.setModel(&other); });
        RenameDialog dialog(tree);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToAll"), 1);
        disconnect(change);
        QCOMPARE(tree.texts(), QString("xa|b"));
    }

    void modelsOfOtherKindsAreRenamedAsWell()
    {
        RenameTree tree;
        QStandardItemModel other;
        for (const char *text : {"b", "a", "c"})
            other.appendRow(new QStandardItem(text));
        tree.view.proxyModel()->setSourceModel(&other);
        tree.view.setSortingEnabled(true);
        tree.view.sortByColumn(0, Qt::AscendingOrder);
        RenameDialog dialog(tree);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToAll"), 3);
        QCOMPARE(other.item(0)->text(), QString("xb"));
        QCOMPARE(other.item(1)->text(), QString("xa"));
        QCOMPARE(other.item(2)->text(), QString("xc"));
        tree.view.proxyModel()->setSourceModel(nullptr);
    }

    void theDialogMayGoInTheMiddleOfARename()
    {
        RenameTree tree({"a", "b", "c"});
        auto dialog = std::make_unique<RenameDialog>(tree);
        dialog->choose(1, "x");
        QSignalSpy renamed(&tree.view, SIGNAL(itemsRenamed(int)));
        const auto close =
            connect(&tree.model, &QAbstractItemModel::dataChanged, this, [&dialog] { dialog.reset(); });
        dialog->window.apply_all_button->click();
        disconnect(close);
        QVERIFY(!dialog);
        // What was asked for is done, and told.
        QCOMPARE(tree.texts(), QString("xa|xb|xc"));
        QCOMPARE(renamed.count(), 1);
        QCOMPARE(renamed.at(0).at(0).toInt(), 3);
    }

    void theViewMayGoInTheMiddleOfARename_data()
    {
        QTest::addColumn<bool>("before_the_end");
        QTest::newRow("while rows are renamed") << true;
        QTest::newRow("when it is told") << false;
    }
    void theViewMayGoInTheMiddleOfARename()
    {
        QFETCH(const bool, before_the_end);
        TaviTreeModel model({"Ink"});
        for (int row = 0; row < 3; ++row) {
            auto *item = new TaviTreeItem(QList<QVariant>{"a"}, nullptr);
            item->setEditable(0, true);
            model.appendItem(item);
        }
        auto *view = new TaviTreeView;
        view->setModel(&model);
        TaviRegistry registry;
        std::string section = "inks";
        const QPointer<TaviTreeViewRenameDLG> dialog = new TaviTreeViewRenameDLG(view, 0, registry, section);
        dialog->op_edit->setText("a");
        dialog->replace_edit->setText("b");
        const auto destroy = [&view] {
            delete view;
            view = nullptr;
        };
        if (before_the_end)
            connect(&model, &QAbstractItemModel::dataChanged, this, destroy);
        else
            connect(view, &TaviTreeView::itemsRenamed, this, destroy);
        dialog->apply_all_button->click();
        QVERIFY(!dialog);
        QCOMPARE(model.itemAt(0)->data(0, Qt::DisplayRole), QVariant("b"));
        QCOMPARE(model.itemAt(2)->data(0, Qt::DisplayRole), QVariant(before_the_end ? "a" : "b"));
        model.disconnect(this);
    }

    void theViewMayGoWhenAHitIsSelected()
    {
        TaviTreeModel model({"Ink"});
        model.appendItem(new TaviTreeItem(QList<QVariant>{"a"}, nullptr));
        auto *view = new TaviTreeView;
        view->setModel(&model);
        TaviRegistry registry;
        std::string section = "inks";
        const QPointer<TaviTreeViewRenameDLG> dialog = new TaviTreeViewRenameDLG(view, 0, registry, section);
        connect(view, SIGNAL(selectionChanged()), view, SLOT(deleteLater()));
        connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this, [&view] {
            delete view;
            view = nullptr;
        });
        dialog->find_next_button->click();
        QVERIFY(!dialog);
    }

    void rowsMayGoWhenAHitIsSelected()
    {
        RenameTree tree;
        RenameDialog dialog(tree);
        dialog.choose(0, "40");
        const auto remove = connect(&tree.view, QOverload<>::of(&TaviTreeView::selectionChanged), &tree.model,
                                    [&tree] { tree.model.removeAllItems(); });
        QCOMPARE(found(dialog, tree, true), QString(": Found"));
        disconnect(remove);
        QCOMPARE(found(dialog, tree, true), QString(": Not Found"));
    }

    void aHundredThousandRowsWhileASlotRemovesSome_data()
    {
        QTest::addColumn<bool>("sorted");
        QTest::addColumn<bool>("selected");
        QTest::newRow("as they are") << false << false;
        QTest::newRow("sorted by what changes") << true << false;
        QTest::newRow("every second one, by selection") << false << true;
    }
    void aHundredThousandRowsWhileASlotRemovesSome()
    {
        QFETCH(const bool, sorted);
        QFETCH(const bool, selected);
        constexpr int rows = 100000;
        RenameTree tree(numbered(rows));
        if (sorted) {
            tree.view.setSortingEnabled(true);
            tree.view.sortByColumn(0, Qt::AscendingOrder);
        }
        QItemSelection every_second;
        for (int row = 0; selected && row < rows; row += 2)
            every_second.append(
                QItemSelectionRange(tree.view.model()->index(row, 0), tree.view.model()->index(row, 1)));
        if (selected)
            tree.view.selectionModel()->select(every_second, QItemSelectionModel::Select);
        int told = 0;
        const auto remove = connect(&tree.model, &QAbstractItemModel::dataChanged, this, [&] {
            // One of a thousand times, the last row.
            if (++told % 1000 == 0)
                tree.model.removeItem(tree.model.itemAt(tree.model.rowCount() - 1));
        });
        RenameDialog dialog(tree);
        dialog.choose(1, "z"); // which sorts each row behind all that have not had their turn
        QElapsedTimer clock;
        clock.start();
        const int changed = dialog.apply(selected ? "applyToSelected" : "applyToAll");
        const qint64 taken = clock.elapsed();
        disconnect(remove);
        QCOMPARE(changed, told);
        int renamed = 0;
        const QList<TaviTreeItem *> items = tree.model.allItems();
        for (const TaviTreeItem *item : items) {
            const QString text = item->data(0, Qt::DisplayRole).toString();
            QVERIFY(!text.startsWith("zz"));
            renamed += text.startsWith('z') ? 1 : 0;
        }
        QVERIFY(renamed > 0 && renamed <= changed);
        if (!sorted && !selected)
            QCOMPARE(renamed, items.size()); // what is still there has its turn
        QVERIFY2(taken < 20000, QByteArray::number(taken));
    }
};

TAVI_GUI_TEST_MAIN(TestTaviTreeViewRenameDlgWalk)
#include "tst_tavitreeviewrenamedlg_walk.moc"
