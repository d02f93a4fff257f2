// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_TAVITREEPROXYMODEL_H
#define TREEVIEWS_TAVITREEPROXYMODEL_H

#include "foundation/taviwidgets_export.h"

#include <QList>
#include <QMap>
#include <QSortFilterProxyModel>
#include <QString>

class QLineEdit;
class QTreeView;
class TaviModelIndexComparer;
class TaviTreeView;

/// @file
/// Sorts and filters what a tree view shows.

/// Stands between a TaviTreeModel and the view that created it: sorts through an optional comparer, and filters.
///
/// The keyword filter removes no row from the proxy: it hides rows in the view. So a change of the keyword causes no
/// row signals, selections survive, and the view can tell how many rows there are beside those in sight. A keyword is
/// a literal piece of text, searched in all columns that the view's header shows. A row stays in sight if it matches
/// or if a row below it stays; under inversion a row matches that does not hold the keyword.
///
/// A filter expression (QSortFilterProxyModel::setFilterRegExp()) removes rows by the same rules, beside the keyword.
/// The library itself sets none.
///
/// **When the rows are looked through.** Each change of the keyword or of the inversion looks through all rows;
/// filter() does so with the present keyword. After a change of the source (data, columns, rows removed, reset) the
/// rows are brought up to date that can be affected by it: those that changed, those whose text was written without a
/// signal, and their ancestors. Where classes of the application answer for themselves (TaviTreeItem::data() or
/// childCount(), TaviTreeModel::data() and its structure, filterRow() or data() of the proxy) all rows are looked
/// through again. Rows that come are looked through when the view has taken them in, see filterInserted().
///
/// **The view** is the `QObject` parent. Without one the rows are looked through all the same, and nothing is hidden.
///
/// **Re-entry.** A call of filter() from inside a run does nothing. An overridden data() that removes or adds rows in
/// the middle of a run ends the run over the rows of that moment; the rows are looked through again right after.
///
/// **Threads.** The main thread.
class TAVIWIDGETS_EXPORT TaviTreeProxyModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    /// A proxy for the view @a parent.
    explicit TaviTreeProxyModel(QObject *parent = nullptr);
    /// Leaves comparer and line edits alone.
    ~TaviTreeProxyModel() override;

    /// Toggles the inversion when Ctrl+Shift+I is pressed in a registered line edit.
    bool eventFilter(QObject *watched, QEvent *event) override;

    /// Looks through one row and all below it, in indexes of the proxy; hides it in the view or shows it. True if it
    /// stays in sight. May be overridden; the override is then asked for every row.
    virtual bool filterRow(int row, const QModelIndex &parent);
    /// mapFromSource() of each, in order, nothing dropped.
    virtual QList<QModelIndex> mapFromSources(const QList<QModelIndex> &indexes) const;
    /// mapToSource() of each, in order, nothing dropped.
    virtual QList<QModelIndex> mapToSources(const QList<QModelIndex> &indexes) const;

    /// Whether a row matches that does not hold the keyword. Looks through all rows, also if nothing changes.
    void setInverted(bool inverted);
    /// Whether a row matches that does not hold the keyword; false at first.
    bool isInverted() const;
    /// Watches @a line_edit for Ctrl+Shift+I and gives it a tool tip that tells so. Its text is not connected: the
    /// caller does that. Null is ignored.
    void addFilterLineEdit(QLineEdit *line_edit);
    /// Whether addFilterLineEdit() was called with it.
    bool hasLineEdit(const QLineEdit *line_edit) const;
    /// White on black for an inverted filter, black on white otherwise.
    void setFilterLineEditLook(QLineEdit *line_edit, bool inverted);
    /// Whether there is a keyword.
    bool isFiltering() const;
    /// Lets @a comparer decide the order; null ends that. It is not owned and must outlive the proxy or its own
    /// removal here. Nothing is sorted before the next sort.
    void setComparer(TaviModelIndexComparer *comparer);
    /// The view, which is the `QObject` parent.
    TaviTreeView *treeView() const;
    /// The keyword.
    QString filterString() const;

    /// For the view, once it has taken in rows that came: looks through these rows and their ancestors.
    void filterInserted(const QModelIndex &parent, int first, int last);
    /// For the view, once it has forgotten which rows were hidden (QTreeView::reset()): hides them again.
    void hiddenRowsForgotten();
    /// For the view: somebody hid or showed rows, or may have done so. The next run counts on nothing.
    void hiddenRowsTouched();
    /// How many rows of the top level the view does not hide.
    int visibleTopLevelRows() const;

public Q_SLOTS:
    /// Makes @a string the keyword and looks through all rows. An empty keyword shows every row.
    void filter(QString string);
    /// Looks through all rows with the present keyword.
    void filter();

protected:
    /// Whether a source row passes the filter expression, itself or by a row below it.
    bool filterAcceptsRow(int source_row, const QModelIndex &source_parent) const override;
    /// As the base class.
    bool filterAcceptsColumn(int source_column, const QModelIndex &source_parent) const override;
    /// What the comparer decides; what it leaves open as the base class.
    bool lessThan(const QModelIndex &source_left, const QModelIndex &source_right) const override;

private:
    QTreeView *hidingView() const;
    void updateStatus();

    bool inverted = false;
    QMap<QLineEdit *, bool> filter_line_edits;
    QString filter_string;
    TaviModelIndexComparer *comparer = nullptr; // the application's
    bool filtering_now = false;
};

#endif
