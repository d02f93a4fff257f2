// SPDX-License-Identifier: MIT
#ifndef LISTVIEWS_TAVILISTVIEWBUDDIES_H
#define LISTVIEWS_TAVILISTVIEWBUDDIES_H

#include "foundation/taviwidgets_export.h"

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QWidget>

#include <map>

class QLineEdit;
class Q3ListView;
class Q3ListViewItem;
class TaviListView;

/// @file
/// Small companions of the classic list.

/// Tells a list view's signals on as soon as control has returned to the event loop, so that a slot may delete or
/// refill the view without pulling away the view's own code from under it.
///
/// @code
/// auto *buddy = new TaviListViewSignalBuddy;
/// buddy->setListView(list);
/// connect(buddy, SIGNAL(doubleClicked(Q3ListViewItem *, QPoint, int)), SLOT(removeAndOpen(Q3ListViewItem *)));
/// @endcode
///
/// Each signal of the view gives one signal here. Of several of one kind in one turn of the event loop, all have the
/// arguments of the last. An item that is no longer in the view by then is told as null.
///
/// **Ownership.** It has no parent and belongs to whoever made it; the view belongs to others and may be deleted at
/// any time.
///
/// **Re-entry.** A slot may delete items, the view and the buddy. What is still to be told of a view that is gone is
/// told with null for the item; of a buddy that is gone, nothing.
///
/// **Cost.** A signal with an item costs a walk over the items of the view.
///
/// **Threads.** The user interface thread alone, with a running event loop.
class TAVIWIDGETS_EXPORT TaviListViewSignalBuddy : public QObject
{
    Q_OBJECT

public:
    /// A buddy without a view.
    TaviListViewSignalBuddy();
    ~TaviListViewSignalBuddy() override;

    /// Watches @a view from now on, and the one before no longer. Null watches none.
    void setListView(Q3ListView *view);
    /// The view; null without one or when it was deleted.
    Q3ListView *listView() const;
    /// Stops watching; listView() stays. What came before is still told of, with null for the item.
    void init();

Q_SIGNALS:
    /// As of Q3ListView.
    void contextMenuRequested(Q3ListViewItem *item, const QPoint &pos, int col);
    /// As of Q3ListView.
    void doubleClicked(Q3ListViewItem *item, const QPoint &pos, int col);
    /// As of Q3ListView.
    void selectionChanged(Q3ListViewItem *item);
    /// As of Q3ListView.
    void selectionChanged();
    /// As of Q3ListView.
    void currentChanged(Q3ListViewItem *item);
    /// As of Q3ListView.
    void clicked(Q3ListViewItem *item);
    /// As of Q3ListView.
    void returnPressed(Q3ListViewItem *item);

private Q_SLOTS:
    void contextMenuRequested_slot(Q3ListViewItem *item, const QPoint &pos, int col);
    void contextMenuRequested_timerEvent();
    void doubleClicked_slot(Q3ListViewItem *item, const QPoint &pos, int col);
    void doubleClicked_timerEvent();
    void selectionChanged_slot(Q3ListViewItem *item);
    void selectionChanged_timerEvent();
    void selectionChanged_slot();
    void selectionChanged_timerEvent_noParam();
    void currentChanged_slot(Q3ListViewItem *item);
    void currentChanged_timerEvent();
    void clicked_slot(Q3ListViewItem *item);
    void clicked_timerEvent();
    void returnPressed_slot(Q3ListViewItem *item);
    void returnPressed_timerEvent();

private:
    Q3ListViewItem *inView(Q3ListViewItem *item) const;

    QPointer<Q3ListView> list_view;
    Q3ListViewItem *context_item = nullptr; // as all items here, perhaps gone
    QPoint context_pos;
    int context_column = 0;
    Q3ListViewItem *double_click_item = nullptr;
    QPoint double_click_pos;
    int double_click_column = 0;
    Q3ListViewItem *selection_item = nullptr;
    Q3ListViewItem *current_item = nullptr;
    Q3ListViewItem *clicked_item = nullptr;
    Q3ListViewItem *return_item = nullptr;
};

/// Makes line edits filter a TaviListView. Each has a flag of its own whether it filters inverted, which
/// Ctrl+Shift+I in the edit turns round; white on black shows it.
///
/// A selection that the filter hid comes back when the filter ends.
///
/// **Ownership.** View and line edits belong to others, and may be deleted at any time.
///
/// **Re-entry.** A slot of what filtering causes may destroy the view, and this with it. A line edit whose text
/// changes is in the middle of its own signal and wants deleteLater(); one that is turned round may be deleted.
///
/// **Threads.** The user interface thread alone.
class TAVIWIDGETS_EXPORT TaviListViewFilterBuddy : public QObject
{
    Q_OBJECT

public:
    /// A buddy of @a view without line edits.
    explicit TaviListViewFilterBuddy(TaviListView *view, QObject *parent = nullptr);
    ~TaviListViewFilterBuddy() override;

    /// Makes @a edit filter the view, not inverted, also if it did so inverted before. Nothing for null. Its tool tip
    /// tells of the key.
    void addFilterLineEdit(QLineEdit *edit);
    /// Whether @a edit is registered.
    bool hasLineEdit(const QLineEdit *edit) const;
    /// The flag of @a edit; false for null. One that was not known is from now on, with false, and filters nothing.
    bool inverted(QLineEdit *edit);
    /// Sets the flag of @a edit and that of the view, and the look. Nothing for null.
    void setInverted(QLineEdit *edit, bool inverted);
    /// Makes @a edit black on white or, if @a inverted, white on black. Nothing for null.
    void setFilterLineEditLook(QLineEdit *edit, bool inverted);
    /// Takes note of the key that turns the flag round; the edit sees it all the same.
    /// @return false; true if the edit is gone
    bool eventFilter(QObject *object, QEvent *event) override;

public Q_SLOTS:
    /// Filters by @a text with the flag of the line edit that sent it; nothing from any other sender.
    void filterTextChanged(QString text);

private:
    void know(QLineEdit *edit, bool inverted);
    void restoreSelection();

    QPointer<TaviListView> list_view;
    std::map<QLineEdit *, bool> line_edits;
    Q3ListViewItem *remembered_item = nullptr; // perhaps gone
};

/// The small search window over a TaviListView: what is typed in it filters the view until it is closed.
///
/// TaviListView::showFilterFloater() makes it; there is one in a process. Escape closes it.
///
/// **Ownership.** It belongs to its view.
///
/// **Re-entry.** A slot of closed() may delete it, or its view. A slot of what its typing causes wants deleteLater()
/// for either.
///
/// **Threads.** The user interface thread alone.
class TAVIWIDGETS_EXPORT FilterFloater : public QWidget
{
    Q_OBJECT

public:
    /// A hidden search window for @a view; with null it filters nothing.
    explicit FilterFloater(TaviListView *view);
    ~FilterFloater() override;

    /// Where the keyword is typed.
    QLineEdit *lineEdit() const { return line_edit; }

Q_SIGNALS:
    /// It has been closed.
    void closed();

protected:
    /// Empties the line edit, which ends the filter, and emits closed().
    void closeEvent(QCloseEvent *event) override;
    /// Closes on Escape without modifiers.
    void keyPressEvent(QKeyEvent *event) override;

private:
    friend class TaviListView;

    QPointer<TaviListView> list_view;
    QLineEdit *line_edit;
};

#endif
