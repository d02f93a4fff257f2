// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_WRITEAHEADLOG_P_H
#define TAVIAPP_WRITEAHEADLOG_P_H

#include <string>

/// @file
/// A look into the write-ahead log of an SQLite database. Not installed.

/// Whether the log at @a path has whole transactions behind a place where its chain of checksums is broken.
///
/// The database reads a log up to the first broken checksum and takes that for the end: it has to, because a program
/// that dies while it writes leaves just that. What such a program cannot leave is a committed transaction behind the
/// broken place, so there bytes were damaged, and what follows them is lost without a word. Only the last transaction
/// of a log cannot be told from an unfinished one.
///
/// Nobody may write the log meanwhile. O(size of the log).
bool logIsBrokenInside(const std::string &path);

#endif
