// SPDX-License-Identifier: MIT
#include "foundation/taviwidgetutil.h"

#include "foundation/splitterwidths_p.h"
#include "foundation/taviscreens.h"
#include "foundation/windowgeometry_p.h"

#include <QApplication>
#include <QDialog>
#include <QPixmap>
#include <QPointer>
#include <QSplitter>

#include <algorithm>

bool TaviWidgetUtil::tooltip_enabled = true;

namespace {

/// Where the screen of a hidden window matters, the window must be on the display: until then the window manager may
/// still choose another place for it. A dialog's place is set before it is shown.
void makeKnownToWindowSystem(QWidget *widget)
{
    if (!widget->isVisible() && !qobject_cast<QDialog *>(widget))
        widget->setVisible(true);
}

} // namespace

QPixmap *TaviWidgetUtil::getMessageBoxIconPixmap(QMessageBox::Icon icon)
{
    switch (icon) {
    case QMessageBox::Question:
        return new QPixmap(QStringLiteral(":tavi/tavierror_question.png"));
    case QMessageBox::Information:
        return new QPixmap(QStringLiteral(":tavi/tavierror_information.png"));
    case QMessageBox::Warning:
        return new QPixmap(QStringLiteral(":tavi/tavierror_warning.png"));
    case QMessageBox::Critical:
        return new QPixmap(QStringLiteral(":tavi/tavierror_critical.png"));
    case QMessageBox::NoIcon:
        break;
    }
    return nullptr;
}

void TaviWidgetUtil::setBackgroundProperties(QWidget *widget, QColor colour, double alpha)
{
    if (!widget)
        return;
    alpha = qBound(0.0, alpha, 1.0);
    if (widget->parent()) {
        colour.setAlphaF(alpha);
    } else {
        colour.setAlphaF(1.0);
        widget->setWindowOpacity(alpha);
    }
    QPalette palette;
    palette.setColor(widget->backgroundRole(), colour);
    widget->setPalette(palette);
    widget->setAutoFillBackground(true);
}

bool TaviWidgetUtil::moveToScreen(QWidget *widget, QWidget *parent)
{
    if (!widget || !parent || TaviScreens::count() < 2)
        return false;
    // Showing the parent runs what the application does then, which may be to delete the widget.
    const QPointer<QWidget> alive(widget);
    makeKnownToWindowSystem(parent);
    return alive && moveToScreen(widget, TaviScreens::screenNumber(parent));
}

bool TaviWidgetUtil::moveToScreen(QWidget *widget, int screen)
{
    const int screens = TaviScreens::count();
    if (!widget || screens < 2 || screen < 0 || screen >= screens)
        return false;
    makeKnownToWindowSystem(widget);
    const int current = TaviScreens::screenNumber(widget);
    if (current == screen)
        return false;
    widget->move(topLeftOnOtherScreen(widget->pos(), TaviScreens::availableGeometry(current),
                                      TaviScreens::availableGeometry(screen)));
    return true;
}

void TaviWidgetUtil::centerPlaceWidget(QWidget *widget, const QWidget *parent)
{
    if (!widget)
        return;
    const QRect available = TaviScreens::availableGeometry(TaviScreens::screenNumber(widget));
    const QRect area = parent ? QRect(parent->pos(), parent->frameSize()) : available;
    widget->move(centredTopLeft(area, widget->frameSize(), available));
}

QWidget *TaviWidgetUtil::getTopParentWidget(QWidget *widget)
{
    // Ends even in a ring, where it would come back to where it began.
    QWidget *top = widget;
    while (top && top->parentWidget() && top->parentWidget() != widget)
        top = top->parentWidget();
    return top;
}

int TaviWidgetUtil::getTopLevelChildren(QWidget *parent, std::list<QWidget *> &out, bool visibleOnly,
                                        QWidget **active)
{
    if (!parent)
        return 0;
    int found = 0;
    for (QObject *object : parent->children()) {
        if (!object->isWidgetType())
            continue;
        auto *child = static_cast<QWidget *>(object);
        if (child->isWindow() && (!visibleOnly || child->isVisible())) {
            out.push_back(child);
            ++found;
            if (active && child == QApplication::activeWindow())
                *active = child;
        }
        found += getTopLevelChildren(child, out, visibleOnly, active);
    }
    return found;
}

QString TaviWidgetUtil::getSplitterWidthsString(QSplitter *splitter)
{
    return splitter ? splitterWidthsText(splitter->sizes()) : QString();
}

void TaviWidgetUtil::applySplitterWidthsString(QSplitter *splitter, const QString &text)
{
    if (!splitter || text.isEmpty())
        return;
    // Asked of the splitter: while its window is hidden, every pane is invisible, and yet not hidden.
    QVector<bool> hidden;
    for (int i = 0; i < splitter->count(); ++i) {
        const QWidget *pane = splitter->widget(i);
        hidden.append(pane && !pane->isVisibleTo(splitter));
    }
    QList<int> widths = splitterWidthsOfText(text, hidden);
    // No widget is wider, and the splitter adds them up in an int.
    for (int &width : widths)
        width = std::min(width, QWIDGETSIZE_MAX);
    splitter->setSizes(widths);
}
