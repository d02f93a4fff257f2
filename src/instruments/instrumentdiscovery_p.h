// SPDX-License-Identifier: MIT
#ifndef INSTRUMENTS_INSTRUMENTDISCOVERY_P_H
#define INSTRUMENTS_INSTRUMENTDISCOVERY_P_H

#include "tavilib/tavirecords.h"

#include <string>

/// @file
/// Finding plug-ins: what the drivers of spectrophotometers and of monitor calibrators share.

/// The plug-in directory, relative to the working directory: the first of "readers", "../readers", "lib/readers" and
/// "../lib/readers" that exists, "readers" if none does. Nothing else is searched.
std::string findInstrumentDirectory();

/// Loads every ".so" of the plug-in directory once, asks it for its identity card, and inserts the cards that have
/// one of the bits @a wanted_flags into @a list, sorted by name. Nothing stays loaded. Faults are logged under
/// @a unit. False if the directory exists and cannot be listed; a missing one holds no plug-ins.
bool discoverInstruments(SPECTROPHOTOMETERINFO **list, uint32_t wanted_flags, const char *unit);

/// The first record of @a list that @a text stands for, or null. By name, the text is cut at the first " Rev " and
/// finds a name that begins with it, so that a kept "Name Rev 1.02" finds its instrument whatever its revision, and
/// an empty text finds the first record; otherwise the text is the file name. A null text finds nothing.
const SPECTROPHOTOMETERINFO *chooseInstrument(const SPECTROPHOTOMETERINFO *list, const char *text, bool by_name);

#endif
