// SPDX-License-Identifier: MIT
// The entry points: what the application calls.
#include "session.h"

#include <tavilib/instrumentplugin.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>
#include <optional>
#include <vector>

using namespace simspectro;

namespace {

constexpr const char *display_name = "Simulated spectrophotometer";
constexpr const char *revision = "1.00";

/// Runs the body of an entry point; an exception must not travel into the application.
template <typename Result, typename Body>
Result guarded(const Messages &messages, Result failed, Body body)
{
    try {
        return body();
    } catch (const std::bad_alloc &) {
        messages.fault("Cannot allocate memory");
    } catch (const std::exception &exception) {
        messages.fault("Error %s", exception.what());
    }
    return failed;
}

/// The file's patches one after the other, then nothing until the read is told to stop.
template <typename Deliver>
int readSpots(Device &device, Session &session, Deliver deliver)
{
    for (size_t i = 0; i < device.measurements.count(); ++i) {
        if (!session.takePatchTime())
            return 0;
        deliver(device.measurements.at(i));
    }
    session.messages().status("Measurement complete");
    session.waitForAbort();
    return 0;
}

int failChart(const Messages &messages, InstrumentLabCallback lab, void *lab_context)
{
    messages.status("Measurement of chart failed");
    lab(lab_context, -1.0, 0.0, 0.0);
    return -1;
}

int readChart(Device &device, int *abort_flag, const TAVICOMBOCOLOUR *chart, unsigned long line_length,
              InstrumentLabCallback lab, void *lab_context, const Messages &messages)
{
    Session session(device, abort_flag, messages);
    if (!chart) {
        messages.fault("No patches given to measure");
        return failChart(messages, lab, lab_context);
    }
    // All patches are found before the first is measured: a chart is read whole or not at all.
    std::vector<const Reading *> readings;
    for (; chart; chart = static_cast<const TAVICOMBOCOLOUR *>(chart->header.next)) {
        std::string fault;
        readings.push_back(device.measurements.find(*chart, fault));
        if (!readings.back()) {
            messages.fault("Error %s while measuring chart", fault.c_str());
            return failChart(messages, lab, lab_context);
        }
    }
    messages.status("Insert chart and press button to begin measuring");
    const unsigned long in_line = line_length > 0 ? line_length : readings.size();
    for (unsigned long i = 0; i < readings.size(); ++i) {
        messages.status("Measure %c%lu", 'A' + static_cast<int>(i / in_line % 26), i % in_line + 1);
        if (!session.takePatchTime())
            return 0;
        const Lab measured = session.measuredLab(*readings[i]);
        lab(lab_context, measured.L, measured.a, measured.b);
    }
    messages.status("Measurement complete");
    lab(lab_context, -1.0, 0.0, 0.0);
    return 0;
}

PATCHDENSITY newDensity(const Densities &densities, SPECTROSEPTYPE separation)
{
    PATCHDENSITY patch = {};
    patch.sep_type = separation;
    patch.density = selectDensity(densities, separation);
    patch.density_k = densities.k;
    patch.density_c = densities.c;
    patch.density_m = densities.m;
    patch.density_y = densities.y;
    return patch;
}

double tintAt(unsigned long patch, unsigned long steps)
{
    return steps > 1 ? 100.0 * static_cast<double>(patch) / static_cast<double>(steps - 1) : 100.0;
}

void hintAtStandard(DENSITYSTANDARD standard, const Messages &messages)
{
    if (standard != DENSITYSTANDARD_DEFAULT)
        messages.status("Instrument does not support setting density standard. Please use instrument default");
}

} // namespace

extern "C" {

INSTRUMENTPLUGIN_EXPORT SPECTROPHOTOMETERINFO *SpectrophotometerGetInfo(void)
{
    auto *info = static_cast<SPECTROPHOTOMETERINFO *>(std::calloc(1, sizeof(SPECTROPHOTOMETERINFO)));
    if (!info)
        return nullptr;
    info->name = strdup(display_name);
    info->rev = strdup(revision);
    if (!info->name || !info->rev) {
        std::free(info->name);
        std::free(info->rev);
        std::free(info);
        return nullptr;
    }
    info->flags = SPECTRO_FLAG_LAB | SPECTRO_FLAG_DENSITY | SPECTRO_FLAG_SPOTDENSITY | SPECTRO_FLAG_SPOTLAB
                  | SPECTRO_FLAG_CHART | SPECTRO_FLAG_LINCHARTGENERATOR;
    if (isPrinter())
        info->flags |= SPECTRO_FLAG_PRINTER;
    return info;
}

INSTRUMENTPLUGIN_EXPORT void *SpectrophotometerOpen(InstrumentMessageCallback message, void *message_context)
{
    const Messages messages("SpectrophotometerOpen", message, message_context);
    return guarded<void *>(messages, nullptr, [&]() -> void * {
        std::string fault;
        const std::optional<Settings> settings = readSettings(fault);
        if (!settings) {
            messages.fault("Error %s", fault.c_str());
            return nullptr;
        }
        std::optional<Measurements> measurements = Measurements::load(settings->file, fault);
        if (!measurements) {
            messages.fault("Cannot open file %s", fault.c_str());
            return nullptr;
        }
        return new Device{*settings, std::move(*measurements), Noise(settings->seed, settings->noise)};
    });
}

INSTRUMENTPLUGIN_EXPORT void SpectrophotometerClose(void *handle, InstrumentMessageCallback, void *)
{
    delete static_cast<Device *>(handle);
}

INSTRUMENTPLUGIN_EXPORT int SpectrophotometerReadSpotLab(void *handle, int *abort_flag, InstrumentLabCallback lab,
                                                         void *lab_context, InstrumentMessageCallback message,
                                                         void *message_context)
{
    const Messages messages("SpectrophotometerReadSpotLab", message, message_context);
    return guarded(messages, -1, [&] {
        auto &device = *static_cast<Device *>(handle);
        Session session(device, abort_flag, messages);
        return readSpots(device, session, [&](const Reading &reading) {
            const Lab measured = session.measuredLab(reading);
            lab(lab_context, measured.L, measured.a, measured.b);
        });
    });
}

INSTRUMENTPLUGIN_EXPORT int
SpectrophotometerReadSpotDensities(void *handle, int *abort_flag, DENSITYSTANDARD standard, SPECTROSEPTYPE *sep_type,
                                   InstrumentDensityCallback density, void *density_context,
                                   InstrumentMessageCallback message, void *message_context)
{
    const Messages messages("SpectrophotometerReadSpotDensities", message, message_context);
    return guarded(messages, -1, [&] {
        auto &device = *static_cast<Device *>(handle);
        Session session(device, abort_flag, messages);
        hintAtStandard(standard, messages);
        return readSpots(device, session, [&](const Reading &reading) {
            const auto separation = std::atomic_ref<SPECTROSEPTYPE>(*sep_type).load(std::memory_order_relaxed);
            PATCHDENSITY patch = newDensity(session.measuredDensities(reading), separation);
            density(density_context, &patch);
        });
    });
}

INSTRUMENTPLUGIN_EXPORT int
SpectrophotometerReadLinearisation(void *handle, int *abort_flag, DENSITYSTANDARD standard, unsigned long steps,
                                   DENSITYLUT *lut, unsigned long first_separation, long first_patch,
                                   InstrumentDensityCallback density, void *density_context,
                                   InstrumentMessageCallback message, void *message_context)
{
    const Messages messages("SpectrophotometerReadLinearisation", message, message_context);
    return guarded(messages, -1, [&] {
        if (!lut)
            return -1;
        auto &device = *static_cast<Device *>(handle);
        Session session(device, abort_flag, messages);
        hintAtStandard(standard, messages);
        int count = 0;
        auto first = static_cast<unsigned long>(std::max(first_patch, 0L));
        for (unsigned long i = first_separation; i < lut->separation_count; ++i, first = 0) {
            const uint32_t band_type = lut->bands[i].band_type;
            for (unsigned long patch = first; patch < steps; ++patch) {
                const std::optional<Reading> reading = device.measurements.tint(band_type, tintAt(patch, steps));
                if (!reading) {
                    const std::string fault = device.settings.file + ": no tints around "
                                              + std::to_string(std::lround(tintAt(patch, steps)))
                                              + " percent for separation " + std::to_string(i + 1);
                    messages.fault("Error %s while measuring chart", fault.c_str());
                    messages.status("Measurement of chart failed");
                    return -1;
                }
                messages.status("Measure %c%lu", 'A' + static_cast<int>(i % 26), patch + 1);
                if (!session.takePatchTime())
                    return 0;
                PATCHDENSITY measured = newDensity(session.measuredDensities(*reading), separationOfBand(band_type));
                measured.sep_index = static_cast<uint32_t>(i);
                measured.patch_index = static_cast<int32_t>(patch);
                density(density_context, &measured);
                ++count;
            }
        }
        messages.status("Measurement complete");
        return count;
    });
}

INSTRUMENTPLUGIN_EXPORT int
SpectrophotometerReadComboColourChart(void *handle, int *abort_flag, TAVICOMBOCOLOUR *chart,
                                      unsigned long line_length, unsigned long, InstrumentLabCallback lab,
                                      void *lab_context, InstrumentMessageCallback message, void *message_context)
{
    const Messages messages("SpectrophotometerReadComboColourChart", message, message_context);
    return guarded(messages, -1, [&] {
        return readChart(*static_cast<Device *>(handle), abort_flag, chart, line_length, lab, lab_context, messages);
    });
}

INSTRUMENTPLUGIN_EXPORT int SpectrophotometerPrintNReadComboColourChart(
    void *handle, int *abort_flag, TaviCommServer *, TAVIKEY_ELEMENT *, TAVIKEY_ELEMENT *, TAVIKEY_ELEMENT *,
    TAVICOMBOCOLOUR *chart, unsigned long line_length, unsigned long, unsigned long, InstrumentLabCallback lab,
    void *lab_context, InstrumentMessageCallback message, void *message_context)
{
    const Messages messages("SpectrophotometerPrintNReadComboColourChart", message, message_context);
    return guarded(messages, -1, [&] {
        messages.status("Please wait for results while the colour chart is being printed and read.");
        return readChart(*static_cast<Device *>(handle), abort_flag, chart, line_length, lab, lab_context, messages);
    });
}

INSTRUMENTPLUGIN_EXPORT int SpectrophotometerGetComboColourChart(const TAVICOMBOCOLOUR *chart,
                                                                 unsigned long parameter)
{
    constexpr unsigned long own_line = 16;
    unsigned long patches = 0;
    for (; chart; chart = static_cast<const TAVICOMBOCOLOUR *>(chart->header.next))
        ++patches;
    return static_cast<int>(std::min(patches, parameter > 0 ? parameter : own_line));
}

INSTRUMENTPLUGIN_EXPORT int SpectrophotometerGetLinChart(const DENSITYLUT *lut, double *values, unsigned long count)
{
    if (!lut || lut->separation_count == 0 || !values)
        return 0;
    for (unsigned long i = 0; i < count; ++i)
        values[i] = tintAt(i, count);
    return static_cast<int>(count);
}

} // extern "C"
