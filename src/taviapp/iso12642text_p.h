// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_ISO12642TEXT_P_H
#define TAVIAPP_ISO12642TEXT_P_H

#include "taviapp/taviapp_export.h"
#include "tavilib/tavirecords.h"

#include <string>

/// The text of a file with the patches of a list, as ExportISO12642 writes it. Where it would not come back as it is
/// the text is empty, and @a error is the reason. Not installed.
TAVIAPP_EXPORT std::string iso12642Text(const TAVICOMBOCOLOUR *patches, const SPECTROPHOTOMETERINFO *instrument,
                                        std::string &error);

#endif
