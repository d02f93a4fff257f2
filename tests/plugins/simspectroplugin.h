// SPDX-License-Identifier: MIT
#ifndef TESTS_PLUGINS_SIMSPECTROPLUGIN_H
#define TESTS_PLUGINS_SIMSPECTROPLUGIN_H

#include "tavilib/instrumentplugin.h"
#include "tests/support/instrumentrecorder.h"

#include <QByteArray>
#include <QTemporaryDir>

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

    InstrumentRecorder recorder;

private:
    const SimspectroPlugin &plugin_;
    int abort_flag_ = 0;
    void *handle_ = nullptr;
};

/// A published set of 1617 CMYK patches (package icc-profiles-free): sample number, CMYK, XYZ, Lab.
constexpr const char *characterisation = "/usr/share/color/icc/FOGRA39L.ti3";

/// The numbers of the rows of a CGATS file's first table, for files with nothing but numbers in them.
std::vector<std::vector<double>> rowsOf(const char *path);

/// A CGATS file with these columns and rows, each of which ends in a line break; the first row is line 7.
QByteArray cgatsTable(const QByteArray &fields, const QByteArray &rows);

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
