// SPDX-License-Identifier: MIT
#include "treeviews/tavitreeproxymodel.h"

#include "treeviews/tavitreemodel.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLineEdit>
#include <QPalette>
#include <QTreeView>

TaviTreeProxyModel::TaviTreeProxyModel(QObject *parent) : QSortFilterProxyModel(parent)
{
    connect(this, SIGNAL(dataChanged(QModelIndex, QModelIndex, QVector<int>)), SLOT(filter()), Qt::DirectConnection);
    connect(this, SIGNAL(columnsInserted(QModelIndex, int, int)), SLOT(filter()), Qt::DirectConnection);
    connect(this, SIGNAL(columnsRemoved(QModelIndex, int, int)), SLOT(filter()), Qt::DirectConnection);
    connect(this, SIGNAL(rowsRemoved(QModelIndex, int, int)), SLOT(filter()), Qt::DirectConnection);
    connect(this, SIGNAL(modelReset()), SLOT(filter()), Qt::DirectConnection);
}

TaviTreeProxyModel::~TaviTreeProxyModel() = default;

QTreeView *TaviTreeProxyModel::hidingView() const
{
    return qobject_cast<QTreeView *>(QObject::parent());
}

TaviTreeView *TaviTreeProxyModel::treeView() const
{
    QTreeView *const view = hidingView();
    return view && view->inherits("TaviTreeView") ? static_cast<TaviTreeView *>(static_cast<void *>(view)) : nullptr;
}

void TaviTreeProxyModel::updateStatus()
{
    if (QTreeView *const view = hidingView())
        QMetaObject::invokeMethod(view, "updateStatusBar", Qt::DirectConnection, Q_ARG(int, 0));
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

void TaviTreeProxyModel::filter()
{
    filter(filter_string);
}

void TaviTreeProxyModel::filter(QString string)
{
    if (filtering_now)
        return;
    filtering_now = true;
    filter_string = string;
    if (QTreeView *const view = hidingView())
        view->setUpdatesEnabled(false);
    for (int row = 0; row < rowCount(); ++row)
        filterRow(row, QModelIndex());
    if (QTreeView *const view = hidingView()) {
        view->setUpdatesEnabled(true);
        updateStatus();
    }
    filtering_now = false;
}

bool TaviTreeProxyModel::filterRow(int row, const QModelIndex &parent)
{
    QTreeView *const view = hidingView();
    const bool any_case = filterCaseSensitivity() == Qt::CaseInsensitive;
    const QString keyword = any_case ? filter_string.toLower() : filter_string;
    bool matches = filter_string.isEmpty();
    if (!matches) {
        bool hit = false;
        for (int column = 0; column < columnCount(parent) && !hit; ++column) {
            if (view && view->header()->isSectionHidden(column))
                continue;
            const QString text = index(row, column, parent).data(Qt::DisplayRole).toString();
            hit = (any_case ? text.toLower() : text).indexOf(keyword) >= 0;
        }
        matches = hit != inverted;
    }
    bool child_visible = false;
    const QModelIndex this_row = index(row, 0, parent);
    for (int child = 0; child < rowCount(this_row); ++child)
        child_visible = filterRow(child, this_row) || child_visible;
    const bool visible = matches || child_visible;
    if (view)
        view->setRowHidden(row, parent, !visible);
    return visible;
}

void TaviTreeProxyModel::filterInserted(const QModelIndex &, int, int)
{
    filter();
}

void TaviTreeProxyModel::hiddenRowsForgotten()
{
    filter();
}

void TaviTreeProxyModel::hiddenRowsTouched() {}

int TaviTreeProxyModel::visibleTopLevelRows() const
{
    const QTreeView *const view = hidingView();
    int visible = 0;
    for (int row = 0; row < rowCount(); ++row) {
        if (!view || !view->isRowHidden(row, QModelIndex()))
            ++visible;
    }
    return visible;
}

bool TaviTreeProxyModel::filterAcceptsRow(int source_row, const QModelIndex &source_parent) const
{
    const QRegExp expression = filterRegExp();
    if (expression.pattern().isEmpty())
        return true;
    const QTreeView *const view = hidingView();
    const QAbstractItemModel *const source = sourceModel();
    bool hit = false;
    for (int column = 0; column < source->columnCount(source_parent) && !hit; ++column) {
        if (view && view->header()->isSectionHidden(column))
            continue;
        hit = source->index(source_row, column, source_parent).data(Qt::DisplayRole).toString().indexOf(expression)
              >= 0;
    }
    if (hit != inverted)
        return true;
    const QModelIndex this_row = source->index(source_row, 0, source_parent);
    for (int child = 0; child < source->rowCount(this_row); ++child) {
        if (filterAcceptsRow(child, this_row))
            return true;
    }
    return false;
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
    return QSortFilterProxyModel::lessThan(source_left, source_right);
}

void TaviTreeProxyModel::addFilterLineEdit(QLineEdit *line_edit)
{
    if (!line_edit)
        return;
    line_edit->installEventFilter(this);
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
        setInverted(now);
        setFilterLineEditLook(line_edit, now);
    }
    return is_key;
}
