// SPDX-License-Identifier: MIT
#include "qt3/q3widgetstack.h"

#include <QEvent>

Q3WidgetStack::Q3WidgetStack(QWidget *parent, const char *name, Qt::WindowFlags f) : QFrame(parent, f)
{
    setObjectName(QLatin1String(name));
}

Q3WidgetStack::~Q3WidgetStack()
{
    for (QWidget *widget : qAsConst(widgets_))
        disconnect(widget, &QObject::destroyed, this, nullptr);
}

int Q3WidgetStack::addWidget(QWidget *w, int id)
{
    if (!w || w == this)
        return -1;
    removeWidget(w);
    if (id == -1) {
        id = 0;
        while (widgets_.contains(id))
            ++id;
    } else if (id < 0 || widgets_.contains(id)) {
        id = -2;
        while (widgets_.contains(id))
            --id;
    }
    widgets_.insert(id, w);
    if (w->parentWidget() != this)
        w->setParent(this);
    w->hide();
    connect(w, &QObject::destroyed, this, [this, w] { forget(w); });
    setChildGeometries();
    updateGeometry();
    return id;
}

void Q3WidgetStack::forget(QWidget *w)
{
    const int number = id(w);
    if (number != -1)
        widgets_.remove(number);
}

void Q3WidgetStack::removeWidget(QWidget *w)
{
    if (!w || id(w) == -1)
        return;
    disconnect(w, &QObject::destroyed, this, nullptr);
    forget(w);
    if (w == top_)
        top_.clear();
    w->hide();
    updateGeometry();
}

QWidget *Q3WidgetStack::widget(int id) const
{
    return widgets_.value(id);
}

int Q3WidgetStack::id(QWidget *widget) const
{
    return widget ? widgets_.key(widget, -1) : -1;
}

void Q3WidgetStack::raiseWidget(int id)
{
    if (QWidget *found = widget(id))
        raiseWidget(found);
}

void Q3WidgetStack::raiseWidget(QWidget *w)
{
    if (!w || w == top_)
        return;
    int number = id(w);
    if (number == -1)
        number = addWidget(w);
    const QPointer<Q3WidgetStack> self(this);
    const QPointer<QWidget> alive(w);
    Q_EMIT aboutToShow(number);
    if (self && alive)
        Q_EMIT aboutToShow(w);
    if (!self || !alive || id(w) == -1)
        return;
    const QPointer<QWidget> before(top_);
    // The focus stays in the stack if it was there.
    const bool had_focus = before && before->isAncestorOf(focusWidget() ? focusWidget() : this) && focusWidget()
                           && focusWidget()->hasFocus();
    top_ = w;
    setChildGeometries();
    w->show();
    w->raise();
    if (before)
        before->hide();
    if (had_focus) {
        QWidget *to = w->focusWidget() ? w->focusWidget() : w;
        to->setFocus(Qt::OtherFocusReason);
    }
}

void Q3WidgetStack::setChildGeometries()
{
    for (QWidget *widget : qAsConst(widgets_))
        widget->setGeometry(contentsRect());
}

void Q3WidgetStack::resizeEvent(QResizeEvent *e)
{
    QFrame::resizeEvent(e);
    setChildGeometries();
}

bool Q3WidgetStack::event(QEvent *e)
{
    if (e->type() == QEvent::LayoutRequest || e->type() == QEvent::ContentsRectChange) {
        setChildGeometries();
        updateGeometry();
    }
    return QFrame::event(e);
}

QSize Q3WidgetStack::sizeHint() const
{
    QSize size(0, 0);
    for (const QWidget *widget : widgets_)
        size = size.expandedTo(widget->sizeHint()).expandedTo(widget->minimumSize());
    return size + QSize(2 * frameWidth(), 2 * frameWidth());
}

QSize Q3WidgetStack::minimumSizeHint() const
{
    QSize size(0, 0);
    for (const QWidget *widget : widgets_)
        size = size.expandedTo(widget->minimumSizeHint()).expandedTo(widget->minimumSize());
    return size + QSize(2 * frameWidth(), 2 * frameWidth());
}
