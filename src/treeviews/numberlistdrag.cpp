// SPDX-License-Identifier: MIT
#include "treeviews/numberlistdrag.h"

#include "qt3/q3dragobject.h"

#include <QDropEvent>
#include <QMimeData>
#include <QWidget>

#include <charconv>

namespace {

QString typeWith(const QByteArray &mime_suffix)
{
    return QString::fromLatin1(NumberListDrag::MIME_NUMBERLIST_DRAG + mime_suffix);
}

} // namespace

const QByteArray NumberListDrag::MIME_NUMBERLIST_DRAG("x-orlo/numberlistdrag");

NumberListDrag::NumberListDrag(const QByteArray &suffix, QWidget *source, const char *name)
    : QDrag(source), mime_suffix(suffix)
{
    setObjectName(QString::fromLatin1(name));
}

NumberListDrag::~NumberListDrag() = default;

void NumberListDrag::setData(std::vector<long> &numbers)
{
    if (numbers.empty())
        return;
    QByteArray text;
    for (const long number : numbers) {
        if (!text.isEmpty())
            text.append(' ');
        text.append(QByteArray::number(qlonglong(number)));
    }
    auto *data = new QMimeData;
    data->setData(typeWith(mime_suffix), text);
    setMimeData(data);
}

Q3StoredDrag *NumberListDrag::toQ3StoredDrag() const
{
    const QString type = typeWith(mime_suffix);
    auto *const drag = new Q3StoredDrag(type.toLatin1().constData(), qobject_cast<QWidget *>(source()),
                                        objectName().toLatin1().constData());
    if (mimeData())
        drag->setEncodedData(mimeData()->data(type));
    return drag;
}

bool NumberListDrag::canDecode(const QDropEvent *event, const QByteArray &mime_suffix)
{
    return event && event->mimeData() && event->mimeData()->hasFormat(typeWith(mime_suffix));
}

bool NumberListDrag::decode(const QDropEvent *event, std::vector<long> &numbers, const QByteArray &mime_suffix)
{
    if (!event || !event->mimeData())
        return false;
    const QByteArray text = event->mimeData()->data(typeWith(mime_suffix));
    if (text.isEmpty())
        return false;
    numbers.clear();
    numbers.reserve(static_cast<std::size_t>(text.count(' ')) + 1);
    const char *const end = text.cend();
    for (const char *at = text.cbegin(); at != end;) {
        if (*at == ' ') {
            ++at;
            continue;
        }
        long number = 0;
        const std::from_chars_result read = std::from_chars(at, end, number);
        if (read.ec != std::errc())
            break;
        numbers.push_back(number);
        at = read.ptr;
    }
    return true;
}
