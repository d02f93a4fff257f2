// SPDX-License-Identifier: MIT
#include "qt3/q3scrollview.h"

#include <QEvent>

void Q3ScrollView::addChild(QWidget *child, int x, int y)
{
    if (!child)
        return;
    if (policy_ == Default)
        policy_ = AutoOne;
    const bool is_new = !children_.contains(child);
    children_.insert(child, QPoint(x, y));
    if (child->parentWidget() != viewport()) {
        const bool hidden = child->testAttribute(Qt::WA_WState_ExplicitShowHide) && child->isHidden();
        child->setParent(viewport());
        if (!hidden)
            child->show();
    }
    if (is_new) {
        child->installEventFilter(this);
        connect(child, &QObject::destroyed, this, [this, child] { children_.remove(child); });
    }
    child->move(contentsToViewport(QPoint(x, y)));
    fitToChild();
}

void Q3ScrollView::moveChild(QWidget *child, int x, int y)
{
    addChild(child, x, y);
}

void Q3ScrollView::removeChild(QWidget *child)
{
    if (!child || children_.remove(child) == 0)
        return;
    child->removeEventFilter(this);
    disconnect(child, &QObject::destroyed, this, nullptr);
    if (policy_ == AutoOne || policy_ == AutoOneFit)
        fitToChild();
}

int Q3ScrollView::childX(QWidget *child)
{
    return children_.value(child).x();
}

int Q3ScrollView::childY(QWidget *child)
{
    return children_.value(child).y();
}

void Q3ScrollView::setResizePolicy(ResizePolicy policy)
{
    policy_ = policy;
    fitToChild();
}

/// Gives the contents the size of the one widget on them, if that is the policy.
void Q3ScrollView::fitToChild()
{
    if ((policy_ != AutoOne && policy_ != AutoOneFit) || children_.size() != 1)
        return;
    QWidget *child = children_.cbegin().key();
    if (policy_ == AutoOneFit) {
        const QSize hint = child->sizeHint();
        const QSize room = viewportSize(hint.width(), hint.height());
        child->resize(hint.expandedTo(room));
    }
    resizeContents(child->width(), child->height());
}

bool Q3ScrollView::eventFilter(QObject *obj, QEvent *e)
{
    if (e->type() == QEvent::Resize || (e->type() == QEvent::LayoutRequest && policy_ == AutoOneFit)) {
        auto *child = qobject_cast<QWidget *>(obj);
        if (child && children_.contains(child))
            fitToChild();
    }
    return QAbstractScrollArea::eventFilter(obj, e);
}

void Q3ScrollView::resizeEvent(QResizeEvent *e)
{
    QAbstractScrollArea::resizeEvent(e);
    updateScrollBars();
    if (policy_ == AutoOneFit)
        fitToChild();
    viewportResizeEvent(e);
}

void Q3ScrollView::viewportResizeEvent(QResizeEvent *) {}
