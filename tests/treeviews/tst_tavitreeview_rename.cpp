// SPDX-License-Identifier: MIT
#include "tests/treeviews/renamefixture.h"
#include "tests/treeviews/renameopeningtest.h"

#include <memory>

/// The tree view opening its rename dialog.
class TestTaviTreeViewRename : public RenameOpeningTest
{
    Q_OBJECT

protected:
    std::unique_ptr<RenameRows> makeRows(const QStringList &texts) override
    {
        return std::make_unique<RenameTree>(texts);
    }

private Q_SLOTS:
    void theDialogIsTheViewsOwn()
    {
        RenameTree tree;
        tree.renameItems(0);
        const auto *dialog = qobject_cast<TaviTreeViewRenameDLG *>(renameDialogs().value(0));
        QVERIFY(dialog);
        QCOMPARE(dialog->parentWidget(), &tree.view);
    }

    void theModelMayGoWhileItIsOpen()
    {
        auto model = std::make_unique<TaviTreeModel>(QList<QVariant>{"Ink"});
        model->appendItem(new TaviTreeItem(QList<QVariant>{"cyan"}, nullptr));
        TaviTreeView view;
        view.setModel(model.get());
        TaviRegistry registry;
        std::string section = "inks";
        view.renameItems(0, registry, section);
        TaviTreeViewRenameDLG *dialog = view.findChild<TaviTreeViewRenameDLG *>();
        dialog->op_edit->setText("cyan");
        dialog->find_next_button->click();
        model.reset();
        dialog->find_next_button->click();
        QCOMPARE(dialog->results_label->text(), QString("Not Found"));
        dialog->apply_all_button->click();
        QCOMPARE(dialog->results_label->text(), QString("Not Found"));
    }
};

TAVI_GUI_TEST_MAIN(TestTaviTreeViewRename)
#include "tst_tavitreeview_rename.moc"
