// SPDX-License-Identifier: MIT
#include "taviapp/taviregistry.h"
#include "tests/support/tavitest.h"
#include "tests/treeviews/orderdialoguser.h"

#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QStatusBar>

#include <memory>

namespace {

/// An entry that can't be copied.
class SingleItem : public ConfigOrderItem
{
public:
    using ConfigOrderItem::operator=;
    ConfigOrderItem *clone() const override { return nullptr; }
};

} // namespace

/// The order dialog: what it shows, what it does, what it hands back.
class TestTaviConfigOrder : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void theObject()
    {
        QWidget parent;
        const TaviConfigOrder order(&parent, "things");
        QCOMPARE(order.objectName(), QString("things"));
        QVERIFY(order.parent() == nullptr);
        const TaviConfigOrder nameless("Title", nullptr, nullptr);
        QCOMPARE(nameless.objectName(), QString());
    }

    void theDialogStandsReady()
    {
        OrderRun things;
        things.run([](const OrderDialog &dialog) {
            QCOMPARE(dialog.window.windowTitle(), QString("Order of Things"));
            QVERIFY(dialog.window.isModal());
            QVERIFY(dialog.window.help_button->isHidden());
            QVERIFY(dialog.window.hidden_label->isHidden());
            QVERIFY(dialog.window.showing_label->isHidden());
            QVERIFY(dialog.window.hidden_frame->isVisible());
            for (const QToolButton *button : {dialog.window.make_showing_button, dialog.window.make_hidden_button,
                                              dialog.window.move_up_button, dialog.window.move_down_button}) {
                QVERIFY(button->isVisible());
                QVERIFY(!button->isEnabled());
            }
            QCOMPARE(dialog.left.model()->headerData(0, Qt::Horizontal).toString(), QString("All Items"));
            QCOMPARE(dialog.right.model()->headerData(0, Qt::Horizontal).toString(), QString("Showing"));
            QCOMPARE(dialog.left.dndFlags(), 2L);
            QCOMPARE(dialog.right.dndFlags(), 11L);
            QVERIFY(dialog.right.header()->isVisible());
            QCOMPARE(rowTexts(dialog.left), QString("a b c D E F"));
            QCOMPARE(rowTexts(dialog.right), QString("A B C"));
            for (ConfigOrderTree *tree : {&dialog.left, &dialog.right}) {
                QVERIFY(tree->isStatusBarEnabled());
                QVERIFY(tree->statusBar()->isVisible());
                auto *layout = qobject_cast<QHBoxLayout *>(tree->widget()->parentWidget()->layout());
                QVERIFY(layout);
                QCOMPARE(layout->contentsMargins(), QMargins());
                QCOMPARE(layout->stretch(layout->indexOf(tree->widget())), 1);
            }
        });
    }

    void withoutATitleThereIsNone()
    {
        TaviConfigOrder order(nullptr, "things");
        QString title = QStringLiteral("not asked");
        OrderDialogUser user([&](const OrderDialog &dialog) { title = dialog.window.windowTitle(); });
        QList<ConfigOrderItem *> shown;
        order.reorder({}, shown, false, nullptr, nullptr);
        QCOMPARE(title, QString());
    }

    void cancelHandsNothingBack()
    {
        OrderRun things;
        const int result = things.run([](const OrderDialog &dialog) {
            selectRows(dialog.right, {0});
            dialog.press(dialog.window.move_down_button);
            QCOMPARE(rowTexts(dialog.right), QString("B A C"));
            dialog.finish(QDialogButtonBox::Cancel);
        });
        QCOMPARE(result, 0);
        QVERIFY(things.shown.isEmpty());
    }

    void acceptHandsTheOrderBack()
    {
        OrderRun things("C A B");
        const int result = things.run([](const OrderDialog &dialog) {
            selectRows(dialog.right, {2});
            dialog.press(dialog.window.move_up_button);
            dialog.finish(QDialogButtonBox::Ok);
        });
        QCOMPARE(result, 1);
        QCOMPARE(things.result(), QString("C B A"));
        QCOMPARE(things.visible(), QString("A B C"));
        for (const ConfigOrderItem *item : qAsConst(things.shown)) {
            QVERIFY(item->isItemInShowList());
            QVERIFY(item->parentTreeItem() == nullptr);
        }
    }

    void nothingMayShow()
    {
        OrderRun things("A");
        const int result = things.run([](const OrderDialog &dialog) {
            selectRows(dialog.right, {0});
            dialog.press(dialog.window.make_hidden_button);
            dialog.finish(QDialogButtonBox::Ok);
        });
        QCOMPARE(result, 1);
        QVERIFY(things.shown.isEmpty());
        QCOMPARE(things.visible(), QString());
    }

    void noThingsAtAll()
    {
        OrderRun things("", 0);
        QCOMPARE(things.run([](const OrderDialog &dialog) { dialog.finish(QDialogButtonBox::Ok); }), 1);
        QVERIFY(things.shown.isEmpty());
    }

    void nullsInTheListsArePassedOver()
    {
        OrderRun things("A B", 3);
        things.all.insert(1, nullptr);
        things.shown.prepend(nullptr);
        things.run([](const OrderDialog &dialog) {
            QCOMPARE(rowTexts(dialog.left), QString("a b C"));
            QCOMPARE(rowTexts(dialog.right), QString("A B"));
            dialog.finish(QDialogButtonBox::Ok);
        });
        QCOMPARE(things.result(), QString("A B"));
        things.all.removeAll(nullptr);
    }

    void theListMakesAnEntryALeftOrARightOne()
    {
        OrderRun things("A", 2);
        for (ConfigOrderItem *item : qAsConst(things.all))
            item->setItemInShowList(true);
        things.shown.first()->setItemInShowList(false);
        things.run([](const OrderDialog &dialog) {
            QCOMPARE(rowTexts(dialog.left), QString("a B"));
            QCOMPARE(rowTexts(dialog.right), QString("A"));
        });
    }

    void entriesOfAllThingsLiveAsLongAsTheObject()
    {
        QPointer<ConfigOrderItem> left;
        QPointer<ConfigOrderItem> right;
        {
            OrderRun things("A B");
            left = things.all.at(0);
            right = things.shown.at(0);
            things.run([](const OrderDialog &dialog) { dialog.finish(QDialogButtonBox::Ok); });
            QVERIFY(left && right);
            QCOMPARE(things.shown.at(0), right.data());
            things.shown.removeFirst();
        }
        QVERIFY(!left);
        QVERIFY(right);
        delete right;
    }

    void whatWasCancelledIsDeletedWithTheObject()
    {
        QPointer<ConfigOrderItem> right;
        {
            OrderRun things("A B");
            right = things.shown.at(0);
            things.run([](const OrderDialog &) {});
        }
        QVERIFY(!right);
    }

    void buttonsFollowTheSelection()
    {
        OrderRun things;
        things.run([](const OrderDialog &dialog) {
            const auto enabled = [&dialog] {
                QString letters;
                letters += dialog.window.make_showing_button->isEnabled() ? 'S' : '-';
                letters += dialog.window.make_hidden_button->isEnabled() ? 'H' : '-';
                letters += dialog.window.move_up_button->isEnabled() ? 'U' : '-';
                letters += dialog.window.move_down_button->isEnabled() ? 'D' : '-';
                return letters;
            };
            QCOMPARE(enabled(), QString("----"));
            selectRows(dialog.left, {3});
            QCOMPARE(enabled(), QString("S---"));
            selectRows(dialog.right, {0});
            QCOMPARE(enabled(), QString("SHUD"));
            dialog.left.clearSelection();
            QCOMPARE(enabled(), QString("-HUD"));
            dialog.press(dialog.window.make_hidden_button);
            QCOMPARE(enabled(), QString("S---"));
            dialog.press(dialog.window.make_showing_button);
            QCOMPARE(enabled(), QString("-HUD"));
            dialog.press(dialog.window.move_up_button);
            QCOMPARE(enabled(), QString("-HUD"));
        });
    }

    void anEntryWithoutACopyIsTakenOffTheSelectionAllTheSame()
    {
        OrderRun things("A", 1);
        auto *single = new SingleItem;
        single->setItemID(7);
        single->setData(0, "Single", Qt::DisplayRole);
        single->setItemVisible(false);
        things.all.append(single);
        things.run([](const OrderDialog &dialog) {
            selectRows(dialog.left, {1});
            QVERIFY(dialog.window.make_showing_button->isEnabled());
            dialog.press(dialog.window.make_showing_button);
            QCOMPARE(rowTexts(dialog.left), QString("a single"));
            QCOMPARE(rowTexts(dialog.right), QString("A"));
            QVERIFY(!dialog.window.make_showing_button->isEnabled());
        });
    }

    void greyedRowsCannotBePicked()
    {
        OrderRun things;
        things.run([](const OrderDialog &dialog) {
            QTest::mouseClick(dialog.left.viewport(), Qt::LeftButton, {}, centreOfRow(dialog.left, 0));
            QCOMPARE(selectedTexts(dialog.left), QString());
            QTest::mouseClick(dialog.left.viewport(), Qt::LeftButton, {}, centreOfRow(dialog.left, 3));
            QCOMPARE(selectedTexts(dialog.left), QString("D"));
            dialog.left.selectAll();
            QCOMPARE(selectedTexts(dialog.left), QString("D E F"));
        });
    }

    void showingPutsAtTheEndInOrder()
    {
        OrderRun things;
        things.run([](const OrderDialog &dialog) {
            selectRows(dialog.right, {0});
            selectRows(dialog.left, {3, 5});
            dialog.press(dialog.window.make_showing_button);
            QCOMPARE(rowTexts(dialog.left), QString("a b c d E f"));
            QCOMPARE(rowTexts(dialog.right), QString("A B C D F"));
            QCOMPARE(selectedTexts(dialog.left), QString());
            QCOMPARE(selectedTexts(dialog.right), QString("D F"));
            dialog.finish(QDialogButtonBox::Ok);
        });
        QCOMPARE(things.result(), QString("A B C D F"));
        QCOMPARE(things.visible(), QString("A B C D F"));
    }

    void hidingFreesAndSelectsTheLeftEntries()
    {
        OrderRun things("C A B");
        things.run([](const OrderDialog &dialog) {
            selectRows(dialog.left, {4});
            selectRows(dialog.right, {0, 2});
            dialog.press(dialog.window.make_hidden_button);
            QCOMPARE(rowTexts(dialog.left), QString("a B C D E F"));
            QCOMPARE(rowTexts(dialog.right), QString("A"));
            QCOMPARE(selectedTexts(dialog.left), QString("B C"));
            QCOMPARE(selectedTexts(dialog.right), QString());
            dialog.finish(QDialogButtonBox::Ok);
        });
        QCOMPARE(things.result(), QString("A"));
        QCOMPARE(things.visible(), QString("A"));
    }

    void aRightEntryWithoutALeftOneStays()
    {
        OrderRun things("A B");
        things.shown.last()->setItemID(77);
        things.run([](const OrderDialog &dialog) {
            selectRows(dialog.right, {1});
            dialog.press(dialog.window.make_hidden_button);
            QCOMPARE(rowTexts(dialog.right), QString("A B"));
            QCOMPARE(selectedTexts(dialog.right), QString("B"));
            selectRows(dialog.right, {0, 1});
            dialog.press(dialog.window.make_hidden_button);
            QCOMPARE(rowTexts(dialog.right), QString("B"));
        });
    }

    void aDoubleClickShowsAndHides()
    {
        OrderRun things;
        things.run([](const OrderDialog &dialog) {
            const auto twice = [](const ConfigOrderTree &tree, int row) {
                const QPoint at = centreOfRow(tree, row);
                QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, at);
                QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, at);
            };
            twice(dialog.left, 4);
            QCOMPARE(rowTexts(dialog.right), QString("A B C E"));
            QCOMPARE(rowTexts(dialog.left), QString("a b c D e F"));
            twice(dialog.right, 1);
            QCOMPARE(rowTexts(dialog.right), QString("A C E"));
            QCOMPARE(rowTexts(dialog.left), QString("a B c D e F"));
            // What is greyed out takes no part.
            twice(dialog.left, 0);
            QCOMPARE(rowTexts(dialog.right), QString("A C E"));
        });
    }

    void aFixedSetCanOnlyBeOrdered()
    {
        OrderRun things;
        const int result = things.run(
            [](const OrderDialog &dialog) {
                QVERIFY(!dialog.window.hidden_frame->isVisible());
                QVERIFY(!dialog.window.make_showing_button->isVisible());
                QVERIFY(!dialog.window.make_hidden_button->isVisible());
                QVERIFY(!dialog.right.header()->isVisible());
                QVERIFY(dialog.window.move_up_button->isVisible());
                selectRows(dialog.right, {2});
                QVERIFY(dialog.window.move_up_button->isEnabled());
                QTest::mouseDClick(dialog.right.viewport(), Qt::LeftButton, {}, centreOfRow(dialog.right, 2));
                QCOMPARE(rowTexts(dialog.right), QString("A B C"));
                selectRows(dialog.right, {2});
                dialog.press(dialog.window.move_up_button);
                dialog.finish(QDialogButtonBox::Ok);
            },
            true);
        QCOMPARE(result, 1);
        QCOMPARE(things.result(), QString("A C B"));
        QCOMPARE(things.visible(), QString("A B C"));
    }

    void aKeywordMayHideRows()
    {
        OrderRun things("A B", 3);
        things.run([](const OrderDialog &dialog) {
            // Selected, but out of sight: not shown.
            selectRows(dialog.left, {2});
            dialog.left.setRowHidden(2, QModelIndex(), true);
            dialog.press(dialog.window.make_showing_button);
            QCOMPARE(rowTexts(dialog.right), QString("A B"));
        });
    }

    void theParentMayGoMeanwhile()
    {
        auto *parent = new QWidget;
        TaviConfigOrder order("Title", parent, "things");
        QList<ConfigOrderItem *> shown{orderItem(0, true, true)};
        OrderDialogUser user([parent](const OrderDialog &) { delete parent; });
        QCOMPARE(order.reorder({orderItem(0, true, false)}, shown, false, nullptr, nullptr), 0);
        QVERIFY(user.seen);
        QVERIFY(shown.isEmpty());
    }

    void theObjectMayGoMeanwhile()
    {
        auto *order = new TaviConfigOrder("Title", nullptr, "things");
        QList<ConfigOrderItem *> shown{orderItem(0, true, true)};
        OrderDialogUser user([order](const OrderDialog &) { delete order; });
        QCOMPARE(order->reorder({orderItem(0, true, false)}, shown, false, nullptr, nullptr), 0);
        QVERIFY(user.seen);
        QVERIFY(shown.isEmpty());
    }
};

TAVI_GUI_TEST_MAIN(TestTaviConfigOrder)
#include "tst_taviconfigorder.moc"
