// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/headerfixture.h"
#include "tests/treeviews/orderdialoguser.h"

#include <QMenu>
#include <QPushButton>

#include <memory>

namespace {

/// Runs the header's dialog with a user in front of it.
void configure(TaviHeaderView *header, const std::function<void(const OrderDialog &)> &use)
{
    OrderDialogUser user(use);
    if (!QMetaObject::invokeMethod(header, "configureHeaders"))
        QTest::qFail("no slot configureHeaders()", __FILE__, __LINE__);
    if (!user.seen)
        QTest::qFail("there was no dialog", __FILE__, __LINE__);
}

} // namespace

/// The order dialog for the columns of a header.
class TestTaviHeaderViewConfigure : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void theDialogShowsTheColumns()
    {
        HeaderInView in(5);
        in.show();
        in.model.setHorizontalHeaderItem(1, new QStandardItem(QIcon(filled(Qt::cyan)), "B"));
        in.header->moveSection(4, 0);
        in.header->setSectionHidden(2, true);
        configure(in.header, [&in](const OrderDialog &dialog) {
            QCOMPARE(dialog.window.windowTitle(), QString("Configure List Headers"));
            QCOMPARE(dialog.window.parentWidget(), in.header);
            QCOMPARE(rowTexts(dialog.left), QString("a b C d e"));
            QCOMPARE(rowTexts(dialog.right), QString("E A B D"));
            QVERIFY(dialog.window.hidden_frame->isVisible());
            const QVariant icon = dialog.right.model()->index(2, 0).data(Qt::DecorationRole);
            QCOMPARE(icon.value<QIcon>().pixmap(16).toImage().pixelColor(8, 8), QColor(Qt::cyan));
        });
    }

    void cancelChangesNothing()
    {
        HeaderInView in(4);
        in.show();
        in.header->moveSection(3, 1);
        in.header->setSectionHidden(2, true);
        const QByteArray before = in.header->saveState();
        configure(in.header, [](const OrderDialog &dialog) {
            selectRows(dialog.right, {0});
            dialog.press(dialog.window.move_down_button);
            dialog.press(dialog.window.make_hidden_button);
            dialog.finish(QDialogButtonBox::Cancel);
        });
        QCOMPARE(in.header->saveState(), before);
        QCOMPARE(in.order(), QString("A D B"));
    }

    void acceptAppliesColumnsAndOrder()
    {
        HeaderInView in(5);
        in.show();
        in.header->setSectionHidden(2, true);
        configure(in.header, [](const OrderDialog &dialog) {
            selectRows(dialog.right, {1});
            dialog.press(dialog.window.make_hidden_button);
            selectRows(dialog.left, {2});
            dialog.press(dialog.window.make_showing_button);
            QCOMPARE(rowTexts(dialog.right), QString("A D E C"));
            for (int time = 0; time < 3; ++time)
                dialog.press(dialog.window.move_up_button);
            dialog.finish(QDialogButtonBox::Ok);
        });
        QCOMPARE(in.order(), QString("C A D E"));
        QVERIFY(in.header->isSectionHidden(1));
        // The hidden one comes last.
        QCOMPARE(in.header->visualIndex(1), 4);
    }

    void aColumnComesBackSafelyUnderTheStretch()
    {
        // The last column, shown by the header itself and by the dialog: the same sizes.
        const auto sizes = [](bool by_dialog) {
            HeaderInView in(3);
            in.show();
            in.header->resizeSection(1, 40);
            in.header->setSectionHidden(2, true);
            if (by_dialog) {
                configure(in.header, [](const OrderDialog &dialog) {
                    selectRows(dialog.left, {2});
                    dialog.press(dialog.window.make_showing_button);
                    dialog.finish(QDialogButtonBox::Ok);
                });
            } else {
                in.header->showSectionLastStretchSafe(2);
            }
            return in.sizes();
        };
        const QVector<int> expected = sizes(false);
        QVERIFY(expected.at(2) > 0);
        QCOMPARE(sizes(true), expected);
        // A plain show of the section gives others.
        HeaderInView plain(3);
        plain.show();
        plain.header->resizeSection(1, 40);
        plain.header->setSectionHidden(2, true);
        plain.header->setSectionHidden(2, false);
        QVERIFY(plain.sizes() != expected);
    }

    // One after the other in logical order, which matters to the last two: each takes room from the one before it.
    void columnsComeBackInLogicalOrder()
    {
        const auto prepare = [](HeaderInView &in) {
            in.show();
            in.header->resizeSection(1, 290);
            in.header->resizeSection(2, 250);
            in.header->resizeSection(3, 130);
            in.header->setSectionHidden(2, true);
            in.header->setSectionHidden(3, true);
        };
        const auto inOrder = [&prepare](const QVector<int> &order) {
            HeaderInView in(4);
            prepare(in);
            for (const int section : order)
                in.header->showSectionLastStretchSafe(section);
            return in.sizes();
        };
        const QVector<int> expected = inOrder({2, 3});
        QVERIFY(inOrder({3, 2}) != expected);
        HeaderInView in(4);
        prepare(in);
        configure(in.header, [](const OrderDialog &dialog) {
            selectRows(dialog.left, {2, 3});
            dialog.press(dialog.window.make_showing_button);
            dialog.finish(QDialogButtonBox::Ok);
        });
        QCOMPARE(in.order(), QString("A B C D"));
        QCOMPARE(in.sizes(), expected);
    }

    void allColumnsMayBeHidden()
    {
        HeaderInView in(3);
        in.show();
        configure(in.header, [](const OrderDialog &dialog) {
            dialog.right.selectAll();
            dialog.press(dialog.window.make_hidden_button);
            dialog.finish(QDialogButtonBox::Ok);
        });
        QCOMPARE(in.order(), QString());
        configure(in.header, [](const OrderDialog &dialog) {
            selectRows(dialog.left, {1});
            dialog.press(dialog.window.make_showing_button);
            dialog.finish(QDialogButtonBox::Ok);
        });
        QCOMPARE(in.order(), QString("B"));
    }

    void columnsMayGoMeanwhile()
    {
        HeaderInView in(4);
        in.show();
        configure(in.header, [&in](const OrderDialog &dialog) {
            selectRows(dialog.right, {1});
            dialog.press(dialog.window.move_up_button);
            in.model.removeColumns(2, 2);
            dialog.finish(QDialogButtonBox::Ok);
        });
        QCOMPARE(in.order(), QString("B A"));
    }

    void theHeaderMayGoMeanwhile()
    {
        auto in = std::make_unique<HeaderInView>(3);
        in->show();
        TaviHeaderView *header = in->header;
        configure(header, [&in](const OrderDialog &) { in.reset(); });
        QVERIFY(!in);
    }

    void whatTheDialogHandedBackIsDeleted()
    {
        HeaderInView in(3);
        in.show();
        QVector<QPointer<TaviTreeItem>> entries;
        configure(in.header, [&entries](const OrderDialog &dialog) {
            for (const ConfigOrderTree *list : {&dialog.left, &dialog.right}) {
                const QList<TaviTreeItem *> items = list->sourceModel()->allItems();
                for (TaviTreeItem *item : items)
                    entries.append(item);
            }
            dialog.finish(QDialogButtonBox::Ok);
        });
        QCOMPARE(entries.size(), 6);
        for (const QPointer<TaviTreeItem> &entry : qAsConst(entries))
            QVERIFY(!entry);
    }

    void theMenuLeadsHere()
    {
        HeaderInView in(3);
        in.show();
        bool seen = false;
        QTimer hand;
        connect(&hand, &QTimer::timeout, this, [&] {
            if (auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())) {
                hand.stop();
                QTest::keyClick(menu, Qt::Key_Down);
                QTest::keyClick(menu, Qt::Key_Return);
            }
        });
        hand.start(10);
        OrderDialogUser user([&seen](const OrderDialog &dialog) {
            seen = true;
            QCOMPARE(rowTexts(dialog.right), QString("A B C"));
        });
        QVERIFY(QMetaObject::invokeMethod(in.header, "headerMenu", Q_ARG(QPoint, QPoint(5, 5))));
        QTRY_VERIFY(seen);
    }

private:
    static QPixmap filled(const QColor &colour)
    {
        QPixmap pixmap(16, 16);
        pixmap.fill(colour);
        return pixmap;
    }
};

TAVI_GUI_TEST_MAIN(TestTaviHeaderViewConfigure)
#include "tst_taviheaderview_configure.moc"
