// SPDX-License-Identifier: MIT
#ifndef TAVILIB_CALCHECKCRITERIA_H
#define TAVILIB_CALCHECKCRITERIA_H

#include "tavilib/tavilib_export.h"
#include "tavilib/tavirecords.h"

#include <string>
#include <string_view>
#include <vector>

/// @file
/// Criteria sets: which limits a colour check is judged by, as small text files, one for each set.
///
/// Two come with the library: `iso12647-7-2016` (CIEDE2000) and `iso12647-7-2007` (the plain difference). Own sets
/// are files of the same kind:
///
///     # Limits of our house, for the large printers.
///     name = house-2026
///     formula = CIE2000
///     delta_e.paper = 2.5
///     delta_e.average = 2
///     delta_e.max = 5
///     delta_h.cyan = 2.5
///     delta_c.gray = 2
///     delta_c.gray_max = 3.5
///
/// **Keys.** `name` (letters, digits, '.', '_' and '-'; required), `formula` (`CIE76`, `CIE94` or `CIE2000`;
/// required), `standard`, `edition` and `source` (any text), and for each of `delta_e`, `delta_h` and `delta_c` the
/// limits `paper`, `cyan`, `magenta`, `yellow`, `black`, `average`, `max`, `deviation`, `gray`, `gray_max`: a number
/// from 0 to 65.534 with a decimal point and no more than three decimals. There is at least one limit. A figure that
/// is equal to its limit passes. What the figures are stands at calcheckResults().
///
/// One key a line; blank lines and lines that begin with '#' are passed over; no key comes twice, and unknown ones
/// are refused, so that a misspelt limit does not go unnoticed.
///
/// **Where sets are looked for.** In the folder that comes with the library
/// (`share/taviwidgets/criteria` beside the folder of the libraries), so that no other set can take the name of one
/// of these; then in `$XDG_DATA_HOME/taviwidgets/criteria` (`~/.local/share` where that is not set), then in
/// `taviwidgets/criteria` below each folder of `$XDG_DATA_DIRS` (`/usr/local/share:/usr/share`). The variable
/// TAVI_CRITERIA_PATH, folders separated by ':', takes the place of them all. The file of a set is its name with
/// ".criteria".
///
/// Functions that give or take a std::string throw std::bad_alloc if memory is out, and nothing else. They may be
/// called from any thread.

/// Reads a set from @a text. The record is the caller's (packet type 1002). Null if it is refused: then @a error is
/// "path:line: reason", one line, without the line where none is at fault; @a path only names the text in it.
TAVILIB_EXPORT CALCHECKCRITERIA *calcheckParseCriteria(std::string_view text, const std::string &path,
                                                       std::string &error);

/// calcheckParseCriteria() for the regular file at @a path, of 64 KiB at most.
TAVILIB_EXPORT CALCHECKCRITERIA *calcheckReadCriteria(const std::string &path, std::string &error);

/// The set with a name, or the one in a file: what holds a '/' or ends in ".criteria" is the path of a file. Null if
/// there is none or it is refused; then @a error says what and where, and for a name which there are.
TAVILIB_EXPORT CALCHECKCRITERIA *calcheckFindCriteria(const std::string &name_or_path, std::string &error);

/// The set by which a chart is judged that brings no limits: `iso12647-7-2007` for the plain difference,
/// `iso12647-7-2016` for CIEDE2000. Null for CIE94, for which no set is known, and where the file is missing or
/// refused, which is logged. Read once; it lives as long as the program. Throws nothing.
TAVILIB_EXPORT const CALCHECKCRITERIA *calcheckCriteriaFor(DELTAE_TYPE delta_e_type);

/// The folders in which sets are looked for, the first first, whether they are there or not.
TAVILIB_EXPORT std::vector<std::string> calcheckCriteriaFolders();

/// The names of the sets in these folders, sorted, by the names of their files.
TAVILIB_EXPORT std::vector<std::string> calcheckCriteriaNames();

#endif
