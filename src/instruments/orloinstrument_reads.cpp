// SPDX-License-Identifier: MIT
// Starting and stopping reads, and the worker threads.
#include "instruments/orloinstrument.h"
#include "instruments/orloinstrumentcontexts_p.h"
#include "instruments/orloinstrumentevent_p.h"
#include "instruments/orloinstrumentrecord_p.h"
#include "tavilib/tavilog.h"
#include "tavilib/tavipacket.h"

#include <atomic>
#include <pthread.h>
#include <unistd.h>
#include <utility>

namespace {

// The polled words are plain ints, because plug-ins get their address; the library touches them only like this.
int loadWord(int &word)
{
    return std::atomic_ref<int>(word).load(std::memory_order_acquire);
}

void storeWord(int &word, int value)
{
    std::atomic_ref<int>(word).store(value, std::memory_order_release);
}

} // namespace

void OrloInstrument::abort()
{
    if (!enabled())
        return;
    const bool was_busy = loadWord(busy) != 0;
    storeWord(abort_flag, 1);
    if (was_busy) {
        // Whole seconds and no time limit: a device may take long to put itself away, and there is no safe way to
        // end its thread from outside.
        while (loadWord(busy) != 0)
            sleep(1);
    }
    endRead();
    lab_callback = nullptr;
    density_callback = nullptr;
    callback_context = nullptr;
    sep_type = nullptr;
    chart_parameter = 0;
    first_separation = 0;
    first_patch = 0;
    lut = nullptr;
    storeWord(abort_flag, 0);
    TaviPacketFreeList(&chart, TAVIPACKET_COMBOCOLOUR);
    event_queue->clear();
}

bool OrloInstrument::prepareRead(bool possible)
{
    if (!possible || !enabled())
        return false;
    abort();
    return true;
}

int OrloInstrument::startThread(const char *operation, void *(*read)(void *))
{
    read_context = OrloInstrumentContexts::instance().addRead(this);
    storeWord(busy, 1);
    pthread_t id = {};
    if (pthread_create(&id, nullptr, read, this) != 0) {
        TaviLogMessage("orloinstrument", operation, TAVILOG_PLUGIN, TAVILOG_FORM_TEXT, 1,
                       "Could not launch reading thread");
        storeWord(busy, 0);
        endRead();
        return -1;
    }
    pthread_detach(id);
    return 0;
}

void OrloInstrument::endRead()
{
    OrloInstrumentContexts::instance().remove(std::exchange(read_context, nullptr));
}

void OrloInstrument::finishThread()
{
    storeWord(busy, 0); // the driver may be gone from here on
}

int OrloInstrument::readSpotLab(InstrumentLabCallback callback, void *context)
{
    if (!prepareRead(callback && record && record->entry.ReadSpotLab))
        return -1;
    lab_callback = callback;
    callback_context = context;
    return startThread("readSpotLab", readSpotLabThread);
}

int OrloInstrument::readComboChart(TAVICOMBOCOLOUR *patches, unsigned long patches_per_line, unsigned long parameter,
                                   InstrumentLabCallback callback, void *context)
{
    if (!prepareRead(callback && patches && record && record->entry.ReadComboColourChart))
        return -1;
    chart = DuplicatePacketList(TAVIPACKET_COMBOCOLOUR, patches);
    if (!chart)
        return -1;
    line_length = patches_per_line;
    chart_parameter = parameter;
    lab_callback = callback;
    callback_context = context;
    return startThread("readComboChart", readComboChartThread);
}

int OrloInstrument::printNReadComboChart(TaviCommServer *server, const TAVIKEY_ELEMENT &setup_key,
                                         const TAVIKEY_ELEMENT &media_key, const TAVIKEY_ELEMENT &key_of_chart,
                                         TAVICOMBOCOLOUR *patches, unsigned long patches_per_line,
                                         unsigned long parameter, unsigned long parameter_of_print,
                                         InstrumentLabCallback callback, void *context)
{
    if (!prepareRead(callback && patches && record && record->entry.PrintNReadComboColourChart))
        return -1;
    chart = DuplicatePacketList(TAVIPACKET_COMBOCOLOUR, patches);
    if (!chart)
        return -1;
    comm_server = server;
    print_setup = setup_key;
    media = media_key;
    chart_key = key_of_chart;
    line_length = patches_per_line;
    chart_parameter = parameter;
    print_parameter = parameter_of_print;
    lab_callback = callback;
    callback_context = context;
    return startThread("printNReadComboChart", printNReadComboChartThread);
}

int OrloInstrument::readSpotDensity(SPECTROSEPTYPE *separation, InstrumentDensityCallback callback, void *context)
{
    if (!prepareRead(separation && callback && record && record->entry.ReadSpotDensities))
        return -1;
    sep_type = separation;
    read_standard = density_standard;
    density_callback = callback;
    callback_context = context;
    return startThread("readSpotDensity", readSpotDensityThread);
}

int OrloInstrument::readLinearisation(unsigned long patches_per_separation, DENSITYLUT *table,
                                      unsigned long start_separation, long start_patch,
                                      InstrumentDensityCallback callback, void *context)
{
    if (!prepareRead(callback && table && patches_per_separation != 0 && record && record->entry.ReadLinearisation))
        return -1;
    steps = patches_per_separation;
    lut = table;
    read_standard = density_standard;
    first_separation = start_separation;
    first_patch = start_patch;
    density_callback = callback;
    callback_context = context;
    return startThread("readLinearisation", readLinearisationThread);
}

// The worker's side. Each function runs on the worker thread and touches the driver last in finishThread().

template <typename Read>
void *OrloInstrument::runRead(void *driver, Read read)
{
    auto *self = static_cast<OrloInstrument *>(driver);
    if (!self)
        return nullptr;
    if (self->record)
        read(*self, *self->record);
    self->finishThread();
    return nullptr;
}

void *OrloInstrument::readSpotLabThread(void *driver)
{
    return runRead(driver, [](OrloInstrument &self, const OrloInstrumentRecord &loaded) {
        if (loaded.entry.ReadSpotLab)
            loaded.entry.ReadSpotLab(loaded.handle, &self.abort_flag, processLabFromInstrument, self.read_context,
                                     MessageOutputCallback, self.read_context);
    });
}

void *OrloInstrument::readComboChartThread(void *driver)
{
    return runRead(driver, [](OrloInstrument &self, const OrloInstrumentRecord &loaded) {
        if (loaded.entry.ReadComboColourChart)
            loaded.entry.ReadComboColourChart(loaded.handle, &self.abort_flag, self.chart, self.line_length,
                                              self.chart_parameter, processLabFromInstrument, self.read_context,
                                              MessageOutputCallback, self.read_context);
    });
}

void *OrloInstrument::printNReadComboChartThread(void *driver)
{
    return runRead(driver, [](OrloInstrument &self, const OrloInstrumentRecord &loaded) {
        if (!loaded.entry.PrintNReadComboColourChart || (loaded.flags & SPECTRO_FLAG_PRINTER) == 0)
            return;
        const int result = loaded.entry.PrintNReadComboColourChart(
            loaded.handle, &self.abort_flag, self.comm_server, &self.print_setup, &self.media, &self.chart_key,
            self.chart, self.line_length, self.chart_parameter, self.print_parameter, processLabFromInstrument,
            self.read_context, MessageOutputCallback, self.read_context);
        self.emitDone(result);
    });
}

void *OrloInstrument::readSpotDensityThread(void *driver)
{
    return runRead(driver, [](OrloInstrument &self, const OrloInstrumentRecord &loaded) {
        if (loaded.entry.ReadSpotDensities)
            loaded.entry.ReadSpotDensities(loaded.handle, &self.abort_flag, self.read_standard, self.sep_type,
                                           processDensityFromInstrument, self.read_context, MessageOutputCallback,
                                           self.read_context);
    });
}

void *OrloInstrument::readLinearisationThread(void *driver)
{
    return runRead(driver, [](OrloInstrument &self, const OrloInstrumentRecord &loaded) {
        if (loaded.entry.ReadLinearisation)
            loaded.entry.ReadLinearisation(loaded.handle, &self.abort_flag, self.read_standard, self.steps, self.lut,
                                           self.first_separation, self.first_patch, processDensityFromInstrument,
                                           self.read_context, MessageOutputCallback, self.read_context);
    });
}
