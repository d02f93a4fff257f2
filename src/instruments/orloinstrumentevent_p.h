// SPDX-License-Identifier: MIT
#ifndef INSTRUMENTS_ORLOINSTRUMENTEVENT_P_H
#define INSTRUMENTS_ORLOINSTRUMENTEVENT_P_H

#include "foundation/workereventqueue.h"
#include "tavilib/tavirecords.h"

/// What a queued event of an instrument driver carries.
enum ORLOINSTRUMENTEVENTTYPE {
    ORLOINSTRUMENTEVENT_MESSAGE = 0,
    ORLOINSTRUMENTEVENT_LAB = 1,
    ORLOINSTRUMENTEVENT_DENSITY = 2
};

/// One event on the queue between a driver's worker thread and its main thread: a packet that owns what it points at.
struct OrloInstrumentEvent {
    TAVIPACKETHEADER header;
    ORLOINSTRUMENTEVENTTYPE type;

    // A message.
    int kind;
    char *source_unit;
    char *function;
    char *text; ///< Translated and formatted.

    // A colour.
    double L;
    double a;
    double b;

    // A density reading.
    PATCHDENSITY *patches;
};

/// A zeroed event; null for a type that is none of the three, and if memory is out.
OrloInstrumentEvent *NewOrloInstrumentMessageEvent(int type);

/// Frees an event with its strings or its density list. Null is ignored.
void FreeOrloInstrumentMessageEvent(OrloInstrumentEvent *event);

/// The queue of a driver.
class OrloInstrumentQueue : public WorkerEventQueue<OrloInstrumentEvent>
{
public:
    explicit OrloInstrumentQueue(QObject *driver) : WorkerEventQueue(driver, FreeOrloInstrumentMessageEvent) {}
};

#endif
