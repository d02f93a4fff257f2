// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_CGATSTEXT_P_H
#define TAVIAPP_CGATSTEXT_P_H

#include <string>
#include <string_view>

struct CgatsReport;

/// @file
/// Bytes and characters of CGATS files. Not installed.

/// Makes @a bytes the text of the file in place: takes off a byte order mark, turns UTF-16 into UTF-8, takes off the
/// end mark of DOS. False if the report now holds a refusal: the file is empty or no text.
bool cgatsDecode(std::string &bytes, CgatsReport &report);

/// @a bytes as UTF-8: as they are if they are UTF-8, else taken as Windows-1252, which @a converted then tells.
std::string cgatsToUtf8(std::string_view bytes, bool *converted = nullptr);

/// Makes every pair of quotes one.
void cgatsUndoubleQuotes(std::string &text);

/// Equal but for the case of ASCII letters.
bool cgatsEqual(std::string_view a, std::string_view b);

/// A piece of the file fit to stand in a one-line message: UTF-8, without control characters, shortened.
std::string cgatsQuoted(std::string_view bytes);

/// The line of the byte at @a offset, counted from 1. O(offset).
size_t cgatsLineOf(std::string_view text, size_t offset);

#endif
