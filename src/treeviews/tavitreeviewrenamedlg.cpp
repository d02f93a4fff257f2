// SPDX-License-Identifier: MIT
#include "treeviews/tavitreeviewrenamedlg.h"

#include "treeviews/renamemethod_p.h"
#include "treeviews/renamewalk_p.h"
#include "treeviews/tavitreeview.h"

#include <QAbstractItemModel>

namespace {

QString titleOf(const TaviTreeView *view, int column)
{
    return view ? view->model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString() : QString();
}

QPoint placeOf(const TaviTreeView *view)
{
    return view ? view->mapToGlobal(view->pos()) : QPoint();
}

} // namespace

TaviTreeViewRenameDLG::TaviTreeViewRenameDLG(TaviTreeView *of_view, int of_column, TaviRegistry &store,
                                             std::string &store_section)
    : TaviRenameDialog(of_view, titleOf(of_view, of_column), &store, store_section, placeOf(of_view)), view(of_view),
      column(of_column)
{
    setObjectName(QStringLiteral("tavitree_rename_DLG"));
}

TaviTreeViewRenameDLG::~TaviTreeViewRenameDLG() = default;

QModelIndex TaviTreeViewRenameDLG::cell(int row) const
{
    return view->model()->index(row, column, QModelIndex());
}

QModelIndex TaviTreeViewRenameDLG::nextCandidate() const
{
    if (!view)
        return {};
    if (!found_index.isValid())
        return cell(0);
    const QModelIndex below = cell(found_index.row() + 1);
    return below.isValid() || !wrap_tick->isChecked() ? below : cell(0);
}

QModelIndex TaviTreeViewRenameDLG::prevCandidate() const
{
    if (!view)
        return {};
    const int last = view->model()->rowCount() - 1;
    if (!found_index.isValid())
        return cell(last);
    const QModelIndex above = cell(found_index.row() - 1);
    return above.isValid() || !wrap_tick->isChecked() ? above : cell(last);
}

bool TaviTreeViewRenameDLG::findRow(const RenameRule &rule, bool forward)
{
    const auto next = [this, forward] {
        return forward ? nextCandidate() : prevCandidate();
    };
    const QModelIndex start = next();
    QModelIndex candidate = start;
    while (candidate.isValid()) {
        found_index = candidate;
        if (rule.isIn(candidate.data(Qt::DisplayRole).toString())) {
            // Whoever hears of the selection may take the view away, and this with it.
            const QPointer<TaviTreeView> in(view);
            const QPersistentModelIndex hit(candidate);
            in->selectionModel()->select(candidate, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
            if (in)
                in->scrollTo(hit, QAbstractItemView::EnsureVisible);
            return true;
        }
        candidate = next();
        if (candidate == start)
            break;
    }
    return false;
}

int TaviTreeViewRenameDLG::renameRows(const RenameRule &rule, Rows which, const Report &report)
{
    if (!view)
        return 0;
    const QPointer<TaviTreeView> in(view);
    RenameWalk walk(in, column);
    const int changed = walk.rename(rule, which == Rows::All, which == Rows::Current);
    report(changed);
    if (in)
        in->fireItemsRenamed(changed);
    return changed;
}
