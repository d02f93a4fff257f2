// SPDX-License-Identifier: MIT
#ifndef TESTS_PLUGINS_SIMSPECTROPLUGIN_H
#define TESTS_PLUGINS_SIMSPECTROPLUGIN_H

#include "tavilib/instrumentplugin.h"

#include <QByteArray>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <mutex>
#include <vector>

/// The plug-in, loaded while this lives, and its entry points.
class SimspectroPlugin
{
public:
    SimspectroPlugin();
    ~SimspectroPlugin();
    SimspectroPlugin(const SimspectroPlugin &) = delete;
    SimspectroPlugin &operator=(const SimspectroPlugin &) = delete;

    /// The path of the shared object.
    static QString path();
    void *symbol(const char *name) const;

    SpectrophotometerGetInfoFunction getInfo;
    SpectrophotometerOpenFunction open;
    SpectrophotometerCloseFunction close;
    SpectrophotometerReadLinearisationFunction readLinearisation;
    SpectrophotometerReadSpotDensitiesFunction readSpotDensities;
    SpectrophotometerReadSpotLabFunction readSpotLab;
    SpectrophotometerReadComboColourChartFunction readChart;
    SpectrophotometerPrintNReadComboColourChartFunction printNRead;
    SpectrophotometerGetComboColourChartFunction getChart;
    SpectrophotometerGetLinChartFunction getLinChart;

private:
    void *library_;
};

/// Sets the plug-in's variables, all others of its unset, and unsets them at the end.
class SimspectroEnvironment
{
public:
    explicit SimspectroEnvironment(const QByteArray &file);
    ~SimspectroEnvironment();
    void set(const char *name, const QByteArray &value);

private:
    static void clear();
};

struct MeasuredLab {
    double L;
    double a;
    double b;
    bool operator==(const MeasuredLab &) const = default;
    bool isEndMarker() const { return L < 0.0; }
};

/// Takes what the plug-in sends, from any thread: pass the static functions as callbacks with the object as context.
class SimspectroRecorder
{
public:
    static int message(void *context, int kind, const char *unit, const char *function, const char *format, ...);
    static int lab(void *context, double L, double a, double b);
    static int density(void *context, PATCHDENSITY *patch);

    /// All that came, in order: "status: text", "fault: text", "lab", "end", "density".
    QStringList events() const;
    QStringList texts(const QString &kind) const;
    std::vector<MeasuredLab> colours() const;
    std::vector<PATCHDENSITY> densities() const;
    /// How many colours and densities came.
    int count() const;

    /// Called on the plug-in's thread after each colour or density.
    std::function<void()> on_reading;
    /// Called on the plug-in's thread after each text.
    std::function<void(const QString &)> on_text;

private:
    void add(const QString &event);

    mutable std::mutex mutex_;
    QStringList events_;
    std::vector<MeasuredLab> colours_;
    std::vector<PATCHDENSITY> densities_;
};

/// An opened device; null inside if opening failed. Closes it at the end.
class SimspectroDevice
{
public:
    explicit SimspectroDevice(const SimspectroPlugin &plugin);
    ~SimspectroDevice();
    SimspectroDevice(const SimspectroDevice &) = delete;
    SimspectroDevice &operator=(const SimspectroDevice &) = delete;

    void *handle() const { return handle_; }

    /// Each runs the read on this thread.
    int readSpotLab();
    int readSpotDensities(SPECTROSEPTYPE *separation, DENSITYSTANDARD standard = DENSITYSTANDARD_DEFAULT);
    int readChart(TAVICOMBOCOLOUR *chart, unsigned long line_length = 16);
    int printNRead(TAVICOMBOCOLOUR *chart);
    int readLinearisation(unsigned long steps, DENSITYLUT *lut, unsigned long first_separation = 0,
                          long first_patch = 0);

    /// Tells the read that runs to stop; on any thread.
    void abort();
    /// Tells it to stop as soon as @a count readings came.
    void abortAfter(int count);

    SimspectroRecorder recorder;

private:
    const SimspectroPlugin &plugin_;
    int abort_flag_ = 0;
    void *handle_ = nullptr;
};

/// A file with this content in a directory that goes away at the end.
class SimspectroFile
{
public:
    explicit SimspectroFile(const QByteArray &content);
    QByteArray path() const;

private:
    QTemporaryDir directory_;
};

#endif
