// SPDX-License-Identifier: MIT
#include "tests/support/activewindow.h"
#include "tests/support/menuuser.h"
#include "tests/support/tavitest.h"
#include "tests/support/virtualplace.h"

#include <QDialog>
#include <QLineEdit>

namespace {

struct Shape {
    virtual ~Shape() = default;
    virtual int corners() const { return 0; }
    virtual int sides() const { return 0; }
};

} // namespace

/// Menus and dialogs used from the background, windows that get the keyboard, and places of virtual operations.
class TestMenuUser : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aMenuIsReadAndAnEntryChosen()
    {
        QMenu menu;
        menu.addAction("Open");
        menu.addSeparator();
        for (const bool ticked : {true, false}) {
            QAction *action = menu.addAction(ticked ? "Ticked" : "Not ticked");
            action->setCheckable(true);
            action->setChecked(ticked);
        }
        QStringList read;
        MenuUser user([&read](QMenu &open) {
            read = entries(open);
            choose(open, "Not ticked");
        });
        QVERIFY(!user.seen);
        const QAction *chosen = menu.exec();
        QVERIFY(user.seen);
        QVERIFY(chosen);
        QCOMPARE(chosen->text(), QString("Not ticked"));
        QVERIFY(chosen->isChecked());
        QCOMPARE(read, QStringList({"Open", "-", "[x] Ticked", "[ ] Not ticked"}));
    }

    void aMenuIsClosedWithoutAChoice()
    {
        QMenu menu;
        menu.addAction("Open");
        const MenuUser user(closeMenu);
        QVERIFY(!menu.exec());
        QVERIFY(user.seen);
    }

    void aDialogIsUsedButNoOtherWindow()
    {
        QDialog dialog;
        PopupUser<QMenu> of_menus([](QMenu &) {});
        const PopupUser<QDialog> user([](QDialog &open) { open.done(7); });
        QCOMPARE(dialog.exec(), 7);
        QVERIFY(user.seen);
        QVERIFY(!of_menus.seen);
    }

    void aWindowGetsTheKeyboard()
    {
        QLineEdit first, second;
        QVERIFY(showActive(&first));
        QVERIFY(first.hasFocus());
        QVERIFY(showActive(&second));
        QVERIFY(second.hasFocus() && !first.hasFocus());
    }

    void virtualOperationsHaveTheirPlaces()
    {
        QCOMPARE(virtualPlace(&Shape::sides) - virtualPlace(&Shape::corners), std::ptrdiff_t(sizeof(void *)));
    }
};

TAVI_GUI_TEST_MAIN(TestMenuUser)
#include "tst_menuuser.moc"
