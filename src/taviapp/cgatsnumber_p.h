// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_CGATSNUMBER_P_H
#define TAVIAPP_CGATSNUMBER_P_H

#include <string_view>

/// @file
/// Numbers as CGATS files write them. Not installed.

/// A number read from a cell.
struct CgatsNumber {
    double value = 0.0;
    bool valid = false; ///< A finite number, and nothing else in the cell.
    bool comma = false; ///< Written with a decimal comma.
};

/// Reads a cell: an optional sign, digits with a decimal point or one decimal comma, an optional exponent; whatever
/// the locale. Words such as "nan", "inf" and "1.#IND00" are no numbers, nor is what a double cannot hold.
CgatsNumber cgatsNumber(std::string_view cell);

#endif
