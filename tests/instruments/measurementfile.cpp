// SPDX-License-Identifier: MIT
#include "tests/instruments/measurementfile.h"

#include <QFile>

MeasurementFile::MeasurementFile(const QByteArray &content, Reader reader, const QString &name)
    : name_(name), reader_(reader)
{
    QFile file(path());
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path()));
    file.close();
    const ChosenFile chosen(path());
    handle_ = (reader == Text ? spectro_fromfile_SpectrophotometerOpen
                              : spectro_fromCGATS_SpectrophotometerOpen)(InstrumentRecorder::message, &recorder);
    if (!handle_)
        qFatal("cannot open %s", qPrintable(path()));
}

MeasurementFile::~MeasurementFile()
{
    (reader_ == Text ? spectro_fromfile_SpectrophotometerClose
                     : spectro_fromCGATS_SpectrophotometerClose)(handle_, InstrumentRecorder::message, &recorder);
}

QString MeasurementFile::path() const
{
    return directory_.filePath(name_);
}

int MeasurementFile::readSpotLab()
{
    return (reader_ == Text ? spectro_fromfile_SpectrophotometerReadSpotLab
                            : spectro_fromCGATS_SpectrophotometerReadSpotLab)(
        handle_, &abort_flag_, InstrumentRecorder::lab, &recorder, InstrumentRecorder::message, &recorder);
}

int MeasurementFile::readChart(TAVICOMBOCOLOUR *chart)
{
    return (reader_ == Text ? spectro_fromfile_SpectrophotometerReadComboColourChart
                            : spectro_fromCGATS_SpectrophotometerReadComboColourChart)(
        handle_, &abort_flag_, chart, 16, 0, InstrumentRecorder::lab, &recorder, InstrumentRecorder::message,
        &recorder);
}

int MeasurementFile::readSpotDensities(SPECTROSEPTYPE *separation, bool black_first)
{
    return (black_first ? spectro_fromfile_kcmyorder_SpectrophotometerReadSpotDensities
                        : spectro_fromfile_cmykorder_SpectrophotometerReadSpotDensities)(
        handle_, &abort_flag_, DENSITYSTANDARD_DEFAULT, separation, InstrumentRecorder::density, &recorder,
        InstrumentRecorder::message, &recorder);
}

int MeasurementFile::readLinearisation(unsigned long steps, DENSITYLUT *lut, unsigned long first_separation,
                                       long first_patch, bool black_first)
{
    return (black_first ? spectro_fromfile_kcmyorder_SpectrophotometerReadLinearisation
                        : spectro_fromfile_cmykorder_SpectrophotometerReadLinearisation)(
        handle_, &abort_flag_, DENSITYSTANDARD_DEFAULT, steps, lut, first_separation, first_patch,
        InstrumentRecorder::density, &recorder, InstrumentRecorder::message, &recorder);
}

void MeasurementFile::abortAfter(int count)
{
    recorder.on_reading = [this, count] {
        if (recorder.count() >= count)
            setAborted(true);
    };
}
