// SPDX-License-Identifier: MIT
// The hand-over of what a plug-in reports: producers on the worker thread, consumers on the main thread.
#include "instruments/instrumentmessage_p.h"
#include "instruments/orloinstrument.h"
#include "instruments/orloinstrumentevent_p.h"
#include "tavilib/tavilist.h"
#include "tavilib/tavilog.h"
#include "tavilib/tavipacket.h"
#include "tavilib/tavistring.h"

#include <QEvent>

#include <cstdarg>
#include <cstdlib>

namespace {

constexpr double lowest_density = 0.001;

constexpr double PATCHDENSITY::*const density_fields[] = {&PATCHDENSITY::density, &PATCHDENSITY::density_k,
                                                          &PATCHDENSITY::density_c, &PATCHDENSITY::density_m,
                                                          &PATCHDENSITY::density_y};

bool isSuspicious(const PATCHDENSITY &patch)
{
    bool suspicious = patch.patch_index < 0;
    for (const auto field : density_fields)
        suspicious = suspicious || patch.*field < 0.0;
    return suspicious;
}

void raiseNegativeDensities(PATCHDENSITY &patch)
{
    for (const auto field : density_fields) {
        if (patch.*field < 0.0)
            patch.*field = lowest_density;
    }
}

} // namespace

int OrloInstrument::processLabFromInstrument(void *driver, double L, double a, double b)
{
    OrloInstrumentEvent *event = NewOrloInstrumentMessageEvent(ORLOINSTRUMENTEVENT_LAB);
    if (!driver || !event) {
        FreeOrloInstrumentMessageEvent(event);
        return 0;
    }
    event->L = L;
    event->a = a;
    event->b = b;
    static_cast<OrloInstrument *>(driver)->event_queue->post(event);
    return 0;
}

int OrloInstrument::processDensityFromInstrument(void *driver, PATCHDENSITY *patches)
{
    if (!driver || !patches)
        return 0;
    bool suspicious = false;
    for (const PATCHDENSITY *patch = patches; patch; patch = NextInList(patch))
        suspicious = suspicious || isSuspicious(*patch);
    if (suspicious)
        MessageOutputCallback(driver, 1, "OrloInstrument", "processDensityFromInstrument",
                              "Some of the density values read were negative. Please recalibrate your instrument and "
                              "try again");

    OrloInstrumentEvent *event = NewOrloInstrumentMessageEvent(ORLOINSTRUMENTEVENT_DENSITY);
    if (!event)
        return 0;
    event->patches = DuplicatePacketList(TAVIPACKET_PATCHDENSITY, patches);
    if (!event->patches) {
        FreeOrloInstrumentMessageEvent(event);
        return 0;
    }
    // The plug-in's own records stay as they are: it may still look at what it has read.
    for (PATCHDENSITY *patch = event->patches; patch; patch = NextInList(patch))
        raiseNegativeDensities(*patch);
    static_cast<OrloInstrument *>(driver)->event_queue->post(event);
    return 0;
}

int OrloInstrument::MessageOutputCallback(void *driver, int kind, const char *source_unit, const char *function,
                                          const char *format, ...)
{
    if (!driver)
        return 0;
    va_list arguments;
    va_start(arguments, format);
    char *text = formatInstrumentMessage(format, arguments);
    va_end(arguments);
    if (!text)
        return -1;
    OrloInstrumentEvent *event = NewOrloInstrumentMessageEvent(ORLOINSTRUMENTEVENT_MESSAGE);
    if (!event) {
        std::free(text);
        return 0;
    }
    event->kind = kind;
    event->source_unit = AllocateAndCopyStringConst(source_unit);
    event->function = AllocateAndCopyStringConst(function);
    event->text = text;
    static_cast<OrloInstrument *>(driver)->event_queue->post(event);
    return 0;
}

int OrloInstrument::MessageOutputCallbackNoQueue(void *driver, int kind, const char * /*source_unit*/,
                                                 const char *function, const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    char *text = formatInstrumentMessage(format, arguments);
    va_end(arguments);
    if (!text)
        return -1;
    // A plug-in may go on talking in an Open during which its driver was destroyed.
    auto *self = isAlive(driver) ? static_cast<OrloInstrument *>(driver) : nullptr;
    if (self && self->message_callback && kind == 0)
        self->message_callback(self->message_context, text);
    else
        TaviLogMessage("orloinstrument", "OrloInstrument", TAVILOG_PLUGIN, TAVILOG_FORM_TEXT, 1, "%s %s",
                       function ? function : "", text);
    std::free(text);
    return 0;
}

bool OrloInstrument::event(QEvent *event)
{
    // Not QObject::event() for the rest, on purpose: see the class's documentation.
    if (!event || event->type() != QEvent::User)
        return false;
    processEventQueue();
    return true;
}

void OrloInstrument::processEventQueue()
{
    event_queue->drain([this](const OrloInstrumentEvent *event) { dispatchOrloInstrumentMessageEvent(*event); });
}

void OrloInstrument::dispatchOrloInstrumentMessageEvent(const OrloInstrumentEvent &event)
{
    switch (event.type) {
    case ORLOINSTRUMENTEVENT_MESSAGE:
        if (message_callback && event.kind == 0)
            message_callback(message_context, event.text);
        else
            LogError(event.source_unit, event.function, event.text);
        break;
    case ORLOINSTRUMENTEVENT_LAB:
        if (lab_callback)
            lab_callback(callback_context, event.L, event.a, event.b);
        break;
    case ORLOINSTRUMENTEVENT_DENSITY:
        if (density_callback)
            density_callback(callback_context, event.patches);
        break;
    }
}
