// SPDX-License-Identifier: MIT
#ifndef QT3_Q3SCROLLVIEW_H
#define QT3_Q3SCROLLVIEW_H

#include "qt3/taviqt3_export.h"

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QHash>
#include <QPointer>

/// A view of a part of an area that may be far larger than any window, with scroll bars as they are needed.
///
/// What is shown is drawn by drawContents(), in **contents coordinates**: (0, 0) is the upper left of the whole area.
/// resizeContents() sets its size. Input arrives translated to contents coordinates, in the operations whose names
/// begin with "contents". Widgets may be put on the area with addChild(); they scroll along.
///
/// @code
/// class Sheet : public Q3ScrollView
/// {
/// public:
///     Sheet() { resizeContents(40000, 50000); }
///
/// protected:
///     void drawContents(QPainter *p, int clipx, int clipy, int clipw, int cliph) override
///     {
///         p->fillRect(QRect(clipx, clipy, clipw, cliph) & QRect(0, 0, 40000, 50000), palette().base());
///     }
/// };
/// @endcode
///
/// Where the layout runs from right to left, contents coordinates still grow to the right; the view begins at the
/// right end.
///
/// **Ownership.** Widgets added, and corner widgets, belong to the view.
class TAVIQT3_EXPORT Q3ScrollView : public QAbstractScrollArea
{
    Q_OBJECT
    /// Who decides on the size of the contents.
    Q_PROPERTY(ResizePolicy resizePolicy READ resizePolicy WRITE setResizePolicy)
    /// When the vertical scroll bar is shown.
    Q_PROPERTY(ScrollBarMode vScrollBarMode READ vScrollBarMode WRITE setVScrollBarMode)
    /// When the horizontal scroll bar is shown.
    Q_PROPERTY(ScrollBarMode hScrollBarMode READ hScrollBarMode WRITE setHScrollBarMode)
    /// The width that is visible.
    Q_PROPERTY(int visibleWidth READ visibleWidth)
    /// The height that is visible.
    Q_PROPERTY(int visibleHeight READ visibleHeight)
    /// The width of the whole area.
    Q_PROPERTY(int contentsWidth READ contentsWidth)
    /// The height of the whole area.
    Q_PROPERTY(int contentsHeight READ contentsHeight)
    /// The x of the contents at the left edge.
    Q_PROPERTY(int contentsX READ contentsX)
    /// The y of the contents at the top edge.
    Q_PROPERTY(int contentsY READ contentsY)
    /// Whether a drag near an edge scrolls.
    Q_PROPERTY(bool dragAutoScroll READ dragAutoScroll WRITE setDragAutoScroll)

public:
    /// Who decides on the size of the contents.
    enum ResizePolicy {
        Default,   ///< Manual after resizeContents(), AutoOne after the first addChild(); the default.
        Manual,    ///< resizeContents() does.
        AutoOne,   ///< The one widget that was added.
        AutoOneFit ///< Its size hint, but it fills the view at least.
    };
    Q_ENUM(ResizePolicy)
    /// When a scroll bar is shown.
    enum ScrollBarMode {
        Auto,      ///< When the contents do not fit; the default.
        AlwaysOff, ///< Never.
        AlwaysOn   ///< Always.
    };
    Q_ENUM(ScrollBarMode)

    /// An empty view. @a f are the flags of the widget.
    explicit Q3ScrollView(QWidget *parent = nullptr, const char *name = nullptr,
                          Qt::WindowFlags f = Qt::WindowFlags());
    ~Q3ScrollView() override;

    /// @name Place and size
    /// @{

    /// The width of the whole area.
    int contentsWidth() const { return contents_.width(); }
    /// The height of the whole area.
    int contentsHeight() const { return contents_.height(); }
    /// The x of the contents at the left edge.
    int contentsX() const { return position_.x(); }
    /// The y of the contents at the top edge.
    int contentsY() const { return position_.y(); }
    /// The width that is visible.
    int visibleWidth() const { return viewport()->width(); }
    /// The height that is visible.
    int visibleHeight() const { return viewport()->height(); }
    /// The size that the viewport has if the contents are @a x wide and @a y high.
    QSize viewportSize(int x, int y) const;
    /// A point of the contents in the coordinates of viewport().
    QPoint contentsToViewport(const QPoint &p) const { return p - position_; }
    /// The same for two numbers.
    void contentsToViewport(int x, int y, int &vx, int &vy) const;
    /// A point of the viewport in contents coordinates.
    QPoint viewportToContents(const QPoint &vp) const { return vp + position_; }
    /// The same for two numbers.
    void viewportToContents(int vx, int vy, int &x, int &y) const;
    /// @}

    /// @name Behaviour
    /// @{

    /// Who decides on the size of the contents.
    ResizePolicy resizePolicy() const { return policy_; }
    /// Sets who decides.
    virtual void setResizePolicy(ResizePolicy policy);
    /// When the vertical scroll bar is shown.
    ScrollBarMode vScrollBarMode() const;
    /// Sets when the vertical scroll bar is shown.
    virtual void setVScrollBarMode(ScrollBarMode mode);
    /// When the horizontal scroll bar is shown.
    ScrollBarMode hScrollBarMode() const;
    /// Sets when the horizontal scroll bar is shown.
    virtual void setHScrollBarMode(ScrollBarMode mode);
    /// Whether a drag that comes near an edge scrolls, where the viewport takes drops. True at first.
    bool dragAutoScroll() const { return drag_auto_scroll_; }
    /// Sets whether it does.
    virtual void setDragAutoScroll(bool b);
    /// Whether the background stays in place when the contents scroll.
    bool hasStaticBackground() const { return static_background_; }
    /// With @a y, each scroll repaints all that is visible. False at first.
    void setStaticBackground(bool y);
    /// Does nothing: widgets in any number scroll at once. Kept for the sake of callers.
    void enableClipper(bool y);
    /// What the contents are clipped to: viewport().
    QWidget *clipper() const { return viewport(); }
    /// Whether the user holds the handle of the horizontal scroll bar.
    bool isHorizontalSliderPressed();
    /// Whether the user holds the handle of the vertical scroll bar.
    bool isVerticalSliderPressed();
    /// @}

    /// @name Margins
    /// @{

    /// Keeps room between frame and viewport, for instance for headings. All 0 at first.
    virtual void setMargins(int left, int top, int right, int bottom);
    /// The margin on the left.
    int leftMargin() const { return viewportMargins().left(); }
    /// The margin above.
    int topMargin() const { return viewportMargins().top(); }
    /// The margin on the right.
    int rightMargin() const { return viewportMargins().right(); }
    /// The margin below.
    int bottomMargin() const { return viewportMargins().bottom(); }
    /// @}

    /// @name Widgets on the contents
    /// @{

    /// Puts a widget at (x, y) of the contents, as a child of viewport(). One that is there already is moved.
    virtual void addChild(QWidget *child, int x = 0, int y = 0);
    /// The same as addChild().
    virtual void moveChild(QWidget *child, int x, int y);
    /// Takes a widget off the contents; it stays the viewport's child. A widget that is deleted goes by itself.
    void removeChild(QWidget *child);
    /// The x of an added widget, 0 for any other.
    int childX(QWidget *child);
    /// The y of an added widget, 0 for any other.
    int childY(QWidget *child);
    /// Puts a widget, owned by the view from then on, in the corner between the scroll bars; null for none. The one
    /// before is hidden.
    virtual void setCornerWidget(QWidget *corner);
    /// The widget in the corner, or null.
    QWidget *cornerWidget() const { return corner_; }
    /// @}

    /// @name Painting
    /// @{

    /// Repaints a rectangle of the contents at once. @a erase changes nothing: the background is always cleared.
    void repaintContents(int x, int y, int w, int h, bool erase = true);
    /// The same with a rectangle.
    void repaintContents(const QRect &r, bool erase = true);
    /// Repaints all that is visible at once.
    void repaintContents(bool erase = true);
    /// Repaints a rectangle of the contents soon; nothing if it is not visible.
    void updateContents(int x, int y, int w, int h);
    /// The same with a rectangle.
    void updateContents(const QRect &r);
    /// Repaints all that is visible soon.
    void updateContents();
    /// @}

    /// A size that shows the contents, within reason.
    QSize sizeHint() const override;
    /// The least that makes sense.
    QSize minimumSizeHint() const override;

public Q_SLOTS:
    /// Sets the size of the contents, none of it negative.
    virtual void resizeContents(int w, int h);
    /// Scrolls by @a dx to the right and @a dy downwards: the contents move to the left and upwards.
    void scrollBy(int dx, int dy);
    /// Scrolls so that (x, y) is in the upper left corner, as far as there are contents.
    virtual void setContentsPos(int x, int y);
    /// Scrolls so that (x, y) is visible with 50 pixels around it, in the middle where there is no room for that.
    void ensureVisible(int x, int y);
    /// The same with other margins.
    void ensureVisible(int x, int y, int xmargin, int ymargin);
    /// Scrolls so that (x, y) is in the middle.
    void center(int x, int y);
    /// Scrolls so that (x, y) is visible with margins that are fractions of half the view: 0 lets the point be at the
    /// edge, 1 wants it in the middle.
    void center(int x, int y, float xmargin, float ymargin);
    /// Brings the scroll bars up to date with contents and viewport.
    void updateScrollBars();

Q_SIGNALS:
    /// The contents are about to move so that (x, y) is in the upper left corner. contentsX() and contentsY() still
    /// tell the position before.
    void contentsMoving(int x, int y);
    /// The user has taken the handle of the horizontal scroll bar.
    void horizontalSliderPressed();
    /// The user has let go the handle of the horizontal scroll bar.
    void horizontalSliderReleased();
    /// The user has taken the handle of the vertical scroll bar.
    void verticalSliderPressed();
    /// The user has let go the handle of the vertical scroll bar.
    void verticalSliderReleased();

protected:
    /// @name For the class that draws
    /// @{

    /// Draws a rectangle of the contents. The painter works in contents coordinates and is clipped. Nothing here.
    virtual void drawContents(QPainter *p, int clipx, int clipy, int clipw, int cliph);
    /// Draws a rectangle of the contents with a painter whose origin is the contents' point (offsetx, offsety). Here
    /// it moves the painter and calls drawContents().
    virtual void drawContentsOffset(QPainter *p, int offsetx, int offsety, int clipx, int clipy, int clipw,
                                    int cliph);
    /// Paints the viewport: calls drawContentsOffset() for what is to be painted.
    virtual void viewportPaintEvent(QPaintEvent *pe);
    /// The contents have moved. Nothing here. Unlike contentsMoving(), it is called when signals are blocked, too.
    virtual void contentsMoved();
    /// The viewport has another size. Nothing here.
    virtual void viewportResizeEvent(QResizeEvent *event);
    /// @}

    /// @name Input in contents coordinates
    /// What an override ignores goes on to the widget behind.
    /// @{

    /// A button was pressed. Ignored here.
    virtual void contentsMousePressEvent(QMouseEvent *e);
    /// A button was let go. Ignored here.
    virtual void contentsMouseReleaseEvent(QMouseEvent *e);
    /// A second press at the same place. Here it is a press like the first.
    virtual void contentsMouseDoubleClickEvent(QMouseEvent *e);
    /// The mouse was moved. Ignored here.
    virtual void contentsMouseMoveEvent(QMouseEvent *e);
    /// A drag has come. Ignored here.
    virtual void contentsDragEnterEvent(QDragEnterEvent *event);
    /// A drag was moved. Ignored here.
    virtual void contentsDragMoveEvent(QDragMoveEvent *event);
    /// A drag has gone. Nothing here.
    virtual void contentsDragLeaveEvent(QDragLeaveEvent *event);
    /// Something was dropped. Ignored here.
    virtual void contentsDropEvent(QDropEvent *event);
    /// The wheel was turned. Ignored here, so that the scroll bars take it.
    virtual void contentsWheelEvent(QWheelEvent *e);
    /// A context menu is asked for. Ignored here.
    virtual void contentsContextMenuEvent(QContextMenuEvent *e);
    /// @}

    /// Takes context menu events that come from its children and its keyboard.
    bool event(QEvent *e) override;
    /// Translates context menu events of the viewport.
    bool viewportEvent(QEvent *e) override;
    /// Calls viewportPaintEvent().
    void paintEvent(QPaintEvent *pe) override;
    /// Calls contentsMousePressEvent().
    void mousePressEvent(QMouseEvent *e) override;
    /// Calls contentsMouseReleaseEvent().
    void mouseReleaseEvent(QMouseEvent *e) override;
    /// Calls contentsMouseDoubleClickEvent().
    void mouseDoubleClickEvent(QMouseEvent *e) override;
    /// Calls contentsMouseMoveEvent().
    void mouseMoveEvent(QMouseEvent *e) override;
    /// Calls contentsDragEnterEvent().
    void dragEnterEvent(QDragEnterEvent *e) override;
    /// Calls contentsDragMoveEvent(), and scrolls near an edge.
    void dragMoveEvent(QDragMoveEvent *e) override;
    /// Calls contentsDragLeaveEvent().
    void dragLeaveEvent(QDragLeaveEvent *e) override;
    /// Calls contentsDropEvent().
    void dropEvent(QDropEvent *e) override;
    /// Calls contentsWheelEvent(), and scrolls if that ignores it.
    void wheelEvent(QWheelEvent *e) override;
    /// A context menu is asked for by a key, or by the mouse on a child of the view that does not want it; the point
    /// is one of the view's. For a key it calls contentsContextMenuEvent().
    void contextMenuEvent(QContextMenuEvent *e) override;
    /// Keeps scroll bars and widgets in order, and calls viewportResizeEvent().
    void resizeEvent(QResizeEvent *e) override;
    /// Direction and style change the scroll bars.
    void changeEvent(QEvent *e) override;
    /// Follows the sizes of the widgets on the contents.
    bool eventFilter(QObject *obj, QEvent *e) override;
    /// Moves the contents.
    void scrollContentsBy(int dx, int dy) override;
    /// Scrolls while a drag is near an edge.
    void timerEvent(QTimerEvent *e) override;

private:
    QPoint barPosition() const;
    void moveTo(const QPoint &target);
    void fitToChild();
    bool sendTranslated(QMouseEvent *e, void (Q3ScrollView::*handler)(QMouseEvent *));
    void scrollNearEdge(const QPoint &viewport_pos);

    QSize contents_ = QSize(0, 0);
    QPoint position_;
    ResizePolicy policy_ = Default;
    QHash<QWidget *, QPoint> children_; ///< The widgets on the contents and where they are.
    QPointer<QWidget> corner_;
    QPoint drag_pos_;
    QBasicTimer drag_timer_;
    bool drag_auto_scroll_ = true;
    bool static_background_ = false;
    bool setting_bars_ = false; ///< The scroll bars are being set, and the contents follow after that.
};

#endif
