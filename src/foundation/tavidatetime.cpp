// SPDX-License-Identifier: MIT
#include "foundation/tavidatetime.h"

#include <unicode/datefmt.h>
#include <unicode/locid.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>

#include <QtGlobal>

#include <memory>

namespace {

/// Beyond this the calendars of ICU come to their end.
constexpr long most_seconds = 180'000'000'000'000;

bool isInReach(long time)
{
    return time >= -most_seconds && time <= most_seconds;
}

/// ICU's own default follows the language of messages, which may be another one than that of dates.
icu::Locale localeOfTimes()
{
    for (const char *const variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        const QByteArray name = qgetenv(variable);
        if (name.isEmpty())
            continue;
        const icu::Locale locale = icu::Locale::createCanonical(name.constData());
        // Of a name that ICU cannot read it would not bear to make a formatter.
        return locale.isBogus() ? icu::Locale::getRoot() : locale;
    }
    return icu::Locale::getRoot();
}

/// Writes a date as if the clock stood at Greenwich: what it is given is local time already, so that texts and
/// QDateTime never differ about the time zone.
std::unique_ptr<icu::DateFormat> makeFormatter()
{
    std::unique_ptr<icu::DateFormat> formatter(
        icu::DateFormat::createDateTimeInstance(icu::DateFormat::kShort, icu::DateFormat::kShort, localeOfTimes()));
    if (formatter)
        formatter->setTimeZone(*icu::TimeZone::getGMT());
    return formatter;
}

/// Qt::LocalDate, which Qt hides from code that is built without what it deprecates.
constexpr auto local_date = static_cast<Qt::DateFormat>(2);

} // namespace

TaviDateTime::TaviDateTime() = default;

TaviDateTime::TaviDateTime(const QDate &date) : QDateTime(date, QTime(0, 0)) {}

TaviDateTime::TaviDateTime(const QDate &date, const QTime &time) : QDateTime(date, time, Qt::LocalTime) {}

QString TaviDateTime::toString(Qt::DateFormat format) const
{
    return format == local_date ? localeDateString() : QDateTime::toString(format);
}

QString TaviDateTime::toString(long time, Qt::DateFormat format)
{
    if (format == local_date)
        return localeDateString(time);
    return isInReach(time) ? QDateTime::fromSecsSinceEpoch(time).toString(format) : QString();
}

TaviDateTime TaviDateTime::currentDateTime()
{
    TaviDateTime now;
    static_cast<QDateTime &>(now) = QDateTime::currentDateTime();
    return now;
}

TaviDateTime TaviDateTime::currentDateTime(Qt::TimeSpec spec)
{
    TaviDateTime now;
    now.setTimeSpec(spec);
    now.setSecsSinceEpoch(QDateTime::currentSecsSinceEpoch());
    return now;
}

QString TaviDateTime::localeDateString(long time)
{
    static const std::unique_ptr<icu::DateFormat> formatter = makeFormatter();
    if (!formatter || !isInReach(time))
        return {};
    QDateTime clock = QDateTime::fromSecsSinceEpoch(time);
    clock.setTimeSpec(Qt::UTC); // keeps date and time of day
    icu::UnicodeString text;
    formatter->format(static_cast<UDate>(clock.toMSecsSinceEpoch()), text);
    return QString(reinterpret_cast<const QChar *>(text.getBuffer()), text.length());
}

QString TaviDateTime::localeDateString() const
{
    return isValid() ? localeDateString(static_cast<long>(toSecsSinceEpoch())) : QString();
}
