// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/gridfixture.h"

#include <QItemSelection>
#include <QPersistentModelIndex>

#include <functional>

namespace {

/// Notes signals by name with their columns.
QStringList recordedColumns(QAbstractItemModel &model, const std::function<void()> &change)
{
    QStringList seen;
    QObject context;
    const auto note = [&seen](const char *name) {
        return [&seen, name](const QModelIndex &, int first, int last) {
            seen << QStringLiteral("%1 %2-%3").arg(QLatin1String(name)).arg(first).arg(last);
        };
    };
    QObject::connect(&model, &QAbstractItemModel::columnsAboutToBeInserted, &context, note("inserting"));
    QObject::connect(&model, &QAbstractItemModel::columnsInserted, &context, note("inserted"));
    QObject::connect(&model, &QAbstractItemModel::columnsAboutToBeRemoved, &context, note("removing"));
    QObject::connect(&model, &QAbstractItemModel::columnsRemoved, &context, note("removed"));
    QObject::connect(&model, &QAbstractItemModel::modelAboutToBeReset, &context, [&seen] { seen << "resetting"; });
    QObject::connect(&model, &QAbstractItemModel::modelReset, &context, [&seen] { seen << "reset"; });
    change();
    return seen;
}

} // namespace

/// The grid's model, selection model and delegate, without a view.
class TestTaviGridModel : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void construction()
    {
        const GridNumbers model(10);
        QCOMPARE(model.columnCount(), 0);
        QCOMPARE(model.rowCount(), 0); // also with items
        const CountingGridDelegate delegate;
        QCOMPARE(delegate.cellSize(), QSize(25, 25));
    }

    void rowsAreWhatTheItemsFill_data()
    {
        QTest::addColumn<int>("items");
        QTest::addColumn<int>("columns");
        QTest::addColumn<int>("rows");
        QTest::newRow("a remainder") << 10 << 3 << 4;
        QTest::newRow("no remainder") << 9 << 3 << 3;
        QTest::newRow("fewer than a row") << 2 << 3 << 1;
        QTest::newRow("no items") << 0 << 3 << 0;
        QTest::newRow("one column") << 7 << 1 << 7;
        QTest::newRow("large") << 100000 << 40 << 2500;
    }
    void rowsAreWhatTheItemsFill()
    {
        QFETCH(const int, items);
        QFETCH(const int, columns);
        QFETCH(const int, rows);
        GridNumbers model(items);
        model.insertColumns(0, columns);
        QCOMPARE(model.columnCount(), columns);
        QCOMPARE(model.rowCount(), rows);
    }

    void theParentIsNotLookedAt()
    {
        GridNumbers model(10);
        model.insertColumns(0, 3);
        QCOMPARE(model.rowCount(model.index(0, 0)), 4);
        QCOMPARE(model.columnCount(model.index(0, 0)), 3);
        QVERIFY(!static_cast<QAbstractItemModel &>(model).hasChildren(model.index(0, 0)));
    }

    void insertedColumnsAreToldOneTooLongAndReset()
    {
        GridNumbers model(10);
        bool result = false;
        QCOMPARE(recordedColumns(model, [&] { result = model.insertColumns(0, 3); }),
                 QStringList({"inserting 0-3", "inserted 0-3", "resetting", "reset"}));
        QVERIFY(result);
        QCOMPARE(model.columnCount(), 3);
        QCOMPARE(recordedColumns(model, [&] { model.insertColumns(3, 2); }),
                 QStringList({"inserting 3-5", "inserted 3-5", "resetting", "reset"}));
        QCOMPARE(model.columnCount(), 5);
    }

    void removedColumnsAreToldOneTooLongAndReset()
    {
        GridNumbers model(10);
        model.insertColumns(0, 5);
        bool result = false;
        QCOMPARE(recordedColumns(model, [&] { result = model.removeColumns(0, 2); }),
                 QStringList({"removing 0-2", "removed 0-2", "resetting", "reset"}));
        QVERIFY(result);
        QCOMPARE(model.columnCount(), 3);
    }

    void moreColumnsCanBeTakenThanThereAre()
    {
        GridNumbers model(10);
        model.insertColumns(0, 2);
        QVERIFY(model.removeColumns(0, 5));
        QCOMPARE(model.columnCount(), 0);
        QCOMPARE(model.rowCount(), 0);
    }

    void aChangeOfColumnsEndsPersistentIndexes()
    {
        GridNumbers model(10);
        model.insertColumns(0, 5);
        const QPersistentModelIndex kept(model.index(1, 4));
        QVERIFY(kept.isValid());
        model.removeColumns(0, 5);
        QVERIFY(!kept.isValid());
    }

    void noValueIsKept()
    {
        GridNumbers model(10);
        model.insertColumns(0, 5);
        QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        QVERIFY(!model.setData(model.index(0, 0), 5));
        QCOMPARE(changed.count(), 0);
    }

    void headersTellASizeOfOneAndNothingElse()
    {
        const GridNumbers model(10);
        for (const Qt::Orientation orientation : {Qt::Horizontal, Qt::Vertical}) {
            QCOMPARE(model.headerData(0, orientation, Qt::SizeHintRole), QVariant(QSize(1, 1)));
            QVERIFY(!model.headerData(0, orientation, Qt::DisplayRole).isValid());
            QVERIFY(!model.headerData(0, orientation, Qt::ToolTipRole).isValid());
        }
    }

    void delegateSizes()
    {
        CountingGridDelegate delegate;
        delegate.setCellSize(10, 20);
        QCOMPARE(delegate.cellSize(), QSize(10, 20));
        delegate.setCellWidth(30);
        QCOMPARE(delegate.cellSize(), QSize(30, 20));
        delegate.setCellHeight(40);
        QCOMPARE(delegate.cellWidth(), 30);
        QCOMPARE(delegate.cellHeight(), 40);
        GridNumbers model(10);
        model.insertColumns(0, 3);
        QCOMPARE(delegate.sizeHint(QStyleOptionViewItem(), QModelIndex()), QSize(30, 40));
        QCOMPARE(delegate.sizeHint(QStyleOptionViewItem(), model.index(0, 0)), QSize(30, 40));
    }

    void aSelectionIsOnAtFirst()
    {
        GridNumbers model(10);
        model.insertColumns(0, 3);
        QObject parent;
        const TaviGridSelectionModel lone(&model);
        const auto *owned = new TaviGridSelectionModel(&model, &parent);
        QVERIFY(lone.isEnabled() && owned->isEnabled());
        QCOMPARE(owned->parent(), &parent);
        QCOMPARE(owned->model(), &model);
    }

    void aSelectionThatIsOnFollows()
    {
        GridNumbers model(10);
        model.insertColumns(0, 3);
        TaviGridSelectionModel selection(&model);
        selection.select(model.index(0, 0), QItemSelectionModel::Select);
        selection.select(QItemSelection(model.index(1, 0), model.index(1, 2)), QItemSelectionModel::Select);
        selection.setCurrentIndex(model.index(2, 1), QItemSelectionModel::NoUpdate);
        QCOMPARE(selection.selectedIndexes().size(), 4);
        QCOMPARE(selection.currentIndex(), model.index(2, 1));
        selection.clearSelection();
        QVERIFY(!selection.hasSelection());
        QVERIFY(selection.currentIndex().isValid());
        selection.select(model.index(0, 0), QItemSelectionModel::Select);
        selection.clear();
        QVERIFY(!selection.hasSelection() && !selection.currentIndex().isValid());
        selection.select(model.index(0, 0), QItemSelectionModel::Select);
        selection.reset();
        QVERIFY(!selection.hasSelection());
    }

    void aSelectionThatIsOffStays()
    {
        GridNumbers model(10);
        model.insertColumns(0, 3);
        TaviGridSelectionModel selection(&model);
        selection.select(model.index(0, 0), QItemSelectionModel::Select);
        selection.setCurrentIndex(model.index(2, 1), QItemSelectionModel::NoUpdate);
        selection.setEnabled(false);
        QVERIFY(!selection.isEnabled());
        selection.select(model.index(0, 1), QItemSelectionModel::Select);
        selection.select(QItemSelection(model.index(1, 0), model.index(1, 2)), QItemSelectionModel::Toggle);
        selection.setCurrentIndex(model.index(0, 2), QItemSelectionModel::SelectCurrent);
        selection.clearSelection();
        selection.clear();
        selection.reset();
        // Through the base class as well, as a view calls them.
        QItemSelectionModel &base = selection;
        base.select(model.index(0, 1), QItemSelectionModel::ClearAndSelect);
        base.clear();
        base.reset();
        QCOMPARE(selection.selectedIndexes(), QModelIndexList{model.index(0, 0)});
        QCOMPARE(selection.currentIndex(), model.index(2, 1));
        selection.setEnabled(true);
        selection.clearSelection();
        QVERIFY(!selection.hasSelection());
    }
};

TAVI_GUI_TEST_MAIN(TestTaviGridModel)
#include "tst_tavigridmodel.moc"
