// SPDX-License-Identifier: MIT
#include "qt3/q3dragobject.h"

#include <QDrag>
#include <QMimeData>
#include <QWidget>

namespace {

QPointer<QWidget> &lastTarget()
{
    static QPointer<QWidget> target;
    return target;
}

} // namespace

QMimeSource::~QMimeSource() = default;

bool QMimeSource::provides(const char *mimeType) const
{
    for (int i = 0; const char *offered = format(i); ++i) {
        if (qstricmp(mimeType, offered) == 0)
            return true;
    }
    return false;
}

Q3DragObject::Q3DragObject(QWidget *dragSource, const char *name) : QObject(dragSource)
{
    setObjectName(QLatin1String(name));
}

Q3DragObject::~Q3DragObject()
{
    // Its loop would go on until a key ends it.
    if (running_)
        QDrag::cancel();
}

bool Q3DragObject::drag()
{
    return drag(DragDefault);
}

bool Q3DragObject::dragMove()
{
    return drag(DragMove);
}

void Q3DragObject::dragCopy()
{
    drag(DragCopy);
}

void Q3DragObject::dragLink()
{
    drag(DragLink);
}

void Q3DragObject::setPixmap(QPixmap pm, const QPoint &hotspot)
{
    pixmap_ = pm;
    hotspot_ = hotspot;
}

void Q3DragObject::setPixmap(QPixmap pm)
{
    const int ratio = qMax(1, qRound(pm.devicePixelRatioF()));
    setPixmap(pm, QPoint(pm.width() / ratio / 2, -pm.height() / ratio / 2));
}

QWidget *Q3DragObject::source()
{
    return qobject_cast<QWidget *>(parent());
}

QWidget *Q3DragObject::target()
{
    return lastTarget();
}

QMimeData *Q3DragObject::mimeData() const
{
    auto *data = new QMimeData;
    for (int i = 0; const char *offered = format(i); ++i) {
        const QByteArray encoded = encodedData(offered);
        if (!encoded.isNull())
            data->setData(QString::fromLatin1(offered), encoded);
    }
    return data;
}

bool Q3DragObject::drag(DragMode mode)
{
    Qt::DropActions possible = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;
    Qt::DropAction usual = Qt::IgnoreAction;
    switch (mode) {
    case DragDefault:
        break;
    case DragCopy:
        possible = usual = Qt::CopyAction;
        break;
    case DragMove:
        possible = usual = Qt::MoveAction;
        break;
    case DragLink:
        possible = usual = Qt::LinkAction;
        break;
    case DragCopyOrMove:
        possible = Qt::CopyAction | Qt::MoveAction;
        usual = Qt::CopyAction;
        break;
    }
    lastTarget().clear();
    const QPointer<QDrag> alive = new QDrag(parent() ? parent() : this);
    alive->setMimeData(mimeData());
    if (!pixmap_.isNull()) {
        alive->setPixmap(pixmap_);
        alive->setHotSpot(hotspot_);
    }
    const QPointer<Q3DragObject> self(this);
    running_ = alive;
    // The drag itself does not notice when its target goes.
    QPointer<QObject> target;
    connect(alive.data(), &QDrag::targetChanged, alive.data(), [&target](QObject *now) { target = now; });
    const Qt::DropAction done = alive->exec(possible, usual);
    lastTarget() = alive ? qobject_cast<QWidget *>(target.data()) : nullptr;
    if (alive)
        alive->disconnect(alive); // it outlives this call
    if (self) {
        running_ = nullptr;
        deleteLater();
    }
    return done == Qt::MoveAction;
}

Q3StoredDrag::Q3StoredDrag(const char *mimeType, QWidget *dragSource, const char *name)
    : Q3DragObject(dragSource, name), format_(mimeType)
{}

Q3StoredDrag::~Q3StoredDrag() = default;

void Q3StoredDrag::setEncodedData(const QByteArray &data)
{
    data_ = data;
}

const char *Q3StoredDrag::format(int i) const
{
    return i == 0 && !format_.isEmpty() ? format_.constData() : nullptr;
}

QByteArray Q3StoredDrag::encodedData(const char *format) const
{
    return qstricmp(format, format_.constData()) == 0 ? data_ : QByteArray();
}
