// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_TAVITREEITEMREGISTRY_P_H
#define TREEVIEWS_TAVITREEITEMREGISTRY_P_H

class TaviTreeItem;

/// @file
/// Which item has which number.

/// The living items by number.
///
/// Numbers are given out in rising order, so that a table in pages does what a hash would at a fifth of the memory. A
/// page goes when the last of its items has gone. The table itself stays until the process ends: items of static
/// life may outlive everything else.
namespace TaviTreeItemRegistry {

/// Enters a new item.
void enter(int id, TaviTreeItem *item);
/// Strikes an item out.
void strikeOut(int id);
/// The living item with this number, null if there is none. O(1).
TaviTreeItem *item(int id);

} // namespace TaviTreeItemRegistry

#endif
