// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/orderfixture.h"

#include <QMimeData>

#include <memory>

/// The model of the order dialog's lists: what a drag carries, and what a drop says.
class TestConfigOrderModel : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void construction()
    {
        QObject parent;
        const auto *model = new ConfigOrderModel(&parent);
        QCOMPARE(static_cast<const QObject *>(model)->parent(), &parent);
        QCOMPARE(model->columnCount(), 1);
        QCOMPARE(model->headerData(0, Qt::Horizontal), QVariant("Order"));
        QCOMPARE(model->rowCount(), 0);
        const ConfigOrderModel with_header(QList<QVariant>{"Inks", "Names"}, nullptr);
        QCOMPARE(with_header.columnCount(), 2);
        QCOMPARE(with_header.headerData(1, Qt::Horizontal), QVariant("Names"));
        for (const ConfigOrderModel *each : {model, &with_header}) {
            QCOMPARE(each->supportedDragActions(), Qt::DropActions(Qt::MoveAction));
            QCOMPARE(each->supportedDropActions(), Qt::DropActions(Qt::MoveAction));
            QCOMPARE(each->mimeTypes(), QStringList{"MIME_CONFIG_ORDER_ITEM"});
        }
    }

    void aDragNamesRowsAndModel()
    {
        ConfigOrderModel model;
        model.appendItems({orderItem(0, true, true), orderItem(1, true, true), orderItem(2, true, true)});
        const std::unique_ptr<QMimeData> data(model.mimeData({model.index(2, 0), model.index(0, 0)}));
        QCOMPARE(data->formats(), QStringList{"MIME_CONFIG_ORDER_ITEM"});
        QCOMPARE(data->data("MIME_CONFIG_ORDER_ITEM"), QByteArray());
        const QList<QVariant> ids{model.itemAt(2)->id(), model.itemAt(0)->id()};
        QCOMPARE(data->property("dragged_ids").toList(), ids);
        QCOMPARE(model.getMimeDataSourceModelID(data.get()), model.modelID());
    }

    void otherColumnsOfARowDoNotCount()
    {
        ConfigOrderModel model(QList<QVariant>{"a", "b"}, nullptr);
        auto *item = orderItem(0, true, true);
        item->setData(1, "second", Qt::DisplayRole);
        model.appendItem(item);
        const std::unique_ptr<QMimeData> data(model.mimeData({model.index(0, 0), model.index(0, 1)}));
        QCOMPARE(data->property("dragged_ids").toList(), QList<QVariant>{item->id()});
    }

    void aDropSaysWhereAndFromWhom_data()
    {
        QTest::addColumn<bool>("own");
        QTest::addColumn<int>("row");
        QTest::addColumn<int>("told");
        QTest::newRow("own rows") << true << 1 << 1;
        QTest::newRow("own rows at the end") << true << -1 << 3;
        QTest::newRow("others") << false << 0 << 0;
        QTest::newRow("others at the end") << false << -1 << 3;
        QTest::newRow("others below the last") << false << 3 << 3;
    }

    void aDropSaysWhereAndFromWhom()
    {
        QFETCH(bool, own);
        QFETCH(int, row);
        QFETCH(int, told);
        ConfigOrderModel model;
        ConfigOrderModel other;
        for (ConfigOrderModel *each : {&model, &other})
            each->appendItems({orderItem(0, true, true), orderItem(1, true, true), orderItem(2, true, true)});
        ConfigOrderModel &source = own ? model : other;
        const std::unique_ptr<QMimeData> data(source.mimeData({source.index(0, 0)}));
        QSignalSpy self_dropped(&model, &ConfigOrderModel::selfDroppedSelectedItemsAt);
        QSignalSpy others_dropped(&model, &ConfigOrderModel::othersDropped);
        QVERIFY(model.dropMimeData(data.get(), Qt::MoveAction, row, 0, QModelIndex()));
        QSignalSpy &heard = own ? self_dropped : others_dropped;
        QCOMPARE(self_dropped.count() + others_dropped.count(), 1);
        QCOMPARE(heard.count(), 1);
        QCOMPARE(heard.at(0).at(0).toInt(), told);
        QCOMPARE(rowTexts(model), QString("A B C"));
        QCOMPARE(rowTexts(other), QString("A B C"));
    }

    void otherDropsAreRefused()
    {
        ConfigOrderModel model;
        model.appendItem(orderItem(0, true, true));
        QSignalSpy self_dropped(&model, &ConfigOrderModel::selfDroppedSelectedItemsAt);
        QSignalSpy others_dropped(&model, &ConfigOrderModel::othersDropped);
        const std::unique_ptr<QMimeData> data(model.mimeData({model.index(0, 0)}));
        QVERIFY(!model.dropMimeData(data.get(), Qt::IgnoreAction, 0, 0, QModelIndex()));
        QVERIFY(!model.dropMimeData(nullptr, Qt::MoveAction, 0, 0, QModelIndex()));
        QMimeData text;
        text.setText("MIME_CONFIG_ORDER_ITEM");
        model.setMimeDataSourceModelID(&text, model.modelID());
        QVERIFY(!model.dropMimeData(&text, Qt::MoveAction, 0, 0, QModelIndex()));
        QCOMPARE(self_dropped.count() + others_dropped.count(), 0);
    }
};

TAVI_GUI_TEST_MAIN(TestConfigOrderModel)
#include "tst_configordermodel.moc"
