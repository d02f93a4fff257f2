// SPDX-License-Identifier: MIT
#include "tests/plugins/simspectroplugin.h"

#include "tavilib/tavidll.h"

#include <QFile>

#include <atomic>
#include <cstdarg>

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

int SimspectroRecorder::message(void *context, int kind, const char *unit, const char *, const char *format, ...)
{
    auto *self = static_cast<SimspectroRecorder *>(context);
    va_list arguments;
    va_start(arguments, format);
    const QString text = QString::vasprintf(format, arguments);
    va_end(arguments);
    self->add((kind == 0 ? QStringLiteral("status: ") : QStringLiteral("fault: ")) + text);
    if (qstrcmp(unit, "simspectro") != 0)
        self->add(QStringLiteral("wrong unit"));
    if (self->on_text)
        self->on_text(text);
    return 0;
}

int SimspectroRecorder::lab(void *context, double L, double a, double b)
{
    auto *self = static_cast<SimspectroRecorder *>(context);
    const MeasuredLab colour = {L, a, b};
    self->add(colour.isEndMarker() ? QStringLiteral("end") : QStringLiteral("lab"));
    {
        const std::scoped_lock lock(self->mutex_);
        self->colours_.push_back(colour);
    }
    if (self->on_reading)
        self->on_reading();
    return 0;
}

int SimspectroRecorder::density(void *context, PATCHDENSITY *patch)
{
    auto *self = static_cast<SimspectroRecorder *>(context);
    self->add(QStringLiteral("density"));
    {
        const std::scoped_lock lock(self->mutex_);
        self->densities_.push_back(*patch);
    }
    if (self->on_reading)
        self->on_reading();
    return 0;
}

void SimspectroRecorder::add(const QString &event)
{
    const std::scoped_lock lock(mutex_);
    events_.append(event);
}

QStringList SimspectroRecorder::events() const
{
    const std::scoped_lock lock(mutex_);
    return events_;
}

QStringList SimspectroRecorder::texts(const QString &kind) const
{
    QStringList found;
    const QString prefix = kind + QStringLiteral(": ");
    for (const QString &event : events()) {
        if (event.startsWith(prefix))
            found.append(event.mid(prefix.size()));
    }
    return found;
}

std::vector<MeasuredLab> SimspectroRecorder::colours() const
{
    const std::scoped_lock lock(mutex_);
    return colours_;
}

std::vector<PATCHDENSITY> SimspectroRecorder::densities() const
{
    const std::scoped_lock lock(mutex_);
    return densities_;
}

int SimspectroRecorder::count() const
{
    const std::scoped_lock lock(mutex_);
    return static_cast<int>(colours_.size() + densities_.size());
}

SimspectroDevice::SimspectroDevice(const SimspectroPlugin &plugin)
    : plugin_(plugin), handle_(plugin.open(SimspectroRecorder::message, &recorder))
{}

SimspectroDevice::~SimspectroDevice()
{
    if (handle_)
        plugin_.close(handle_, SimspectroRecorder::message, &recorder);
}

int SimspectroDevice::readSpotLab()
{
    return plugin_.readSpotLab(handle_, &abort_flag_, SimspectroRecorder::lab, &recorder, SimspectroRecorder::message,
                               &recorder);
}

int SimspectroDevice::readSpotDensities(SPECTROSEPTYPE *separation, DENSITYSTANDARD standard)
{
    return plugin_.readSpotDensities(handle_, &abort_flag_, standard, separation, SimspectroRecorder::density,
                                     &recorder, SimspectroRecorder::message, &recorder);
}

int SimspectroDevice::readChart(TAVICOMBOCOLOUR *chart, unsigned long line_length)
{
    return plugin_.readChart(handle_, &abort_flag_, chart, line_length, 0, SimspectroRecorder::lab, &recorder,
                             SimspectroRecorder::message, &recorder);
}

int SimspectroDevice::printNRead(TAVICOMBOCOLOUR *chart)
{
    TAVIKEY_ELEMENT keys[3] = {};
    return plugin_.printNRead(handle_, &abort_flag_, nullptr, &keys[0], &keys[1], &keys[2], chart, 16, 0, 0,
                              SimspectroRecorder::lab, &recorder, SimspectroRecorder::message, &recorder);
}

int SimspectroDevice::readLinearisation(unsigned long steps, DENSITYLUT *lut, unsigned long first_separation,
                                        long first_patch)
{
    return plugin_.readLinearisation(handle_, &abort_flag_, DENSITYSTANDARD_DEFAULT, steps, lut, first_separation,
                                     first_patch, SimspectroRecorder::density, &recorder, SimspectroRecorder::message,
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
