// SPDX-License-Identifier: MIT
#include "tests/listviews/listrenamefixture.h"
#include "tests/treeviews/renameopeningtest.h"

/// The list opening its rename dialog.
class TestTaviListViewRename : public RenameOpeningTest
{
    Q_OBJECT

protected:
    std::unique_ptr<RenameRows> makeRows(const QStringList &texts) override
    {
        return std::make_unique<RenameList>(texts);
    }

private Q_SLOTS:
    void theDialogHasNoParentAndGoesWithTheView()
    {
        auto list = std::make_unique<RenameList>();
        list->renameItems(0);
        const QPointer<TaviListViewRenameDLG> dialog =
            qobject_cast<TaviListViewRenameDLG *>(renameDialogs().value(0));
        QVERIFY(dialog);
        QVERIFY(!dialog->parentWidget());
        dialog->op_edit->setText("40");
        list.reset();
        QVERIFY(!dialog);
    }

    void theNumberIsTheIdOfAColumn()
    {
        RenameList list;
        list.view.setItemVisible(0, false);
        QCOMPARE(list.view.columnItemSection(1), 0);
        list.renameItems(1);
        QCOMPARE(renameDialogs().value(0)->windowTitle(), QString("Rename or Find (Remark)"));
    }

    void aViewThatGoesLeavesNoSettings_data()
    {
        QTest::addColumn<bool>("modal");
        QTest::newRow("beside the view") << false;
        QTest::newRow("modal") << true;
    }
    void aViewThatGoesLeavesNoSettings()
    {
        QFETCH(const bool, modal);
        TaviRegistry registry;
        std::string section = "inks";
        auto *view = new TaviListView(true);
        const auto leave = [view](TaviRenameDialog *open) {
            open->op_edit->setText("40");
            delete view;
        };
        if (modal)
            view->setWindowModality(Qt::ApplicationModal);
        ModalRenameUser user(leave);
        view->renameItems(0, registry, section);
        QCOMPARE(user.seen, modal);
        if (!modal)
            leave(renameDialogs().value(0));
        QVERIFY(renameDialogs().isEmpty());
        QVERIFY(registry.getstring("inks", "rename_value").empty());
    }

    void aModalOneMayBeOpenedByOneBesideTheView()
    {
        RenameList list;
        list.renameItems(0);
        const QPointer<TaviRenameDialog> first = renameDialogs().value(0);
        list.view.setWindowModality(Qt::WindowModal);
        ModalRenameUser user([&first](TaviRenameDialog *open) {
            QVERIFY(!first);
            open->close();
        });
        list.renameItems(0);
        QVERIFY(user.seen);
        QVERIFY(renameDialogs().isEmpty());
    }

    void theViewMayGoWhenItTellsThatItemsWereRenamed_data()
    {
        QTest::addColumn<bool>("modal");
        QTest::newRow("beside the view") << false;
        QTest::newRow("modal") << true;
    }
    void theViewMayGoWhenItTellsThatItemsWereRenamed()
    {
        QFETCH(const bool, modal);
        auto list = std::make_unique<RenameList>();
        list->whenRenamed([&list] { list.reset(); });
        const auto rename = [](TaviRenameDialog *open) {
            open->op_edit->setText("40");
            open->apply_all_button->click();
        };
        if (modal)
            list->view.setWindowModality(Qt::WindowModal);
        ModalRenameUser user(rename);
        list->renameItems(0);
        QCOMPARE(user.seen, modal);
        if (!modal)
            rename(renameDialogs().value(0));
        QVERIFY(!list);
        QVERIFY(renameDialogs().isEmpty());
    }
};

TAVI_GUI_TEST_MAIN(TestTaviListViewRename)
#include "tst_tavilistview_rename.moc"
