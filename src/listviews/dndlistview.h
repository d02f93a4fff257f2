// SPDX-License-Identifier: MIT
#ifndef LISTVIEWS_DNDLISTVIEW_H
#define LISTVIEWS_DNDLISTVIEW_H

#include "foundation/taviwidgets_export.h"
#include "listviews/tavilistview.h"

#include <QBrush>
#include <QPen>
#include <QPoint>
#include <QPolygon>
#include <QString>
#include <QWidget>

class Q3DragObject;

/// @file
/// The classic list with drag and drop of its items, and the mark that shows where a drop would go.

/// The red mark in a DNDListView that shows where a drop would go: between two rows it is two triangles that point at
/// each other along the line, around a row it is a double pair of square brackets. All else of it is transparent, by
/// a mask.
///
/// **Ownership, threads.** A widget like all others; that of a view belongs to the view's viewport.
class TAVIWIDGETS_EXPORT DNDIndicator : public QWidget
{
    Q_OBJECT

public:
    /// The height between two rows, and the least height and width, in pixels.
    static constexpr int line_height = 11;

    /// A mark between two rows, of 11 by 11 pixels.
    explicit DNDIndicator(QWidget *parent = nullptr);
    ~DNDIndicator() override;

    /// Whether it marks the line between two rows; true at first. If not, it marks a row.
    bool isDropBetweenMode() const { return drop_between; }
    /// Sets whether it marks the line between two rows, and what shows of it.
    void setDropBetweenMode(bool between);
    /// Makes the mask anew, for the size that it has. O(pixels).
    virtual void updateMask();

protected:
    /// Calls updateMask().
    void resizeEvent(QResizeEvent *event) override;

private:
    QPolygon triangle;
    QPen pen;
    QBrush brush;
    bool drop_between = true;
};

/// A list whose selected items can be dragged, within it, to other widgets and out of the application, and on which
/// can be dropped what subclasses understand. Where a drop would go is marked while something is dragged over it.
///
/// What travels is up to the subclass, in four operations; which drags and drops there are is up to five rules.
///
/// @code
/// class SwatchList : public DNDListView
/// {
/// public:
///     using DNDListView::DNDListView;
///     bool canDecode(const QDropEvent *event) override { return event->mimeData()->hasFormat(swatch_type); }
///     Q3DragObject *encode() override;                                     // the selected items, or null
///     int decode(Q3ListViewItem *after, const QDropEvent *event) override; // puts them after that item
///     void clearSources(bool remove) override;                             // deletes what was dragged
/// };
/// list->setAllowed(DNDListView::DRAG_OTHERAPPS_MOVES, true); // swatches may leave for another application
/// @endcode
///
/// The header menu is off, selection is Single, nothing is sorted, the last column fills the width, and a drag near
/// an edge scrolls.
///
/// What is dragged is what encode() takes of the selected items, wherever the press was.
///
/// **Ownership.** As of TaviListView. Drag objects delete themselves.
///
/// **Re-entry.** A drag runs an event loop of its own inside the handler that started it. Meanwhile items, and the
/// view, may be deleted: nothing more happens then. While one drag goes on no other begins.
///
/// **Threads.** The user interface thread alone.
class TAVIWIDGETS_EXPORT DNDListView : public TaviListView
{
    Q_OBJECT

public:
    /// The rules, each of which is true or false.
    enum DNDAllow {
        DROP_FROM_OTHERS = 0,    ///< A drag from another widget, or application, may be dropped here. True at first.
        DROP_FROM_SELF = 1,      ///< A drag from this view may be dropped here. True at first.
        DRAG_SELF_MOVES = 2,     ///< A move that ended on this view removes the sources. True at first.
        DRAG_OTHERS_MOVES = 3,   ///< A move that ended on another widget of the application does. True at first.
        DRAG_OTHERAPPS_MOVES = 4 ///< A move that ended outside the application does. False at first.
    };
    Q_ENUM(DNDAllow)

    /// An empty view without columns.
    explicit DNDListView(QWidget *parent = nullptr, const char *name = nullptr,
                         Qt::WindowFlags flags = Qt::WindowFlags());
    ~DNDListView() override;

    /// @name What travels
    /// For subclasses.
    /// @{

    /// Whether the data of a drag is understood; false here.
    virtual bool canDecode(const QDropEvent *event);
    /// Makes the drag object of the selected items, with this view as its source; null, as here, if there is nothing
    /// to drag. It is asked for at each move of the pressed mouse until there is one.
    virtual Q3DragObject *encode();
    /// Takes what was dropped and puts it after an item, null for the top. Returns how many things were taken; 0
    /// here.
    virtual int decode(Q3ListViewItem *after, const QDropEvent *event);
    /// A drag has ended. With @a remove its sources are to go. After a move within the view it may be called twice:
    /// by the drop and at the end of the drag, so the sources are to be forgotten at the first call. Nothing here.
    virtual void clearSources(bool remove);
    /// @}

    /// With false, the mouse does nothing to the view, neither select nor drag nor open; only its wheel scrolls
    /// still.
    void setMouseClicksEnabled(bool enabled);
    /// Whether the mouse does something; true at first.
    bool isMouseClicksEnabled() const { return mouse_clicks_enabled; }

    /// @name Rules
    /// @{

    /// Sets a rule; nothing for a number that is none.
    void setAllowed(DNDAllow rule, bool allow);
    /// Whether a rule is true; false for a number that is none.
    bool isAllowed(DNDAllow rule) const;
    /// Whether a drag from @a source may be dropped here: rule DROP_FROM_SELF for this view, else DROP_FROM_OTHERS,
    /// for null, which is another application, too.
    bool isAllowed(const QWidget *source) const;
    /// Prints the name of this view and sprintAllowed() to standard output.
    void printAllowed() const;
    /// The rules as text: name, colon, "true" or "false" of each, separated by blanks or, with @a html, by line
    /// breaks of HTML.
    QString sprintAllowed(bool html) const;
    /// @}

    /// Sets whether things are dropped between items, as at first, or onto them. What is dropped onto an item comes
    /// to decode() with that item.
    void setDropBetweenMode(bool between);
    /// Whether things are dropped between items.
    bool isDropBetweenMode() const { return drop_between; }

    /// Starts a drag of encode() at once, and returns when it is over. Nothing without something to drag, and while a
    /// drag of this view goes on.
    void initDrag();
    /// Forgets that the mouse was pressed, so that no drag begins, and hides the mark.
    void endDrag();

protected:
    /// Remembers where a drag may begin.
    void contentsMousePressEvent(QMouseEvent *event) override;
    /// Ends what the press began.
    void contentsMouseReleaseEvent(QMouseEvent *event) override;
    /// As Q3ListView, unless the mouse does nothing.
    void contentsMouseDoubleClickEvent(QMouseEvent *event) override;
    /// Starts a drag once the mouse was moved far enough; until then as Q3ListView.
    void contentsMouseMoveEvent(QMouseEvent *event) override;
    /// As Q3ListView, unless the mouse does nothing.
    void contentsContextMenuEvent(QContextMenuEvent *event) override;
    /// Accepts what may be dropped.
    void contentsDragEnterEvent(QDragEnterEvent *event) override;
    /// Marks where a drop would go.
    void contentsDragMoveEvent(QDragMoveEvent *event) override;
    /// Hides the mark.
    void contentsDragLeaveEvent(QDragLeaveEvent *event) override;
    /// Takes what may be dropped.
    void contentsDropEvent(QDropEvent *event) override;

private:
    bool takes(const QDropEvent *event);
    QRect rowRect(const Q3ListViewItem *item) const;
    void placeIndicator(Q3ListViewItem *item, int y);
    void placeOnLine(Q3ListViewItem *item, int y);
    bool removesAfterDragTo(const QWidget *target) const;

    static constexpr int rule_count = 5;

    DNDIndicator *indicator;
    bool mouse_pressed = false;
    bool drag_started = false; // since the mouse was pressed
    QPoint press_position;     // in contents coordinates
    bool drop_above = false;   // where the mark was shown last
    bool drop_between = true;
    bool allowed[rule_count] = {true, true, true, true, false};
    bool mouse_clicks_enabled = true;
    bool dragging = false; // the loop of a drag runs
};

#endif
