// SPDX-License-Identifier: MIT
#include "tests/support/helddrag.h"

#include <QCursor>
#include <QDrag>
#include <QMimeData>
#include <QTimer>
#include <QWidget>

bool holdDrag(QWidget *source, const QString &type, const QByteArray &data, const std::function<void()> &meanwhile)
{
    // Away from the windows, which else get events of their own.
    QCursor::setPos(2, 2);
    auto *drag = new QDrag(source);
    auto *dragged = new QMimeData;
    dragged->setData(type, data);
    drag->setMimeData(dragged);
    bool held = false;
    QObject timing;
    QTimer::singleShot(0, &timing, [&] {
        held = true;
        meanwhile();
        QDrag::cancel();
    });
    drag->exec(Qt::MoveAction, Qt::MoveAction);
    return held;
}
