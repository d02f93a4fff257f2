// SPDX-License-Identifier: MIT
#include "treeviews/tavitreeitem.h"

#include "treeviews/tavioverride_p.h"
#include "treeviews/tavitreeitem_p.h"
#include "treeviews/tavitreeitemregistry_p.h"

#include <QMetaObject>
#include <QSet>

#include <algorithm>
#include <utility>

namespace {

constexpr int row_default = -1;

TaviTreeItemAccess::TextWrites text_writes;

void noteTextWrite(int id)
{
    text_writes.ids[text_writes.count % TaviTreeItemAccess::TextWrites::kept] = id;
    ++text_writes.count;
}

bool before(int column, int role, int other_column, int other_role)
{
    return column != other_column ? column < other_column : role < other_role;
}

TAVI_DEFINE_OVERRIDES(dataIsOverridden, TaviTreeItem, data)
TAVI_DEFINE_OVERRIDES(childCountIsOverridden, TaviTreeItem, childCount)

} // namespace

TaviTreeItemSignalMapper::TaviTreeItemSignalMapper(QObject *parent) : QSignalMapper(parent) {}

void TaviTreeItemSignalMapper::emitMapped(int id)
{
    // As the moc's code does, because the header hides the signal as outdated; its successor is another one.
    static const int signal =
        QSignalMapper::staticMetaObject.indexOfSignal("mapped(int)") - QSignalMapper::staticMetaObject.methodOffset();
    void *arguments[] = {nullptr, &id};
    QMetaObject::activate(this, &QSignalMapper::staticMetaObject, signal, arguments);
}

int TaviTreeItem::id_ticket = 0;
TaviTreeItemSignalMapper TaviTreeItem::data_changed_mapper;

TaviTreeItem::TaviTreeItem(TaviTreeItem *parent)
    : id_(++id_ticket), item_flags(Qt::ItemIsEnabled | Qt::ItemIsSelectable), parent_item(parent), list_count(0),
      overrides_below(0), own_name_base(0)
{
    mapConnections();
}

TaviTreeItem::TaviTreeItem(const QList<QVariant> &display_data, TaviTreeItem *parent) : TaviTreeItem(parent)
{
    setDisplayData(display_data);
}

TaviTreeItem::TaviTreeItem(QList<QVariant> &&display_data, TaviTreeItem *parent) : TaviTreeItem(parent)
{
    column_data.reserve(static_cast<std::size_t>(display_data.size()));
    for (int column = 0; column < display_data.size(); ++column)
        column_data.push_back(Value{column, Qt::DisplayRole, std::move(display_data[column])});
    column_count = display_data.size();
}

TaviTreeItem::~TaviTreeItem()
{
    removeAllChildren();
    if (list_count > 0 && parent_item) {
        const int place = parent_item->rowOf(this);
        if (place >= 0)
            parent_item->children_[place] = nullptr;
    }
    TaviTreeItemRegistry::strikeOut(id_);
}

void TaviTreeItem::mapConnections()
{
    self_reference = this;
    TaviTreeItemRegistry::enter(id_, this);
}

int TaviTreeItem::id() const
{
    return id_;
}

int TaviTreeItem::columnCount() const
{
    return column_count;
}

const QVariant *TaviTreeItem::storedValue(int column, int role) const
{
    const QVariant *of_row = nullptr;
    for (const Value &value : column_data) {
        if (value.role == role) {
            if (value.column == column)
                return &value.value;
            if (value.column == row_default)
                of_row = &value.value;
        }
        if (value.column > column && value.column > row_default)
            break;
    }
    return of_row;
}

void TaviTreeItem::storeValue(int column, int role, const QVariant &value)
{
    const auto place =
        std::lower_bound(column_data.begin(), column_data.end(), role, [column](const Value &stored, int wanted) {
            return before(stored.column, stored.role, column, wanted);
        });
    const bool column_before = place != column_data.begin() && (place - 1)->column == column;
    const bool column_here = place != column_data.end() && place->column == column;
    if (column_here && place->role == role) {
        place->value = value;
    } else {
        if (!column_before && !column_here)
            ++column_count;
        column_data.insert(place, Value{column, role, value});
    }
    if (role == Qt::DisplayRole && list_count > 0)
        noteTextWrite(id_);
}

void TaviTreeItem::setDisplayData(const QList<QVariant> &display_data)
{
    if (column_data.empty())
        column_data.reserve(static_cast<std::size_t>(display_data.size()));
    for (int column = 0; column < display_data.size(); ++column)
        storeValue(column, Qt::DisplayRole, display_data.at(column));
}

QVariant TaviTreeItem::data(int column, int role) const
{
    switch (role) {
    case Qt::EditRole:
    case Qt::ToolTipRole:
        role = Qt::DisplayRole;
        break;
    case Qt::CheckStateRole:
        return isCheckable(column) ? QVariant(static_cast<int>(checkState(column))) : QVariant();
    case IdRole:
        return id_;
    case PointerRole:
        return QVariant::fromValue(static_cast<void *>(self_reference));
    default:
        break;
    }
    const QVariant *stored = storedValue(column, role);
    return stored ? *stored : QVariant();
}

bool TaviTreeItem::setData(int column, const QVariant &value, int role)
{
    switch (role) {
    case IdRole:
    case PointerRole:
        return false;
    case Qt::CheckStateRole: {
        const int state = value.toInt();
        return state >= Qt::Unchecked && state <= Qt::Checked && setCheckState(column, Qt::CheckState(state));
    }
    case Qt::EditRole:
        role = Qt::DisplayRole;
        break;
    default:
        break;
    }
    storeValue(column, role, value);
    return true;
}

int TaviTreeItem::getUserDataRole(unsigned int index)
{
    return static_cast<int>(index + FirstUserDataRole);
}

bool TaviTreeItem::setUserData(int column, const QVariant &value, unsigned int index)
{
    return setData(column, value, getUserDataRole(index));
}

QVariant TaviTreeItem::userData(int column, unsigned int index) const
{
    return data(column, getUserDataRole(index));
}

Qt::ItemFlags TaviTreeItem::columnFlags(int column) const
{
    for (const ColumnFlags &entry : column_flags) {
        if (entry.column == column)
            return entry.flags;
    }
    return Qt::NoItemFlags;
}

bool TaviTreeItem::columnHasFlags(int column) const
{
    return std::any_of(column_flags.begin(), column_flags.end(),
                       [column](const ColumnFlags &entry) { return entry.column == column; });
}

void TaviTreeItem::setColumnFlag(int column, Qt::ItemFlag flag, bool on)
{
    if (column < 0)
        return;
    for (ColumnFlags &entry : column_flags) {
        if (entry.column == column) {
            entry.flags.setFlag(flag, on);
            return;
        }
    }
    column_flags.append(ColumnFlags{column, on ? Qt::ItemFlags(flag) : Qt::ItemFlags()});
}

Qt::ItemFlags TaviTreeItem::flags(int column) const
{
    return columnFlags(column) | item_flags;
}

Qt::ItemFlags TaviTreeItem::setItemFlag(Qt::ItemFlags flags, Qt::ItemFlag flag, bool on) const
{
    return flags.setFlag(flag, on);
}

bool TaviTreeItem::checkItemFlag(Qt::ItemFlags flags, Qt::ItemFlag flag) const
{
    return flags.testFlag(flag);
}

void TaviTreeItem::setSelectable(bool selectable)
{
    item_flags.setFlag(Qt::ItemIsSelectable, selectable);
}

bool TaviTreeItem::isSelectable() const
{
    return item_flags.testFlag(Qt::ItemIsSelectable);
}

void TaviTreeItem::setDraggable(bool draggable)
{
    item_flags.setFlag(Qt::ItemIsDragEnabled, draggable);
}

bool TaviTreeItem::isDraggable() const
{
    return item_flags.testFlag(Qt::ItemIsDragEnabled);
}

void TaviTreeItem::setDroppable(bool droppable)
{
    item_flags.setFlag(Qt::ItemIsDropEnabled, droppable);
}

bool TaviTreeItem::isDroppable() const
{
    return item_flags.testFlag(Qt::ItemIsDropEnabled);
}

void TaviTreeItem::setEnabled(bool enabled)
{
    item_flags.setFlag(Qt::ItemIsEnabled, enabled);
}

bool TaviTreeItem::isEnabled() const
{
    return item_flags.testFlag(Qt::ItemIsEnabled);
}

void TaviTreeItem::setEditable(int column, bool editable)
{
    setColumnFlag(column, Qt::ItemIsEditable, editable);
}

bool TaviTreeItem::isEditable(int column) const
{
    return columnFlags(column).testFlag(Qt::ItemIsEditable);
}

void TaviTreeItem::setCheckable(int column, bool checkable, bool tristate)
{
    setColumnFlag(column, Qt::ItemIsUserCheckable, checkable);
    setColumnFlag(column, Qt::ItemIsAutoTristate, tristate);
}

bool TaviTreeItem::isCheckable(int column, bool *tristate) const
{
    const Qt::ItemFlags flags_of_column = columnFlags(column);
    if (tristate)
        *tristate = flags_of_column.testFlag(Qt::ItemIsAutoTristate);
    return flags_of_column.testFlag(Qt::ItemIsUserCheckable);
}

void TaviTreeItem::setForeground(const QBrush &brush)
{
    setData(row_default, brush, Qt::ForegroundRole);
}

QBrush TaviTreeItem::foreground() const
{
    return data(row_default, Qt::ForegroundRole).value<QBrush>();
}

void TaviTreeItem::setForeground(int column, const QBrush &brush)
{
    setData(column, brush, Qt::ForegroundRole);
}

QBrush TaviTreeItem::foreground(int column) const
{
    return data(column, Qt::ForegroundRole).value<QBrush>();
}

void TaviTreeItem::setNewNameBase(const QString &name)
{
    new_name_base = name;
    own_name_base = 1;
}

QString TaviTreeItem::newNameBase() const
{
    // Translated when asked for: to look it up for each item that is made costs a tenth of making it.
    return own_name_base ? new_name_base : tr("Untitled", "start of the generated name of a new row");
}

QString TaviTreeItem::getUniqueNewName(int column, int field_width, const QChar &fill) const
{
    return getUniqueName(column, newNameBase(), field_width, fill);
}

bool TaviTreeItem::isNameTakenBySibling(int column, const QString &name) const
{
    if (!parent_item)
        return false;
    const QList<TaviTreeItem *> siblings = parent_item->children_;
    return std::any_of(siblings.begin(), siblings.end(), [&](const TaviTreeItem *sibling) {
        return sibling && sibling != this && sibling->data(column, Qt::DisplayRole).toString() == name;
    });
}

QString TaviTreeItem::getUniqueName(int column, const QString &name, int field_width, const QChar &fill) const
{
    if (!isNameTakenBySibling(column, name))
        return name;
    // All names at once: asking the siblings again for each number would take their number squared where many rows
    // bear the same name.
    QSet<QString> taken;
    const QList<TaviTreeItem *> siblings = parent_item->children_;
    for (const TaviTreeItem *sibling : siblings) {
        if (sibling && sibling != this)
            taken.insert(sibling->data(column, Qt::DisplayRole).toString());
    }
    for (int number = 2;; ++number) {
        const QString candidate =
            name + QLatin1String(" (") + QStringLiteral("%1").arg(number, field_width, 10, fill) + QLatin1Char(')');
        if (!taken.contains(candidate))
            return candidate;
    }
}

void TaviTreeItem::subscribeDataChanged(const QObject *receiver, const char *slot)
{
    if (receiver && slot)
        QObject::connect(&data_changed_mapper, SIGNAL(mapped(int)), receiver, slot, Qt::AutoConnection);
}

void TaviTreeItem::emitDataChanged()
{
    data_changed_mapper.emitMapped(id_);
}

TaviTreeItem *TaviTreeItemAccess::itemById(int id)
{
    return TaviTreeItemRegistry::item(id);
}

bool TaviTreeItemAccess::overridesData(const TaviTreeItem *item)
{
    return dataIsOverridden(item);
}

bool TaviTreeItemAccess::overridesChildCount(const TaviTreeItem *item)
{
    return childCountIsOverridden(item);
}

const TaviTreeItemAccess::TextWrites &TaviTreeItemAccess::textWrites()
{
    return text_writes;
}
