// SPDX-License-Identifier: MIT
#ifndef TAVILIB_TAVIFILE_H
#define TAVILIB_TAVIFILE_H

#include "tavilib/tavilib_export.h"
#include "tavilib/tavirecords.h"

#include <cstdio>

/// @file
/// Files and directories. Paths are in the file system's encoding (UTF-8).

/// Opens @a path. Null if that fails, and also for a directory, which the C library would open and fail to read.
TAVILIB_EXPORT FILE *Tavi_fopen(const char *path, const char *mode);
/// Closes @a file; null is ignored.
TAVILIB_EXPORT void Tavi_fclose(FILE *file);
/// Seeks to the start and forgets end-of-file and errors.
TAVILIB_EXPORT void Tavi_rewind(FILE *file);

/// Reads one line into @a buffer, always zero-terminated, without its line end ("\n" or "\r\n").
///
/// A line longer than the buffer comes in pieces of at most @a size - 1 bytes, one a call, none lost. A file that
/// ends without a line break is no error. A zero byte is kept in the buffer, where it ends the text for C functions.
///
/// Returns 0 if a line or a piece of one was read; non-zero at the end of the file, on a read error, and for a null
/// file, a null buffer or a size below 2.
TAVILIB_EXPORT int GetLineEOFOKLevel2(FILE *file, char *buffer, int size);

/// True if @a name ends in @a extension, which is given with its dot. The comparison is exact. Null is false.
TAVILIB_EXPORT bool TaviCheckExtension(const char *name, const char *extension);

/// One entry of a directory.
struct TAVIDIRENTRY {
    TAVIPACKETHEADER header;
    char *name;    ///< Name without directory.
    uint32_t mode; ///< Mode bits as in a file status, of what a link points at; masked with 0xf000, 0x8000 is a
                   ///< regular file. 0xa000 is left for a link that points nowhere.
};

/// Fills @a *list with the entries of the directory @a path, sorted by name, without "." and ".." and without the
/// entries in which some platforms keep resource forks (names beginning with "._", ".DS_Store", ".AppleDouble",
/// "__MACOSX").
///
/// A directory that does not exist lists as empty. Returns negative, with an empty list, only where the path exists
/// and cannot be listed (a plain file, no permission). The list is the caller's, for TaviFreeDirList(). The last
/// argument is 0 in all callers and not looked at.
TAVILIB_EXPORT int TaviGetDirListIgnoringMacResources(TAVIDIRENTRY **list, const char *path, int reserved);

/// Frees the listing and sets the head to null.
TAVILIB_EXPORT void TaviFreeDirList(TAVIDIRENTRY **list);

#endif
