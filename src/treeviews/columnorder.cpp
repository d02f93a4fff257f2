// SPDX-License-Identifier: MIT
#include "treeviews/columnorder_p.h"

#include "treeviews/columnorderdialog_p.h"
#include "treeviews/taviheaderview.h"

#include <QAbstractItemModel>
#include <QDialog>
#include <QPointer>

namespace {

ConfigOrderItem *newEntry(const TaviHeaderView &header, int section, bool in_show_list)
{
    const QAbstractItemModel *model = header.model();
    auto *entry = new ColumnOrderItem;
    entry->setItemInShowList(in_show_list);
    entry->setData(0, model->headerData(section, Qt::Horizontal, Qt::DisplayRole), Qt::DisplayRole);
    entry->setData(0, model->headerData(section, Qt::Horizontal, Qt::DecorationRole), Qt::DecorationRole);
    entry->setItemID(section);
    entry->setItemVisible(!header.isSectionHidden(section));
    return entry;
}

} // namespace

ColumnOrderItem::ColumnOrderItem() = default;

ColumnOrderItem::ColumnOrderItem(const ColumnOrderItem &other) : ConfigOrderItem(other) {}

ColumnOrderItem::~ColumnOrderItem() = default;

ColumnOrderItem *ColumnOrderItem::clone() const
{
    return new ColumnOrderItem(*this);
}

ColumnOrder ColumnOrder::of(const TaviHeaderView &header)
{
    ColumnOrder order;
    for (int section = 0; section < header.count(); ++section)
        order.all.append(newEntry(header, section, false));
    for (int place = 0; place < header.count(); ++place) {
        const int section = header.logicalIndex(place);
        if (!header.isSectionHidden(section))
            order.shown.append(newEntry(header, section, true));
    }
    return order;
}

void ColumnOrder::applyTo(TaviHeaderView &header) const
{
    for (const ConfigOrderItem *entry : all) {
        const int section = entry->itemID();
        if (entry->isItemVisible())
            header.showSectionLastStretchSafe(section);
        else if (!header.isSectionHidden(section))
            header.setSectionHidden(section, true);
    }
    int place = 0;
    for (const ConfigOrderItem *entry : shown) {
        if (entry->itemID() < header.count())
            header.moveSection(header.visualIndex(entry->itemID()), place++);
    }
}

void TaviHeaderView::configureHeaders()
{
    ColumnOrder order = ColumnOrder::of(*this);
    const QPointer<TaviHeaderView> self(this);
    ColumnOrderDialog dialog(tr("Configure List Headers"), this);
    const int result = dialog.run(order.all, order.shown);
    if (self && result == QDialog::Accepted)
        order.applyTo(*this);
    qDeleteAll(order.shown);
}
