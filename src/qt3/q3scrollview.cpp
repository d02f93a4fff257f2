// SPDX-License-Identifier: MIT
#include "qt3/q3scrollview.h"

#include <QEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>

#include <algorithm>
#include <cmath>

namespace {

Qt::ScrollBarPolicy policyOf(Q3ScrollView::ScrollBarMode mode)
{
    switch (mode) {
    case Q3ScrollView::AlwaysOff:
        return Qt::ScrollBarAlwaysOff;
    case Q3ScrollView::AlwaysOn:
        return Qt::ScrollBarAlwaysOn;
    case Q3ScrollView::Auto:
        break;
    }
    return Qt::ScrollBarAsNeeded;
}

Q3ScrollView::ScrollBarMode modeOf(Qt::ScrollBarPolicy policy)
{
    switch (policy) {
    case Qt::ScrollBarAlwaysOff:
        return Q3ScrollView::AlwaysOff;
    case Qt::ScrollBarAlwaysOn:
        return Q3ScrollView::AlwaysOn;
    case Qt::ScrollBarAsNeeded:
        break;
    }
    return Q3ScrollView::Auto;
}

/// Where a view of @a length has to begin, if it begins at @a begin, for @a at to be inside by @a margin.
int beginFor(int begin, int length, int at, int margin)
{
    if (2 * margin >= length)
        return at - length / 2;
    if (at - margin < begin)
        return at - margin;
    if (at + margin >= begin + length)
        return at + margin - length + 1;
    return begin;
}

} // namespace

Q3ScrollView::Q3ScrollView(QWidget *parent, const char *name, Qt::WindowFlags f) : QAbstractScrollArea(parent)
{
    setObjectName(QLatin1String(name));
    if (f)
        setWindowFlags(f);
    setFocusPolicy(Qt::StrongFocus);
    connect(horizontalScrollBar(), &QScrollBar::sliderPressed, this, &Q3ScrollView::horizontalSliderPressed);
    connect(horizontalScrollBar(), &QScrollBar::sliderReleased, this, &Q3ScrollView::horizontalSliderReleased);
    connect(verticalScrollBar(), &QScrollBar::sliderPressed, this, &Q3ScrollView::verticalSliderPressed);
    connect(verticalScrollBar(), &QScrollBar::sliderReleased, this, &Q3ScrollView::verticalSliderReleased);
    horizontalScrollBar()->setSingleStep(20);
    verticalScrollBar()->setSingleStep(20);
}

Q3ScrollView::~Q3ScrollView()
{
    // The widgets go later, when there is nothing left that could take note of it.
    for (auto child = children_.cbegin(); child != children_.cend(); ++child)
        disconnect(child.key(), &QObject::destroyed, this, nullptr);
}

void Q3ScrollView::contentsToViewport(int x, int y, int &vx, int &vy) const
{
    vx = x - position_.x();
    vy = y - position_.y();
}

void Q3ScrollView::viewportToContents(int vx, int vy, int &x, int &y) const
{
    x = vx + position_.x();
    y = vy + position_.y();
}

void Q3ScrollView::setVScrollBarMode(ScrollBarMode mode)
{
    setVerticalScrollBarPolicy(policyOf(mode));
    updateScrollBars();
}

Q3ScrollView::ScrollBarMode Q3ScrollView::vScrollBarMode() const
{
    return modeOf(verticalScrollBarPolicy());
}

void Q3ScrollView::setHScrollBarMode(ScrollBarMode mode)
{
    setHorizontalScrollBarPolicy(policyOf(mode));
    updateScrollBars();
}

Q3ScrollView::ScrollBarMode Q3ScrollView::hScrollBarMode() const
{
    return modeOf(horizontalScrollBarPolicy());
}

void Q3ScrollView::setDragAutoScroll(bool b)
{
    drag_auto_scroll_ = b;
    if (!b)
        drag_timer_.stop();
}

void Q3ScrollView::setStaticBackground(bool y)
{
    static_background_ = y;
    viewport()->update();
}

void Q3ScrollView::enableClipper(bool) {}

bool Q3ScrollView::isHorizontalSliderPressed()
{
    return horizontalScrollBar()->isSliderDown();
}

bool Q3ScrollView::isVerticalSliderPressed()
{
    return verticalScrollBar()->isSliderDown();
}

void Q3ScrollView::setMargins(int left, int top, int right, int bottom)
{
    setViewportMargins(left, top, right, bottom);
    updateScrollBars();
}

void Q3ScrollView::setCornerWidget(QWidget *corner)
{
    if (corner == corner_)
        return;
    if (corner_) {
        // The area deletes the widget that it has when another comes; this one may come back.
        corner_->setParent(this);
        corner_->hide();
    }
    corner_ = corner;
    QAbstractScrollArea::setCornerWidget(corner);
    if (corner)
        corner->show();
}

QSize Q3ScrollView::viewportSize(int x, int y) const
{
    QSize room = maximumViewportSize();
    const int across = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
    const auto needed = [](Qt::ScrollBarPolicy policy, int wanted, int there) {
        return policy == Qt::ScrollBarAsNeeded && wanted > there;
    };
    const bool vertical = needed(verticalScrollBarPolicy(), y, room.height());
    if (vertical)
        room.rwidth() -= across;
    if (needed(horizontalScrollBarPolicy(), x, room.width())) {
        room.rheight() -= across;
        if (!vertical && needed(verticalScrollBarPolicy(), y, room.height()))
            room.rwidth() -= across;
    }
    return room.expandedTo(QSize(0, 0));
}

void Q3ScrollView::updateScrollBars()
{
    // What fits is decided by the size that comes of it, not by the size of the moment, which may still have a bar.
    const QSize room = viewportSize(contents_.width(), contents_.height());
    setting_bars_ = true;
    horizontalScrollBar()->setPageStep(room.width());
    verticalScrollBar()->setPageStep(room.height());
    horizontalScrollBar()->setRange(0, std::max(0, contents_.width() - room.width()));
    verticalScrollBar()->setRange(0, std::max(0, contents_.height() - room.height()));
    setting_bars_ = false;
    if (isVisible() && viewport()->size() != room) {
        // The area would show and hide its bars later only, and until then nothing could be brought into sight.
        QEvent layout(QEvent::LayoutRequest);
        QAbstractScrollArea::event(&layout);
    }
    moveTo(barPosition());
}

QPoint Q3ScrollView::barPosition() const
{
    const QScrollBar *across = horizontalScrollBar();
    return QPoint(isRightToLeft() ? across->maximum() - across->value() : across->value(),
                  verticalScrollBar()->value());
}

void Q3ScrollView::moveTo(const QPoint &target)
{
    if (target == position_)
        return;
    const QPointer<Q3ScrollView> self(this);
    Q_EMIT contentsMoving(target.x(), target.y());
    // A slot may have scrolled elsewhere.
    if (!self || target != barPosition() || target == position_)
        return;
    const QPoint by = position_ - target;
    position_ = target;
    if (static_background_) {
        for (auto child = children_.cbegin(); child != children_.cend(); ++child)
            child.key()->move(contentsToViewport(child.value()));
        viewport()->update();
    } else {
        viewport()->scroll(by.x(), by.y());
    }
    contentsMoved();
}

void Q3ScrollView::contentsMoved() {}

void Q3ScrollView::scrollContentsBy(int, int)
{
    if (!setting_bars_)
        moveTo(barPosition());
}

void Q3ScrollView::setContentsPos(int x, int y)
{
    setting_bars_ = true;
    QScrollBar *across = horizontalScrollBar();
    across->setValue(isRightToLeft() ? across->maximum() - x : x);
    verticalScrollBar()->setValue(y);
    setting_bars_ = false;
    moveTo(barPosition());
}

void Q3ScrollView::scrollBy(int dx, int dy)
{
    setContentsPos(std::max(0, contentsX() + dx), std::max(0, contentsY() + dy));
}

void Q3ScrollView::resizeContents(int w, int h)
{
    if (policy_ == Default)
        policy_ = Manual;
    const QSize size(std::max(0, w), std::max(0, h));
    if (size == contents_)
        return;
    // What was outside and is inside now, or the other way about, looks different.
    const QRect before = QRect(QPoint(0, 0), contents_).translated(-position_);
    contents_ = size;
    updateScrollBars();
    const QRect after = QRect(QPoint(0, 0), contents_).translated(-position_);
    viewport()->update((QRegion(before) ^ QRegion(after)) & viewport()->rect());
}

void Q3ScrollView::ensureVisible(int x, int y)
{
    ensureVisible(x, y, 50, 50);
}

void Q3ScrollView::ensureVisible(int x, int y, int xmargin, int ymargin)
{
    setContentsPos(std::max(0, beginFor(contentsX(), visibleWidth(), x, xmargin)),
                   std::max(0, beginFor(contentsY(), visibleHeight(), y, ymargin)));
}

void Q3ScrollView::center(int x, int y)
{
    ensureVisible(x, y, visibleWidth(), visibleHeight());
}

void Q3ScrollView::center(int x, int y, float xmargin, float ymargin)
{
    const auto pixels = [](float fraction, int length) {
        return static_cast<int>(std::lround(fraction * static_cast<float>(length) / 2.0F));
    };
    ensureVisible(x, y, pixels(xmargin, visibleWidth()), pixels(ymargin, visibleHeight()));
}

void Q3ScrollView::repaintContents(int x, int y, int w, int h, bool erase)
{
    repaintContents(QRect(x, y, w, h), erase);
}

void Q3ScrollView::repaintContents(const QRect &r, bool)
{
    const QRect visible = r.translated(-position_) & viewport()->rect();
    if (!visible.isEmpty())
        viewport()->repaint(visible);
}

void Q3ScrollView::repaintContents(bool)
{
    viewport()->repaint();
}

void Q3ScrollView::updateContents(int x, int y, int w, int h)
{
    updateContents(QRect(x, y, w, h));
}

void Q3ScrollView::updateContents(const QRect &r)
{
    const QRect visible = r.translated(-position_) & viewport()->rect();
    if (!visible.isEmpty())
        viewport()->update(visible);
}

void Q3ScrollView::updateContents()
{
    viewport()->update();
}

QSize Q3ScrollView::sizeHint() const
{
    const int frame = 2 * frameWidth();
    const QMargins margins = viewportMargins();
    const QSize all(contents_.width() + frame + margins.left() + margins.right(),
                    contents_.height() + frame + margins.top() + margins.bottom());
    const int row = std::max(10, fontMetrics().height());
    return all.expandedTo(QSize(12 * row, 8 * row)).boundedTo(QSize(36 * row, 24 * row));
}

QSize Q3ScrollView::minimumSizeHint() const
{
    return QAbstractScrollArea::minimumSizeHint();
}

void Q3ScrollView::changeEvent(QEvent *e)
{
    QAbstractScrollArea::changeEvent(e);
    if (e->type() == QEvent::LayoutDirectionChange || e->type() == QEvent::StyleChange)
        updateScrollBars();
}
