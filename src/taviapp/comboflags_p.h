// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_COMBOFLAGS_P_H
#define TAVIAPP_COMBOFLAGS_P_H

#include "taviapp/taviapp_export.h"
#include "tavilib/tavirecords.h"

/// What a patch stands for by its CMYK device values: a solid ink, the paper, a grey composed of cyan, magenta and
/// yellow; the COMBOCOLOUR_FLAG_... bits for it, or none. Not installed.
///
/// A composed grey is one of the published combinations, to half a percent: the six of the media wedge for proofs
/// (10/6/6, 20/12/12, 40/27/27, 60/45/45, 80/65/65, 100/85/85) and the three by which presses are set to grey
/// (25/19/19, 50/40/40, 75/66/66). What lies between them is not marked, because no rule suits both series.
TAVIAPP_EXPORT uint32_t taviReferenceFlags(const TAVICOMBOCOLOUR &patch);

#endif
