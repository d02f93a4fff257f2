// SPDX-License-Identifier: MIT
#ifndef TESTS_SUPPORT_INSTRUMENTRECORDER_H
#define TESTS_SUPPORT_INSTRUMENTRECORDER_H

#include "tavilib/instrumentplugin.h"

#include <QStringList>

#include <functional>
#include <mutex>
#include <vector>

/// One Lab callback.
struct RecordedLab {
    double L;
    double a;
    double b;
    bool operator==(const RecordedLab &) const = default;
    bool isEndMarker() const { return L < 0.0; }
};

/// Takes what an instrument sends, from any thread: pass the static functions as callbacks with the object as
/// context.
class InstrumentRecorder
{
public:
    static int message(void *context, int kind, const char *unit, const char *function, const char *format, ...);
    static int lab(void *context, double L, double a, double b);
    /// Records each reading of a list.
    static int density(void *context, PATCHDENSITY *patch);

    /// All that came, in order: "status: text" (kind 0), "fault: text" (any other), "lab", "end", "density".
    QStringList events() const;
    /// The texts of the events "status" or "fault".
    QStringList texts(const QString &kind) const;
    /// Of each text, where it said to come from: "unit/function"; "unit/" for a null function.
    QStringList places() const;
    /// All Lab callbacks, end markers too.
    std::vector<RecordedLab> colours() const;
    /// All readings, their next pointers null.
    std::vector<PATCHDENSITY> densities() const;
    /// How many colours and densities came.
    int count() const;
    /// Forgets all that came.
    void clear();

    /// Called on the instrument's thread after each colour or density.
    std::function<void()> on_reading;
    /// Called on the instrument's thread after each text.
    std::function<void(const QString &text)> on_text;

private:
    mutable std::mutex mutex_;
    QStringList events_;
    QStringList places_;
    std::vector<RecordedLab> colours_;
    std::vector<PATCHDENSITY> densities_;
};

#endif
