// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_COLUMNORDERDIALOG_P_H
#define TREEVIEWS_COLUMNORDERDIALOG_P_H

#include <QList>
#include <QString>

#include <memory>

class ConfigOrderItem;
class QWidget;
class TaviConfigOrder;

/// The order dialog as a header uses it.
class ColumnOrderDialog
{
public:
    ColumnOrderDialog(const QString &title, QWidget *parent);
    ~ColumnOrderDialog();
    ColumnOrderDialog(const ColumnOrderDialog &) = delete;
    ColumnOrderDialog &operator=(const ColumnOrderDialog &) = delete;

    /// Runs the dialog and returns its result. The entries of @a all belong to this object from now on and live as
    /// long as it does. Those of @a shown belong to the dialog, too; in their place it gives those that are to be
    /// shown, in order, which the caller owns: none unless the dialog was accepted.
    int run(const QList<ConfigOrderItem *> &all, QList<ConfigOrderItem *> &shown);

private:
    const std::unique_ptr<TaviConfigOrder> order_;
};

#endif
