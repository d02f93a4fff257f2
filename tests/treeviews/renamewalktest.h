// SPDX-License-Identifier: MIT
#ifndef TESTS_TREEVIEWS_RENAMEWALKTEST_H
#define TESTS_TREEVIEWS_RENAMEWALKTEST_H

#include "tests/support/tavitest.h"
#include "tests/treeviews/renamerows.h"

/// What holds for the rename dialogs of all views: which rows are renamed, to what, and what is told of it. The test
/// of a dialog derives from this and adds what is its own.
class RenameWalkTest : public TaviTest
{
    Q_OBJECT

protected:
    virtual std::unique_ptr<RenameRows> makeRows(const QStringList &texts) = 0;

private Q_SLOTS:
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
        const auto rows = makeRows(RenameRows::inks());
        rows->selectRows(selected);
        const auto dialog = rows->makeDialog(0);
        RenameUser(*dialog).choose(method, op, with);
        QSignalSpy renamed(&rows->widget(), SIGNAL(itemsRenamed(int)));
        QCOMPARE(RenameUser(*dialog).apply(slot.toLatin1().constData()), changed);
        QCOMPARE(rows->texts(), texts);
        QCOMPARE(rows->texts(1),
                 QString("remark of cyan 40|remark of magenta 40|remark of yellow 70|remark of black 40"));
        QCOMPARE(dialog->results_label->text(), result);
        QCOMPARE(renamed.count(), 1);
        QCOMPARE(renamed.at(0).at(0).toInt(), changed);
        QCOMPARE(rows->selectedTexts().size(), selected.size());
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
        const auto rows = makeRows({"a", "b", "c"});
        rows->selectRows({1, 2});
        const auto dialog = rows->makeDialog(0);
        RenameUser(*dialog).choose(1, "x");
        QPushButton *const buttons[] = {dialog->apply_all_button, dialog->apply_selected_button,
                                        dialog->apply_current_button};
        QTest::mouseClick(buttons[which], Qt::LeftButton);
        QCOMPARE(rows->texts(), texts);
    }

    void aMethodThatDoesNotExistRenamesNothing()
    {
        const auto rows = makeRows(RenameRows::inks());
        const auto dialog = rows->makeDialog(0);
        dialog->op_combo->addItem("Turn over");
        RenameUser(*dialog).choose(3, "40", "50");
        QSignalSpy renamed(&rows->widget(), SIGNAL(itemsRenamed(int)));
        QCOMPARE(RenameUser(*dialog).apply("applyToAll"), 0);
        dialog->op_combo->setCurrentIndex(-1);
        QCOMPARE(RenameUser(*dialog).apply("applyToAll"), 0);
        QCOMPARE(renamed.count(), 0);
        QCOMPARE(dialog->results_label->text(), QString());
    }

    void rowsThatCannotBeRenamedAreLeftOut()
    {
        const auto rows = makeRows({"a", "a", "a"});
        rows->setCanBeRenamed(0, 0, false);
        rows->setCanBeRenamed(0, 1, true);
        const auto dialog = rows->makeDialog(0);
        RenameUser(*dialog).choose(0, "a", "b");
        QCOMPARE(RenameUser(*dialog).apply("applyToAll"), 2);
        QCOMPARE(rows->texts(), QString("a|b|b"));
        QCOMPARE(dialog->results_label->text(), QString("Found 2 items"));
        // Nor do they end the walk for the current one.
        RenameUser(*dialog).choose(1, "x");
        rows->selectRows({0, 1, 2});
        QCOMPARE(RenameUser(*dialog).apply("applyToCurrent"), 1);
        QCOMPARE(rows->texts(), QString("a|xb|b"));
    }
};

#endif
