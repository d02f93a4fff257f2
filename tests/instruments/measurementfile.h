// SPDX-License-Identifier: MIT
#ifndef TESTS_INSTRUMENTS_MEASUREMENTFILE_H
#define TESTS_INSTRUMENTS_MEASUREMENTFILE_H

#include "instruments/spectro_fromfile.h"
#include "tests/support/instrumentrecorder.h"

#include <QTemporaryDir>

#include <atomic>

/// Answers the question for a file while it lives, and remembers what was asked.
class ChosenFile
{
public:
    explicit ChosenFile(const QString &path)
    {
        former_ = setSpectroFileChooser([this, path](const QString &new_title, const QString &new_filter) {
            ++asked;
            title = new_title;
            filter = new_filter;
            return path;
        });
    }
    ~ChosenFile() { setSpectroFileChooser(former_); }
    ChosenFile(const ChosenFile &) = delete;
    ChosenFile &operator=(const ChosenFile &) = delete;

    int asked = 0;
    QString title;
    QString filter;

private:
    SpectroFileChooser former_;
};

/// A file with this content, opened by one of the readers, and what the reader sends. Closed at the end.
class MeasurementFile
{
public:
    enum Reader { Text, Cgats };

    explicit MeasurementFile(const QByteArray &content, Reader reader = Text,
                             const QString &name = QStringLiteral("measured.txt"));
    ~MeasurementFile();
    MeasurementFile(const MeasurementFile &) = delete;
    MeasurementFile &operator=(const MeasurementFile &) = delete;

    QString path() const;
    void *handle() const { return handle_; }

    int readSpotLab();
    int readChart(TAVICOMBOCOLOUR *chart = nullptr);
    int readSpotDensities(SPECTROSEPTYPE *separation, bool black_first = false);
    int readLinearisation(unsigned long steps, DENSITYLUT *lut, unsigned long first_separation = 0,
                          long first_patch = 0, bool black_first = false);

    void setAborted(bool aborted) { std::atomic_ref<int>(abort_flag_).store(aborted); }
    /// Aborts as soon as @a count readings came.
    void abortAfter(int count);

    InstrumentRecorder recorder;

private:
    QTemporaryDir directory_;
    QString name_;
    Reader reader_;
    void *handle_ = nullptr;
    int abort_flag_ = 0;
};

#endif
