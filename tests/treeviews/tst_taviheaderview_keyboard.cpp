// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/headerfixture.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QTimer>

/// What the mouse can do on a header, by keys.
class TestTaviHeaderViewKeyboard : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void tabReachesTheHeaderAndClicksDoNotTakeTheFocus()
    {
        HeaderInView at(3);
        at.show();
        at.view.activateWindow();
        at.view.setFocus();
        QTRY_VERIFY(at.view.hasFocus());
        QTest::mouseClick(at.header->viewport(), Qt::LeftButton, {}, QPoint(20, 5));
        QVERIFY(at.view.hasFocus());
        QTest::keyClick(&at.view, Qt::Key_Tab);
        QVERIFY(at.header->hasFocus());
    }

    void arrowsChooseAndSpaceSorts()
    {
        HeaderInView at(4);
        at.show();
        at.view.setSortingEnabled(true);
        at.header->setSectionHidden(1, true);
        QSignalSpy clicked(at.header, &QHeaderView::sectionClicked);
        QTest::keyClick(at.header, Qt::Key_Right); // from A over the hidden B to C
        QCOMPARE(at.header->accessibleDescription(), QString("C"));
        QTest::keyClick(at.header, Qt::Key_Space);
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(at.header->sortIndicatorSection(), 2);
        QCOMPARE(at.header->sortIndicatorOrder(), Qt::AscendingOrder);
        QTest::keyClick(at.header, Qt::Key_Return);
        QCOMPARE(at.header->sortIndicatorOrder(), Qt::DescendingOrder);
        QTest::keyClick(at.header, Qt::Key_End);
        QTest::keyClick(at.header, Qt::Key_Right); // stays
        QTest::keyClick(at.header, Qt::Key_Enter);
        QCOMPARE(at.header->sortIndicatorSection(), 3);
        QTest::keyClick(at.header, Qt::Key_Home);
        QTest::keyClick(at.header, Qt::Key_Left); // stays
        QTest::keyClick(at.header, Qt::Key_Space);
        QCOMPARE(at.header->sortIndicatorSection(), 0);
        at.header->setSectionsClickable(false);
        QTest::keyClick(at.header, Qt::Key_Space);
        QCOMPARE(clicked.count(), 4);
    }

    void aColumnMayBeginDescending()
    {
        HeaderInView at(2);
        at.show();
        at.header->setSectionsClickable(true); // which a view that does not sort has switched off
        at.model.setHeaderData(1, Qt::Horizontal, int(Qt::DescendingOrder), Qt::InitialSortOrderRole);
        QTest::keyClick(at.header, Qt::Key_Right);
        QTest::keyClick(at.header, Qt::Key_Space);
        QCOMPARE(at.header->sortIndicatorSection(), 1);
        QCOMPARE(at.header->sortIndicatorOrder(), Qt::DescendingOrder);
    }

    void controlMoves()
    {
        HeaderInView at(4);
        at.show();
        at.header->setFirstSectionMovable(true);
        at.header->setSectionHidden(1, true);
        QTest::keyClick(at.header, Qt::Key_Right, Qt::ControlModifier);
        QCOMPARE(at.order(), QString("C A D"));
        QTest::keyClick(at.header, Qt::Key_Right, Qt::ControlModifier); // the section stays chosen
        QCOMPARE(at.order(), QString("C D A"));
        QTest::keyClick(at.header, Qt::Key_Right, Qt::ControlModifier);
        QCOMPARE(at.order(), QString("C D A"));
        QTest::keyClick(at.header, Qt::Key_Left, Qt::ControlModifier);
        QCOMPARE(at.order(), QString("C A D"));
        at.header->setSectionsMovable(false);
        QTest::keyClick(at.header, Qt::Key_Left, Qt::ControlModifier);
        QCOMPARE(at.order(), QString("C A D"));
    }

    // A tree's first section, which bears the branches, cannot be dragged away either.
    void theFirstSectionOfATreeStays()
    {
        HeaderInView at(3);
        at.show();
        QVERIFY(!at.header->isFirstSectionMovable());
        QTest::keyClick(at.header, Qt::Key_Right, Qt::ControlModifier);
        QCOMPARE(at.order(), QString("A B C"));
        QTest::keyClick(at.header, Qt::Key_Right);
        QTest::keyClick(at.header, Qt::Key_Left, Qt::ControlModifier);
        QCOMPARE(at.order(), QString("A B C"));
    }

    void shiftResizes()
    {
        HeaderInView at(3);
        at.show();
        const int before = at.header->sectionSize(0);
        QTest::keyClick(at.header, Qt::Key_Right, Qt::ShiftModifier);
        const int wider = at.header->sectionSize(0);
        QVERIFY(wider > before);
        QTest::keyClick(at.header, Qt::Key_Left, Qt::ShiftModifier);
        QCOMPARE(at.header->sectionSize(0), before);
        for (int press = 0; press < 50; ++press)
            QTest::keyClick(at.header, Qt::Key_Left, Qt::ShiftModifier);
        QCOMPARE(at.header->sectionSize(0), at.header->minimumSectionSize());
        // The stretched one has the width that is left.
        QTest::keyClick(at.header, Qt::Key_End);
        const QString sizes = at.sizesText();
        QTest::keyClick(at.header, Qt::Key_Left, Qt::ShiftModifier);
        QCOMPARE(at.sizesText(), sizes);
        at.header->setSectionResizeMode(0, QHeaderView::Fixed);
        QTest::keyClick(at.header, Qt::Key_Home);
        QTest::keyClick(at.header, Qt::Key_Right, Qt::ShiftModifier);
        QCOMPARE(at.sizesText(), sizes);
    }

    void shiftSpaceFitsTheContent()
    {
        HeaderInView at(3);
        at.show();
        at.model.item(0, 0)->setText("a text that is much wider than the column is at first");
        const int before = at.header->sectionSize(0);
        QTest::keyClick(at.header, Qt::Key_Space, Qt::ShiftModifier);
        QVERIFY(at.header->sectionSize(0) > before);
    }

    void rightToLeftTheArrowsAreTurned()
    {
        HeaderInView at(3);
        at.view.setLayoutDirection(Qt::RightToLeft);
        at.show();
        QTest::keyClick(at.header, Qt::Key_Left);
        QCOMPARE(at.header->accessibleDescription(), QString("B"));
        QTest::keyClick(at.header, Qt::Key_Right);
        QCOMPARE(at.header->accessibleDescription(), QString("A"));
    }

    void theChosenSectionIsBroughtIntoSight_data()
    {
        QTest::addColumn<int>("direction");
        QTest::newRow("left to right") << int(Qt::LeftToRight);
        QTest::newRow("right to left") << int(Qt::RightToLeft);
    }
    void theChosenSectionIsBroughtIntoSight()
    {
        QFETCH(const int, direction);
        HeaderInView at(10);
        at.view.setLayoutDirection(static_cast<Qt::LayoutDirection>(direction));
        at.show(300);
        for (const Qt::Key key : {Qt::Key_End, Qt::Key_Home}) {
            QTest::keyClick(at.header, key);
            const int section = key == Qt::Key_End ? 9 : 0;
            const int start = at.header->sectionViewportPosition(section);
            QVERIFY2(start >= 0 && start + at.header->sectionSize(section) <= at.header->viewport()->width(),
                     QByteArray::number(start));
        }
    }

    void otherKeysAreLeftToTheView()
    {
        HeaderInView at(3);
        at.show();
        QVERIFY(!at.view.currentIndex().isValid());
        QTest::keyClick(at.header, '0'); // the view looks for a row that begins with it
        QVERIFY(at.view.currentIndex().isValid());
        QKeyEvent alt(QEvent::KeyPress, Qt::Key_Left, Qt::AltModifier);
        QCoreApplication::sendEvent(at.header, &alt);
        QVERIFY(!alt.isAccepted());
    }

    void theMenuKeyOpensTheMenu()
    {
        HeaderInView at(3);
        at.show();
        bool seen = false;
        QTimer poll;
        connect(&poll, &QTimer::timeout, this, [&seen] {
            if (auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())) {
                seen = true;
                menu->close();
            }
        });
        poll.start(10);
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5), at.header->mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(at.header, &event);
        QVERIFY(seen);
    }

    void theChosenSectionIsMarkedWhileTheHeaderHasTheFocus()
    {
        HeaderInView at(3);
        at.show();
        at.view.activateWindow();
        at.view.setFocus();
        QTRY_VERIFY(at.view.hasFocus());
        const QImage without = at.header->grab().toImage();
        at.header->setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(at.header->hasFocus());
        const QImage first = at.header->grab().toImage();
        QVERIFY(first != without);
        QTest::keyClick(at.header, Qt::Key_Right);
        QVERIFY(at.header->grab().toImage() != first);
        at.view.setFocus();
        QCOMPARE(at.header->grab().toImage(), without);
    }
};

TAVI_GUI_TEST_MAIN(TestTaviHeaderViewKeyboard)
#include "tst_taviheaderview_keyboard.moc"
