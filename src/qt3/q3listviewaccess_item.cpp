// SPDX-License-Identifier: MIT
#include "qt3/q3listviewaccess_p.h"

#include <algorithm>

QWindow *Q3ListViewItemAccessible::window() const
{
    const QAccessibleInterface *up = parent();
    return up ? up->window() : nullptr;
}

QAccessibleInterface *Q3ListViewItemAccessible::parent() const
{
    if (!isValid())
        return nullptr;
    if (Q3ListViewItem *up = item_->parent())
        return Q3ListViewAccess::of(up);
    return QAccessible::queryAccessibleInterface(item_->listView());
}

int Q3ListViewItemAccessible::childCount() const
{
    return isValid() ? item_->childCount() : 0;
}

QAccessibleInterface *Q3ListViewItemAccessible::child(int index) const
{
    return Q3ListViewAccess::of(Q3ListViewAccess::childAt(item_, index));
}

int Q3ListViewItemAccessible::indexOfChild(const QAccessibleInterface *child) const
{
    const Q3ListViewItem *below = Q3ListViewAccess::itemOf(child);
    return below && below->parent() == item_ ? Q3ListViewAccess::numberOf(below) : -1;
}

/// The texts of all columns that are shown, as they follow each other.
QString Q3ListViewItemAccessible::text(QAccessible::Text t) const
{
    const Q3ListView *view = item_->listView();
    if (!view || t != QAccessible::Name)
        return QString();
    QStringList texts;
    for (int index = 0; index < view->columns(); ++index) {
        const int column = view->header()->mapToSection(index);
        const QString text = view->columnWidth(column) > 0 ? item_->text(column) : QString();
        if (!text.isEmpty())
            texts.append(text);
    }
    return texts.join(QLatin1String(", "));
}

/// Whether there is a row for the item, in sight or not.
bool Q3ListViewItemAccessible::isShown() const
{
    if (item_->totalHeight() == 0)
        return false;
    for (const Q3ListViewItem *up = item_->parent(); up; up = up->parent()) {
        if (!up->isOpen() || !up->isVisible())
            return false;
    }
    return true;
}

bool Q3ListViewItemAccessible::isUsable() const
{
    const Q3ListView *view = item_->listView();
    return view && view->isEnabled() && item_->isEnabled();
}

QRect Q3ListViewItemAccessible::rect() const
{
    const Q3ListView *view = item_->listView();
    if (!view || !isShown())
        return QRect();
    const int width = view->header()->headerWidth();
    const int left = view->isRightToLeft() ? std::max(view->contentsWidth(), view->visibleWidth()) - width : 0;
    const QPoint at = view->contentsToViewport(QPoint(left, item_->itemPos()));
    return QRect(view->viewport()->mapToGlobal(at), QSize(width, item_->height()));
}

QAccessible::State Q3ListViewItemAccessible::state() const
{
    QAccessible::State state;
    const Q3ListView *view = item_->listView();
    if (!view) {
        state.invalid = true;
        return state;
    }
    const Q3ListViewPrivate *d = Q3ListViewPrivate::of(view);
    const bool usable = isUsable();
    const bool shown = isShown();
    state.disabled = !usable;
    state.focusable = usable;
    state.focused = d->current == item_ && view->hasFocus();
    state.selectable = usable && d->isSelectableByUser(item_);
    state.selected = item_->isSelected();
    state.expandable = d->hasExpander(item_);
    state.expanded = item_->isOpen();
    state.collapsed = state.expandable && !state.expanded;
    state.invisible = !shown || !view->isVisible();
    state.offscreen = shown && !view->itemRect(item_).isValid();
    return state;
}

void *Q3ListViewItemAccessible::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this) : nullptr;
}

QStringList Q3ListViewItemAccessible::actionNames() const
{
    if (!isUsable())
        return QStringList();
    QStringList names{pressAction(), setFocusAction()};
    if (Q3ListViewPrivate::of(item_->listView())->hasExpander(item_))
        names.append(toggleAction());
    return names;
}

void Q3ListViewItemAccessible::doAction(const QString &name)
{
    if (!actionNames().contains(name))
        return;
    Q3ListView *view = item_->listView();
    if (name == pressAction()) {
        press();
    } else if (name == setFocusAction()) {
        view->setFocus(Qt::OtherFocusReason);
        view->setCurrentItem(item_);
    } else {
        view->setOpen(item_, !item_->isOpen());
    }
}

/// All that a click on the first column does. This object may be gone afterwards, with the item.
void Q3ListViewItemAccessible::press()
{
    Q3ListView *view = item_->listView();
    Q3ListViewPrivate *d = Q3ListViewPrivate::of(view);
    const QPointer<Q3ListView> alive(view);
    const Q3ListViewItemGuard item(item_);
    const auto present = [&] {
        return alive && item && item->listView() == view;
    };
    view->ensureItemVisible(item);
    if (present())
        d->pressItem(item, Qt::NoModifier);
    if (!present())
        return;
    if (std::exchange(d->select_on_release, false) && d->selectOnly(item))
        d->emitSelectionChanged();
    if (present())
        item->activate();
    if (!present())
        return;
    const QPoint at = view->viewport()->mapToGlobal(view->itemRect(item).center());
    d->emitPress(Qt::LeftButton, item, at, 0);
    if (present())
        d->emitClick(Qt::LeftButton, item, at, 0);
}
