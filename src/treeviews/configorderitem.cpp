// SPDX-License-Identifier: MIT
#include "treeviews/configorderitem.h"

ConfigOrderItem::ConfigOrderItem(TaviTreeItem *parent) : TaviTreeItem(parent)
{
    setUserData(0, true, VisibleSlot);
    setItemInShowList(false);
}

ConfigOrderItem::ConfigOrderItem(const ConfigOrderItem &other) : TaviTreeItem(nullptr)
{
    ConfigOrderItem::operator=(other);
}

ConfigOrderItem::~ConfigOrderItem() = default;

ConfigOrderItem &ConfigOrderItem::operator=(const ConfigOrderItem &other)
{
    if (this == &other)
        return *this;
    for (const int role :
         {int(Qt::DisplayRole), int(Qt::DecorationRole), getUserDataRole(VisibleSlot), getUserDataRole(ItemIdSlot)})
        setData(0, other.data(0, role), role);
    setItemInShowList(other.isItemInShowList());
    return *this;
}

bool ConfigOrderItem::isItemVisible() const
{
    return userData(0, VisibleSlot).toBool();
}

void ConfigOrderItem::setItemVisible(bool visible)
{
    setUserData(0, visible, VisibleSlot);
    deriveFlags();
}

void ConfigOrderItem::setItemID(int item_id)
{
    setUserData(0, item_id, ItemIdSlot);
}

int ConfigOrderItem::itemID() const
{
    return userData(0, ItemIdSlot).toInt();
}

bool ConfigOrderItem::isItemInShowList() const
{
    return userData(0, InShowListSlot).toBool();
}

void ConfigOrderItem::setItemInShowList(bool in_show_list)
{
    setUserData(0, in_show_list, InShowListSlot);
    deriveFlags();
    setDraggable(true);
}

void ConfigOrderItem::deriveFlags()
{
    const bool can_be_picked = isItemInShowList() == isItemVisible();
    setEnabled(can_be_picked);
    setSelectable(can_be_picked);
}
