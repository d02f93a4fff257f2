// SPDX-License-Identifier: MIT
#include "instruments/orloinstrumentevent_p.h"

#include "tavilib/tavialloc_p.h"
#include "tavilib/tavipacket.h"

#include <cstdlib>

OrloInstrumentEvent *NewOrloInstrumentMessageEvent(int type)
{
    if (type < ORLOINSTRUMENTEVENT_MESSAGE || type > ORLOINSTRUMENTEVENT_DENSITY)
        return nullptr;
    auto *event = TaviAllocRecord<OrloInstrumentEvent>();
    if (event)
        event->type = static_cast<ORLOINSTRUMENTEVENTTYPE>(type);
    return event;
}

void FreeOrloInstrumentMessageEvent(OrloInstrumentEvent *event)
{
    if (!event)
        return;
    std::free(event->source_unit);
    std::free(event->function);
    std::free(event->text);
    TaviPacketFreeList(&event->patches, TAVIPACKET_PATCHDENSITY);
    std::free(event);
}
