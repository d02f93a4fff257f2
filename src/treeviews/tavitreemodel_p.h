// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_TAVITREEMODEL_P_H
#define TREEVIEWS_TAVITREEMODEL_P_H

#include "treeviews/tavitreemodel.h"

/// @file
/// What the proxy may know of the model beyond its public side.

/// The inside of a model, for the proxy alone.
class TaviTreeModelAccess
{
public:
    /// The hidden root.
    static TaviTreeItem *root(const TaviTreeModel *model) { return model->root_item; }
    /// An index of the model, without any test.
    static QModelIndex createIndex(const TaviTreeModel *model, int row, int column, void *item)
    {
        return model->createIndex(row, column, item);
    }
    /// The item of an index, null without one.
    static TaviTreeItem *itemOf(const TaviTreeModel *model, const QModelIndex &index) { return model->itemOf(index); }
    /// Whether the class of the model has its own data().
    static bool overridesData(const TaviTreeModel *model);
    /// Whether the class of the model has its own index(), rowCount(), columnCount() or hasChildren().
    static bool overridesStructure(const TaviTreeModel *model);
    /// Whether the model's own code answers for data and structure: then the items tell all that it would.
    static bool isPlain(const TaviTreeModel *model);
};

#endif
