// SPDX-License-Identifier: MIT
// The CGATS readers of spectro_fromfile.h.
#include "instruments/spectro_fromfile.h"

#include "taviapp/iso12642.h"
#include "tavilib/tavipacket.h"

namespace {

/// Delivers the colours of the file until @a wanted, asked before each, says no; then the end marker.
template <typename Wanted>
int readCgats(void *handle, InstrumentLabCallback lab, void *lab_context, Wanted wanted)
{
    TAVICOMBOCOLOUR *imported = ISO12642Importer::import(static_cast<const char *>(handle), 0);
    for (const TAVICOMBOCOLOUR *patch = imported; patch; patch = NextInList(patch)) {
        if (!(patch->flags & COMBOCOLOUR_FLAG_LAB))
            continue;
        if (!wanted())
            break;
        lab(lab_context, patch->L, patch->a, patch->b);
    }
    lab(lab_context, -1.0, 0.0, 0.0);
    TaviPacketFreeList(&imported, TAVIPACKET_COMBOCOLOUR);
    return 0;
}

} // namespace

int spectro_fromCGATS_SpectrophotometerReadSpotLab(void *handle, int *, InstrumentLabCallback lab, void *lab_context,
                                                   InstrumentMessageCallback, void *)
{
    return readCgats(handle, lab, lab_context, [] { return true; });
}

int spectro_fromCGATS_SpectrophotometerReadComboColourChart(void *handle, int *, TAVICOMBOCOLOUR *chart,
                                                            unsigned long, unsigned long, InstrumentLabCallback lab,
                                                            void *lab_context, InstrumentMessageCallback, void *)
{
    const TAVICOMBOCOLOUR *next = chart;
    return readCgats(handle, lab, lab_context, [&next] {
        const bool wanted = next != nullptr;
        if (next)
            next = NextInList(next);
        return wanted;
    });
}
