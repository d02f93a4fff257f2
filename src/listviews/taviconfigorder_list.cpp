// SPDX-License-Identifier: MIT
//
// The order dialog with lists of TaviConfigOrderItem things.
#include "listviews/taviconfigorderlistview.h"
#include "listviews/tavilistviewbuddies.h"
#include "qt3/q3header.h"
#include "treeviews/focuskept_p.h"
#include "treeviews/taviconfigorder.h"

#include <QBoxLayout>
#include <QHash>
#include <QSignalBlocker>

namespace {

TaviConfigOrderItem *thingOf(const Q3ListViewItem *row)
{
    return TaviConfigOrderListItem::configOrderItemOf(row);
}

int countSelected(const Q3ListView &list)
{
    int count = 0;
    for (const Q3ListViewItem *row = list.firstChild(); row; row = row->nextSibling())
        count += row->isSelected() && row->isEnabled() ? 1 : 0;
    return count;
}

/// What is selected, seen, and where the keyboard goes on.
void choose(Q3ListView &list, Q3ListViewItem *row)
{
    list.setSelected(row, true);
    list.setCurrentItem(row);
    list.ensureItemVisible(row);
}

} // namespace

int TaviConfigOrder::reorder(const QList<TaviConfigOrderItem *> &all, QList<TaviConfigOrderItem *> &shown, bool fixed,
                             TaviRegistry *registry, const char *section)
{
    openDialog(registry, section);
    hidden_list = makeList(dialog->hidden_frame, true);
    showing_list = makeList(dialog->showing_frame, false);
    hidden_list->setBuddy(showing_list);
    showing_list->setBuddy(hidden_list);
    showing_list->header()->setVisible(!fixed);
    dialog->hidden_label->setVisible(!fixed);
    dialog->showing_label->setVisible(!fixed);
    arrangeDialog(fixed, {hidden_list}, {showing_list});

    // By name, so that a subclass may have slots of its own.
    TaviListViewSignalBuddy hidden_buddy;
    TaviListViewSignalBuddy showing_buddy;
    hidden_buddy.setListView(hidden_list);
    showing_buddy.setListView(showing_list);
    connect(dialog->move_up_button, SIGNAL(clicked()), this, SLOT(moveUp()));
    connect(dialog->move_down_button, SIGNAL(clicked()), this, SLOT(moveDown()));
    connect(&hidden_buddy, SIGNAL(selectionChanged()), this, SLOT(hiddenSelectionsChanged()));
    connect(&showing_buddy, SIGNAL(selectionChanged()), this, SLOT(showingSelectionsChanged()));
    if (!fixed) {
        connect(dialog->make_hidden_button, SIGNAL(clicked()), this, SLOT(makeHidden()));
        connect(dialog->make_showing_button, SIGNAL(clicked()), this, SLOT(makeShowing()));
        for (const TaviListViewSignalBuddy *const buddy : {&hidden_buddy, &showing_buddy})
            connect(buddy, SIGNAL(doubleClicked(Q3ListViewItem *, QPoint, int)), this,
                    SLOT(doubleClicked(Q3ListViewItem *, QPoint, int)));
    }
    fillLists(all, shown);
    hiddenSelectionsChanged();
    showingSelectionsChanged();

    const QPointer<TaviConfigOrder> self(this);
    const int result = dialog->exec();
    if (!self)
        return QDialog::Rejected;
    const bool accepted = result == QDialog::Accepted && hasLists();
    if (accepted)
        takeOver(shown); // the caller's lists may have changed meanwhile
    closeDialog(registry, section);
    return accepted ? QDialog::Accepted : QDialog::Rejected;
}

bool TaviConfigOrder::hasLists() const
{
    return dialog && hidden_list && showing_list;
}

TaviConfigOrderListView *TaviConfigOrder::makeList(QFrame *frame, bool is_source)
{
    auto *const list = new TaviConfigOrderListView(is_source, frame);
    list->setSorting(-1);
    static_cast<QBoxLayout *>(frame->layout())->addWidget(list, 1);
    list->show();
    return list;
}

void TaviConfigOrder::fillLists(const QList<TaviConfigOrderItem *> &all, const QList<TaviConfigOrderItem *> &shown)
{
    Q3ListViewItem *last = nullptr;
    for (TaviConfigOrderItem *const thing : all) {
        if (!thing)
            continue;
        thing->setItemInShowList(thing->isItemVisible());
        last = new TaviConfigOrderListItem(hidden_list, last, thing);
        last->setEnabled(!thing->isItemVisible());
    }
    last = nullptr;
    for (TaviConfigOrderItem *const thing : shown) {
        if (thing && thing->isItemVisible())
            last = new TaviConfigOrderListItem(showing_list, last, thing);
    }
}

/// What the user has accepted.
void TaviConfigOrder::takeOver(QList<TaviConfigOrderItem *> &shown) const
{
    for (const Q3ListViewItem *row = hidden_list->firstChild(); row; row = row->nextSibling()) {
        if (TaviConfigOrderItem *const thing = thingOf(row))
            thing->setItemVisible(thing->isItemInShowList());
    }
    shown.clear();
    for (const Q3ListViewItem *row = showing_list->firstChild(); row; row = row->nextSibling()) {
        TaviConfigOrderItem *const thing = thingOf(row);
        if (thing && thing->isItemVisible())
            shown.append(thing);
    }
    for (const Q3ListViewItem *row = hidden_list->firstChild(); row; row = row->nextSibling()) {
        TaviConfigOrderItem *const thing = thingOf(row);
        if (thing && !thing->isItemVisible())
            shown.append(thing);
    }
}

void TaviConfigOrder::cancel()
{
    for (TaviConfigOrderListView *const list : {hidden_list.data(), showing_list.data()}) {
        const QSignalBlocker quiet(list);
        if (list)
            list->clear();
    }
    if (dialog)
        dialog->reject();
}

void TaviConfigOrder::makeShowing()
{
    if (!hasLists())
        return;
    const FocusKept focus(hidden_list);
    {
        const QSignalBlocker hidden_quiet(hidden_list);
        const QSignalBlocker showing_quiet(showing_list);
        Q3ListViewItem *after = nullptr;
        QVector<Q3ListViewItem *> selected_before;
        for (Q3ListViewItem *row = showing_list->firstChild(); row; row = row->nextSibling()) {
            if (row->isSelected())
                selected_before.append(row);
            if (selected_before.isEmpty() || row->isSelected())
                after = row; // the last one, as long as none is selected
        }
        Q3ListViewItem *last_moved = nullptr;
        Q3ListViewItem *last_new = nullptr;
        for (Q3ListViewItem *row = hidden_list->firstChild(); row; row = row->nextSibling()) {
            if (!row->isSelected() || !row->isEnabled())
                continue;
            if (Q3ListViewItem *const made = makeShowing(row, after)) {
                after = last_new = made;
                last_moved = row;
            }
        }
        if (!last_moved)
            return;
        for (Q3ListViewItem *const row : qAsConst(selected_before))
            row->setSelected(false);
        showing_list->setCurrentItem(last_new);
        showing_list->ensureItemVisible(last_new);
        const auto next_of = [this](Q3ListViewItem *row) {
            return row->nextSibling() ? row->nextSibling() : hidden_list->firstChild();
        };
        Q3ListViewItem *next = next_of(last_moved);
        while (next != last_moved && (!next->isEnabled() || next->isSelected()))
            next = next_of(next);
        if (next != last_moved)
            choose(*hidden_list, next);
    }
    hidden_list->triggerUpdate();
    showing_list->triggerUpdate();
    hiddenSelectionsChanged();
    showingSelectionsChanged();
}

/// Shows the thing of a row at the left behind one at the right. Returns the new row; null if there is none.
Q3ListViewItem *TaviConfigOrder::makeShowing(Q3ListViewItem *item, Q3ListViewItem *after)
{
    TaviConfigOrderItem *const thing = thingOf(item);
    if (!thing || item->listView() != hidden_list)
        return nullptr;
    item->setSelected(false);
    item->setEnabled(false);
    thing->setItemInShowList(true);
    auto *const row = new TaviConfigOrderListItem(showing_list, after, thing);
    row->setSelected(true);
    return row;
}

void TaviConfigOrder::makeHidden()
{
    if (!hasLists())
        return;
    const FocusKept focus(showing_list);
    {
        const QSignalBlocker hidden_quiet(hidden_list);
        const QSignalBlocker showing_quiet(showing_list);
        QHash<const TaviConfigOrderItem *, Q3ListViewItem *> entries;
        for (Q3ListViewItem *row = hidden_list->firstChild(); row; row = row->nextSibling()) {
            if (const TaviConfigOrderItem *const thing = thingOf(row))
                entries.insert(thing, row);
        }
        QVector<Q3ListViewItem *> hidden;
        Q3ListViewItem *next = nullptr; // behind the last one deleted
        Q3ListViewItem *last_unselected = nullptr;
        for (Q3ListViewItem *row = showing_list->firstChild(); row;) {
            Q3ListViewItem *const below = row->nextSibling();
            const TaviConfigOrderItem *const thing = row->isSelected() ? thingOf(row) : nullptr;
            if (thing) {
                if (Q3ListViewItem *const entry = entries.value(thing))
                    hidden.append(entry);
                delete row;
                next = below;
            } else if (!row->isSelected()) {
                last_unselected = row;
            }
            row = below;
        }
        if (hidden.isEmpty()) {
            showingSelectionsChanged();
            return;
        }
        hidden_list->clearSelection();
        for (Q3ListViewItem *const entry : qAsConst(hidden)) {
            entry->setEnabled(true);
            entry->setSelected(true);
            thingOf(entry)->setItemInShowList(false);
        }
        hidden_list->setCurrentItem(hidden.last());
        hidden_list->ensureItemVisible(hidden.last());
        if (!next)
            next = last_unselected;
        if (next)
            choose(*showing_list, next);
    }
    hidden_list->triggerUpdate();
    showing_list->triggerUpdate();
    hiddenSelectionsChanged();
    showingSelectionsChanged();
}

void TaviConfigOrder::moveUp()
{
    moveStuff(true);
}

void TaviConfigOrder::moveDown()
{
    moveStuff(false);
}

void TaviConfigOrder::moveStuff(bool up)
{
    if (!hasLists())
        return;
    QVector<Q3ListViewItem *> selected;
    Q3ListViewItem *before_above = nullptr; // the one before that above
    Q3ListViewItem *above = nullptr;        // the last unselected one before the first selected
    Q3ListViewItem *below = nullptr;        // the first unselected one behind that
    for (Q3ListViewItem *row = showing_list->firstChild(); row; row = row->nextSibling()) {
        if (row->isSelected()) {
            selected.append(row);
        } else if (!selected.isEmpty()) {
            below = below ? below : row;
        } else {
            before_above = above;
            above = row;
        }
    }
    if (selected.isEmpty() || !(up ? above : below))
        return;
    const FocusKept focus(showing_list);
    const QSignalBlocker quiet(showing_list);
    Q3ListViewItem *const current = showing_list->currentItem();
    moveAfter(selected, up ? before_above : below);
    showing_list->setCurrentItem(current);
    showing_list->ensureItemVisible(up ? selected.first() : selected.last());
}

/// Moves rows together behind another one; null moves them to the top.
void TaviConfigOrder::moveAfter(const QVector<Q3ListViewItem *> &rows, Q3ListViewItem *after)
{
    for (Q3ListViewItem *const row : rows) {
        if (after) {
            row->moveItem(after);
        } else {
            Q3ListView *const list = row->listView();
            list->takeItem(row);
            list->insertItem(row);
        }
        after = row;
    }
}

void TaviConfigOrder::hiddenSelectionsChanged()
{
    if (!hasLists())
        return;
    const int selected = countSelected(*hidden_list);
    dialog->make_showing_button->setEnabled(selected > 0);
    updateLabelText(dialog->hidden_label, selected, hidden_list->childCount());
}

void TaviConfigOrder::showingSelectionsChanged()
{
    if (!hasLists())
        return;
    const int selected = countSelected(*showing_list);
    for (QToolButton *const button : {dialog->move_up_button, dialog->move_down_button, dialog->make_hidden_button})
        button->setEnabled(selected > 0);
    updateLabelText(dialog->showing_label, selected, showing_list->childCount());
}

void TaviConfigOrder::doubleClicked(Q3ListViewItem *lvi, QPoint, int)
{
    const Q3ListView *const list = lvi ? lvi->listView() : nullptr;
    if (list && list == hidden_list)
        makeShowing();
    else if (list && list == showing_list)
        makeHidden();
}
