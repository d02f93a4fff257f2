// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_TAVITREEPROXYMODEL_H
#define TREEVIEWS_TAVITREEPROXYMODEL_H

#include "foundation/taviwidgets_export.h"

#include <QList>
#include <QMap>
#include <QPair>
#include <QPersistentModelIndex>
#include <QSortFilterProxyModel>
#include <QString>

#include <utility>
#include <vector>

class KeywordMatcher;
class QLineEdit;
class QTreeView;
class TaviModelIndexComparer;
class TaviTreeItem;
class TaviTreeModel;
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
/// A filter expression (setFilterRegExp()) removes rows by the same rules, beside the keyword. The library itself
/// sets none.
///
/// **When the rows are looked through.** Each change of the keyword or of the inversion looks through all rows, and
/// so does filter(). After a change of the source (data, columns, rows removed, reset) the rows are brought up to
/// date that can be affected by it: those that changed, those whose text was written without a signal, and the
/// ancestors of both. Where classes of the application answer for themselves (TaviTreeItem::data() or childCount(),
/// TaviTreeModel::data() or its structure, filterRow() of the proxy) any row may depend on any other, and all are
/// looked through again. Rows that come are looked through when the view has taken them in, see filterInserted().
///
/// **Rows one to one.** As long as nothing is sorted and no expression is set, a proxy of this very class over a
/// TaviTreeModel maps rows one to one, so that a row that comes or goes costs the same however many there are. The
/// first sort, or an expression, changes to the mappings of the base class; indexes that are kept stay valid. An
/// expression that is set through the base class takes effect at the next question for rows, change of the source or
/// turn of the event loop, whichever comes first.
///
/// **The view** is the `QObject` parent. Without one the rows are looked through all the same, and nothing is hidden.
///
/// **Re-entry.** A call of filter() from inside a run does nothing. An overridden data() that removes or adds rows in
/// the middle of a run lets the run begin again.
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
    /// For the view: somebody else hid or showed rows, or may have done so. A view that calls this once is expected
    /// to call it every time; for any other view the proxy finds out for itself.
    void hiddenRowsTouched();
    /// How many rows of the top level the view does not hide. O(rows); see goByKeptCount().
    int visibleTopLevelRows() const;
    /// For the view, around an answer to a change that it has heard of: with @a kept, visibleTopLevelRows() goes by
    /// the number that is kept. That is O(1), but O(rows) the first time after rows came or went while there is a
    /// keyword, or after hiddenRowsTouched(). The proxy does so itself where it lets the view update its status.
    /// @return what held before
    bool goByKeptCount(bool kept) { return std::exchange(kept_count_will_do, kept); }
    /// A number that grows with everything here that makes a view lay out its rows anew: rows that come, go or move,
    /// a reset, and runs that hide or show rows. A view that lays them out without such a reason asks itself whether
    /// somebody else has hidden rows.
    quint64 layoutReasons() const { return layout_reasons; }

    /// As the base class, and see "Rows one to one".
    void setFilterRegExp(const QRegExp &expression);

    /// @name As the base class
    /// @{

    /// Takes @a source, not owned, and looks through its rows. Null leaves the proxy empty.
    void setSourceModel(QAbstractItemModel *source) override;
    /// The index of the source behind @a proxy_index; invalid for an invalid one.
    QModelIndex mapToSource(const QModelIndex &proxy_index) const override;
    /// The index of this model before @a source_index; invalid for an invalid one and for a row that is filtered out.
    QModelIndex mapFromSource(const QModelIndex &source_index) const override;
    /// The index of a cell below @a parent; invalid out of range.
    QModelIndex index(int row, int column, const QModelIndex &parent = QModelIndex()) const override;
    /// The index of the row that holds @a child, in column 0.
    QModelIndex parent(const QModelIndex &child) const override;
    using QObject::parent;
    /// The cell in @a row and @a column beside @a index.
    QModelIndex sibling(int row, int column, const QModelIndex &index) const override;
    /// Rows below @a parent, rows hidden in the view included.
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    /// Columns of the rows below @a parent.
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    /// Whether there are rows below @a parent.
    bool hasChildren(const QModelIndex &parent = QModelIndex()) const override;
    /// The source's flags; for an invalid index whether something can be dropped beside the rows.
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    /// The source's header, of the section's own column.
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    /// Sets the source's header; false if that refuses.
    bool setHeaderData(int section, Qt::Orientation orientation, const QVariant &value,
                       int role = Qt::EditRole) override;
    /// Asks the source for new rows; false if that refuses.
    bool insertRows(int row, int count, const QModelIndex &parent = QModelIndex()) override;
    /// Asks the source for new columns; false if that refuses.
    bool insertColumns(int column, int count, const QModelIndex &parent = QModelIndex()) override;
    /// Asks the source to remove rows; false if that refuses.
    bool removeRows(int row, int count, const QModelIndex &parent = QModelIndex()) override;
    /// Asks the source to remove columns; false if that refuses.
    bool removeColumns(int column, int count, const QModelIndex &parent = QModelIndex()) override;
    /// Sorts by @a column with lessThan(); -1 brings back the order of the source.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;
    /// @}

public Q_SLOTS:
    /// Makes @a string the keyword and looks through all rows. An empty keyword shows every row.
    void filter(QString string);
    /// Looks through all rows with the present keyword.
    void filter();
    /// As the base class, and see "Rows one to one".
    void setFilterRegExp(const QString &pattern);
    /// As the base class, and see "Rows one to one".
    void setFilterWildcard(const QString &pattern);
    /// As the base class, and see "Rows one to one".
    void setFilterFixedString(const QString &pattern);

protected:
    /// Whether a source row passes the filter expression, itself or by a row below it.
    bool filterAcceptsRow(int source_row, const QModelIndex &source_parent) const override;
    /// As the base class.
    bool filterAcceptsColumn(int source_column, const QModelIndex &source_parent) const override;
    /// What the comparer decides; what it leaves open as the base class.
    bool lessThan(const QModelIndex &source_left, const QModelIndex &source_right) const override;

private:
    enum class Rows {
        Straight, // one to one
        Leaving,  // indexes are read as straight ones and made as mapped ones
        Mapped,   // by the base class
    };
    class Run;
    friend class Run;
    class Presence;
    friend class Presence;
    /// What a run has left of a row.
    struct RowLeft {
        int item_id;
        bool hidden;
    };

    bool canBeStraight(const QAbstractItemModel *source) const;
    void takeUpSource();
    void followSource();
    void watchSource(QAbstractItemModel *source);
    void leaveStraightRows(bool quietly);
    void sourceIsGone();
    void sourceWasReset();
    QModelIndex straight(const QModelIndex &source_index) const;
    bool hasExpression() const;
    void layTripwire();
    void noteExpression() const;
    void goByExpression();
    QModelIndex settled(const QModelIndex &asked_for) const;

    bool passesExpression(const QRegExp &expression, int source_row, const QModelIndex &source_parent) const;
    const QString *plainText(const QModelIndex &source_index) const;

    QTreeView *hidingView() const;
    bool runsShort() const;
    void afterDataChange(const QModelIndex &top_left, const QModelIndex &bottom_right);
    void afterRowsRemoved(const QModelIndex &parent);
    void afterReset();
    void lookThroughAll();
    void lookThroughChanged(const QModelIndex &parent, int first, int last, bool came);
    void lookAtRows(const QModelIndex &parent, int first, int last, bool with_all_below);
    void showAll();
    bool beginRun();
    void endRun();
    void updateStatus(QTreeView *view);
    std::vector<bool> hiddenColumns() const;

    bool inverted = false;
    QMap<QLineEdit *, bool> filter_line_edits;
    QString filter_string;
    TaviModelIndexComparer *comparer = nullptr; // the application's
    bool filtering_now = false;

    Rows rows = Rows::Mapped;
    TaviTreeModel *straight_source = nullptr; // the source model while rows are straight
    std::vector<QMetaObject::Connection> source_connections;
    QList<QPair<QModelIndex, QPersistentModelIndex>> moving_indexes; // kept indexes while the source's layout changes
    std::vector<bool> open_brackets;                                 // of signals of the source: which were passed on
    bool tripwire_lies = false;          // the base class has the table that makes it ask for rows
    bool accepts_all = false;            // while that table gives way to the real ones
    mutable bool expression_due = false; // an expression came through the base class
    int structure = 0;                   // counts what comes, goes and moves, so that a run notices

    // What the last run over all rows went by; anything else calls for another one.
    std::vector<bool> searched_without;
    Qt::CaseSensitivity searched_case = Qt::CaseSensitive;
    bool searched_inverted = false;
    bool all_due = true;
    quint64 texts_seen = 0;
    bool view_tells = false;
    mutable bool hidden_unknown = true; // the view may hide rows that no run has hidden
    bool hidden_known = false;          // during a run: the view hides just the rows that the last one has left
    std::vector<RowLeft> rows_left;     // by the last run over all rows, in its order
    int rows_left_structure = -1;       // what they go by; -1: by nothing
    mutable int visible_top_rows = -1;  // -1: to be counted
    bool kept_count_will_do = false;
    quint64 layout_reasons = 0;
    const QMetaObject *status_class = nullptr; // of the view whose slot for the status line is the next
    int status_slot = -1;
    bool status_is_usual = false;  // the slot of TaviTreeView itself
    Presence *presences = nullptr; // innermost first
};

#endif
