// SPDX-License-Identifier: MIT
#include "treeviews/taviconfigorder.h"

namespace {

constexpr unsigned int visible_slot = 1;
constexpr unsigned int in_show_list_slot = 2;
constexpr unsigned int item_id_slot = 3;

} // namespace

ConfigOrderItem::ConfigOrderItem(TaviTreeItem *parent) : TaviTreeItem(parent)
{
    setUserData(0, true, visible_slot);
    setItemInShowList(false);
}

ConfigOrderItem::ConfigOrderItem(const ConfigOrderItem &other) : TaviTreeItem(nullptr)
{
    copyFrom(other);
}

ConfigOrderItem::~ConfigOrderItem() = default;

ConfigOrderItem &ConfigOrderItem::operator=(const ConfigOrderItem &other)
{
    if (this != &other)
        copyFrom(other);
    return *this;
}

void ConfigOrderItem::copyFrom(const ConfigOrderItem &other)
{
    setData(0, other.data(0, Qt::DisplayRole), Qt::DisplayRole);
    setData(0, other.data(0, Qt::DecorationRole), Qt::DecorationRole);
    setUserData(0, other.userData(0, item_id_slot), item_id_slot);
    setUserData(0, other.userData(0, visible_slot), visible_slot);
    setItemInShowList(other.isItemInShowList());
}

ConfigOrderItem *ConfigOrderItem::clone() const
{
    return new ConfigOrderItem(*this);
}

bool ConfigOrderItem::isItemVisible() const
{
    return userData(0, visible_slot).toBool();
}

void ConfigOrderItem::setItemVisible(bool visible)
{
    setUserData(0, visible, visible_slot);
    updateFlags();
}

void ConfigOrderItem::setItemID(int id)
{
    setUserData(0, id, item_id_slot);
}

int ConfigOrderItem::itemID() const
{
    return userData(0, item_id_slot).toInt();
}

bool ConfigOrderItem::isItemInShowList() const
{
    return userData(0, in_show_list_slot).toBool();
}

void ConfigOrderItem::setItemInShowList(bool in_show_list)
{
    setUserData(0, in_show_list, in_show_list_slot);
    setDraggable(true);
    updateFlags();
}

void ConfigOrderItem::updateFlags()
{
    const bool can_be_picked = isItemInShowList() == isItemVisible();
    setEnabled(can_be_picked);
    setSelectable(can_be_picked);
}
