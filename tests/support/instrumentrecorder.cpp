// SPDX-License-Identifier: MIT
#include "tests/support/instrumentrecorder.h"

#include "tavilib/tavilist.h"

#include <cstdarg>

int InstrumentRecorder::message(void *context, int kind, const char *unit, const char *function, const char *format,
                                ...)
{
    auto *self = static_cast<InstrumentRecorder *>(context);
    va_list arguments;
    va_start(arguments, format);
    const QString text = QString::vasprintf(format, arguments);
    va_end(arguments);
    {
        const std::scoped_lock lock(self->mutex_);
        self->events_.append((kind == 0 ? QStringLiteral("status: ") : QStringLiteral("fault: ")) + text);
        self->places_.append(QString::fromUtf8(unit) + QLatin1Char('/') + QString::fromUtf8(function));
    }
    if (self->on_text)
        self->on_text(text);
    return 0;
}

int InstrumentRecorder::lab(void *context, double L, double a, double b)
{
    auto *self = static_cast<InstrumentRecorder *>(context);
    const RecordedLab colour = {L, a, b};
    {
        const std::scoped_lock lock(self->mutex_);
        self->events_.append(colour.isEndMarker() ? QStringLiteral("end") : QStringLiteral("lab"));
        self->colours_.push_back(colour);
    }
    if (self->on_reading)
        self->on_reading();
    return 0;
}

int InstrumentRecorder::density(void *context, PATCHDENSITY *patch)
{
    auto *self = static_cast<InstrumentRecorder *>(context);
    for (; patch; patch = NextInList(patch)) {
        const std::scoped_lock lock(self->mutex_);
        self->events_.append(QStringLiteral("density"));
        self->densities_.push_back(*patch);
        self->densities_.back().header.next = nullptr;
    }
    if (self->on_reading)
        self->on_reading();
    return 0;
}

QStringList InstrumentRecorder::events() const
{
    const std::scoped_lock lock(mutex_);
    return events_;
}

QStringList InstrumentRecorder::texts(const QString &kind) const
{
    QStringList found;
    const QString prefix = kind + QStringLiteral(": ");
    for (const QString &event : events()) {
        if (event.startsWith(prefix))
            found.append(event.mid(prefix.size()));
    }
    return found;
}

QStringList InstrumentRecorder::places() const
{
    const std::scoped_lock lock(mutex_);
    return places_;
}

std::vector<RecordedLab> InstrumentRecorder::colours() const
{
    const std::scoped_lock lock(mutex_);
    return colours_;
}

std::vector<PATCHDENSITY> InstrumentRecorder::densities() const
{
    const std::scoped_lock lock(mutex_);
    return densities_;
}

int InstrumentRecorder::count() const
{
    const std::scoped_lock lock(mutex_);
    return static_cast<int>(colours_.size() + densities_.size());
}

void InstrumentRecorder::clear()
{
    const std::scoped_lock lock(mutex_);
    events_.clear();
    places_.clear();
    colours_.clear();
    densities_.clear();
}
