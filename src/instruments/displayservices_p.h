// SPDX-License-Identifier: MIT
#ifndef INSTRUMENTS_DISPLAYSERVICES_P_H
#define INSTRUMENTS_DISPLAYSERVICES_P_H

#include "foundation/taviwidgets_export.h"

#include <cstdint>

struct CardTable;
struct GammaSamples;

/// What a platform must know of its displays: the five operations behind DisplayDevice. Another platform brings
/// another file in place of `displayservices_xrandr.cpp`, and nothing else changes. Not installed.
///
/// Each returns Done or another of the codes. The main thread.
namespace DisplayServices {

/// A monitor, for as long as the program runs: the same one after it was away or has changed its place.
using DisplayId = std::uint32_t;

/// What came of an operation. The log names the number.
enum Result : int {
    Done = 0,
    NoServices = 1,     ///< The platform has none of this.
    NoDisplay = 2,      ///< No display there, or it is there no more.
    NoGammaControl = 3, ///< The display's table can be neither read nor written.
    Refused = 4         ///< The display server answered with an error.
};

/// The display that shows the point, in the platform's own pixels; one of them if there are several.
TAVIWIDGETS_EXPORT Result displayAtPoint(int x, int y, DisplayId &display);

/// Its picture's width and height as it stands, in millimetres; 0 where the display does not know.
TAVIWIDGETS_EXPORT Result physicalSize(DisplayId display, double &mm_width, double &mm_height);

/// Its gamma table: the card's own, and the samples that stand for it.
TAVIWIDGETS_EXPORT Result readTable(DisplayId display, GammaSamples &samples, CardTable &card);

/// Sets its gamma table to @a card where that has the size of the display's, and otherwise to what the samples give.
TAVIWIDGETS_EXPORT Result writeTable(DisplayId display, const GammaSamples &samples, const CardTable &card);

/// Sets its gamma table to a straight line from 0 to 1 in each channel.
TAVIWIDGETS_EXPORT Result writeLinearRamp(DisplayId display);

} // namespace DisplayServices

#endif
