// SPDX-License-Identifier: MIT
#ifndef FOUNDATION_TAVIDATETIME_H
#define FOUNDATION_TAVIDATETIME_H

#include "foundation/taviwidgets_export.h"

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QTime>

/// A QDateTime that writes itself as the user's locale does: short date and short time, as in "20/11/2026, 16:05".
///
/// @code
/// label->setText(TaviDateTime::localeDateString(profile.created)); // seconds since 1970
/// @endcode
///
/// It adds no fields and may be sliced to a QDateTime at will.
///
/// **Locale.** That of the environment for times: the first of `LC_ALL`, `LC_TIME` and `LANG` that is set. It is
/// looked up at the first text and kept for the life of the process; neither a later change of the environment nor
/// QLocale::setDefault() changes the texts. The texts come from ICU, which knows how each locale puts date and time
/// together, and its calendar and digits. A name that ICU does not know, or none, gives texts of no language.
///
/// **Time zone.** Texts show local time, as QDateTime::toLocalTime() tells it, daylight saving included. Qt counts no
/// daylight saving before 1970, and takes the rules of 2037 for the years after.
///
/// **Errors.** A text that cannot be made is a null string.
///
/// **Threads.** The user interface thread alone.
class TAVIWIDGETS_EXPORT TaviDateTime : public QDateTime
{
public:
    /// Invalid, as QDateTime().
    TaviDateTime();
    /// Local midnight of @a date; invalid if that is.
    explicit TaviDateTime(const QDate &date);
    /// Local @a time of @a date. An invalid time stands for midnight.
    TaviDateTime(const QDate &date, const QTime &time);

    using QDateTime::toString;
    /// With `Qt::LocalDate` (or its other name, `Qt::SystemLocaleDate`) the text of localeDateString(), otherwise
    /// what QDateTime::toString() gives.
    QString toString(Qt::DateFormat format = Qt::TextDate) const;
    /// The same for @a time, seconds since the beginning of 1970 UTC, taken as local time. Null for one that
    /// localeDateString() cannot write, in every format.
    static QString toString(long time, Qt::DateFormat format);

    /// Now, in local time, to the millisecond.
    static TaviDateTime currentDateTime();
    /// Now, in whole seconds, with @a spec. Those that want more than their name become what QDateTime::setTimeSpec()
    /// makes of them: `Qt::OffsetFromUTC` UTC, and `Qt::TimeZone` local time.
    static TaviDateTime currentDateTime(Qt::TimeSpec spec);

    /// Short date and short time of @a time, seconds since the beginning of 1970 UTC, in local time. Null more than
    /// five million years away from now, or if ICU has no texts for any locale.
    static QString localeDateString(long time);
    /// The same for this value, whatever its spec; parts of a second count for nothing. Null if it is invalid.
    QString localeDateString() const;
};

#endif
