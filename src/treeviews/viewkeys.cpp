// SPDX-License-Identifier: MIT
#include "treeviews/viewkeys_p.h"

#include <QKeyEvent>

bool isPrintable(const QString &text)
{
    return !text.isEmpty() && text.at(0).isPrint();
}

bool isViewKey(int key)
{
    switch (key) {
    case Qt::Key_Backspace:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Delete:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Up:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_Plus:
    case Qt::Key_Minus:
    case Qt::Key_Space:
    case Qt::Key_Escape:
    case Qt::Key_F2:
        return true;
    default:
        return false;
    }
}

bool opensSearchWindow(const QKeyEvent *event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    return event->key() == Qt::Key_Question && (modifiers & Qt::ShiftModifier)
           && !(modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
}

bool closesSearchWindow(const QKeyEvent *event)
{
    return event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier;
}
