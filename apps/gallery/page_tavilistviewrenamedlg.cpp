// SPDX-License-Identifier: MIT
#include "gallery/page.h"
#include "gallery/renamepage.h"
#include "listviews/tavilistview.h"
#include "listviews/tavilistviewrenamedlg.h"

namespace {

class ListRenamePage : public RenamePage
{
public:
    explicit ListRenamePage(bool for_picture)
    {
        view_ = new TaviListView(true, this);
        view_->setAccessibleName(QStringLiteral("Patches"));
        view_->setSelectionMode(Q3ListView::Extended);
        view_->setAllColumnsShowFocus(true);
        view_->setSorting(-1);
        view_->setDefaultRenameAction(Q3ListView::Accept);
        for (const QString &heading : headings())
            view_->addColumn(heading, 160);
        view_->setResizeMode(Q3ListView::LastColumn);
        Q3ListViewItem *last = nullptr;
        for (const Patch &patch : patches()) {
            last = new Q3ListViewItem(view_, last, patch.name, patch.remark);
            for (const int column : {0, 1})
                last->setRenameEnabled(column, true);
        }
        connect(view_, QOverload<int>::of(&TaviListView::itemsRenamed), this, [this](int count) { tell(count); });
        showView(view_->getListWidget());
        if (for_picture) {
            TaviListViewRenameDLG dialog(view_, 0, registry_, section_);
            pose(&dialog);
        }
    }

private:
    void renameItems(int column) override { view_->renameItems(column, registry_, section_); }

    TaviListView *view_ = nullptr;
};

} // namespace

QWidget *makeTaviListViewRenamePage(bool for_picture)
{
    return new ListRenamePage(for_picture);
}
