// SPDX-License-Identifier: MIT
#include "qt3/q3listview_p.h"
#include "qt3/q3listviewaccess_p.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>

#include <algorithm>

void Q3ListView::keyPressEvent(QKeyEvent *e)
{
    e->accept();
    if (d->actOnCurrent(e) || d->navigate(e))
        return;
    const QString text = e->text();
    constexpr Qt::KeyboardModifiers commands = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    if (!text.isEmpty() && text.at(0).isPrint() && !(e->modifiers() & commands)) {
        d->typeAhead(text);
        return;
    }
    d->typed.clear();
    e->ignore();
}

/// Keys that go to another row. True if it was one.
bool Q3ListViewPrivate::navigate(QKeyEvent *e)
{
    Q3ListViewItem *target = nullptr;
    bool downwards = true;
    index();
    const int page = std::max(1, q->visibleHeight());
    switch (e->key()) {
    case Qt::Key_Home:
        target = q->childCount() > 0 ? Q3ListViewRows::shownFrom(q->firstChild()) : nullptr;
        break;
    case Qt::Key_End:
        target = q->childCount() > 0 ? Q3ListViewRows::lowest(root.get()) : nullptr;
        downwards = false;
        break;
    case Qt::Key_Up:
        target = current ? current->itemAbove() : Q3ListViewRows::itemAt(root.get(), q->contentsY());
        downwards = false;
        break;
    case Qt::Key_Down:
        target = current ? current->itemBelow() : Q3ListViewRows::itemAt(root.get(), q->contentsY());
        break;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: {
        downwards = e->key() == Qt::Key_PageDown;
        const int from = current ? current->itemPos() : q->contentsY();
        const int rows = std::max(1, page - (current ? current->height() : 0));
        const int to = std::clamp(downwards ? from + rows : from - rows, 0, std::max(0, contentsHeight() - 1));
        target = Q3ListViewRows::itemAt(root.get(), to);
        break;
    }
    default:
        return false;
    }
    typed.clear();
    Q3ListViewItem *enabled = enabledFrom(target, downwards);
    goTo(enabled ? enabled : enabledFrom(target, !downwards), e->modifiers());
    return true;
}

/// Left, by which a tree is walked outwards.
void Q3ListViewPrivate::stepLeft()
{
    if (current && current->isOpen() && hasExpander(current))
        q->setOpen(current, false);
    else if (current && current->parent())
        goTo(enabledFrom(current->parent(), false), Qt::NoModifier);
    else
        q->scrollBy(
            q->isRightToLeft() ? q->horizontalScrollBar()->singleStep() : -q->horizontalScrollBar()->singleStep(), 0);
}

/// Right, by which it is walked inwards.
void Q3ListViewPrivate::stepRight()
{
    if (current && !current->isOpen() && hasExpander(current))
        q->setOpen(current, true);
    else if (current && current->isOpen())
        goTo(enabledFrom(current->itemBelow(), true), Qt::NoModifier);
    else
        q->scrollBy(
            q->isRightToLeft() ? -q->horizontalScrollBar()->singleStep() : q->horizontalScrollBar()->singleStep(), 0);
}

void Q3ListViewPrivate::pressSpace()
{
    const QPointer<Q3ListView> self(q);
    const Q3ListViewItemGuard item(current);
    activated = item;
    activated_by_mouse = false;
    item->activate();
    if (!self)
        return;
    activated = nullptr;
    if (item && isSelectableByUser(item)) {
        const bool toggles = q->isMultiSelection();
        anchor = item;
        if (toggles ? select(item, !item->isSelected()) : selectOnly(item))
            emitSelectionChanged();
    }
    if (self && item)
        Q_EMIT q->spacePressed(item);
}

/// Keys that do something to the current item or to all. True if it was one.
bool Q3ListViewPrivate::actOnCurrent(QKeyEvent *e)
{
    const bool plain = !(e->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    const bool usable = current && current->isEnabled();
    switch (e->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
        typed.clear();
        if ((e->key() == Qt::Key_Left) != q->isRightToLeft())
            stepLeft();
        else
            stepRight();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        e->ignore(); // a dialog's default button wants it, too
        typed.clear();
        if (usable)
            Q_EMIT q->returnPressed(current);
        return true;
    case Qt::Key_Space:
        // Within a search it is a letter like all others.
        if (!typed.isEmpty() && plain && typed_at.elapsed() <= QApplication::keyboardInputInterval())
            return false;
        if (usable)
            pressSpace();
        return true;
    case Qt::Key_Plus:
    case Qt::Key_Minus:
        if (!plain || !usable || !hasExpander(current))
            return false;
        q->setOpen(current, e->key() == Qt::Key_Plus);
        return true;
    case Qt::Key_F2:
        if (usable && renameColumn(current, 0) >= 0)
            current->startRename(renameColumn(current, 0));
        else
            e->ignore();
        return true;
    case Qt::Key_A:
        if (e->modifiers() != Qt::ControlModifier || !q->isMultiSelection())
            return false;
        q->selectAll(true);
        return true;
    default:
        return false;
    }
}

/// Finds the first row that begins with what was typed.
void Q3ListViewPrivate::typeAhead(const QString &text)
{
    if (!typed_at.isValid() || typed_at.elapsed() > QApplication::keyboardInputInterval())
        typed.clear();
    typed_at.start();
    typed += text;
    const int column = isSorted() ? sort_column : 0;
    for (Q3ListViewItem *item = q->firstChild(); item; item = item->itemBelow()) {
        if (item->isShown() && item->isEnabled() && item->text(column).startsWith(typed, Qt::CaseInsensitive)) {
            goTo(item, Qt::NoModifier);
            return;
        }
    }
}

void Q3ListView::focusInEvent(QFocusEvent *e)
{
    Q3ScrollView::focusInEvent(e);
    if (!d->current && childCount() > 0)
        setCurrentItem(d->enabledFrom(Q3ListViewRows::shownFrom(firstChild()), true));
    else
        Q3ListViewAccess::tellFocus(this, d->current);
    viewport()->update();
}

void Q3ListView::focusOutEvent(QFocusEvent *e)
{
    Q3ScrollView::focusOutEvent(e);
    d->typed.clear();
    viewport()->update();
}

bool Q3ListView::focusNextPrevChild(bool next)
{
    return Q3ScrollView::focusNextPrevChild(next);
}

QVariant Q3ListView::inputMethodQuery(Qt::InputMethodQuery query) const
{
    if (query == Qt::ImCursorRectangle && d->current)
        return itemRect(d->current).translated(viewport()->pos());
    return Q3ScrollView::inputMethodQuery(query);
}
