// SPDX-License-Identifier: MIT
#ifndef TESTS_TREEVIEWS_RENAMEOPENINGTEST_H
#define TESTS_TREEVIEWS_RENAMEOPENINGTEST_H

#include "tests/support/tavitest.h"
#include "tests/treeviews/renamerows.h"

#include <QDialog>
#include <QPointer>

/// What holds for all views that open a rename dialog. The test of a view derives from this and adds what is its own.
class RenameOpeningTest : public TaviTest
{
    Q_OBJECT

protected:
    virtual std::unique_ptr<RenameRows> makeRows(const QStringList &texts) = 0;

private Q_SLOTS:
    void theDialogIsOpenBesideTheView()
    {
        const auto rows = makeRows(RenameRows::inks());
        rows->registry.putstring("inks", "rename_value", "40");
        rows->widget().show();
        QVERIFY(QTest::qWaitForWindowExposed(&rows->widget()));
        rows->renameItems(0);
        QCOMPARE(renameDialogs().size(), 1);
        TaviRenameDialog *dialog = renameDialogs().first();
        QVERIFY(dialog->isVisible());
        QVERIFY(!dialog->isModal());
        QCOMPARE(dialog->windowTitle(), QString("Rename or Find (Ink)"));
        QCOMPARE(dialog->op_edit->text(), QString("40"));
        QSignalSpy renamed(&rows->widget(), SIGNAL(itemsRenamed(int)));
        dialog->replace_edit->setText("50");
        dialog->apply_all_button->click();
        QCOMPARE(renamed.count(), 1);
        QCOMPARE(rows->texts(), QString("cyan 50|magenta 50|yellow 70|black 50"));
    }

    void aClosedDialogIsDeletedLater()
    {
        const auto rows = makeRows(RenameRows::inks());
        rows->renameItems(0);
        const QPointer<TaviRenameDialog> dialog = renameDialogs().value(0);
        QVERIFY(dialog);
        dialog->op_edit->setText("40");
        dialog->close();
        QVERIFY(dialog);
        QCOMPARE(rows->registry.getstring("inks", "rename_value"), std::string("40"));
        QTRY_VERIFY(!dialog);
        rows->dismissRenameDialog(); // there is none any more
        rows->renameItems(1);
        QCOMPARE(renameDialogs().size(), 1);
        QCOMPARE(renameDialogs().first()->op_edit->text(), QString("40"));
        QCOMPARE(renameDialogs().first()->windowTitle(), QString("Rename or Find (Remark)"));
    }

    void dismissingDeletesLater()
    {
        const auto rows = makeRows(RenameRows::inks());
        rows->renameItems(0);
        const QPointer<TaviRenameDialog> dialog = renameDialogs().value(0);
        rows->dismissRenameDialog();
        QVERIFY(dialog);
        rows->dismissRenameDialog();
        QTRY_VERIFY(!dialog);
    }

    void anOpenDialogIsReplacedAtOnce()
    {
        const auto rows = makeRows(RenameRows::inks());
        rows->renameItems(0);
        const QPointer<TaviRenameDialog> first = renameDialogs().value(0);
        first->op_edit->setText("40");
        rows->renameItems(1);
        QVERIFY(!first);
        QCOMPARE(renameDialogs().size(), 1);
        QCOMPARE(renameDialogs().first()->op_edit->text(), QString()); // it was not closed, so nothing is kept
    }

    void aDialogThatIsClosingIsLeftToItself()
    {
        const auto rows = makeRows(RenameRows::inks());
        rows->renameItems(0);
        const QPointer<TaviRenameDialog> first = renameDialogs().value(0);
        connect(first, &TaviRenameDialog::closed, this, [&rows] { rows->renameItems(1); });
        first->close();
        QVERIFY(first); // later
        QTRY_VERIFY(!first);
        QCOMPARE(renameDialogs().size(), 1);
    }

    void aSlotOfTheDialogMayOpenAnother()
    {
        const auto rows = makeRows(RenameRows::inks());
        rows->renameItems(0);
        const QPointer<TaviRenameDialog> first = renameDialogs().value(0);
        first->op_edit->setText("40");
        rows->whenRenamed([&rows] { rows->renameItems(1); });
        first->apply_all_button->click();
        QVERIFY(!first);
        QCOMPARE(renameDialogs().size(), 1);
    }

    void fromAModalWindowItIsModal()
    {
        const auto rows = makeRows(RenameRows::inks());
        auto window = std::make_unique<QDialog>();
        rows->widget().setParent(window.get());
        window->setModal(true);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        QPointer<TaviRenameDialog> dialog;
        ModalRenameUser user([&](TaviRenameDialog *open) {
            dialog = open;
            open->op_edit->setText("40");
            open->replace_edit->setText("50");
            open->apply_all_button->click();
            open->close();
        });
        rows->renameItems(0);
        QVERIFY(user.seen);
        QVERIFY(!dialog); // when it is closed it is gone
        QCOMPARE(rows->texts(), QString("cyan 50|magenta 50|yellow 70|black 50"));
        QCOMPARE(rows->registry.getstring("inks", "rename_value"), std::string("40"));
        rows->widget().setParent(nullptr);
    }

    void escapeEndsAModalOne()
    {
        const auto rows = makeRows(RenameRows::inks());
        rows->widget().setWindowModality(Qt::WindowModal);
        ModalRenameUser user([](TaviRenameDialog *open) { QTest::keyClick(open->op_edit, Qt::Key_Escape); });
        rows->renameItems(0);
        QVERIFY(user.seen);
        QVERIFY(renameDialogs().isEmpty());
    }

    void theViewMayGoWhileItIsOpen()
    {
        auto rows = makeRows(RenameRows::inks());
        rows->renameItems(0);
        const QPointer<TaviRenameDialog> dialog = renameDialogs().value(0);
        QVERIFY(dialog);
        rows.reset();
        QVERIFY(!dialog);
    }

    // And the settings with it.
    void theViewMayGoWhileItIsModal()
    {
        auto rows = makeRows(RenameRows::inks());
        rows->widget().setWindowModality(Qt::ApplicationModal);
        QPointer<TaviRenameDialog> dialog;
        ModalRenameUser user([&](TaviRenameDialog *open) {
            dialog = open;
            rows.reset();
            QVERIFY(!dialog || !dialog->isVisible());
        });
        rows->renameItems(0);
        QVERIFY(user.seen);
        QVERIFY(!dialog);
    }
};

#endif
