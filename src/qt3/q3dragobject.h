// SPDX-License-Identifier: MIT
#ifndef QT3_Q3DRAGOBJECT_H
#define QT3_Q3DRAGOBJECT_H

#include "qt3/taviqt3_export.h"

#include <QByteArray>
#include <QObject>
#include <QPixmap>
#include <QPoint>
#include <QPointer>

class QDrag;
class QMimeData;
class QWidget;

/// Something that offers data in one or several formats, such as a drag.
class TAVIQT3_EXPORT QMimeSource
{
public:
    QMimeSource() = default;
    virtual ~QMimeSource();
    QMimeSource(const QMimeSource &) = delete;
    QMimeSource &operator=(const QMimeSource &) = delete;

    /// The MIME type of format number @a i, the best first; null behind the last.
    virtual const char *format(int i = 0) const = 0;
    /// Whether a format is among those offered, in whatever case it is written.
    virtual bool provides(const char *mimeType) const;
    /// The data in a format; empty if it is not offered.
    virtual QByteArray encodedData(const char *mimeType) const = 0;
};

/// Data that is dragged from one widget to another, or to another application.
///
/// Make one on the heap, start the drag, and do not touch it afterwards: it is deleted when the drag is over. Data is
/// given by a class derived from this, such as Q3StoredDrag.
///
/// @code
/// auto *drag = new Q3StoredDrag("text/plain", this);
/// drag->setEncodedData("Magenta");
/// if (drag->dragMove() && Q3DragObject::target() != this)
///     removeDragged();
/// @endcode
///
/// A drag runs in an event loop of its own: anything may have happened when it returns, and the caller may be gone.
class TAVIQT3_EXPORT Q3DragObject : public QObject, public QMimeSource
{
    Q_OBJECT

public:
    /// What a drop does with the data.
    enum DragMode {
        DragDefault,   ///< What the user and the target choose.
        DragCopy,      ///< It is copied.
        DragMove,      ///< It is moved.
        DragLink,      ///< It is linked to.
        DragCopyOrMove ///< It is copied, or moved if the user holds Shift.
    };
    Q_ENUM(DragMode)

    /// A drag from @a dragSource, which is its parent: it goes with it.
    explicit Q3DragObject(QWidget *dragSource = nullptr, const char *name = nullptr);
    /// Takes the drag with it if that is still going on.
    ~Q3DragObject() override;

    /// Drags in DragDefault mode. True if the caller should remove what was dragged.
    bool drag();
    /// Drags to move. True if the drop was a move: the caller should remove what was dragged.
    bool dragMove();
    /// Drags to copy.
    void dragCopy();
    /// Drags to link.
    void dragLink();

    /// Sets what is shown at the cursor, and which point of it is under the cursor.
    virtual void setPixmap(QPixmap pm, const QPoint &hotspot);
    /// The same with the middle of the upper edge, and a little above it, under the cursor.
    virtual void setPixmap(QPixmap pm);
    /// What is shown at the cursor; null if nothing was set.
    QPixmap pixmap() const { return pixmap_; }
    /// Which point of the pixmap is under the cursor.
    QPoint pixmapHotSpot() const { return hotspot_; }
    /// The widget that the drag comes from; null if there is none or it is gone.
    QWidget *source();
    /// The widget of this application that took the last drop; null if another application did, or none.
    static QWidget *target();

protected:
    /// Starts the drag and returns when it is over. True if it was a move. The object deletes itself then.
    virtual bool drag(DragMode mode);

private:
    QMimeData *mimeData() const;

    QPixmap pixmap_;
    QPoint hotspot_;
    QPointer<QDrag> running_;
};

/// A drag of data in one format.
class TAVIQT3_EXPORT Q3StoredDrag : public Q3DragObject
{
    Q_OBJECT

public:
    /// A drag of the given type, without data.
    explicit Q3StoredDrag(const char *mimeType, QWidget *dragSource = nullptr, const char *name = nullptr);
    ~Q3StoredDrag() override;

    /// Sets the data. Without any, nothing can be dropped.
    virtual void setEncodedData(const QByteArray &data);
    /// The type for 0, null for any other number.
    const char *format(int i) const override;
    /// The data if @a format is the type, else nothing.
    QByteArray encodedData(const char *format) const override;

private:
    const QByteArray format_;
    QByteArray data_;
};

#endif
