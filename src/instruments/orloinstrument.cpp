// SPDX-License-Identifier: MIT
#include "instruments/orloinstrument.h"

#include "instruments/instrumentdiscovery_p.h"
#include "instruments/internalinstruments_p.h"
#include "instruments/orloinstrumentcontexts_p.h"
#include "instruments/orloinstrumentevent_p.h"
#include "instruments/orloinstrumentrecord_p.h"
#include "tavilib/tavialloc_p.h"
#include "tavilib/tavidll.h"
#include "tavilib/tavifile.h"
#include "tavilib/tavilog.h"
#include "tavilib/tavipacket.h"

#include <QByteArray>
#include <QPointer>

#include <cstdio>
#include <cstdlib>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

constexpr const char *unit_name = "orloinstrument";

SPECTROPHOTOMETERINFO *instrument_list = nullptr;

void logFault(const char *function, const char *format, const char *argument)
{
    TaviLogMessage(unit_name, function, TAVILOG_ERROR, TAVILOG_FORM_TEXT, 1, format, argument);
}

} // namespace

OrloInstrument::OrloInstrument(QObject *parent)
    : QObject(parent), event_queue(std::make_unique<OrloInstrumentQueue>(this))
{
    OrloInstrumentContexts::instance().addDriver(this);
}

OrloInstrument::~OrloInstrument()
{
    close();
    OrloInstrumentContexts::instance().remove(this);
}

SPECTROPHOTOMETERINFO *OrloInstrument::getInstrumentList()
{
    buildInstrumentList();
    return instrument_list;
}

void OrloInstrument::freeInstrumentList(SPECTROPHOTOMETERINFO **list)
{
    if (!list || !*list)
        return;
    if (*list == instrument_list)
        instrument_list = nullptr; // or the next call would hand out what is freed here
    TaviPacketFreeList(list, TAVIPACKET_SPECTROPHOTOMETERINFO);
}

std::string OrloInstrument::instrumentDirectory()
{
    return findInstrumentDirectory();
}

void OrloInstrument::buildInstrumentList()
{
    if (instrument_list)
        return;
    if (discoverInstruments(&instrument_list, SPECTRO_FLAG_LAB | SPECTRO_FLAG_DENSITY, unit_name))
        addInternalInstruments(&instrument_list);
}

int OrloInstrument::open(SPECTROPHOTOMETERINFO const *info)
{
    return init(info, true);
}

int OrloInstrument::open(char const *text, bool by_name)
{
    return init(chooseInstrument(getInstrumentList(), text, by_name), true);
}

int OrloInstrument::load(SPECTROPHOTOMETERINFO const *info)
{
    return init(info, false);
}

int OrloInstrument::load(char const *text, bool by_name)
{
    return init(chooseInstrument(getInstrumentList(), text, by_name), false);
}

void OrloInstrument::close()
{
    abort();
    tearDown();
}

bool OrloInstrument::enabled() const
{
    return record && record->handle;
}

int OrloInstrument::init(SPECTROPHOTOMETERINFO const *info, bool open_device)
{
    if (!info || is_tearing_down)
        return -1;
    // Copied before anything is torn down: the caller may hand in the record that this driver holds.
    SPECTROPHOTOMETERINFO *copy = DuplicatePacketItem(TAVIPACKET_SPECTROPHOTOMETERINFO, info);
    const QPointer<OrloInstrument> self(this);
    close();
    if (!self) {
        TaviPacketFreeItem(copy, TAVIPACKET_SPECTROPHOTOMETERINFO);
        return -1;
    }

    record = TaviAllocRecord<OrloInstrumentRecord>();
    if (!record) {
        TaviPacketFreeItem(copy, TAVIPACKET_SPECTROPHOTOMETERINFO);
        TaviLogMessage("", "", TAVILOG_ERROR, TAVILOG_FORM_TEXT, 1, "Cannot allocate memory");
        return -1;
    }
    record->info = copy;
    if (!copy || !loadPlugin()) {
        tearDown();
        return -1;
    }
    return open_device ? openDevice() : 0;
}

int OrloInstrument::openDevice()
{
    // Open may run an event loop (the file readers show a dialog), in which this driver may be closed or destroyed.
    // So the library is held a second time, and everything needed afterwards is at hand.
    const QPointer<OrloInstrument> self(this);
    const OrloInstrumentEntryPoints entry = record->entry;
    const unsigned long teardowns_before = teardowns;
    void *held = record->library ? TaviDllOpen(record->path) : nullptr;
    void *handle = entry.Open(MessageOutputCallbackNoQueue, this);
    const bool overtaken = !self || teardowns != teardowns_before;
    if (overtaken && handle)
        entry.Close(handle, MessageOutputCallbackNoQueue, nullptr);
    TaviDllClose(held);
    if (overtaken)
        return -1;
    if (!handle) {
        LogError(unit_name, "OrloInstrument::init", "Spectrophotometer failed to initialise");
        tearDown();
        return -1;
    }
    record->handle = handle;
    return 0;
}

bool OrloInstrument::loadPlugin()
{
    record->flags = record->info->flags;
    const char *file_name = record->info->dll_filename ? record->info->dll_filename : "";
    if (TaviCheckExtension(file_name, internal_instrument_extension)) {
        if (setInternalEntryPoints(record->entry, file_name))
            return true;
        logFault("OrloInstrument::init", "Unknown internal plugin %s", record->info->name ? record->info->name : "");
        return false;
    }
    const int length =
        std::snprintf(record->path, sizeof record->path, "%s/%s", findInstrumentDirectory().c_str(), file_name);
    // A path that was cut short could name another file.
    if (length >= 0 && static_cast<size_t>(length) < sizeof record->path)
        record->library = TaviDllOpen(record->path);
    if (!record->library) {
        logFault("OrloInstrument::init", "Failed to load plugin %s", record->path);
        return false;
    }
    return findEntryPoints();
}

bool OrloInstrument::findEntryPoints()
{
    const auto find = [this](auto &function, const char *name) {
        using Function = std::remove_reference_t<decltype(function)>;
        function = reinterpret_cast<Function>(TaviDllGetProcAddress(record->library, name));
        if (!function)
            LogError(unit_name, "OrloInstrument::init", QByteArray("Cannot get dll address for ").append(name));
        return function != nullptr;
    };
    OrloInstrumentEntryPoints &entry = record->entry;
    const auto has = [this](uint32_t flag) {
        return (record->flags & flag) != 0;
    };

    if (!find(entry.Open, "SpectrophotometerOpen") || !find(entry.Close, "SpectrophotometerClose")
        || !find(entry.ReadLinearisation, "SpectrophotometerReadLinearisation"))
        return false;
    if (has(SPECTRO_FLAG_SPOTDENSITY) && !find(entry.ReadSpotDensities, "SpectrophotometerReadSpotDensities"))
        return false;
    if (has(SPECTRO_FLAG_SPOTLAB) && !find(entry.ReadSpotLab, "SpectrophotometerReadSpotLab"))
        return false;
    if (has(SPECTRO_FLAG_CHART)
        && (!find(entry.ReadComboColourChart, "SpectrophotometerReadComboColourChart")
            || !find(entry.GetComboColourChart, "SpectrophotometerGetComboColourChart")))
        return false;
    if (has(SPECTRO_FLAG_LINCHARTGENERATOR)) {
        if (!find(entry.GetLinChart, "SpectrophotometerGetLinChart"))
            return false;
    } else if (!find(entry.GetLinChartNames, "SpectrophotometerGetLinChartNames")) {
        return false;
    }
    return !has(SPECTRO_FLAG_PRINTER)
           || find(entry.PrintNReadComboColourChart, "SpectrophotometerPrintNReadComboColourChart");
}

void OrloInstrument::tearDown()
{
    if (!record)
        return;
    // Taken out first, so that a text of the plug-in's Close that asks this driver something finds it Empty.
    OrloInstrumentRecord *old = std::exchange(record, nullptr);
    ++teardowns;
    if (old->handle) {
        const QPointer<OrloInstrument> self(this);
        is_tearing_down = true;
        old->entry.Close(old->handle, MessageOutputCallbackNoQueue, this);
        if (self)
            is_tearing_down = false;
    }
    TaviDllClose(old->library);
    TaviPacketFreeItem(old->info, TAVIPACKET_SPECTROPHOTOMETERINFO);
    std::free(old);
}

void OrloInstrument::setMessageCallback(MessageCallback callback, void *context)
{
    message_callback = callback;
    message_context = context;
}

void OrloInstrument::setDensityStandard(DENSITYSTANDARD standard)
{
    density_standard = standard;
}

bool OrloInstrument::hasLab() const
{
    return record && record->entry.ReadSpotLab;
}

bool OrloInstrument::hasDensity() const
{
    return record && record->entry.ReadSpotDensities;
}

bool OrloInstrument::hasLinearisation() const
{
    return record && record->entry.ReadLinearisation;
}

bool OrloInstrument::hasLinChartGenerator() const
{
    return record && record->entry.GetLinChart;
}

bool OrloInstrument::isStripReader() const
{
    return record && (record->flags & SPECTRO_FLAG_STRIPREADER) != 0;
}

bool OrloInstrument::isPrinter() const
{
    return record && (record->flags & SPECTRO_FLAG_PRINTER) != 0;
}

std::string OrloInstrument::getChartName(SERVER_COLOURSPACE space) const
{
    if (!record || !record->entry.GetLinChartNames)
        return {};
    std::vector<char> buffer(8192);
    record->entry.GetLinChartNames(space, buffer.data());
    buffer.back() = '\0';
    return buffer.data();
}

int OrloInstrument::getLinearisationChart(DENSITYLUT const *table, double *values, unsigned long count) const
{
    if (!record || !record->entry.GetLinChart || !table || !values || count == 0)
        return 0;
    return record->entry.GetLinChart(table, values, count);
}

int OrloInstrument::getComboColourChart(TAVICOMBOCOLOUR const *patches, unsigned long parameter) const
{
    if (!record || !record->entry.GetComboColourChart || !patches)
        return 0;
    return record->entry.GetComboColourChart(patches, parameter);
}

std::string OrloInstrument::dllFilename() const
{
    return record && record->info && record->info->dll_filename ? record->info->dll_filename : std::string();
}

bool OrloInstrument::hasUndelivered() const
{
    return event_queue->isDispatching() || event_queue->length() > 0;
}

void OrloInstrument::emitDone(int result)
{
    Q_EMIT done(result);
}
