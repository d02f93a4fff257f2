// SPDX-License-Identifier: MIT
#include "tests/plugins/simspectroplugin.h"

#include "tavilib/tavidll.h"

#include <QFile>

#include <atomic>

namespace {

template <typename Function>
void resolve(const SimspectroPlugin &plugin, const char *name, Function &function)
{
    function = reinterpret_cast<Function>(plugin.symbol(name));
    if (!function)
        qFatal("%s is not exported", name);
}

} // namespace

SimspectroPlugin::SimspectroPlugin() : library_(TaviDllOpen(path().toUtf8().constData()))
{
    if (!library_)
        qFatal("%s", TaviDllError());
    resolve(*this, "SpectrophotometerGetInfo", getInfo);
    resolve(*this, "SpectrophotometerOpen", open);
    resolve(*this, "SpectrophotometerClose", close);
    resolve(*this, "SpectrophotometerReadLinearisation", readLinearisation);
    resolve(*this, "SpectrophotometerReadSpotDensities", readSpotDensities);
    resolve(*this, "SpectrophotometerReadSpotLab", readSpotLab);
    resolve(*this, "SpectrophotometerReadComboColourChart", readChart);
    resolve(*this, "SpectrophotometerPrintNReadComboColourChart", printNRead);
    resolve(*this, "SpectrophotometerGetComboColourChart", getChart);
    resolve(*this, "SpectrophotometerGetLinChart", getLinChart);
}

SimspectroPlugin::~SimspectroPlugin()
{
    TaviDllClose(library_);
}

QString SimspectroPlugin::path()
{
    return qEnvironmentVariable("TAVI_SIMSPECTRO");
}

void *SimspectroPlugin::symbol(const char *name) const
{
    return TaviDllGetProcAddress(library_, name);
}

SimspectroEnvironment::SimspectroEnvironment(const QByteArray &file)
{
    clear();
    set("SIMSPECTRO_FILE", file);
}

SimspectroEnvironment::~SimspectroEnvironment()
{
    clear();
}

void SimspectroEnvironment::set(const char *name, const QByteArray &value)
{
    qputenv(name, value);
}

void SimspectroEnvironment::clear()
{
    for (const char *name :
         {"SIMSPECTRO_FILE", "SIMSPECTRO_NOISE", "SIMSPECTRO_SEED", "SIMSPECTRO_DELAY_MS", "SIMSPECTRO_PRINTER"})
        qunsetenv(name);
}

SimspectroDevice::SimspectroDevice(const SimspectroPlugin &plugin)
    : plugin_(plugin), handle_(plugin.open(InstrumentRecorder::message, &recorder))
{}

SimspectroDevice::~SimspectroDevice()
{
    if (handle_)
        plugin_.close(handle_, InstrumentRecorder::message, &recorder);
}

int SimspectroDevice::readSpotLab()
{
    return plugin_.readSpotLab(handle_, &abort_flag_, InstrumentRecorder::lab, &recorder, InstrumentRecorder::message,
                               &recorder);
}

int SimspectroDevice::readSpotDensities(SPECTROSEPTYPE *separation, DENSITYSTANDARD standard)
{
    return plugin_.readSpotDensities(handle_, &abort_flag_, standard, separation, InstrumentRecorder::density,
                                     &recorder, InstrumentRecorder::message, &recorder);
}

int SimspectroDevice::readChart(TAVICOMBOCOLOUR *chart, unsigned long line_length)
{
    return plugin_.readChart(handle_, &abort_flag_, chart, line_length, 0, InstrumentRecorder::lab, &recorder,
                             InstrumentRecorder::message, &recorder);
}

int SimspectroDevice::printNRead(TAVICOMBOCOLOUR *chart)
{
    TAVIKEY_ELEMENT keys[3] = {};
    return plugin_.printNRead(handle_, &abort_flag_, nullptr, &keys[0], &keys[1], &keys[2], chart, 16, 0, 0,
                              InstrumentRecorder::lab, &recorder, InstrumentRecorder::message, &recorder);
}

int SimspectroDevice::readLinearisation(unsigned long steps, DENSITYLUT *lut, unsigned long first_separation,
                                        long first_patch)
{
    return plugin_.readLinearisation(handle_, &abort_flag_, DENSITYSTANDARD_DEFAULT, steps, lut, first_separation,
                                     first_patch, InstrumentRecorder::density, &recorder, InstrumentRecorder::message,
                                     &recorder);
}

void SimspectroDevice::abort()
{
    std::atomic_ref<int>(abort_flag_).store(1);
}

void SimspectroDevice::abortAfter(int count)
{
    recorder.on_reading = [this, count] {
        if (recorder.count() >= count)
            abort();
    };
}

std::vector<std::vector<double>> rowsOf(const char *path)
{
    std::vector<std::vector<double>> rows;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return rows;
    bool inside = false;
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QList<QByteArray> cells = line.simplified().split(' ');
        if (cells.first() == "END_DATA")
            break;
        if (inside) {
            rows.emplace_back();
            for (const QByteArray &cell : cells)
                rows.back().push_back(cell.toDouble());
        }
        inside = inside || cells.first() == "BEGIN_DATA";
    }
    return rows;
}

QByteArray cgatsTable(const QByteArray &fields, const QByteArray &rows)
{
    return "CTI3\n\nBEGIN_DATA_FORMAT\n" + fields + "\nEND_DATA_FORMAT\nBEGIN_DATA\n" + rows + "END_DATA\n";
}

SimspectroFile::SimspectroFile(const QByteArray &content)
{
    QFile file(QString::fromUtf8(path()));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", path().constData());
}

QByteArray SimspectroFile::path() const
{
    return directory_.filePath(QStringLiteral("measured.ti3")).toUtf8();
}
