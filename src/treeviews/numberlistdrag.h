// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_NUMBERLISTDRAG_H
#define TREEVIEWS_NUMBERLISTDRAG_H

#include "foundation/taviwidgets_export.h"

#include <QByteArray>
#include <QDrag>

#include <vector>

class QDropEvent;
class QWidget;
class Q3StoredDrag;

/// A drag of numbers, such as those of the tabs or rows that are dragged.
///
/// The data's type is "x-orlo/numberlistdrag" with a suffix, so that each user has a type of its own. The data is the
/// numbers in decimal digits with one blank between them and nothing at the end: 3, 1 and 12 are the six bytes
/// "3 1 12".
///
/// @code
/// auto *drag = new NumberListDrag("-swatches", this, "swatch drag");
/// drag->setData(rows);
/// drag->exec(Qt::MoveAction);
/// ...
/// std::vector<long> rows;
/// if (NumberListDrag::decode(event, rows, "-swatches"))
///     moveRows(rows);
/// @endcode
///
/// **Ownership, threads.** As of QDrag: it is made for one drag on the heap, and Qt deletes it after that.
class TAVIWIDGETS_EXPORT NumberListDrag : public QDrag
{
    Q_OBJECT

public:
    /// What all types of such drags begin with.
    static const QByteArray MIME_NUMBERLIST_DRAG;

    /// A drag from @a source without data. @a name is the object name, or null.
    NumberListDrag(const QByteArray &mime_suffix, QWidget *source, const char *name);
    ~NumberListDrag() override;

    /// Makes @a numbers what is dragged. An empty list changes nothing.
    void setData(std::vector<long> &numbers);
    /// A drag of the Qt 3 era with the type, the source, the name and the data of this one, which the caller starts
    /// and this one does not know. Without data it has none either. It belongs to its source, or without one to the
    /// caller, until it is started.
    Q3StoredDrag *toQ3StoredDrag() const;

    /// Whether @a event brings numbers under this suffix. False for null and for an event without data.
    static bool canDecode(const QDropEvent *event, const QByteArray &mime_suffix);
    /// Replaces @a numbers by those that @a event brings under this suffix, up to the first thing that is no number.
    /// False, with @a numbers left alone, for null and for an event without data or without such bytes.
    static bool decode(const QDropEvent *event, std::vector<long> &numbers, const QByteArray &mime_suffix);

private:
    const QByteArray mime_suffix;
};

#endif
