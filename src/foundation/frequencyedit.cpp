// SPDX-License-Identifier: MIT
#include "foundation/frequencyedit.h"

#include "foundation/frequencyrule_p.h"

#include <limits>

namespace {

/// Rows of onoff_combo.
constexpr int row_never = 0;
constexpr int row_after = 1;

constexpr unsigned long seconds_of_day = 86400;
constexpr unsigned long seconds_of_week = 7 * seconds_of_day;

/// @a count times @a seconds after @a time, as far as a long goes.
long later(long time, unsigned long count, unsigned long seconds)
{
    unsigned long span = 0;
    long sum = 0;
    if (__builtin_mul_overflow(count, seconds, &span) || __builtin_add_overflow(time, span, &sum))
        return std::numeric_limits<long>::max();
    return sum;
}

} // namespace

FrequencyEdit::FrequencyEdit(QWidget *parent, const char *name) : QWidget(parent)
{
    setObjectName(QString::fromUtf8(name));
    setupUi(this);
    connect(onoff_combo, QOverload<int>::of(&QComboBox::activated), this, &FrequencyEdit::onoffActivated);
    onoffActivated();
}

FrequencyEdit::~FrequencyEdit() = default;

void FrequencyEdit::setTitle(const QString &title)
{
    groupbox->setTitle(title);
}

unsigned long FrequencyEdit::getFrequency() const
{
    if (onoff_combo->currentIndex() == row_never)
        return FrequencyCode::never;
    const int code = day_combo->currentIndex() + 1; // "Never" if no day is chosen
    return static_cast<unsigned long>(code);
}

void FrequencyEdit::setFrequency(unsigned long frequency)
{
    if (frequency == FrequencyCode::never) {
        onoff_combo->setCurrentIndex(row_never);
    } else {
        onoff_combo->setCurrentIndex(row_after);
        day_combo->setCurrentIndex(frequency <= FrequencyCode::sundays ? static_cast<int>(frequency) - 1 : -1);
    }
    onoffActivated();
}

unsigned long FrequencyEdit::getFrequencyNumber() const
{
    return static_cast<unsigned long>(frequency_spin->value());
}

void FrequencyEdit::setFrequencyNumber(unsigned long number)
{
    frequency_spin->setValue(static_cast<int>(qMin(number, static_cast<unsigned long>(frequency_spin->maximum()))));
}

void FrequencyEdit::onoffActivated()
{
    const bool on = onoff_combo->currentIndex() != row_never;
    frequency_spin->setVisible(on);
    day_combo->setVisible(on);
}

bool FrequencyEdit::nowIsTheTime(long last, unsigned long frequency, unsigned long number)
{
    return isDueOn(QDate::currentDate(), localDateOf(last), frequency, number);
}

long FrequencyEdit::expiryTime(long start, unsigned long frequency, unsigned long number)
{
    if (frequency == FrequencyCode::never)
        return 0;
    if (frequency == FrequencyCode::days)
        return later(start, number, seconds_of_day);
    const long time = number > 0 ? later(start, number - 1, seconds_of_week) : start;
    const auto day = static_cast<unsigned long>(localDateOf(time).dayOfWeek());
    const unsigned long wanted = FrequencyCode::dayOfWeek(frequency);
    return later(time, wanted >= day ? wanted - day : wanted + 7 - day, seconds_of_day);
}
