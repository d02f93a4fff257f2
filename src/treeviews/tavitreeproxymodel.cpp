// SPDX-License-Identifier: MIT
#include "treeviews/tavitreeproxymodel.h"

#include "treeviews/tavitreeitem.h"
#include "treeviews/tavitreeitem_p.h"
#include "treeviews/tavitreemodel.h"
#include "treeviews/tavitreemodel_p.h"
#include "treeviews/tavitreeproxymodel_p.h"
#include "treeviews/tavitreeview.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLineEdit>
#include <QPalette>
#include <QPointer>
#include <QTreeView>

#include <typeinfo>
#include <vector>

TaviTreeProxyModel::TaviTreeProxyModel(QObject *parent) : QSortFilterProxyModel(parent)
{
    connect(this, &QAbstractProxyModel::sourceModelChanged, this, &TaviTreeProxyModel::takeUpSource);
    // What a run has concluded does not survive these; noted before anybody else acts on them.
    const auto note = [this] {
        ++structure;
        ++layout_reasons;
    };
    connect(this, &QAbstractItemModel::rowsAboutToBeInserted, this, note);
    connect(this, &QAbstractItemModel::rowsAboutToBeRemoved, this, note);
    connect(this, &QAbstractItemModel::rowsAboutToBeMoved, this, note);
    connect(this, &QAbstractItemModel::layoutAboutToBeChanged, this, note);
    connect(this, &QAbstractItemModel::modelAboutToBeReset, this, note);
    // Without a keyword no row is hidden but those that somebody else hides, who tells of it: rows that come and go
    // are counted by their number.
    const auto count = [this](const QModelIndex &changed, int rows_more) {
        if (changed.isValid() || visible_top_rows < 0)
            return;
        visible_top_rows = filter_string.isEmpty() && !hidden_unknown ? visible_top_rows + rows_more : -1;
    };
    connect(this, &QAbstractItemModel::rowsInserted, this,
            [count](const QModelIndex &changed, int first, int last) { count(changed, last - first + 1); });
    connect(this, &QAbstractItemModel::rowsRemoved, this,
            [count](const QModelIndex &changed, int first, int last) { count(changed, first - last - 1); });
    connect(this, &QAbstractItemModel::rowsMoved, this, [this] { visible_top_rows = -1; });
    connect(this, &QAbstractItemModel::layoutChanged, this, [this] { // the base class may have thrown its tables away
        tripwire_lies = false;
        layTripwire();
    });

    connect(this, &QAbstractItemModel::dataChanged, this, &TaviTreeProxyModel::afterDataChange, Qt::DirectConnection);
    connect(this, &QAbstractItemModel::rowsRemoved, this, &TaviTreeProxyModel::afterRowsRemoved,
            Qt::DirectConnection);
    connect(this, &QAbstractItemModel::modelReset, this, &TaviTreeProxyModel::afterReset, Qt::DirectConnection);
    connect(this, SIGNAL(columnsInserted(QModelIndex, int, int)), SLOT(filter()), Qt::DirectConnection);
    connect(this, SIGNAL(columnsRemoved(QModelIndex, int, int)), SLOT(filter()), Qt::DirectConnection);
}

TaviTreeProxyModel::~TaviTreeProxyModel()
{
    Presence::end(this);
}

QTreeView *TaviTreeProxyModel::hidingView() const
{
    return qobject_cast<QTreeView *>(QObject::parent());
}

TaviTreeView *TaviTreeProxyModel::treeView() const
{
    return qobject_cast<TaviTreeView *>(QObject::parent());
}

void TaviTreeProxyModel::setInverted(bool now)
{
    inverted = now;
    if (!filtering_now)
        filter(filter_string);
}

bool TaviTreeProxyModel::isInverted() const
{
    return inverted;
}

bool TaviTreeProxyModel::isFiltering() const
{
    return !filter_string.isEmpty();
}

void TaviTreeProxyModel::setComparer(TaviModelIndexComparer *now)
{
    comparer = now;
}

QString TaviTreeProxyModel::filterString() const
{
    return filter_string;
}

QList<QModelIndex> TaviTreeProxyModel::mapFromSources(const QList<QModelIndex> &indexes) const
{
    QList<QModelIndex> mapped;
    mapped.reserve(indexes.size());
    for (const QModelIndex &index : indexes)
        mapped.append(mapFromSource(index));
    return mapped;
}

QList<QModelIndex> TaviTreeProxyModel::mapToSources(const QList<QModelIndex> &indexes) const
{
    QList<QModelIndex> mapped;
    mapped.reserve(indexes.size());
    for (const QModelIndex &index : indexes)
        mapped.append(mapToSource(index));
    return mapped;
}

bool TaviTreeProxyModel::filterAcceptsRow(int source_row, const QModelIndex &source_parent) const
{
    if (rows == Rows::Straight) { // for the tripwire
        if (tripwire_lies)
            noteExpression();
        return false;
    }
    if (accepts_all)
        return true;
    const QRegExp expression = filterRegExp();
    if (expression.pattern().isEmpty())
        return true;
    if (passesExpression(expression, source_row, source_parent))
        return true;
    const QAbstractItemModel *const source = sourceModel();
    const QModelIndex this_row = source->index(source_row, 0, source_parent);
    if (!this_row.isValid()) // below an item without columns; an invalid index would be the top level again
        return false;
    if (typeid(*this) != typeid(TaviTreeProxyModel)) {
        for (int child = 0; child < source->rowCount(this_row); ++child) {
            if (filterAcceptsRow(child, this_row))
                return true;
        }
        return false;
    }
    // The same without asking ourselves anew for each row: a tree may be deeper than the stack.
    struct Level {
        QModelIndex parent;
        int row = 0;
    };
    std::vector<Level> levels{Level{this_row}};
    while (!levels.empty()) {
        Level &level = levels.back();
        if (level.row >= source->rowCount(level.parent)) {
            levels.pop_back();
            continue;
        }
        const int row = level.row++;
        if (passesExpression(expression, row, level.parent))
            return true;
        const QModelIndex below = source->index(row, 0, level.parent);
        if (below.isValid())
            levels.push_back(Level{below});
    }
    return false;
}

bool TaviTreeProxyModel::passesExpression(const QRegExp &expression, int source_row,
                                          const QModelIndex &source_parent) const
{
    const QTreeView *const view = hidingView();
    const QAbstractItemModel *const source = sourceModel();
    bool hit = false;
    for (int column = 0; column < source->columnCount(source_parent) && !hit; ++column) {
        if (view && view->header()->isSectionHidden(column))
            continue;
        hit = source->index(source_row, column, source_parent).data(Qt::DisplayRole).toString().indexOf(expression)
              >= 0;
    }
    return hit != inverted;
}

bool TaviTreeProxyModel::filterAcceptsColumn(int source_column, const QModelIndex &source_parent) const
{
    return QSortFilterProxyModel::filterAcceptsColumn(source_column, source_parent);
}

bool TaviTreeProxyModel::lessThan(const QModelIndex &source_left, const QModelIndex &source_right) const
{
    if (comparer) {
        const int order = comparer->compare(source_left, source_right);
        if (order == 1 || order == -1)
            return order == -1;
    }
    // Two stored texts are compared in place; the base class would copy both into values first.
    const QString *const left = plainText(source_left);
    const QString *const right = left ? plainText(source_right) : nullptr;
    if (left && right && !isSortLocaleAware())
        return left->compare(*right, sortCaseSensitivity()) < 0;
    return QSortFilterProxyModel::lessThan(source_left, source_right);
}

const QString *TaviTreeProxyModel::plainText(const QModelIndex &source_index) const
{
    const auto *const source = qobject_cast<const TaviTreeModel *>(source_index.model());
    if (!source || sortRole() != Qt::DisplayRole || TaviTreeModelAccess::overridesData(source))
        return nullptr;
    const auto *const item = static_cast<const TaviTreeItem *>(source_index.internalPointer());
    if (!item || TaviTreeItemAccess::overridesData(item))
        return nullptr;
    const QVariant *const value = TaviTreeItemAccess::storedValue(item, source_index.column(), Qt::DisplayRole);
    return value && value->userType() == QMetaType::QString ? static_cast<const QString *>(value->constData())
                                                            : nullptr;
}

void TaviTreeProxyModel::addFilterLineEdit(QLineEdit *line_edit)
{
    if (!line_edit)
        return;
    line_edit->installEventFilter(this);
    if (!filter_line_edits.contains(line_edit)) // the next line edit may get its address
        connect(line_edit, &QObject::destroyed, this, [this, line_edit] { filter_line_edits.remove(line_edit); });
    filter_line_edits.insert(line_edit, false);
    line_edit->setToolTip(tr("Press %1 to invert filter result.")
                              .arg(QKeySequence(QStringLiteral("Ctrl+Shift+I")).toString(QKeySequence::NativeText)));
}

bool TaviTreeProxyModel::hasLineEdit(const QLineEdit *line_edit) const
{
    return filter_line_edits.contains(const_cast<QLineEdit *>(line_edit));
}

void TaviTreeProxyModel::setFilterLineEditLook(QLineEdit *line_edit, bool look_inverted)
{
    QPalette palette;
    palette.setBrush(QPalette::All, line_edit->foregroundRole(), QBrush(look_inverted ? Qt::white : Qt::black));
    palette.setBrush(QPalette::All, line_edit->backgroundRole(), QBrush(look_inverted ? Qt::black : Qt::white));
    line_edit->setPalette(palette);
}

bool TaviTreeProxyModel::eventFilter(QObject *watched, QEvent *event)
{
    auto *const line_edit = qobject_cast<QLineEdit *>(watched);
    if (!line_edit || !event || !filter_line_edits.contains(line_edit))
        return false;
    if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress)
        return false;
    const auto *const key = static_cast<QKeyEvent *>(event);
    constexpr Qt::KeyboardModifiers wanted = Qt::ShiftModifier | Qt::ControlModifier;
    const bool is_key =
        key->key() == Qt::Key_I && (key->modifiers() & (wanted | Qt::AltModifier | Qt::MetaModifier)) == wanted;
    if (is_key && event->type() == QEvent::ShortcutOverride) {
        bool &flag = filter_line_edits[line_edit];
        flag = !flag;
        const bool now = flag;
        const QPointer<QLineEdit> kept(line_edit);
        setInverted(now); // who hears of the run may delete the line edit, or the proxy
        if (kept)
            setFilterLineEditLook(line_edit, now);
    }
    return is_key;
}
