// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/gridfixture.h"

#include <QHeaderView>
#include <QLabel>
#include <QVBoxLayout>

namespace {

/// The view with what tests need to get at.
class OpenGridView : public TaviGridView
{
public:
    using TaviGridView::TaviGridView;

    /// Sets the size of the viewport itself, whatever frame and scroll bars take.
    void setViewportWidth(int width) { resize(width + this->width() - viewport()->width(), height()); }

    QMultiHash<QEvent::Type, bool> answers; ///< What viewportEvent() returned.

protected:
    bool viewportEvent(QEvent *event) override
    {
        const QEvent::Type type = event->type();
        const bool answer = TaviGridView::viewportEvent(event);
        answers.insert(type, answer);
        return answer;
    }
};

/// A view of 300 by 200 pixels, on the display.
struct GridOnDisplay {
    explicit GridOnDisplay(int items, bool shown = true) : model(items)
    {
        view.setFrameShape(QFrame::NoFrame);
        view.resize(300, 200);
        view.setItemDelegate(&delegate);
        view.setModel(&model);
        if (!shown)
            return;
        view.show();
        if (!QTest::qWaitForWindowExposed(&view))
            QTest::qFail("the view is not on the display", __FILE__, __LINE__);
    }

    GridNumbers model;
    CountingGridDelegate delegate;
    OpenGridView view;
};

QVector<int> sectionSizes(const QHeaderView *header)
{
    QVector<int> sizes;
    for (int section = 0; section < header->count(); ++section)
        sizes.append(header->sectionSize(section));
    return sizes;
}

/// Notes the types of the mouse presses that reach it.
class Panel : public QWidget
{
public:
    QVector<QEvent::Type> seen;

protected:
    bool event(QEvent *event) override
    {
        if (event->type() == QEvent::MouseButtonPress)
            seen.append(event->type());
        return QWidget::event(event);
    }
};

} // namespace

class TestTaviGridView : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void construction()
    {
        const TaviGridView view;
        QCOMPARE(view.verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
        QCOMPARE(view.horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        QVERIFY(!view.showGrid());
        for (const QHeaderView *header : {view.horizontalHeader(), view.verticalHeader()}) {
            QVERIFY(header->isHidden());
            QCOMPARE(header->minimumSectionSize(), 1);
        }
        QVERIFY(!view.accessibleName().isEmpty());
        QVERIFY(!view.model());
    }

    void asManyColumnsAsFit_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("cell");
        QTest::addColumn<bool>("grid");
        QTest::addColumn<int>("columns");
        QTest::newRow("exactly, with room to spare") << 260 << 25 << false << 10;
        QTest::newRow("the grid line counts") << 260 << 25 << true << 10;
        QTest::newRow("one pixel less with the grid") << 259 << 25 << true << 9;
        QTest::newRow("one pixel less than ten") << 249 << 25 << false << 9;
        QTest::newRow("exactly ten") << 250 << 25 << false << 10;
        QTest::newRow("one cell") << 25 << 25 << false << 1;
        QTest::newRow("narrower than a cell") << 24 << 25 << false << 0;
        QTest::newRow("cells of a pixel") << 40 << 1 << false << 40;
    }
    void asManyColumnsAsFit()
    {
        QFETCH(const int, width);
        QFETCH(const int, cell);
        QFETCH(const bool, grid);
        QFETCH(const int, columns);
        GridOnDisplay at(5);
        at.delegate.setCellSize(cell, 20);
        at.view.setShowGrid(grid);
        at.view.setViewportWidth(width);
        at.view.recalculateGrid();
        QCOMPARE(at.view.viewport()->width(), width);
        QCOMPARE(at.model.columnCount(), columns);
    }

    void theColumnsFollowTheWindow()
    {
        GridOnDisplay at(100);
        at.view.setViewportWidth(250);
        QTRY_COMPARE(at.model.columnCount(), 10);
        QCOMPARE(at.model.rowCount(), 10);
        QSignalSpy inserted(&at.model, &QAbstractItemModel::columnsInserted);
        at.view.setViewportWidth(500);
        QTRY_COMPARE(at.model.columnCount(), 20);
        QCOMPARE(at.model.rowCount(), 5);
        QCOMPARE(inserted.count(), 1);
        QCOMPARE(inserted.at(0).at(1).toInt(), 10); // added behind those that are there
    }

    void narrowingTakesColumnsFromTheLeftAndResets()
    {
        GridOnDisplay at(10);
        at.view.setViewportWidth(250);
        QTRY_COMPARE(at.model.columnCount(), 10);
        QSignalSpy removed(&at.model, &QAbstractItemModel::columnsRemoved);
        QSignalSpy reset(&at.model, &QAbstractItemModel::modelReset);
        at.view.setViewportWidth(175);
        QTRY_COMPARE(at.model.columnCount(), 7);
        QCOMPARE(removed.count(), 1);
        QCOMPARE(removed.at(0).at(1).toInt(), 0);
        QCOMPARE(removed.at(0).at(2).toInt(), 3);
        QCOMPARE(reset.count(), 1);
        QCOMPARE(at.view.horizontalHeader()->count(), 7);
    }

    void theRightCountChangesNothing()
    {
        GridOnDisplay at(10);
        QSignalSpy reset(&at.model, &QAbstractItemModel::modelReset);
        at.view.recalculateGrid();
        at.view.recalculateGrid();
        QCOMPARE(reset.count(), 0);
    }

    void withoutModelOrDelegateNothingIsRecalculated()
    {
        TaviGridView view;
        view.recalculateGrid();
        view.setItemDelegate(nullptr);
        view.recalculateGrid();
        GridNumbers model(10);
        TaviGridView bare;
        bare.setItemDelegate(nullptr);
        bare.setModel(&model);
        bare.recalculateGrid();
        QCOMPARE(model.columnCount(), 0);
    }

    void cellsWithoutWidthChangeNothing_data()
    {
        QTest::addColumn<int>("width");
        QTest::newRow("none") << 0;
        QTest::newRow("negative") << -7;
    }
    void cellsWithoutWidthChangeNothing()
    {
        QFETCH(const int, width);
        GridOnDisplay at(10);
        const int columns = at.model.columnCount();
        QVERIFY(columns > 0);
        at.delegate.setCellSize(width, width);
        at.view.setViewportWidth(100);
        at.view.recalculateGrid();
        QCOMPARE(at.model.columnCount(), columns);
        at.view.viewport()->repaint();
        QCOMPARE(sectionSizes(at.view.horizontalHeader()), QVector<int>(columns, 1));
    }

    void cellsHaveTheDelegatesSize_data()
    {
        QTest::addColumn<bool>("grid");
        QTest::addColumn<QSize>("section");
        QTest::newRow("without lines") << false << QSize(31, 17);
        QTest::newRow("with lines") << true << QSize(32, 18);
    }
    void cellsHaveTheDelegatesSize()
    {
        QFETCH(const bool, grid);
        QFETCH(const QSize, section);
        GridOnDisplay at(100);
        at.view.setShowGrid(grid);
        at.delegate.setCellSize(31, 17);
        at.view.recalculateGrid();
        at.view.viewport()->repaint();
        QCOMPARE(sectionSizes(at.view.horizontalHeader()),
                 QVector<int>(at.view.viewport()->width() / section.width(), section.width()));
        QCOMPARE(sectionSizes(at.view.verticalHeader()), QVector<int>(at.model.rowCount(), section.height()));
    }

    void someEventsSizeTheCellsAtOnce_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("width");
        QTest::newRow("show") << int(QEvent::Show) << 25;
        QTest::newRow("shown by the parent") << int(QEvent::ShowToParent) << 25;
        QTest::newRow("resize") << int(QEvent::Resize) << 25;
        QTest::newRow("another one") << int(QEvent::Leave) << 70;
    }
    void someEventsSizeTheCellsAtOnce()
    {
        QFETCH(const int, type);
        QFETCH(const int, width);
        GridOnDisplay at(100);
        at.view.setColumnWidth(2, 70);
        QEvent plain(static_cast<QEvent::Type>(type));
        QResizeEvent resize(at.view.viewport()->size(), at.view.viewport()->size());
        QShowEvent show;
        QCoreApplication::sendEvent(at.view.viewport(), type == QEvent::Resize ? &resize
                                                        : type == QEvent::Show ? &show
                                                                               : &plain);
        QCOMPARE(at.view.columnWidth(2), width);
    }

    void aSectionThatWasResizedIsSetRightByTheNextPaint()
    {
        GridOnDisplay at(100);
        at.view.setColumnWidth(2, 70);
        at.view.setRowHeight(1, 3);
        at.view.viewport()->repaint();
        QCOMPARE(at.view.columnWidth(2), 25);
        QCOMPARE(at.view.rowHeight(1), 25);
    }

    void aDelegateSizesTheCellsWhenItIsSet()
    {
        GridNumbers model(10);
        model.insertColumns(0, 4);
        OpenGridView view;
        view.setModel(&model);
        CountingGridDelegate delegate;
        delegate.setCellSize(44, 33);
        view.setItemDelegate(&delegate);
        QCOMPARE(view.itemDelegate(), &delegate);
        QCOMPARE(sectionSizes(view.horizontalHeader()), QVector<int>(4, 44));
        QCOMPARE(sectionSizes(view.verticalHeader()), QVector<int>(3, 33));
    }

    // The short cut for equal cells and the way through each cell's size hint come to the same.
    void cellsOfAnyDelegateAreSizedByTheirHints()
    {
        GridOnDisplay at(100);
        const QVector<int> columns = sectionSizes(at.view.horizontalHeader());
        const QVector<int> rows = sectionSizes(at.view.verticalHeader());
        SameSizeDelegate plain(QSize(25, 25));
        at.view.setItemDelegate(&plain);
        at.view.viewport()->repaint();
        QCOMPARE(sectionSizes(at.view.horizontalHeader()), columns);
        QCOMPARE(sectionSizes(at.view.verticalHeader()), rows);
        at.view.setItemDelegate(&at.delegate);
    }

    void aRowWithADelegateOfItsOwnHasItsSize()
    {
        GridOnDisplay at(100);
        SameSizeDelegate tall(QSize(10, 60));
        at.view.setItemDelegateForRow(1, &tall);
        at.view.viewport()->repaint();
        QCOMPARE(at.view.rowHeight(0), 25);
        QCOMPARE(at.view.rowHeight(1), 60);
        at.view.setItemDelegateForRow(1, nullptr);
        SameSizeDelegate wide(QSize(50, 10));
        at.view.setItemDelegateForColumn(2, &wide);
        at.view.viewport()->repaint();
        QCOMPARE(at.view.rowHeight(1), 25);
        QCOMPARE(at.view.columnWidth(2), 50);
        at.view.setItemDelegateForColumn(2, nullptr);
    }

    // All cells of one size is what the delegate does by itself; a subclass may tell one for each.
    void aGridDelegateMayTellASizeForEachCell()
    {
        GridOnDisplay at(100);
        VaryingGridDelegate varying;
        at.view.setItemDelegate(&varying);
        QCOMPARE(at.view.columnWidth(2), 50);
        QCOMPARE(at.view.rowHeight(1), 60);
        at.view.setColumnWidth(2, 25);
        at.view.viewport()->repaint();
        QCOMPARE(sectionSizes(at.view.horizontalHeader()).mid(0, 4), QVector<int>({25, 25, 50, 25}));
        QCOMPARE(sectionSizes(at.view.verticalHeader()).mid(0, 3), QVector<int>({25, 60, 25}));
        at.view.setItemDelegate(&at.delegate);
        QCOMPARE(at.view.columnWidth(2), 25);
        QCOMPARE(at.view.rowHeight(1), 25);
    }

    void aWidgetInACellIsGivenItsRoom()
    {
        GridOnDisplay at(100);
        auto *label = new QLabel(QStringLiteral("x"));
        label->setMinimumHeight(55);
        at.view.setIndexWidget(at.model.index(1, 1), label);
        at.view.viewport()->repaint();
        QCOMPARE(at.view.rowHeight(0), 25);
        QCOMPARE(at.view.rowHeight(1), 55);
    }

    void everyEventIsPassedOn()
    {
        GridOnDisplay at(10);
        at.view.resize(320, 200);
        QTest::mouseClick(at.view.viewport(), Qt::LeftButton, {}, QPoint(5, 5));
        QTRY_VERIFY(at.view.answers.contains(QEvent::Paint));
        for (const QEvent::Type type :
             {QEvent::Resize, QEvent::Show, QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
            QVERIFY(at.view.answers.contains(type));
        for (const bool answer : qAsConst(at.view.answers))
            QVERIFY(!answer);
    }

    void aPanelAroundTheGridSeesItsClicks()
    {
        Panel panel;
        QVBoxLayout layout(&panel);
        GridNumbers model(10000);
        CountingGridDelegate delegate;
        TaviGridView view;
        view.setItemDelegate(&delegate);
        view.setModel(&model);
        layout.addWidget(&view);
        panel.resize(300, 200);
        panel.show();
        QVERIFY(QTest::qWaitForWindowExposed(&panel));
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, QPoint(30, 30));
        QVERIFY(view.currentIndex().isValid());
        QCOMPARE(panel.seen, QVector<QEvent::Type>{QEvent::MouseButtonPress});
    }

    void aSelectionThatIsOffIgnoresClicksAndKeys()
    {
        GridOnDisplay at(100);
        TaviGridSelectionModel selection(&at.model);
        at.view.setSelectionModel(&selection);
        QTest::mouseClick(at.view.viewport(), Qt::LeftButton, {}, QPoint(30, 30));
        QCOMPARE(at.view.currentIndex(), at.model.index(1, 1));
        selection.setEnabled(false);
        QTest::mouseClick(at.view.viewport(), Qt::LeftButton, {}, QPoint(80, 80));
        QTest::keyClick(&at.view, Qt::Key_Right);
        QTest::keyClick(&at.view, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(at.view.currentIndex(), at.model.index(1, 1));
        QCOMPARE(selection.selectedIndexes(), QModelIndexList{at.model.index(1, 1)});
    }

    void keysMoveAndSelect()
    {
        GridOnDisplay at(100);
        at.view.setCurrentIndex(at.model.index(0, 0));
        QTest::keyClick(&at.view, Qt::Key_Right);
        QTest::keyClick(&at.view, Qt::Key_Down);
        QCOMPARE(at.view.currentIndex(), at.model.index(1, 1));
        QTest::keyClick(&at.view, Qt::Key_Right, Qt::ShiftModifier);
        QCOMPARE(at.view.selectionModel()->selectedIndexes().size(), 2);
        QTest::keyClick(&at.view, Qt::Key_End, Qt::ControlModifier);
        QCOMPARE(at.view.currentIndex().row(), at.model.rowCount() - 1);
    }

    void rightToLeftTheFirstCellIsAtTheRight()
    {
        GridOnDisplay at(100);
        at.view.setLayoutDirection(Qt::RightToLeft);
        QCOMPARE(at.view.indexAt(QPoint(at.view.viewport()->width() - 5, 5)), at.model.index(0, 0));
    }

    void aSelectionInANarrowedViewIsSafe()
    {
        GridOnDisplay at(100);
        TaviGridSelectionModel selection(&at.model);
        at.view.setSelectionModel(&selection);
        at.view.selectAll();
        at.view.setCurrentIndex(at.model.index(1, 1));
        at.view.setViewportWidth(60);
        QTRY_COMPARE(at.model.columnCount(), 2);
        QVERIFY(!selection.hasSelection());
        at.view.selectAll();
        selection.setEnabled(false);
        at.view.setViewportWidth(200);
        QTRY_COMPARE(at.model.columnCount(), 8);
        QVERIFY(!at.view.currentIndex().isValid());
        at.view.viewport()->repaint();
    }

    void aLargeGridIsNotAskedCellByCell_data()
    {
        QTest::addColumn<int>("items");
        QTest::newRow("a chart") << 1617;
        QTest::newRow("large") << 100000;
    }
    void aLargeGridIsNotAskedCellByCell()
    {
        QFETCH(const int, items);
        GridOnDisplay at(items);
        at.view.resize(1000, 600);
        QTRY_COMPARE(at.view.viewport()->width() / 25, at.model.columnCount());
        at.view.viewport()->repaint();
        at.delegate.paints = at.model.reads = at.model.indexes = 0;
        at.view.viewport()->repaint();
        const int in_sight = at.model.columnCount() * (600 / 25 + 1);
        QVERIFY2(at.delegate.paints > 0 && at.delegate.paints <= in_sight, QByteArray::number(at.delegate.paints));
        QVERIFY2(at.model.indexes <= 4 * in_sight, QByteArray::number(at.model.indexes));
        QVERIFY2(at.model.reads <= 10 * in_sight, QByteArray::number(at.model.reads));
        // And a change of width.
        at.model.indexes = 0;
        at.view.resize(600, 600);
        QTRY_COMPARE(at.view.viewport()->width() / 25, at.model.columnCount());
        at.view.viewport()->repaint();
        QVERIFY2(at.model.indexes <= 8 * in_sight, QByteArray::number(at.model.indexes));
        QCOMPARE(at.view.rowHeight(at.model.rowCount() - 1), 25);
    }
};

TAVI_GUI_TEST_MAIN(TestTaviGridView)
#include "tst_tavigridview.moc"
