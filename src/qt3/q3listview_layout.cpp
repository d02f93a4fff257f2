// SPDX-License-Identifier: MIT
#include "qt3/q3listview_p.h"
#include "qt3/q3listviewaccess_p.h"

#include <QEvent>
#include <QHelpEvent>
#include <QScrollBar>
#include <QTimerEvent>
#include <QToolTip>

#include <algorithm>

void Q3ListViewPrivate::addPending(Q3ListViewItem *item)
{
    if (item->flags_ & Q3ListViewItem::Pending)
        return;
    item->setFlag(Q3ListViewItem::Pending, true);
    pending.push_back(item);
}

/// Forgets an item, and all below it, that is still in its place.
void Q3ListViewPrivate::removePending(Q3ListViewItem *item)
{
    if (item->childCount() > 0) {
        const auto goes = [item](Q3ListViewItem *one) {
            const bool inside = one->isInside(item);
            if (inside)
                one->setFlag(Q3ListViewItem::Pending, false);
            return inside;
        };
        pending.erase(std::remove_if(pending.begin(), pending.end(), goes), pending.end());
        return;
    }
    if (!(item->flags_ & Q3ListViewItem::Pending))
        return;
    item->setFlag(Q3ListViewItem::Pending, false);
    // It was most likely put there a moment ago.
    const auto found = std::find(pending.rbegin(), pending.rend(), item);
    if (found != pending.rend())
        pending.erase(std::next(found).base());
}

/// Makes all heights and positions known.
void Q3ListViewPrivate::index()
{
    while (!pending.empty()) {
        Q3ListViewItem *item = pending.back();
        pending.pop_back();
        item->setFlag(Q3ListViewItem::Pending, false);
        Q3ListViewRows::ensureSetup(item);
        if (item->isOpen() && item->isVisible())
            Q3ListViewRows::index(item);
        Q3ListViewRows::changed(item);
    }
    Q3ListViewRows::index(root.get());
}

int Q3ListViewPrivate::contentsHeight()
{
    index();
    return Q3ListViewRows::childrenHeight(root.get());
}

int Q3ListViewPrivate::indentation(const Q3ListViewItem *item) const
{
    return tree_step * (item->depth() + (root_decorated ? 1 : 0));
}

bool Q3ListViewPrivate::hasExpander(const Q3ListViewItem *item) const
{
    return item->canBeOpened() && (root_decorated || item->parent());
}

/// The cell of an item in the viewport's coordinates, without the indentation.
QRect Q3ListViewPrivate::cellRect(Q3ListViewItem *item, int column)
{
    const QRect section = header->sectionRect(column);
    QRect cell(section.left(), item->itemPos() - q->contentsY(), section.width(), item->height());
    if (column == 0)
        cell = QStyle::visualRect(q->layoutDirection(), cell, cell.adjusted(indentation(item), 0, 0, 0));
    return cell;
}

void Q3ListViewPrivate::itemsNeedSetup()
{
    row_height = 0;
    for (Q3ListViewItem *item = root->firstChild(); item; item = Q3ListViewRows::next(item)) {
        item->setFlag(Q3ListViewItem::SetUp, false);
        if (item->children_)
            item->children_->indexed = false;
    }
    root->children_->indexed = false;
    q->triggerUpdate();
}

/// Forgets an item, and all below it, that is about to leave the view.
Q3ListViewPrivate::Leaving Q3ListViewPrivate::itemLeaves(Q3ListViewItem *item)
{
    Leaving left;
    const auto leaves = [item](const Q3ListViewItemGuard &guard) {
        return guard && guard->isInside(item);
    };
    if (leaves(renamed))
        closeEditor();
    if (leaves(to_rename))
        rename_timer.stop();
    if (selection_mode == Q3ListView::Single && leaves(selected) && selected->isSelected()) {
        selected->setSelected(false);
        left.selection = true;
    }
    if (leaves(current)) {
        // The row below what goes, or the one above it.
        Q3ListViewItem *heir = nullptr;
        for (Q3ListViewItem *up = item; up && !heir; up = up->parent_)
            heir = up->next_ ? Q3ListViewRows::shownFrom(up->next_) : nullptr;
        current = heir ? heir : item->itemAbove();
        left.current = true;
        q->repaintItem(current);
    }
    for (Q3ListViewItemGuard *guard : {&selected, &anchor, &pressed, &hovered, &drop_target, &to_rename}) {
        if (leaves(*guard))
            *guard = nullptr;
    }
    return left;
}

void Q3ListViewPrivate::tellOf(const Leaving &left)
{
    const QPointer<Q3ListView> self(q);
    if (left.selection)
        emitSelectionChanged();
    if (self && left.current)
        Q_EMIT q->currentChanged(current);
}

void Q3ListViewPrivate::opened(Q3ListViewItem *item, bool open)
{
    // What has the focus must be seen to have it.
    if (!open && current && current != item && current->isInside(item))
        q->setCurrentItem(item);
    q->triggerUpdate();
    Q3ListViewAccess::tellOpening(item);
    if (open && item->childCount() > 0)
        Q_EMIT q->expanded(item);
    else if (!open)
        Q_EMIT q->collapsed(item);
}

void Q3ListView::triggerUpdate()
{
    if (!d->update_timer.isActive())
        d->update_timer.start(0, this);
}

void Q3ListView::updateContents()
{
    d->update_timer.stop();
    ensurePolished();
    d->layOutHeader();
    const int height = d->contentsHeight();
    d->measureColumns();
    d->update_timer.stop();
    resizeContents(d->header->headerWidth(), height);
    verticalScrollBar()->setSingleStep(std::max(1, d->row_height));
    contentsMoved();
    viewport()->update();
}

void Q3ListViewPrivate::layOutHeader()
{
    const int height = header->isVisibleTo(q) ? header->sizeHint().height() : 0;
    if (q->topMargin() != height)
        q->setMargins(q->leftMargin(), height, q->rightMargin(), q->bottomMargin());
    const QRect view = q->viewport()->geometry();
    header->setGeometry(view.left(), view.top() - height, view.width(), height);
}

void Q3ListView::contentsMoved()
{
    d->header->setOffset(contentsX());
    d->placeEditor();
}

void Q3ListView::setContentsPos(int x, int y)
{
    if (d->update_timer.isActive() && !d->clearing)
        updateContents();
    Q3ScrollView::setContentsPos(x, y);
}

void Q3ListView::resizeEvent(QResizeEvent *e)
{
    Q3ScrollView::resizeEvent(e);
    d->layOutHeader();
    if (d->header->headerWidth() != contentsWidth())
        resizeContents(d->header->headerWidth(), contentsHeight());
    contentsMoved();
}

void Q3ListView::showEvent(QShowEvent *e)
{
    updateContents();
    Q3ScrollView::showEvent(e);
}

void Q3ListView::changeEvent(QEvent *ev)
{
    Q3ScrollView::changeEvent(ev);
    switch (ev->type()) {
    case QEvent::FontChange:
    case QEvent::StyleChange:
    case QEvent::PaletteChange:
        d->itemsNeedSetup();
        break;
    case QEvent::LayoutDirectionChange:
        triggerUpdate();
        break;
    case QEvent::ActivationChange:
    case QEvent::EnabledChange:
        viewport()->update();
        break;
    default:
        break;
    }
}

void Q3ListView::timerEvent(QTimerEvent *e)
{
    if (e->timerId() == d->update_timer.timerId()) {
        updateContents();
    } else if (e->timerId() == d->scroll_timer.timerId()) {
        doAutoScroll();
    } else if (e->timerId() == d->open_timer.timerId()) {
        d->openUnderDrag();
    } else if (e->timerId() == d->rename_timer.timerId()) {
        d->rename_timer.stop();
        if (d->to_rename)
            d->to_rename->startRename(d->rename_column);
    } else {
        Q3ScrollView::timerEvent(e);
    }
}

Q3ListViewItem *Q3ListView::itemAt(const QPoint &viewPos) const
{
    d->index();
    const QPoint at = viewportToContents(viewPos);
    const int across = isRightToLeft() ? std::max(contentsWidth(), visibleWidth()) - 1 - at.x() : at.x();
    if (at.y() < 0 || across < 0 || across >= d->header->headerWidth())
        return nullptr;
    return Q3ListViewRows::itemAt(d->root.get(), at.y());
}

int Q3ListView::itemPos(const Q3ListViewItem *item)
{
    return item ? item->itemPos() : 0;
}

QRect Q3ListView::itemRect(const Q3ListViewItem *item) const
{
    if (!item || item->listView() != this || item->totalHeight() == 0)
        return QRect();
    for (const Q3ListViewItem *up = item->parent(); up; up = up->parent()) {
        if (!up->isOpen() || !up->isVisible())
            return QRect();
    }
    const QRect rect(0, item->itemPos() - contentsY(), visibleWidth(), item->height());
    return rect.intersects(viewport()->rect()) ? rect : QRect();
}

void Q3ListView::ensureItemVisible(const Q3ListViewItem *i)
{
    if (!i || i->listView() != this)
        return;
    const Q3ListViewItemGuard item(const_cast<Q3ListViewItem *>(i));
    for (Q3ListViewItem *up = item->parent(); item && up;) {
        const Q3ListViewItemGuard parent(up);
        if (!up->isOpen())
            up->setOpen(true);
        up = parent ? parent->parent() : nullptr;
    }
    if (!item || item->listView() != this)
        return;
    if (d->update_timer.isActive())
        updateContents();
    const int y = item->itemPos();
    const int height = item->height();
    if (y < contentsY() || height > visibleHeight())
        setContentsPos(contentsX(), y);
    else if (y + height > contentsY() + visibleHeight())
        setContentsPos(contentsX(), y + height - visibleHeight());
}

void Q3ListView::repaintItem(const Q3ListViewItem *item) const
{
    if (!item || d->update_timer.isActive())
        return; // all is painted anyway
    const QRect rect = itemRect(item);
    if (rect.isValid())
        viewport()->update(rect);
}

QSize Q3ListView::sizeHint() const
{
    ensurePolished();
    const int row = fontMetrics().height() + 2 * d->item_margin;
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
    const int header = d->header->isVisibleTo(this) ? d->header->sizeHint().height() : 0;
    const int width = std::clamp(d->header->headerWidth() + bar, 8 * row, 48 * row);
    const int height = std::clamp(d->contentsHeight(), 8 * row, 16 * row) + header;
    return QSize(width + 2 * frameWidth(), std::max(height, width / 2) + 2 * frameWidth());
}

QSize Q3ListView::minimumSizeHint() const
{
    const int header = d->header->isVisibleTo(this) ? d->header->sizeHint().height() : 0;
    return Q3ScrollView::minimumSizeHint() + QSize(0, header);
}

bool Q3ListView::viewportEvent(QEvent *e)
{
    if (e->type() == QEvent::Leave) {
        const QPointer<Q3ListView> self(this);
        d->hover(nullptr);
        if (!self)
            return true;
    }
    if (e->type() != QEvent::ToolTip || !d->show_tool_tips)
        return Q3ScrollView::viewportEvent(e);
    const auto *help = static_cast<QHelpEvent *>(e);
    Q3ListViewItem *item = itemAt(help->pos());
    const int column = d->columnAt(help->pos());
    if (item && column >= 0) {
        const QRect cell = d->cellRect(item, column);
        const QString text = item->text(column);
        if (!text.isEmpty() && item->width(fontMetrics(), this, column) > cell.width()
            && cell.contains(help->pos())) {
            QToolTip::showText(help->globalPos(), text, viewport(), cell);
            return true;
        }
    }
    if (!viewport()->toolTip().isEmpty() || !toolTip().isEmpty())
        return Q3ScrollView::viewportEvent(e);
    QToolTip::hideText();
    return true;
}
