// SPDX-License-Identifier: MIT
#ifndef QT3_Q3WIDGETSTACK_H
#define QT3_Q3WIDGETSTACK_H

#include "qt3/taviqt3_export.h"

#include <QFrame>
#include <QMap>
#include <QPointer>

/// A stack of widgets, of which the one at the top is seen.
///
/// Each widget has a number, by which it can be raised; the stack attaches no meaning to it. A widget that is deleted
/// leaves the stack by itself. To be a child of the stack is not enough: use addWidget().
///
/// @code
/// auto *stack = new Q3WidgetStack(window);
/// stack->addWidget(new QLabel(tr("nothing measured")), 0);
/// stack->addWidget(results, 1);
/// stack->raiseWidget(1);
/// @endcode
class TAVIQT3_EXPORT Q3WidgetStack : public QFrame
{
    Q_OBJECT

public:
    /// An empty stack without a frame.
    explicit Q3WidgetStack(QWidget *parent = nullptr, const char *name = nullptr,
                           Qt::WindowFlags f = Qt::WindowFlags());
    ~Q3WidgetStack() override;

    /// Takes a widget in, hidden, as a child, and returns its number: @a id if that is at least 0; with -1 the next
    /// free one from 0 upwards; with -2, or where the number is taken, a negative one below -1. A widget that is
    /// there already is taken out first. -1 for null.
    int addWidget(QWidget *w, int id = -1);
    /// Takes a widget out and hides it. It is not deleted, and none takes its place.
    void removeWidget(QWidget *w);
    /// The widget of a number, or null.
    QWidget *widget(int id) const;
    /// The number of a widget; -1 for null and for a widget that is not here.
    int id(QWidget *widget) const;
    /// The widget at the top, or null.
    QWidget *visibleWidget() const { return top_; }

    /// Room for the largest widget.
    QSize sizeHint() const override;
    /// Room for the least of every widget.
    QSize minimumSizeHint() const override;

public Q_SLOTS:
    /// Raises the widget of a number to the top; nothing if there is none.
    void raiseWidget(int id);
    /// Raises a widget to the top; one that is not here is taken in.
    void raiseWidget(QWidget *w);

Q_SIGNALS:
    /// The widget of this number is about to be shown. visibleWidget() still tells the one before.
    void aboutToShow(int id);
    /// This widget is about to be shown.
    void aboutToShow(QWidget *widget);

protected:
    /// Gives the widgets the room inside the frame.
    virtual void setChildGeometries();
    /// Calls setChildGeometries().
    void resizeEvent(QResizeEvent *e) override;
    /// A widget's hint, or the frame, may be another.
    bool event(QEvent *e) override;

private:
    void forget(QWidget *w);

    QMap<int, QWidget *> widgets_;
    QPointer<QWidget> top_;
};

#endif
