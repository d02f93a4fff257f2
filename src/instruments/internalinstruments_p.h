// SPDX-License-Identifier: MIT
#ifndef INSTRUMENTS_INTERNALINSTRUMENTS_P_H
#define INSTRUMENTS_INTERNALINSTRUMENTS_P_H

#include "instruments/orloinstrumentrecord_p.h"

/// @file
/// The instruments that live inside the library: readers of measurement files, listed and driven like plug-ins.

/// The file name extension by which they are known.
constexpr const char *internal_instrument_extension = ".orloinstrument";

/// Inserts the identity cards of all of them into @a list, sorted by name.
void addInternalInstruments(SPECTROPHOTOMETERINFO **list);

/// Sets the entry points of the one that @a file_name stands for. False if there is none of that name.
bool setInternalEntryPoints(OrloInstrumentEntryPoints &entry, const char *file_name);

#endif
