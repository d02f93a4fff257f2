// SPDX-License-Identifier: MIT
#ifndef FOUNDATION_FREQUENCYRULE_P_H
#define FOUNDATION_FREQUENCYRULE_P_H

#include "foundation/taviwidgets_export.h"

#include <QDate>

/// @file
/// When what is to happen every so often is due: the arithmetic behind FrequencyEdit, without a widget or a clock.

/// How often, as a number that settings keep.
namespace FrequencyCode {
/// It never happens.
constexpr unsigned long never = 0;
/// After a number of days.
constexpr unsigned long days = 1;
/// On Mondays after a number of weeks. The other days of the week follow.
constexpr unsigned long mondays = 2;
/// The last of the codes.
constexpr unsigned long sundays = 8;
/// The day of the week, as QDate counts, that a code from #mondays on stands for. Codes beyond #sundays give days
/// that no week has.
constexpr unsigned long dayOfWeek(unsigned long code)
{
    return code - 1;
}
} // namespace FrequencyCode

/// Whether what was done on @a last is due on @a today; see FrequencyEdit::nowIsTheTime().
TAVIWIDGETS_EXPORT bool isDueOn(const QDate &today, const QDate &last, unsigned long frequency, unsigned long number);

/// The local date of @a time, seconds since 1970 UTC. Times that no calendar reaches count as the last that one does.
TAVIWIDGETS_EXPORT QDate localDateOf(long time);

#endif
