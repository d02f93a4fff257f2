// SPDX-License-Identifier: MIT
#include "gallery/page.h"
#include "gallery/renamepage.h"
#include "treeviews/tavitreeitem.h"
#include "treeviews/tavitreemodel.h"
#include "treeviews/tavitreeview.h"
#include "treeviews/tavitreeviewrenamedlg.h"

#include <QHeaderView>

namespace {

class TreeRenamePage : public RenamePage
{
public:
    explicit TreeRenamePage(bool for_picture)
    {
        QList<QVariant> titles;
        for (const QString &heading : headings())
            titles.append(heading);
        model_.setHeaderData(titles);
        for (const Patch &patch : patches()) {
            auto *item = new TaviTreeItem(QList<QVariant>{patch.name, patch.remark}, nullptr);
            for (const int column : {0, 1})
                item->setEditable(column, true);
            model_.appendItem(item);
        }
        view_ = new TaviTreeView(this);
        view_->setObjectName(QStringLiteral("patches"));
        view_->setAccessibleName(QStringLiteral("Patches"));
        view_->setSelectionMode(QAbstractItemView::ExtendedSelection);
        view_->setModel(&model_);
        view_->header()->resizeSection(0, 160);
        connect(view_, &TaviTreeView::itemsRenamed, this, [this](int count) { tell(count); });
        showView(view_->widget());
        if (for_picture) {
            TaviTreeViewRenameDLG dialog(view_, 0, registry_, section_);
            pose(&dialog);
        }
    }

private:
    void renameItems(int column) override { view_->renameItems(column, registry_, section_); }

    TaviTreeModel model_;
    TaviTreeView *view_ = nullptr;
};

} // namespace

QWidget *makeTaviTreeViewRenamePage(bool for_picture)
{
    return new TreeRenamePage(for_picture);
}
