// SPDX-License-Identifier: MIT
#include "qt3/q3listviewitem.h"

#include "qt3/q3listview_p.h"
#include "qt3/q3listviewtree_p.h"

#include <algorithm>
#include <utility>

namespace {
constexpr int column_limit = 10000; // beyond it a number is a mistake, not a column
}

QString Q3ListViewItem::text(int column) const
{
    return column >= 0 && column < text_count_ ? texts_[column] : QString();
}

void Q3ListViewItem::setText(int column, const QString &text)
{
    if (column < 0 || column >= column_limit)
        return;
    if (column >= text_count_) {
        if (text.isNull())
            return;
        const Q3ListView *view = listView();
        const int count = std::max(column + 1, view ? std::min(view->columns(), column_limit) : 0);
        auto grown = std::make_unique<QString[]>(static_cast<size_t>(count));
        std::move(texts_.get(), texts_.get() + text_count_, grown.get());
        texts_ = std::move(grown);
        text_count_ = static_cast<quint16>(count);
    }
    if (texts_[column] == text)
        return;
    texts_[column] = text;
    contentChanged(column);
}

/// Text or pixmap of a column is another: column width, height and order may be, too.
void Q3ListViewItem::contentChanged(int column)
{
    Q3ListView *view = listView();
    if (!view)
        return;
    const bool moves = parent_ && column == Q3ListViewPrivate::of(view)->sort_column;
    if (moves)
        Q3ListViewRows::misplace(this);
    if (!(flags_ & SetUp))
        return;
    if (moves)
        view->triggerUpdate(); // of the others, too
    widthChanged(column);
    if (multiLinesEnabled() || extra_)
        setup();
    repaint();
}

Q3ListViewItemExtra *Q3ListViewItem::extra()
{
    if (!extra_)
        extra_ = std::make_unique<Q3ListViewItemExtra>();
    return extra_.get();
}

const QPixmap *Q3ListViewItem::pixmap(int column) const
{
    const auto index = static_cast<size_t>(column);
    return column >= 0 && extra_ && index < extra_->pixmaps.size() ? extra_->pixmaps[index].get() : nullptr;
}

void Q3ListViewItem::setPixmap(int column, const QPixmap &pm)
{
    if (column < 0 || column >= column_limit)
        return;
    const auto index = static_cast<size_t>(column);
    const QPixmap *before = extra_ && index < extra_->pixmaps.size() ? extra_->pixmaps[index].get() : nullptr;
    if (before ? before->cacheKey() == pm.cacheKey() : pm.isNull())
        return;
    auto &pixmaps = extra()->pixmaps;
    if (index >= pixmaps.size())
        pixmaps.resize(index + 1);
    pixmaps[index] = pm.isNull() ? nullptr : std::make_unique<QPixmap>(pm);
    contentChanged(column);
}

QString Q3ListViewItem::key(int column, bool) const
{
    return text(column);
}

int Q3ListViewItem::compare(Q3ListViewItem *i, int col, bool ascending) const
{
    return QString::localeAwareCompare(key(col, ascending), i->key(col, ascending));
}

int Q3ListViewItem::rtti() const
{
    return 0;
}

void Q3ListViewItem::setFlag(Flag flag, bool on)
{
    flags_ = static_cast<quint16>(on ? flags_ | flag : flags_ & ~flag);
}

bool Q3ListViewItem::isShown() const
{
    return isVisible() && (height_ > 0 || !(flags_ & SetUp));
}

bool Q3ListViewItem::isOpen() const
{
    return (flags_ & Opened) && childCount() > 0;
}

void Q3ListViewItem::setOpen(bool o)
{
    if (((flags_ & Opened) != 0) == o)
        return;
    setFlag(Opened, o);
    Q3ListViewRows::changed(this);
    Q3ListView *view = listView();
    if (view)
        Q3ListViewPrivate::of(view)->opened(this, o);
}

void Q3ListViewItem::setExpandable(bool enable)
{
    setFlag(Expandable, enable);
    repaint();
}

void Q3ListViewItem::setSelected(bool s)
{
    setFlag(Selected, s);
}

void Q3ListViewItem::setSelectable(bool enable)
{
    setFlag(Selectable, enable);
}

void Q3ListViewItem::setEnabled(bool b)
{
    if (isEnabled() == b)
        return;
    setFlag(Enabled, b);
    repaint();
}

void Q3ListViewItem::setVisible(bool b)
{
    if (isVisible() == b)
        return;
    setFlag(Visible, b);
    Q3ListViewRows::changed(this);
    if (Q3ListView *view = listView())
        view->triggerUpdate();
}

void Q3ListViewItem::setMultiLinesEnabled(bool b)
{
    if (multiLinesEnabled() == b)
        return;
    setFlag(MultiLines, b);
    if (flags_ & SetUp)
        setup();
}

void Q3ListViewItem::setDragEnabled(bool allow)
{
    setFlag(DragEnabled, allow);
}

void Q3ListViewItem::setDropEnabled(bool allow)
{
    setFlag(DropEnabled, allow);
}

bool Q3ListViewItem::acceptDrop(const QMimeSource *) const
{
    return false;
}

bool Q3ListViewItem::renameEnabled(int col) const
{
    const auto index = static_cast<size_t>(col);
    return col >= 0 && extra_ && index < extra_->rename.size() && extra_->rename[index];
}

void Q3ListViewItem::setRenameEnabled(int col, bool b)
{
    if (col < 0 || col >= column_limit || renameEnabled(col) == b)
        return;
    auto &rename = extra()->rename;
    const auto index = static_cast<size_t>(col);
    if (index >= rename.size())
        rename.resize(index + 1);
    rename[index] = b;
}

void Q3ListViewItem::activate() {}

bool Q3ListViewItem::activatedPos(QPoint &pos)
{
    const Q3ListView *view = listView();
    const Q3ListViewPrivate *d = view ? Q3ListViewPrivate::of(view) : nullptr;
    if (!d || d->activated != this || !d->activated_by_mouse)
        return false;
    pos = d->activate_pos;
    return true;
}

void Q3ListViewItem::dropped(QDropEvent *) {}

void Q3ListViewItem::dragEntered() {}

void Q3ListViewItem::dragLeft() {}
