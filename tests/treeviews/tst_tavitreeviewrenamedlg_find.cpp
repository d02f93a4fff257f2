// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/renamefixture.h"

/// The rename dialog going from hit to hit.
class TestTaviTreeViewRenameDlgFind : public TaviTest
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
        RenameTree tree(numberedInks(200));
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
};

TAVI_GUI_TEST_MAIN(TestTaviTreeViewRenameDlgFind)
#include "tst_tavitreeviewrenamedlg_find.moc"
