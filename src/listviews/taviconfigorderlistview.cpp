// SPDX-License-Identifier: MIT
#include "listviews/taviconfigorderlistview.h"

#include "qt3/q3dragobject.h"
#include "treeviews/numberlistdrag.h"
#include "treeviews/taviconfigorder.h"

#include <QDropEvent>
#include <QHash>
#include <QSet>
#include <QSignalBlocker>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

const QByteArray TaviConfigOrderListView::MIME_SUFFIX("-conford");

TaviConfigOrderListItem::TaviConfigOrderListItem(Q3ListView *view, Q3ListViewItem *after, TaviConfigOrderItem *item)
    : Q3ListViewItem(view, after), config_item(item)
{
    if (!item)
        return;
    const QPixmap pixmap = item->itemPixmap();
    if (!pixmap.isNull())
        setPixmap(0, pixmap);
}

TaviConfigOrderListItem::~TaviConfigOrderListItem() = default;

TaviConfigOrderItem *TaviConfigOrderListItem::configOrderItemOf(const Q3ListViewItem *row)
{
    const auto *const item = dynamic_cast<const TaviConfigOrderListItem *>(row);
    return item ? item->config_item : nullptr;
}

QString TaviConfigOrderListItem::text(int column) const
{
    return column == 0 && config_item ? config_item->itemText() : Q3ListViewItem::text(column);
}

TaviConfigOrderListView::TaviConfigOrderListView(bool source, QWidget *parent, const char *name,
                                                 Qt::WindowFlags flags)
    : DNDListView(parent, name, flags), is_source(source)
{
    const QString heading = source ? TaviConfigOrder::tr("All Items") : TaviConfigOrder::tr("Showing");
    addColumn(heading, -1);
    setAccessibleName(heading);
    setAllowed(DROP_FROM_OTHERS, true);
    for (const DNDAllow rule : {DROP_FROM_SELF, DRAG_SELF_MOVES, DRAG_OTHERS_MOVES})
        setAllowed(rule, !source);
    setAllowed(DRAG_OTHERAPPS_MOVES, false);
    setDropBetweenMode(true);
    setSelectionMode(Extended);
}

TaviConfigOrderListView::~TaviConfigOrderListView() = default;

/// Null is no source: that of a drag from another process, and the buddy of a list without one.
bool TaviConfigOrderListView::isFromBuddy(const QDropEvent *event) const
{
    return event && buddy_ && event->source() == buddy_;
}

bool TaviConfigOrderListView::isFromShowingSelf(const QDropEvent *event) const
{
    return event && !is_source && event->source() == this;
}

bool TaviConfigOrderListView::canDecode(const QDropEvent *event)
{
    return (isFromShowingSelf(event) || isFromBuddy(event)) && NumberListDrag::canDecode(event, MIME_SUFFIX);
}

Q3DragObject *TaviConfigOrderListView::encode()
{
    dragged.clear();
    // Where each thing is in the source list, once something asks for it.
    std::optional<QHash<const TaviConfigOrderItem *, long>> places;
    const auto place_in_source = [&](const TaviConfigOrderItem *thing, long own_place) {
        if (is_source)
            return own_place;
        if (!places) {
            places.emplace();
            long place = 0;
            for (const Q3ListViewItem *row = buddy_ ? buddy_->firstChild() : nullptr; row; row = row->nextSibling()) {
                const TaviConfigOrderItem *const there = TaviConfigOrderListItem::configOrderItemOf(row);
                if (there && !places->contains(there))
                    places->insert(there, place);
                ++place;
            }
        }
        return places->value(thing, -1);
    };
    std::vector<long> numbers;
    long own_place = -1;
    for (Q3ListViewItem *row = firstChild(); row; row = row->nextSibling()) {
        ++own_place;
        if (!row->isSelected() || !row->isEnabled())
            continue;
        const TaviConfigOrderItem *const thing = TaviConfigOrderListItem::configOrderItemOf(row);
        const long place = thing ? place_in_source(thing, own_place) : -1;
        if (place < 0)
            continue;
        numbers.push_back(place);
        dragged.append(row);
    }
    if (numbers.empty())
        return nullptr;
    const auto drag = std::make_unique<NumberListDrag>(MIME_SUFFIX, this, "TaviConfigOrderList numbers");
    drag->setData(numbers);
    return drag->toQ3StoredDrag();
}

/// Makes the thing of a row of the source list show, or not, and returns the row that stands for it here.
Q3ListViewItem *TaviConfigOrderListView::take(TaviConfigOrderListItem *entry, Q3ListViewItem *after, bool from_buddy)
{
    TaviConfigOrderItem *const thing = entry->configOrderItem();
    if (from_buddy) {
        thing->setItemInShowList(!is_source);
        entry->setEnabled(is_source);
        entry->setSelected(is_source);
    }
    if (is_source)
        return entry;
    auto *const row = new TaviConfigOrderListItem(this, after, thing);
    thing->setItemInShowList(true);
    row->setSelected(true);
    return row;
}

int TaviConfigOrderListView::decode(Q3ListViewItem *after, const QDropEvent *event)
{
    const bool from_buddy = isFromBuddy(event);
    if (!from_buddy && !isFromShowingSelf(event))
        return 0;
    std::vector<long> numbers;
    if (!NumberListDrag::decode(event, numbers, MIME_SUFFIX) || numbers.empty())
        return 0;
    std::vector<TaviConfigOrderListItem *> entries;
    const TaviConfigOrderListView *const source = is_source ? this : buddy_.data();
    for (Q3ListViewItem *row = source ? source->firstChild() : nullptr; row; row = row->nextSibling())
        entries.push_back(dynamic_cast<TaviConfigOrderListItem *>(row));
    QSet<const TaviConfigOrderItem *> showing;
    for (const Q3ListViewItem *row = is_source ? nullptr : firstChild(); row; row = row->nextSibling())
        showing.insert(TaviConfigOrderListItem::configOrderItemOf(row));
    // While it was dragged, rows may have gone and others been shown or hidden, so that numbers mean other things.
    QSet<const TaviConfigOrderItem *> still_dragged;
    for (const Q3ListViewItem *const row : qAsConst(from_buddy ? buddy_->dragged : dragged))
        still_dragged.insert(TaviConfigOrderListItem::configOrderItemOf(row));
    const auto may_come = [&](const TaviConfigOrderItem *thing) {
        return thing && (is_source || showing.contains(thing) != from_buddy)
               && (still_dragged.isEmpty() || still_dragged.contains(thing));
    };

    int count = 0;
    {
        const QSignalBlocker quiet(this);
        const QSignalBlocker buddy_quiet(from_buddy ? buddy_.data() : nullptr);
        clearSelection();
        if (from_buddy)
            buddy_->clearSelection();
        for (const long number : numbers) {
            if (number < 0 || static_cast<unsigned long>(number) >= entries.size())
                continue;
            // Taken out, so that it counts once.
            TaviConfigOrderListItem *const entry = std::exchange(entries[static_cast<std::size_t>(number)], nullptr);
            if (!entry || !may_come(entry->configOrderItem()))
                continue;
            after = take(entry, after, from_buddy);
            ++count;
        }
        if (count > 0)
            setCurrentItem(after); // the keyboard goes on from there
        ensureItemVisible(after);
    }
    const QPointer<TaviConfigOrderListView> changed[] = {this, from_buddy ? buddy_.data() : nullptr};
    for (const QPointer<TaviConfigOrderListView> &list : changed) {
        if (list)
            list->triggerUpdate();
        if (list)
            Q_EMIT list->selectionChanged();
    }
    return count;
}

void TaviConfigOrderListView::clearSources(bool remove)
{
    if (is_source || !remove) {
        dragged.clear();
        return;
    }
    const QPointer<TaviConfigOrderListView> self(this);
    bool selection_lost = false;
    while (self && !dragged.isEmpty()) {
        Q3ListViewItem *const row = dragged.first();
        selection_lost = selection_lost || row->isSelected();
        delete row; // takeItem() takes it out of the list
    }
    if (self && selection_lost)
        Q_EMIT selectionChanged();
}

void TaviConfigOrderListView::takeItem(Q3ListViewItem *item)
{
    dragged.removeOne(item);
    DNDListView::takeItem(item);
}

void TaviConfigOrderListView::clear()
{
    dragged.clear();
    DNDListView::clear();
}

void TaviConfigOrderListView::filterItems(QString keyword, bool invert)
{
    const QPointer<TaviConfigOrderListView> self(this);
    DNDListView::filterItems(keyword, invert);
    if (!self || !is_source)
        return;
    for (Q3ListViewItem *row = firstChild(); row; row = row->nextSibling()) {
        const TaviConfigOrderItem *const thing = TaviConfigOrderListItem::configOrderItemOf(row);
        if (thing && thing->isItemInShowList())
            row->setEnabled(false);
    }
}
