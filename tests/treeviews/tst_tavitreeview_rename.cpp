// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/renamefixture.h"

#include <QDialog>
#include <QPushButton>

#include <functional>
#include <memory>

namespace {

/// The dialogs of a view that are there.
QList<TaviTreeViewRenameDLG *> dialogsOf(const TaviTreeView &view)
{
    return view.findChildren<TaviTreeViewRenameDLG *>(QString(), Qt::FindDirectChildrenOnly);
}

/// Waits in the background for a dialog that is modal and visible, and does with it what the test says.
class ModalUser : public QObject
{
public:
    explicit ModalUser(std::function<void(TaviTreeViewRenameDLG *)> use) : use_(std::move(use)) { startTimer(10); }

    bool seen = false;

protected:
    void timerEvent(QTimerEvent *event) override
    {
        auto *dialog = qobject_cast<TaviTreeViewRenameDLG *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        killTimer(event->timerId());
        seen = true;
        use_(dialog);
    }

private:
    const std::function<void(TaviTreeViewRenameDLG *)> use_;
};

} // namespace

/// The view opening its rename dialog.
class TestTaviTreeViewRename : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void theDialogIsOpenBesideTheView()
    {
        RenameTree tree;
        tree.registry.putstring("inks", "rename_value", "40");
        tree.view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&tree.view));
        tree.view.renameItems(0, tree.registry, tree.section);
        QCOMPARE(dialogsOf(tree.view).size(), 1);
        TaviTreeViewRenameDLG *dialog = dialogsOf(tree.view).first();
        QVERIFY(dialog->isVisible());
        QVERIFY(!dialog->isModal());
        QCOMPARE(dialog->windowTitle(), QString("Rename or Find (Ink)"));
        QCOMPARE(dialog->op_edit->text(), QString("40"));
        QSignalSpy renamed(&tree.view, SIGNAL(itemsRenamed(int)));
        dialog->replace_edit->setText("50");
        dialog->apply_all_button->click();
        QCOMPARE(renamed.count(), 1);
        QCOMPARE(tree.texts(), QString("cyan 50|magenta 50|yellow 70|black 50"));
    }

    void aClosedDialogIsDeletedLater()
    {
        RenameTree tree;
        tree.view.renameItems(0, tree.registry, tree.section);
        const QPointer<TaviTreeViewRenameDLG> dialog = dialogsOf(tree.view).value(0);
        QVERIFY(dialog);
        dialog->op_edit->setText("40");
        dialog->close();
        QVERIFY(dialog);
        QCOMPARE(tree.registry.getstring("inks", "rename_value"), std::string("40"));
        QTRY_VERIFY(!dialog);
        tree.view.dismissRenameDialog(); // there is none any more
        tree.view.renameItems(1, tree.registry, tree.section);
        QCOMPARE(dialogsOf(tree.view).size(), 1);
        QCOMPARE(dialogsOf(tree.view).first()->op_edit->text(), QString("40"));
        QCOMPARE(dialogsOf(tree.view).first()->windowTitle(), QString("Rename or Find (Remark)"));
    }

    void dismissingDeletesLater()
    {
        RenameTree tree;
        tree.view.renameItems(0, tree.registry, tree.section);
        const QPointer<TaviTreeViewRenameDLG> dialog = dialogsOf(tree.view).value(0);
        tree.view.dismissRenameDialog();
        QVERIFY(dialog);
        tree.view.dismissRenameDialog();
        QTRY_VERIFY(!dialog);
    }

    void anOpenDialogIsReplacedAtOnce()
    {
        RenameTree tree;
        tree.view.renameItems(0, tree.registry, tree.section);
        const QPointer<TaviTreeViewRenameDLG> first = dialogsOf(tree.view).value(0);
        first->op_edit->setText("40");
        tree.view.renameItems(1, tree.registry, tree.section);
        QVERIFY(!first);
        QCOMPARE(dialogsOf(tree.view).size(), 1);
        QCOMPARE(dialogsOf(tree.view).first()->op_edit->text(), QString()); // it was not closed, so nothing is kept
    }

    void aDialogThatIsClosingIsLeftToItself()
    {
        RenameTree tree;
        tree.view.renameItems(0, tree.registry, tree.section);
        const QPointer<TaviTreeViewRenameDLG> first = dialogsOf(tree.view).value(0);
        connect(first, &TaviRenameDialog::closed, this,
                [&tree] { tree.view.renameItems(1, tree.registry, tree.section); });
        first->close();
        QVERIFY(first); // later
        QTRY_VERIFY(!first);
        QCOMPARE(dialogsOf(tree.view).size(), 1);
    }

    void aSlotOfTheDialogMayOpenAnother()
    {
        RenameTree tree;
        tree.view.renameItems(0, tree.registry, tree.section);
        const QPointer<TaviTreeViewRenameDLG> first = dialogsOf(tree.view).value(0);
        first->op_edit->setText("40");
        connect(&tree.view, &TaviTreeView::itemsRenamed, this,
                [&tree] { tree.view.renameItems(1, tree.registry, tree.section); });
        first->apply_all_button->click();
        QVERIFY(!first);
        QCOMPARE(dialogsOf(tree.view).size(), 1);
    }

    void fromAModalWindowItIsModal()
    {
        RenameTree tree;
        auto window = std::make_unique<QDialog>();
        tree.view.setParent(window.get());
        window->setModal(true);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        QPointer<TaviTreeViewRenameDLG> dialog;
        ModalUser user([&](TaviTreeViewRenameDLG *open) {
            dialog = open;
            QCOMPARE(open->parentWidget(), &tree.view);
            open->op_edit->setText("40");
            open->replace_edit->setText("50");
            open->apply_all_button->click();
            open->close();
        });
        tree.view.renameItems(0, tree.registry, tree.section);
        QVERIFY(user.seen);
        QVERIFY(!dialog); // when it is closed it is gone
        QCOMPARE(tree.texts(), QString("cyan 50|magenta 50|yellow 70|black 50"));
        QCOMPARE(tree.registry.getstring("inks", "rename_value"), std::string("40"));
        tree.view.setParent(nullptr);
    }

    void escapeEndsAModalOne()
    {
        RenameTree tree;
        tree.view.setWindowModality(Qt::WindowModal);
        ModalUser user([](TaviTreeViewRenameDLG *open) { QTest::keyClick(open->op_edit, Qt::Key_Escape); });
        tree.view.renameItems(0, tree.registry, tree.section);
        QVERIFY(user.seen);
        QVERIFY(dialogsOf(tree.view).isEmpty());
    }

    void theViewMayGoWhileItIsOpen()
    {
        auto tree = std::make_unique<RenameTree>();
        tree->view.renameItems(0, tree->registry, tree->section);
        const QPointer<TaviTreeViewRenameDLG> dialog = dialogsOf(tree->view).value(0);
        QVERIFY(dialog);
        tree.reset();
        QVERIFY(!dialog);
    }

    void theViewMayGoWhileItIsModal()
    {
        TaviTreeModel model({"Ink"});
        auto *view = new TaviTreeView;
        view->setModel(&model);
        view->setWindowModality(Qt::ApplicationModal);
        TaviRegistry registry;
        std::string section = "inks";
        QPointer<TaviTreeViewRenameDLG> dialog;
        ModalUser user([&](TaviTreeViewRenameDLG *open) {
            dialog = open;
            delete view;
        });
        view->renameItems(0, registry, section);
        QVERIFY(user.seen);
        QVERIFY(!dialog);
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
        TaviTreeViewRenameDLG *dialog = dialogsOf(view).value(0);
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
