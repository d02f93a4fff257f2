// SPDX-License-Identifier: MIT
#include "tests/listviews/listrenamefixture.h"
#include "tests/support/tavitest.h"

#include <QCheckBox>

/// The list's rename dialog going from hit to hit.
class TestTaviListViewRenameDlgFind : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void finding_data()
    {
        QTest::addColumn<QVector<int>>("selected");
        QTest::addColumn<QString>("op");
        QTest::addColumn<bool>("forward");
        QTest::addColumn<bool>("wrap");
        QTest::addColumn<QString>("result");
        const auto row = [](const char *name, const QVector<int> &selected, const char *op, bool forward, bool wrap,
                            const char *result) {
            QTest::newRow(name) << selected << op << forward << wrap << result;
        };
        const bool down = true, up = false, wrap = true, end = false;
        row("from the top", {}, "40", down, end, "cyan 40: Found");
        row("from the bottom", {}, "40", up, end, "black 40: Found");
        row("behind the selected one", {0}, "40", down, end, "magenta 40: Found");
        row("before the selected one", {3}, "40", up, end, "magenta 40: Found");
        row("over others", {1}, "40", down, end, "black 40: Found");
        row("from one that is no hit", {2}, "40", down, end, "black 40: Found");
        row("from one that is no hit, upwards", {2}, "40", up, end, "magenta 40: Found");
        row("not before it", {2}, "cyan", down, end, "yellow 70: Not Found");
        row("not behind it", {1}, "black", up, end, "magenta 40: Not Found");
        row("the last hit", {3}, "40", down, end, "black 40: Not Found");
        row("the first hit, upwards", {0}, "40", up, end, "cyan 40: Not Found");
        row("the only hit", {2}, "yellow", down, end, "yellow 70: Not Found");
        row("wrap from the last hit", {3}, "40", down, wrap, "cyan 40: Found");
        row("wrap upwards", {0}, "40", up, wrap, "black 40: Found");
        row("wrap to before the selected one", {2}, "cyan", down, wrap, "cyan 40: Found");
        row("wrap to the selected one", {2}, "yellow", down, wrap, "yellow 70: Found");
        row("wrap to the selected one, upwards", {2}, "yellow", up, wrap, "yellow 70: Found");
        row("wrap without need", {0}, "40", down, wrap, "magenta 40: Found");
        row("wrap and nothing", {1}, "green", down, wrap, "magenta 40: Not Found");
        row("wrap and nothing, upwards", {}, "green", up, wrap, ": Not Found");
        row("several: from the top, the first of them", {0, 1}, "40", down, end, "cyan 40: Found");
        row("several: one between", {1, 3}, "40", down, end, "cyan 40: Found");
        row("several: a selected one counts", {2, 3}, "yellow", down, end, "yellow 70: Found");
        row("several: from the bottom", {0, 3}, "40", up, end, "black 40: Found");
        row("several: no hit", {0, 3}, "green", down, wrap, "cyan 40|black 40: Not Found");
        row("empty: the first", {}, "", down, end, "cyan 40: Found");
        row("empty: the next", {0}, "", down, end, "magenta 40: Found");
    }
    void finding()
    {
        QFETCH(const QVector<int>, selected);
        QFETCH(const QString, op);
        QFETCH(const bool, forward);
        QFETCH(const bool, wrap);
        QFETCH(const QString, result);
        RenameList list;
        list.selectRows(selected);
        ListRenameDialog dialog(list);
        dialog.choose(0, op);
        dialog.window.wrap_tick->setChecked(wrap);
        QCOMPARE(found(dialog, list, forward), result);
        QCOMPARE(list.texts(), RenameRows::inks().join('|'));
    }

    // The selection alone says where it goes on: there is no other memory.
    void findingGoesOnFromTheSelection()
    {
        RenameList list;
        ListRenameDialog dialog(list);
        dialog.choose(0, "40");
        QCOMPARE(found(dialog, list, true), QString("cyan 40: Found"));
        QCOMPARE(found(dialog, list, true), QString("magenta 40: Found"));
        QCOMPARE(found(dialog, list, true), QString("black 40: Found"));
        QCOMPARE(found(dialog, list, true), QString("black 40: Not Found"));
        QCOMPARE(found(dialog, list, false), QString("magenta 40: Found"));
        list.selectRows({});
        QCOMPARE(found(dialog, list, true), QString("cyan 40: Found"));
        list.selectRows({2});
        QCOMPARE(found(dialog, list, true), QString("black 40: Found"));
    }

    void caseIsIgnoredOnlyWithTheTick()
    {
        RenameList list({"CYAN", "cyan"});
        ListRenameDialog dialog(list);
        dialog.choose(0, "cyan");
        QCOMPARE(found(dialog, list, true), QString("CYAN: Found"));
        list.selectRows({});
        dialog.window.ignore_case_tick->setChecked(false);
        QCOMPARE(found(dialog, list, true), QString("cyan: Found"));
        dialog.window.wrap_tick->setChecked(true);
        dialog.choose(0, "Cyan");
        QCOMPARE(found(dialog, list, true), QString("cyan: Not Found"));
    }

    void theColumnIsLookedForByItsId()
    {
        RenameList list;
        ListRenameDialog dialog(list, 1);
        dialog.choose(0, "of yellow");
        QCOMPARE(found(dialog, list, true), QString("yellow 70: Found"));
        // While its section is another.
        list.view.setItemVisible(0, false);
        QCOMPARE(list.view.columnItemSection(1), 0);
        list.selectRows({});
        dialog.choose(0, "yellow");
        QCOMPARE(found(dialog, list, true), QString("yellow 70: Found"));
        dialog.choose(0, "of yellow");
        list.selectRows({});
        QCOMPARE(found(dialog, list, true), QString(": Not Found")); // the texts are those of the sections
        list.view.setItemVisible(1, false);
        dialog.choose(0, "yellow");
        QCOMPARE(found(dialog, list, true), QString(": Not Found"));
    }

    void itemsAreLookedAtInTheOrderOfTheView()
    {
        RenameList list;
        list.view.setSorting(0, false);
        ListRenameDialog dialog(list);
        dialog.choose(0, "40");
        QCOMPARE(found(dialog, list, true), QString("magenta 40: Found"));
        QCOMPARE(found(dialog, list, true), QString("cyan 40: Found"));
        QCOMPARE(found(dialog, list, true), QString("black 40: Found"));
    }

    void childrenAreNeitherFoundNorCounted()
    {
        RenameList list;
        auto *child = new RenameItem(&list, list.view.at(2), "child 40");
        list.view.setOpen(list.view.at(2), true);
        list.selectRows({0});
        list.view.setSelected(child, true);
        ListRenameDialog dialog(list);
        dialog.choose(0, "child");
        QCOMPARE(found(dialog, list, true), QString("cyan 40|child 40: Not Found"));
        dialog.choose(0, "40");
        // One is selected: the search goes on behind it. The child is selected no more.
        QCOMPARE(found(dialog, list, true), QString("magenta 40: Found"));
    }

    void hiddenItemsAreFound()
    {
        RenameList list;
        list.view.setFilterKeyword("yellow");
        QCOMPARE(list.view.rows(), QString("yellow 70"));
        ListRenameDialog dialog(list);
        dialog.choose(0, "40");
        QCOMPARE(found(dialog, list, true), QString("cyan 40: Found"));
        QCOMPARE(found(dialog, list, true), QString("magenta 40: Found"));
    }

    void aHitAloneIsSelectedAndInSight_data()
    {
        QTest::addColumn<int>("mode");
        QTest::newRow("extended") << int(Q3ListView::Extended);
        QTest::newRow("multi") << int(Q3ListView::Multi);
        QTest::newRow("single") << int(Q3ListView::Single);
    }
    void aHitAloneIsSelectedAndInSight()
    {
        QFETCH(const int, mode);
        RenameList list(numberedInks(200));
        list.view.setSelectionMode(Q3ListView::SelectionMode(mode));
        QVERIFY(isVisibleWindow(&list.view));
        list.selectRows({1, 2, 3});
        ListRenameDialog dialog(list);
        dialog.choose(0, "ink 150");
        QCOMPARE(found(dialog, list, true), QString("ink 150: Found"));
        QVERIFY(list.view.itemRect(list.view.at(150)).isValid());
        QVERIFY(list.view.viewport()->rect().contains(list.view.itemRect(list.view.at(150)).center()));
    }

    void anEmptyListHasNothing()
    {
        RenameList list{QStringList()};
        ListRenameDialog dialog(list);
        for (const bool wrap : {false, true}) {
            dialog.window.wrap_tick->setChecked(wrap);
            dialog.choose(0, "");
            QCOMPARE(found(dialog, list, true), QString(": Not Found"));
            QCOMPARE(found(dialog, list, false), QString(": Not Found"));
        }
        QCOMPARE(dialog.apply("applyToAll"), 0);
    }

    void findingNeedsTheFindMethod()
    {
        RenameList list;
        ListRenameDialog dialog(list);
        dialog.choose(1, "40");
        QVERIFY(QMetaObject::invokeMethod(&dialog.window, "findNext"));
        QVERIFY(QMetaObject::invokeMethod(&dialog.window, "findPrev"));
        QCOMPARE(dialog.result(), QString());
        QVERIFY(list.selectedTexts().isEmpty());
    }

    void itemsMayGoWhenAHitIsSelected_data()
    {
        QTest::addColumn<QVector<int>>("selected");
        QTest::newRow("when the hit is selected") << QVector<int>{};
        QTest::newRow("when the others are not selected any more") << QVector<int>{1, 2};
    }
    void itemsMayGoWhenAHitIsSelected()
    {
        QFETCH(const QVector<int>, selected);
        RenameList list;
        list.selectRows(selected);
        ListRenameDialog dialog(list);
        dialog.choose(0, "40");
        connect(&list.view, QOverload<>::of(&Q3ListView::selectionChanged), &list.view,
                [&list] { list.view.clear(); });
        QCOMPARE(found(dialog, list, true), QString(": Found"));
        QCOMPARE(found(dialog, list, true), QString(": Not Found"));
    }

    void theViewMayGoWhenAHitIsSelected_data()
    {
        QTest::addColumn<QVector<int>>("selected");
        QTest::newRow("when the hit is selected") << QVector<int>{};
        QTest::newRow("when the others are not selected any more") << QVector<int>{1, 2};
    }
    void theViewMayGoWhenAHitIsSelected()
    {
        QFETCH(const QVector<int>, selected);
        auto list = std::make_unique<RenameList>();
        list->selectRows(selected);
        list->renameItems(0);
        const QPointer<TaviRenameDialog> dialog = renameDialogs().value(0);
        dialog->op_edit->setText("40");
        connect(&list->view, QOverload<>::of(&Q3ListView::selectionChanged), this, [&list] { list.reset(); });
        dialog->find_next_button->click();
        QVERIFY(!list);
        QVERIFY(!dialog);
    }
};

TAVI_GUI_TEST_MAIN(TestTaviListViewRenameDlgFind)
#include "tst_tavilistviewrenamedlg_find.moc"
