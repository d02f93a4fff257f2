// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "treeviews/treerows_p.h"

#include <QStandardItemModel>

/// Rows of a tree in the order in which they are seen.
class TestTreeRows : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TaviTest::init();
        model = std::make_unique<QStandardItemModel>();
        for (int i = 0; i < 4; ++i) {
            auto *row = new QStandardItem(QString::number(i));
            for (int j = 0; j < 3; ++j) {
                auto *child = new QStandardItem(QStringLiteral("%1.%2").arg(i).arg(j));
                child->appendRow(new QStandardItem(QStringLiteral("%1.%2.0").arg(i).arg(j)));
                row->appendRow(child);
            }
            model->appendRow(row);
        }
    }

    void parentsStandBeforeTheirChildren()
    {
        QModelIndexList rows = {at({2, 1, 0}), at({3}), at({2}), at({0, 2}), at({2, 1}), at({0})};
        sortInTreeOrder(rows);
        QCOMPARE(texts(rows), QStringList({"0", "0.2", "2", "2.1", "2.1.0", "3"}));
    }

    void entriesThatOccurTwiceAreLeftOnce()
    {
        QModelIndexList rows = {at({1}), at({0}), at({1}), QModelIndex(), at({0})};
        sortInTreeOrder(rows);
        QCOMPARE(texts(rows), QStringList({"0", "1"}));
    }

    void rowsOfDifferentParentsAreSortedByThese()
    {
        QModelIndexList rows = {at({1, 0}), at({0, 1}), at({0, 2})}; // each lower than the one before
        sortInTreeOrder(rows);
        QCOMPARE(texts(rows), QStringList({"0.1", "0.2", "1.0"}));
    }

    void rowsInOrderStayAsTheyAre()
    {
        QModelIndexList rows = {at({1}), at({2}), QModelIndex(), at({3})};
        sortInTreeOrder(rows);
        QCOMPARE(texts(rows), QStringList({"1", "2", "3"}));
        QModelIndexList twice = {at({1}), at({1})};
        sortInTreeOrder(twice);
        QCOMPARE(texts(twice), QStringList({"1"}));
        QModelIndexList none;
        sortInTreeOrder(none);
        QVERIFY(none.isEmpty());
    }

    void neighboursMakeOneRange()
    {
        const QItemSelection selection =
            selectionOfRows({at({0}), at({1}), at({1, 0}), at({1, 1}), at({3}), at({3, 2})});
        QCOMPARE(selection.size(), 4);
        QCOMPARE(selection[0].topLeft(), at({0}));
        QCOMPARE(selection[0].bottomRight(), at({1}));
        QCOMPARE(selection[1].height(), 2);
        QCOMPARE(selection[1].parent(), at({1}));
        QCOMPARE(selection[2].height(), 1);
        QCOMPARE(selection[3].topLeft(), at({3, 2}));
        QCOMPARE(selection.indexes().size(), 6);
    }

    void rowsUnderDifferentParentsNeverJoin()
    {
        QCOMPARE(selectionOfRows({at({0, 0}), at({1, 1})}).size(), 2);
        QVERIFY(selectionOfRows({}).isEmpty());
    }

private:
    QModelIndex at(const QVector<int> &path) const
    {
        QModelIndex index;
        for (const int row : path)
            index = model->index(row, 0, index);
        return index;
    }
    static QStringList texts(const QModelIndexList &rows)
    {
        QStringList list;
        for (const QModelIndex &row : rows)
            list.append(row.data().toString());
        return list;
    }

    std::unique_ptr<QStandardItemModel> model;
};

TAVI_TEST_MAIN(TestTreeRows)
#include "tst_treerows.moc"
