// SPDX-License-Identifier: MIT
#include "treeviews/taviheaderview.h"

#include <QAbstractItemModel>
#include <QPointer>

ColumnOrderItem::ColumnOrderItem() = default;

ColumnOrderItem::ColumnOrderItem(const ColumnOrderItem &other) : ConfigOrderItem(other) {}

ColumnOrderItem::~ColumnOrderItem() = default;

ColumnOrderItem &ColumnOrderItem::operator=(const ColumnOrderItem &other)
{
    ConfigOrderItem::operator=(other);
    return *this;
}

void TaviHeaderView::configureHeaders()
{
    QList<ConfigOrderItem *> all;
    QList<ConfigOrderItem *> shown;
    for (int section = 0; section < count(); ++section) {
        auto *const column = new ColumnOrderItem;
        column->setItemInShowList(false);
        column->setData(0, model()->headerData(section, Qt::Horizontal, Qt::DisplayRole), Qt::DisplayRole);
        column->setData(0, model()->headerData(section, Qt::Horizontal, Qt::DecorationRole), Qt::DecorationRole);
        column->setItemID(section);
        column->setItemVisible(!isSectionHidden(section));
        all.append(column);
    }
    for (int place = 0; place < count(); ++place) {
        const auto *const column = static_cast<ColumnOrderItem *>(all.at(logicalIndex(place)));
        if (!column->isItemVisible())
            continue;
        auto *const entry = new ColumnOrderItem(*column);
        entry->setItemInShowList(true);
        shown.append(entry);
    }

    const QPointer<TaviHeaderView> self(this);
    TaviConfigOrder order(tr("Configure List Headers"), this, "header_config");
    const int result = order.reorder(all, shown, false, nullptr, "taviconfig_order_dlg");
    // Whatever ran while the dialog was open may have taken the header away, or columns.
    if (self && result == QDialog::Accepted) {
        for (const ConfigOrderItem *const column : qAsConst(all)) {
            const int section = column->itemID();
            if (section >= count())
                continue;
            if (column->isItemVisible())
                showSectionLastStretchSafe(section); // which passes over what shows already
            else if (!isSectionHidden(section))
                setSectionHidden(section, true);
        }
        for (int place = 0; place < shown.size(); ++place) {
            const int section = shown.at(place)->itemID();
            if (section < count())
                moveSection(visualIndex(section), place);
        }
    }
    qDeleteAll(shown);
}
