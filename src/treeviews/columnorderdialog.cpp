// SPDX-License-Identifier: MIT
#include "treeviews/columnorderdialog_p.h"

#if __has_include("treeviews/taviconfigorder.h")

#include "treeviews/taviconfigorder.h"

ColumnOrderDialog::ColumnOrderDialog(const QString &title, QWidget *parent)
    : order_(std::make_unique<TaviConfigOrder>(title, parent, "header_config"))
{}

ColumnOrderDialog::~ColumnOrderDialog() = default;

int ColumnOrderDialog::run(const QList<ConfigOrderItem *> &all, QList<ConfigOrderItem *> &shown)
{
    // Without a store the dialog comes back where it was last within this run of the program.
    return order_->reorder(all, shown, false, nullptr, "taviconfig_order_dlg");
}

#else

// Not there yet: a dialog that was never accepted.

#include "treeviews/configorderitem.h"

class TaviConfigOrder
{};

ColumnOrderDialog::ColumnOrderDialog(const QString &, QWidget *) {}

ColumnOrderDialog::~ColumnOrderDialog() = default;

int ColumnOrderDialog::run(const QList<ConfigOrderItem *> &all, QList<ConfigOrderItem *> &shown)
{
    qDeleteAll(all);
    qDeleteAll(shown);
    shown.clear();
    return 0;
}

#endif
