// SPDX-License-Identifier: MIT
// The hand-over of what a plug-in reports: producers on the worker thread, consumers on the main thread.
#include "instruments/instrumentmessage_p.h"
#include "instruments/orloinstrument.h"
#include "instruments/orloinstrumentcontexts_p.h"
#include "instruments/orloinstrumentevent_p.h"
#include "tavilib/tavilist.h"
#include "tavilib/tavilog.h"
#include "tavilib/tavipacket.h"
#include "tavilib/tavistring.h"

#include <QEvent>
#include <QThread>

#include <cmath>
#include <cstdarg>
#include <cstdlib>

namespace {

constexpr double lowest_density = 0.001;

constexpr double PATCHDENSITY::*const density_fields[] = {&PATCHDENSITY::density, &PATCHDENSITY::density_k,
                                                          &PATCHDENSITY::density_c, &PATCHDENSITY::density_m,
                                                          &PATCHDENSITY::density_y};

struct Doubts {
    bool negative = false;
    bool no_number = false;
};

Doubts doubtsAbout(const PATCHDENSITY *patches)
{
    Doubts doubts;
    for (; patches; patches = NextInList(patches)) {
        doubts.negative = doubts.negative || patches->patch_index < 0;
        for (const auto field : density_fields) {
            doubts.negative = doubts.negative || patches->*field < 0.0;
            // What is below zero is raised, the infinite too.
            doubts.no_number = doubts.no_number || (!std::isfinite(patches->*field) && !(patches->*field < 0.0));
        }
    }
    return doubts;
}

void raiseNegativeDensities(PATCHDENSITY &patch)
{
    for (const auto field : density_fields) {
        if (patch.*field < 0.0)
            patch.*field = lowest_density;
    }
}

/// Once for each read that is over: a thread that has not noticed may go on for long.
void logLateCall(const void *context)
{
    if (OrloInstrumentContexts::instance().isFirstLateCall(context))
        LogError("orloinstrument", "OrloInstrument",
                 "The instrument plug-in has called back after the end of its read");
}

} // namespace

void OrloInstrument::queueEvent(const void *context, OrloInstrumentEvent *event)
{
    const auto post = [event](OrloInstrument &driver) {
        driver.event_queue->post(event);
    };
    if (OrloInstrumentContexts::instance().use(context, post))
        return;
    FreeOrloInstrumentMessageEvent(event);
    logLateCall(context);
}

int OrloInstrument::queueMessage(const void *context, int kind, const char *source_unit, const char *function,
                                 char *text)
{
    OrloInstrumentEvent *event = NewOrloInstrumentMessageEvent(ORLOINSTRUMENTEVENT_MESSAGE);
    if (!event) {
        std::free(text);
        return 0;
    }
    event->kind = kind;
    event->source_unit = AllocateAndCopyStringConst(source_unit);
    event->function = AllocateAndCopyStringConst(function);
    event->text = text;
    queueEvent(context, event);
    return 0;
}

int OrloInstrument::processLabFromInstrument(void *context, double L, double a, double b)
{
    if (!context)
        return 0;
    if (!std::isfinite(L) || !std::isfinite(a) || !std::isfinite(b))
        MessageOutputCallback(context, 1, "OrloInstrument", "processLabFromInstrument",
                              "The instrument sent a colour that is no number");
    OrloInstrumentEvent *event = NewOrloInstrumentMessageEvent(ORLOINSTRUMENTEVENT_LAB);
    if (!event)
        return 0;
    event->L = L;
    event->a = a;
    event->b = b;
    queueEvent(context, event);
    return 0;
}

int OrloInstrument::processDensityFromInstrument(void *context, PATCHDENSITY *patches)
{
    if (!context || !patches)
        return 0;
    const Doubts doubts = doubtsAbout(patches);
    if (doubts.negative)
        MessageOutputCallback(context, 1, "OrloInstrument", "processDensityFromInstrument",
                              "Some of the density values read were negative. Please recalibrate your instrument and "
                              "try again");
    if (doubts.no_number)
        MessageOutputCallback(context, 1, "OrloInstrument", "processDensityFromInstrument",
                              "The instrument sent a density that is no number");

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
    queueEvent(context, event);
    return 0;
}

int OrloInstrument::MessageOutputCallback(void *context, int kind, const char *source_unit, const char *function,
                                          const char *format, ...)
{
    if (!context)
        return 0;
    va_list arguments;
    va_start(arguments, format);
    char *text = formatInstrumentMessage(format, arguments);
    va_end(arguments);
    return text ? queueMessage(context, kind, source_unit, function, text) : -1;
}

int OrloInstrument::MessageOutputCallbackNoQueue(void *context, int kind, const char *source_unit,
                                                 const char *function, const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    char *text = formatInstrumentMessage(format, arguments);
    va_end(arguments);
    if (!text)
        return -1;
    // A plug-in may go on talking in an Open during which its driver was destroyed, and it may keep this callback and
    // talk on any thread.
    OrloInstrument *self = nullptr;
    bool elsewhere = false;
    OrloInstrumentContexts::instance().use(context, [&](OrloInstrument &driver) {
        elsewhere = QThread::currentThread() != driver.thread();
        self = elsewhere ? nullptr : &driver;
    });
    if (kind == 0 && elsewhere)
        return queueMessage(context, kind, source_unit, function, text);
    if (kind == 0 && self && self->message_callback)
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
