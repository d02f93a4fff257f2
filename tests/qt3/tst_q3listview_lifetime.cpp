// SPDX-License-Identifier: MIT
#include "tests/qt3/listfixture.h"
#include "tests/qt3/listsignals.h"
#include "tests/support/tavitest.h"

#include <QLineEdit>

#include <memory>

/// Items go in slots of every signal, and in what the view calls of them; the sanitizer watches.
class TestQ3ListViewLifetime : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void itemsGoInAnySlot_data()
    {
        QTest::addColumn<QByteArray>("signal");
        QTest::addColumn<int>("mode");
        QTest::addColumn<bool>("all");
        for (const char *name : signals_of_list_items) {
            for (const int mode :
                 {Q3ListView::Single, Q3ListView::Multi, Q3ListView::Extended, Q3ListView::NoSelection}) {
                for (const bool all : {false, true})
                    QTest::addRow("%s, mode %d, %s", name, mode, all ? "all" : "the current")
                        << QByteArray(name) << mode << all;
            }
        }
    }
    void itemsGoInAnySlot()
    {
        QFETCH(QByteArray, signal);
        QFETCH(int, mode);
        QFETCH(bool, all);
        ListFixture list(30, static_cast<Q3ListView::SelectionMode>(mode));
        list.setRootIsDecorated(true);
        for (Q3ListViewItem *item : list.items) {
            auto *child = new Q3ListViewItem(item, QStringLiteral("child"));
            new Q3ListViewItem(child, QStringLiteral("deep"));
            item->setRenameEnabled(0, true);
        }
        list_ = &list;
        all_ = all;
        happened_ = 0;
        list.show();
        list.updateGeometry();
        QCoreApplication::processEvents();
        connect(&list, QByteArray(QByteArray::number(QSIGNAL_CODE) + signal).constData(), SLOT(destroy()));
        useList(list);
        const bool single_only = signal == "selectionChanged(Q3ListViewItem*)";
        const bool selection = signal.startsWith("selectionChanged");
        if (single_only && mode != Q3ListView::Single)
            QCOMPARE(happened_, 0);
        else if (selection && mode == Q3ListView::NoSelection)
            QCOMPARE(happened_, 1); // the program may select
        else
            QVERIFY(happened_ > 0);
    }

    void destroy()
    {
        if (sender() != list_)
            return; // it is called as a test function, too
        ++happened_;
        if (all_ || !list_->currentItem()) {
            list_->clear();
            return;
        }
        Q3ListViewItem *item = list_->currentItem();
        while (item->parent())
            item = item->parent();
        delete item;
    }

    void itemsGoInTheirOwnOperations()
    {
        struct Suicidal : Q3ListViewItem {
            using Q3ListViewItem::Q3ListViewItem;
            void activate() override { delete this; }
            void startRename(int) override { delete this; }
        };
        ListFixture list(3);
        new Suicidal(&list, list.at(0));
        QVERIFY(list.showAndWait());
        list.click(list.at(0)->itemBelow());
        QCOMPARE(list.childCount(), 3);
        auto *second = new Suicidal(&list, list.at(0));
        list.setCurrentItem(second);
        QTest::keyClick(&list, Qt::Key_Space);
        QCOMPARE(list.childCount(), 3);
        auto *third = new Suicidal(&list, list.at(0));
        third->setRenameEnabled(0, true);
        list.setCurrentItem(third);
        QTest::keyClick(&list, Qt::Key_F2);
        QCOMPARE(list.childCount(), 3);
    }

    void anItemGoesWhileItIsRenamed()
    {
        ListFixture list(3);
        list.at(1)->setRenameEnabled(0, true);
        QVERIFY(list.showAndWait());
        list.at(1)->startRename(0);
        QVERIFY(list.isRenaming());
        delete list.at(1);
        QVERIFY(!list.isRenaming());
        list.at(0)->setRenameEnabled(0, true);
        list.at(0)->startRename(0);
        list.clear();
        QVERIFY(!list.isRenaming());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(list.findChildren<QLineEdit *>().isEmpty());
    }

    void theViewGoesWhileAnItemIsRenamed()
    {
        auto list = std::make_unique<ListFixture>(3);
        list->at(1)->setRenameEnabled(0, true);
        QVERIFY(list->showAndWait());
        list->at(1)->startRename(0);
        list.reset();
    }

    void aPressedItemGoesBeforeTheRelease()
    {
        ListFixture list(5, Q3ListView::Extended);
        QVERIFY(list.showAndWait());
        QSignalSpy clicked(&list, SIGNAL(clicked(Q3ListViewItem *)));
        const QPoint at = list.middleOf(list.at(2));
        QTest::mousePress(list.viewport(), Qt::LeftButton, Qt::NoModifier, at);
        delete list.at(2);
        list.move(list.middleOf(list.at(4)));
        list.release(at);
        QCOMPARE(clicked.count(), 0);
    }

    void thousandsGoOneByOne()
    {
        ListFixture list(20000);
        QVERIFY(list.itemPos(list.at(19999)) > 0);
        for (size_t row = 0; row < list.items.size(); row += 2)
            delete list.items[row];
        QCOMPARE(list.childCount(), 10000);
        QCOMPARE(list.at(19999)->itemPos(), 9999 * list.at(1)->height());
    }

private:
    void useList(ListFixture &list)
    {
        const auto row = [&list](int number) {
            Q3ListViewItem *item = list.firstChild();
            while (item && number-- > 0)
                item = item->nextSibling();
            return item;
        };
        const auto refill = [&list] {
            Q3ListViewItem *last = list.lastItem();
            while (list.childCount() < 8) {
                last = new Q3ListViewItem(&list, QStringLiteral("more"));
                new Q3ListViewItem(last, QStringLiteral("child"));
                last->setRenameEnabled(0, true);
            }
            list.setContentsPos(0, 0);
        };
        list.click(row(2));
        refill();
        list.click(row(3), Qt::NoModifier, 0, Qt::RightButton);
        refill();
        list.click(row(4), Qt::ShiftModifier);
        refill();
        list.doubleClick(row(1));
        refill();
        const QPoint expander(10, list.itemRect(row(2)).center().y());
        QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, expander);
        refill();
        QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(10, list.itemRect(row(2)).center().y()));
        refill();
        list.dragTo(list.middleOf(row(1)), list.middleOf(row(4)));
        list.release(QPoint(30, 30));
        refill();
        list.dragTo(QPoint(250, 10), QPoint(100, 60));
        list.release(QPoint(100, 60));
        refill();
        QMouseEvent over(QEvent::MouseMove, list.middleOf(row(2)), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(list.viewport(), &over);
        refill();
        QContextMenuEvent menu(QContextMenuEvent::Mouse, list.middleOf(row(2)), QPoint());
        QCoreApplication::sendEvent(list.viewport(), &menu);
        refill();
        list.setCurrentItem(row(1));
        refill();
        for (const int key : {Qt::Key_Down, Qt::Key_Return, Qt::Key_Space, Qt::Key_Right, Qt::Key_Right, Qt::Key_Left,
                              Qt::Key_Left, Qt::Key_End, Qt::Key_PageUp, Qt::Key_R, Qt::Key_Plus, Qt::Key_Minus}) {
            if (!list.currentItem())
                list.setCurrentItem(row(0));
            refill();
            QTest::keyClick(&list, static_cast<Qt::Key>(key),
                            key == Qt::Key_PageUp ? Qt::ShiftModifier : Qt::NoModifier);
            refill();
        }
        row(3)->startRename(0);
        if (auto *editor = list.findChild<QLineEdit *>(QStringLiteral("list view editor"))) {
            editor->setText(QStringLiteral("renamed"));
            QTest::keyClick(editor, Qt::Key_Return);
        }
        refill();
        list.selectAll(true);
        list.invertSelection();
        list.clearSelection();
        list.grab();
    }

    ListFixture *list_ = nullptr;
    bool all_ = false;
    int happened_ = 0;
};

TAVI_GUI_TEST_MAIN(TestQ3ListViewLifetime)

#include "tst_q3listview_lifetime.moc"
