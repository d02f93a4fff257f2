// SPDX-License-Identifier: MIT
#include "foundation/frequencyrule_p.h"

#include <QDateTime>
#include <QtGlobal>

bool isDueOn(const QDate &today, const QDate &last, unsigned long frequency, unsigned long number)
{
    if (frequency == FrequencyCode::never)
        return false;
    const qint64 days = last.daysTo(today);
    if (days < 0)
        return false;
    // Not number * 7, which has an end.
    const unsigned long passed = static_cast<unsigned long>(days) / (frequency == FrequencyCode::days ? 1UL : 7UL);
    if (passed < number)
        return false;
    return frequency == FrequencyCode::days
           || static_cast<unsigned long>(today.dayOfWeek()) >= FrequencyCode::dayOfWeek(frequency);
}

QDate localDateOf(long time)
{
    // QDateTime counts milliseconds in 64 bits, and looks a little to either side.
    constexpr long most_seconds = 9'000'000'000'000'000;
    return QDateTime::fromSecsSinceEpoch(qBound(-most_seconds, time, most_seconds)).date();
}
