// SPDX-License-Identifier: MIT
#include "qt3/q3listview.h"

#include "qt3/q3listview_p.h"
#include "qt3/q3listviewaccess_p.h"

#include <QScrollBar>

#include <algorithm>

Q3ListViewPrivate::Q3ListViewPrivate(Q3ListView *owner)
    : q(owner), root(new Q3ListViewItem(Q3ListViewItem::RootTag(), owner))
{}

Q3ListViewPrivate::~Q3ListViewPrivate() = default;

Q3ListView::Q3ListView(QWidget *parent, const char *name, Qt::WindowFlags f)
    : Q3ScrollView(parent, name, f), d(std::make_unique<Q3ListViewPrivate>(this))
{
    Q3ListViewAccess::install();
    setResizePolicy(Q3ScrollView::Manual);
    viewport()->setMouseTracking(true);
    viewport()->setBackgroundRole(QPalette::Base);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    d->header = new Q3Header(this, "list view header");
    d->header->setTracking(true);
    connect(d->header, SIGNAL(clicked(int)), SLOT(changeSortColumn(int)));
    connect(d->header, SIGNAL(sizeChange(int, int, int)), SLOT(columnResized(int, int, int)));
    connect(d->header, SIGNAL(indexChange(int, int, int)), SLOT(columnMoved()));
    connect(d->header, SIGNAL(sectionHandleDoubleClicked(int)), SLOT(adjustColumn(int)));
    setTabOrder(this, d->header);
    triggerUpdate();
}

Q3ListView::~Q3ListView()
{
    const QSignalBlocker quiet(this);
    d->closeEditor();
    clear();
}

Q3Header *Q3ListView::header() const
{
    return d->header;
}

int Q3ListView::columns() const
{
    return static_cast<int>(d->columns.size());
}

void Q3ListView::insertItem(Q3ListViewItem *i)
{
    d->root->insertItem(i);
}

void Q3ListView::takeItem(Q3ListViewItem *i)
{
    d->root->takeItem(i);
}

Q3ListViewItem *Q3ListView::firstChild() const
{
    Q3ListViewRows::order(d->root.get());
    return d->root->firstChild();
}

Q3ListViewItem *Q3ListView::lastItem() const
{
    Q3ListViewRows::order(d->root.get());
    Q3ListViewItem *last = d->root->children_->last;
    while (last && last->childCount() > 0) {
        Q3ListViewRows::order(last);
        last = last->children_->last;
    }
    return last;
}

int Q3ListView::childCount() const
{
    return d->root->childCount();
}

void Q3ListView::clear()
{
    Q3ListViewChildren &children = *d->root->children_;
    if (!children.first || d->clearing)
        return;
    const QPointer<Q3ListView> self(this);
    d->endPress();
    d->rename_timer.stop();
    d->closeEditor();
    Q3ListViewItemIterator::leaveAll(d->root.get());
    const bool had_current = d->current;
    const bool had_selected = d->selection_mode == Single && selectedItem();
    for (Q3ListViewItemGuard *guard :
         {&d->current, &d->selected, &d->anchor, &d->hovered, &d->drop_target, &d->to_rename})
        *guard = nullptr;
    for (Q3ListViewItem *item : d->pending)
        item->setFlag(Q3ListViewItem::Pending, false);
    d->pending.clear();
    d->place = {};
    d->clearing = true;
    {
        // They all leave at once, so that none of them has to look for its place.
        Q3ListViewItem leaving(static_cast<Q3ListViewItem *>(nullptr));
        leaving.children_ = std::make_unique<Q3ListViewChildren>();
        Q3ListViewRows::handOver(d->root.get(), &leaving);
    }
    d->clearing = false;
    setContentsPos(0, 0);
    triggerUpdate();
    if (had_current)
        Q_EMIT currentChanged(nullptr);
    if (self && had_selected)
        d->emitSelectionChanged();
}

Q3ListViewItem *Q3ListView::findItem(const QString &text, int column, ComparisonFlags compare) const
{
    const Qt::CaseSensitivity sensitivity = (compare & CaseSensitive) ? Qt::CaseSensitive : Qt::CaseInsensitive;
    if (!(compare & (ExactMatch | BeginsWith | EndsWith | Contains)))
        compare |= ExactMatch;
    Q3ListViewItem *begins = nullptr;
    Q3ListViewItem *ends = nullptr;
    Q3ListViewItem *contains = nullptr;
    for (Q3ListViewItem *item = firstChild(); item; item = Q3ListViewRows::next(item)) {
        const QString candidate = item->text(column);
        const bool exact = candidate.length() == text.length() && candidate.compare(text, sensitivity) == 0;
        if (exact && (compare & ExactMatch))
            return item;
        if ((compare & BeginsWith) && !begins && candidate.startsWith(text, sensitivity))
            begins = item;
        else if ((compare & EndsWith) && !begins && !ends && candidate.endsWith(text, sensitivity))
            ends = item;
        else if ((compare & Contains) && !begins && !ends && !contains && candidate.contains(text, sensitivity))
            contains = item;
        if (begins && !(compare & ExactMatch))
            return begins;
    }
    return begins ? begins : ends ? ends : contains;
}

void Q3ListView::setOpen(Q3ListViewItem *item, bool open)
{
    if (!item || item->isOpen() == open || (open && !item->canBeOpened()))
        return;
    item->setOpen(open);
}

bool Q3ListView::isOpen(const Q3ListViewItem *item) const
{
    return item && item->isOpen();
}

bool Q3ListView::allColumnsShowFocus() const
{
    return d->all_columns_show_focus;
}

void Q3ListView::setAllColumnsShowFocus(bool enable)
{
    d->all_columns_show_focus = enable;
    viewport()->update();
}

int Q3ListView::itemMargin() const
{
    return d->item_margin;
}

void Q3ListView::setItemMargin(int margin)
{
    if (margin == d->item_margin)
        return;
    d->item_margin = std::max(0, margin);
    d->itemsNeedSetup();
}

bool Q3ListView::rootIsDecorated() const
{
    return d->root_decorated;
}

void Q3ListView::setRootIsDecorated(bool enable)
{
    d->root_decorated = enable;
    triggerUpdate();
}

int Q3ListView::treeStepSize() const
{
    return d->tree_step;
}

void Q3ListView::setTreeStepSize(int size)
{
    d->tree_step = std::max(0, size);
    triggerUpdate();
}

bool Q3ListView::showSortIndicator() const
{
    return d->show_sort_indicator;
}

void Q3ListView::setShowSortIndicator(bool show)
{
    d->show_sort_indicator = show;
    d->updateSortIndicator();
}

bool Q3ListView::showToolTips() const
{
    return d->show_tool_tips;
}

void Q3ListView::setShowToolTips(bool b)
{
    d->show_tool_tips = b;
}

void Q3ListViewPrivate::updateSortIndicator()
{
    header->setSortIndicator(show_sort_indicator && isSorted() ? sort_column : -1, sort_ascending);
}

void Q3ListView::setSorting(int column, bool ascending)
{
    if (column == d->sort_column && ascending == d->sort_ascending)
        return;
    d->sort_column = column < 0 ? -1 : column;
    d->sort_ascending = ascending;
    d->updateSortIndicator();
    triggerUpdate();
}

int Q3ListView::sortColumn() const
{
    return d->sort_column;
}

void Q3ListView::setSortColumn(int column)
{
    setSorting(column, d->sort_ascending);
}

Qt::SortOrder Q3ListView::sortOrder() const
{
    return d->sort_ascending ? Qt::AscendingOrder : Qt::DescendingOrder;
}

void Q3ListView::setSortOrder(Qt::SortOrder order)
{
    setSorting(d->sort_column, order == Qt::AscendingOrder);
}

void Q3ListView::sort()
{
    if (!d->isSorted())
        return;
    for (Q3ListViewItem *item = d->root.get(); item; item = Q3ListViewRows::next(item)) {
        if (item->children_)
            item->children_->unsorted = true;
    }
    Q3ListViewRows::order(d->root.get());
    triggerUpdate();
}

void Q3ListView::changeSortColumn(int section)
{
    if (d->sort_column < 0)
        return;
    setSorting(section, section == d->sort_column ? !d->sort_ascending : d->sort_ascending);
}

Q3ListView::RenameAction Q3ListView::defaultRenameAction() const
{
    return d->rename_action;
}

void Q3ListView::setDefaultRenameAction(RenameAction a)
{
    d->rename_action = a;
}
