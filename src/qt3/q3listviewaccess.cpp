// SPDX-License-Identifier: MIT
#include "qt3/q3listviewaccess_p.h"

#include <QHash>

namespace {

using Known = QHash<const Q3ListViewItem *, QAccessible::Id>;
Q_GLOBAL_STATIC(Known, known)

/// Whether anybody wants to know. Without an assistive program, which is the rule, nothing is told and nothing made.
bool isWanted()
{
    return QAccessible::isActive() || (known.exists() && !known->isEmpty());
}

QAccessibleInterface *describe(const QString &class_name, QObject *object)
{
    // A derived class comes by its own name first, so that it may be described otherwise.
    if (class_name == QLatin1String("Q3ListView"))
        return new Q3ListViewAccessible(static_cast<Q3ListView *>(object));
    return nullptr;
}

} // namespace

void (*Q3ListViewAccess::deliver)(QAccessibleEvent *) = QAccessible::updateAccessibility;

void Q3ListViewAccess::install()
{
    static const bool once = (QAccessible::installFactory(describe), true);
    Q_UNUSED(once)
}

QAccessibleInterface *Q3ListViewAccess::of(Q3ListViewItem *item)
{
    if (!item || known.isDestroyed())
        return nullptr;
    if (QAccessibleInterface *found = QAccessible::accessibleInterface(known->value(item)))
        return found;
    auto *made = new Q3ListViewItemAccessible(item);
    known->insert(item, QAccessible::registerAccessibleInterface(made));
    return made;
}

Q3ListViewItem *Q3ListViewAccess::itemOf(const QAccessibleInterface *interface)
{
    const auto *described = dynamic_cast<const Q3ListViewItemAccessible *>(interface);
    return described ? described->item() : nullptr;
}

void Q3ListViewAccess::forget(const Q3ListViewItem *item)
{
    if (!known.exists() || known->isEmpty())
        return;
    if (const QAccessible::Id id = known->take(item))
        QAccessible::deleteAccessibleInterface(id);
}

void Q3ListViewAccess::tellFocus(Q3ListView *view, Q3ListViewItem *item)
{
    if (!item || !isWanted() || !view->hasFocus())
        return;
    QAccessibleEvent event(of(item), QAccessible::Focus);
    deliver(&event);
}

void Q3ListViewAccess::tellSelection(Q3ListView *view)
{
    if (!isWanted())
        return;
    if (Q3ListViewItem *item = view->selectedItem()) {
        QAccessibleEvent event(of(item), QAccessible::Selection);
        deliver(&event);
    }
    QAccessibleEvent event(view, QAccessible::SelectionWithin);
    deliver(&event);
}

void Q3ListViewAccess::tellOpening(Q3ListViewItem *item)
{
    if (!isWanted())
        return;
    QAccessible::State changed;
    changed.expanded = true;
    changed.collapsed = true;
    QAccessibleStateChangeEvent event(of(item), changed);
    deliver(&event);
}

Q3ListViewItem *Q3ListViewAccess::childAt(Q3ListViewItem *parent, int number)
{
    Q3ListView *view = parent->listView();
    if (!view || number < 0 || number >= parent->childCount())
        return nullptr;
    Q3ListViewRows::order(parent);
    Q3ListViewPrivate::Place &place = Q3ListViewPrivate::of(view)->place;
    const Q3ListViewChildren &children = *parent->children_;
    if (place.parent != parent)
        place = {parent, children.first, 0};
    const int last = children.count - 1;
    if (number < place.number - number)
        place = {parent, children.first, 0};
    else if (last - number < number - place.number)
        place = {parent, children.last, last};
    for (; place.number < number; ++place.number)
        place.item = place.item->next_;
    for (; place.number > number; --place.number)
        place.item = place.item->previous_;
    return place.item;
}

int Q3ListViewAccess::numberOf(const Q3ListViewItem *item)
{
    Q3ListView *view = item->listView();
    if (!view || !item->parent_)
        return -1;
    Q3ListViewRows::order(item->parent_);
    Q3ListViewPrivate::Place &place = Q3ListViewPrivate::of(view)->place;
    // Both ways at once, to what is nearest of the ends and the place that is known.
    const Q3ListViewItem *up = item;
    const Q3ListViewItem *down = item;
    int steps = 0;
    int number = -1;
    for (; number < 0; ++steps, up = up->previous_, down = down->next_) {
        if (up == place.item)
            number = place.number + steps;
        else if (down == place.item)
            number = place.number - steps;
        else if (!up->previous_)
            number = steps;
        else if (!down->next_)
            number = item->parent_->childCount() - 1 - steps;
    }
    place = {item->parent_, const_cast<Q3ListViewItem *>(item), number};
    return number;
}

int Q3ListViewAccessible::childCount() const
{
    return 1 + view()->childCount();
}

QAccessibleInterface *Q3ListViewAccessible::child(int index) const
{
    if (index == 0)
        return QAccessible::queryAccessibleInterface(view()->header());
    return Q3ListViewAccess::of(Q3ListViewAccess::childAt(root(), index - 1));
}

int Q3ListViewAccessible::indexOfChild(const QAccessibleInterface *child) const
{
    if (child && child->object() == view()->header())
        return 0;
    const Q3ListViewItem *item = Q3ListViewAccess::itemOf(child);
    return item && item->listView() == view() && !item->parent() ? 1 + Q3ListViewAccess::numberOf(item) : -1;
}

QAccessibleInterface *Q3ListViewAccessible::childAt(int x, int y) const
{
    const Q3Header *header = view()->header();
    if (header->isVisible() && header->rect().contains(header->mapFromGlobal(QPoint(x, y))))
        return child(0);
    const QPoint at = view()->viewport()->mapFromGlobal(QPoint(x, y));
    return view()->viewport()->rect().contains(at) ? Q3ListViewAccess::of(view()->itemAt(at)) : nullptr;
}

QAccessibleInterface *Q3ListViewAccessible::focusChild() const
{
    if (view()->hasFocus() && view()->currentItem())
        return Q3ListViewAccess::of(view()->currentItem());
    return QAccessibleWidget::focusChild();
}

QAccessible::State Q3ListViewAccessible::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.multiSelectable = view()->isMultiSelection();
    state.extSelectable = view()->selectionMode() == Q3ListView::Extended;
    return state;
}
