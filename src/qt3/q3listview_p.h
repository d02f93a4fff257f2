// SPDX-License-Identifier: MIT
#ifndef QT3_Q3LISTVIEW_P_H
#define QT3_Q3LISTVIEW_P_H

#include "qt3/q3header.h"
#include "qt3/q3listview.h"
#include "qt3/q3listviewtree_p.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPointer>
#include <QRect>

#include <vector>

/// What a Q3ListView has, and what it does behind its interface.
struct Q3ListViewPrivate {
    explicit Q3ListViewPrivate(Q3ListView *owner);
    ~Q3ListViewPrivate();

    struct Column {
        Q3ListView::WidthMode mode = Q3ListView::Manual;
        int align = Qt::AlignLeft;
        bool measure = false; ///< The widths of items that were there before it are still to be asked.
    };
    /// What the left button is doing.
    enum class Press { None, Item, Empty, Rubber };

    static Q3ListViewPrivate *of(const Q3ListView *view) { return view->d.get(); }

    // Rows (q3listview_layout.cpp)
    void addPending(Q3ListViewItem *item);
    void removePending(Q3ListViewItem *item);
    void index();
    int contentsHeight();
    void measureColumns();
    void columnAdded(int width);
    void stretchColumns();
    void headingChanged(int column);
    int headingWidth(int column) const;
    void layOutHeader();
    void itemsNeedSetup();
    int indentation(const Q3ListViewItem *item) const;
    bool hasExpander(const Q3ListViewItem *item) const;
    QRect cellRect(Q3ListViewItem *item, int column);
    /// What an item takes with it when it goes.
    struct Leaving {
        bool current = false;
        bool selection = false;
    };
    Leaving itemLeaves(Q3ListViewItem *item);
    void tellOf(const Leaving &left);
    void opened(Q3ListViewItem *item, bool open);
    bool isSorted() const { return sort_column >= 0 && sort_column < static_cast<int>(columns.size()); }
    void updateSortIndicator();

    /// An item and its number among its siblings, which was found last; nothing after changes to any of them.
    struct Place {
        const Q3ListViewItem *parent = nullptr;
        Q3ListViewItem *item = nullptr;
        int number = 0;
    };

    // Selection (q3listview_selection.cpp)
    bool isSelectableByUser(const Q3ListViewItem *item) const;
    bool select(Q3ListViewItem *item, bool on);
    bool selectOnly(Q3ListViewItem *item);
    bool selectRange(Q3ListViewItem *from, Q3ListViewItem *to, bool on, bool others_too);
    void emitSelectionChanged();
    void goTo(Q3ListViewItem *item, Qt::KeyboardModifiers modifiers);
    Q3ListViewItem *enabledFrom(Q3ListViewItem *item, bool downwards) const;

    // Mouse (q3listview_mouse.cpp)
    int columnAt(const QPoint &viewport_pos) const;
    bool isOnExpander(Q3ListViewItem *item, const QPoint &viewport_pos);
    void endPress();

    // What a press means (q3listview_press.cpp)
    void pressItem(Q3ListViewItem *item, Qt::KeyboardModifiers modifiers);
    void pressEmpty(Qt::KeyboardModifiers modifiers);
    void emitPress(int button, Q3ListViewItem *item, const QPoint &global, int column);
    void emitClick(int button, Q3ListViewItem *item, const QPoint &global, int column);

    // A mouse that moves (q3listview_sweep.cpp)
    void hover(Q3ListViewItem *item);
    void dragSelect(const QPoint &contents_pos);
    void rubberSelect(const QPoint &contents_pos);
    QRect rubberRect() const;

    // Drags from elsewhere (q3listview_drag.cpp)
    void dragOver(Q3ListViewItem *item);
    void openUnderDrag();

    // Keyboard (q3listview_keyboard.cpp)
    bool navigate(QKeyEvent *e);
    bool actOnCurrent(QKeyEvent *e);
    void stepLeft();
    void stepRight();
    void pressSpace();
    void typeAhead(const QString &text);

    // Renaming (q3listview_rename.cpp)
    void openEditor(Q3ListViewItem *item, int column);
    void placeEditor();
    void finishRename(bool accept);
    QString closeEditor();
    int renameColumn(const Q3ListViewItem *item, int preferred) const;

    Q3ListView *const q;
    Q3Header *header = nullptr;
    std::unique_ptr<Q3ListViewItem> root; ///< Has the top-level items as its children.
    std::vector<Column> columns;
    std::vector<Q3ListViewItem *>
        pending; ///< Items that the search trees take for 0 pixels high until they are measured.

    Q3ListViewItemGuard current;
    Q3ListViewItemGuard selected; ///< The item that was selected last.
    Q3ListViewItemGuard anchor;
    Q3ListViewItemGuard pressed;
    Q3ListViewItemGuard hovered;
    Q3ListViewItemGuard drop_target;
    Q3ListViewItemGuard renamed;
    Q3ListViewItemGuard to_rename;
    Q3ListViewItemGuard activated;

    Place place;

    Q3ListView::SelectionMode selection_mode = Q3ListView::Single;
    Q3ListView::ResizeMode resize_mode = Q3ListView::NoColumn;
    Q3ListView::RenameAction rename_action = Q3ListView::Reject;
    int sort_column = 0;
    bool sort_ascending = true;
    int item_margin = 1;
    int tree_step = 20;
    bool root_decorated = false;
    bool all_columns_show_focus = false;
    bool show_sort_indicator = false;
    bool show_tool_tips = true;
    bool clearing = false;
    int row_height = 0; ///< Of a line of text with its margins; 0 until it is asked.

    QBasicTimer update_timer;
    QBasicTimer scroll_timer;
    QBasicTimer rename_timer;
    QBasicTimer open_timer; ///< Until the item under a drag opens.

    Press press = Press::None;
    QPoint press_pos; ///< In contents coordinates, as all here.
    QPoint mouse_pos;
    int press_button = Qt::NoButton;
    bool pressed_beside = false;    ///< The button was pressed where there is no item.
    bool press_selects = true;      ///< What a drag over items makes of them.
    bool select_on_release = false; ///< A selected item was pressed, which is selected alone unless it is dragged.
    bool rename_on_release = false;
    bool press_on_expander = false;
    bool ignore_release = false; ///< It belongs to a double-click.
    bool dragging_over = false;  ///< The mouse was moved far enough to select.
    Qt::KeyboardModifiers press_modifiers;
    int rename_column = -1;
    QPoint activate_pos;
    bool activated_by_mouse = false;

    QPointer<QLineEdit> editor;
    QString typed;
    QElapsedTimer typed_at;
};

#endif
