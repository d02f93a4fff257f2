// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_TAVIREGISTRY_H
#define TAVIAPP_TAVIREGISTRY_H

#include "taviapp/taviapp_export.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string>

/// A settings store of two levels: a section holds keys, a key holds a text.
///
/// The section is the unit of ownership: the state of one widget lives in one section, and its saver wipes and
/// rewrites that section whole. Numbers and flags are put and got through typed operations, but every value is kept
/// as a text, which value() and getstring() show. Sections and keys are any bytes and compare bytewise.
///
///     TaviRegistry registry(configDirectory + "/settings.db");
///     std::string section = "main window";
///     std::string key = "width";
///     registry.clearsection(section);
///     registry.putlong(section, key, 800);
///     for (auto at = registry.firstItem(section); !registry.isEndItem(at); at = registry.nextItem())
///         use(registry.key(at), registry.value(at));
///
/// **Where it is kept.** The object made without a path lives in memory. The one made with a path keeps a file: each
/// change has been handed to the operating system when the call returns, so that it outlives the program however
/// that ends, and several programs may use one file at the same time. There is nothing to flush. What another
/// program has written is seen at the latest by the next size() or firstItem(); the other getters answer from
/// memory and do not look at the file.
///
/// **When the file fails.** No operation fails for the caller. A file that is damaged, is no settings file, or is
/// another program's database is renamed to "<path>.damaged-1" (or the next free number), with its companions
/// "-wal", "-shm" and "-journal", and the store goes on with a new file, empty if it was being opened. A damaged
/// log of a store that was killed is read up to the damage and a copy of it kept under such a name. A file that
/// cannot be opened, read or written (no directory, no permission, a full disk) leaves the values in memory; each
/// later change and the destructor try to write all that is still unwritten. Each renaming and each streak of
/// failures is told in one log line. A file that was deleted or replaced under a living store is given every value
/// that the store knows and the new file lacks.
///
/// **The file** is an SQLite database in WAL mode with one table, `setting (section, key, value, checksum)`. Beside
/// it stand "<path>-wal" and "<path>-shm" while it is open. It wants a local file system.
///
/// **Null pointers.** The forms that take null-terminated strings read a null pointer as an empty string, as
/// reg_fixup_null_cstr() does.
///
/// **Threads.** For the user interface thread only. Nothing here throws (but when memory is out).
///
/// **Complexity.** Opening is O(size of the file). Getters, puts, clearkey() and the steps of a walk are
/// O(log n) in memory, a change of a file costs one small append to its log besides. The first change of a section
/// while a cursor still stands in it copies that section.
class TAVIAPP_EXPORT TaviRegistry
{
public:
    /// Keys in bytewise order with their texts.
    using Section = std::map<std::string, std::string, std::less<>>;

    /// A place in a walk: a plain value that may be kept, copied and given back to key(), value() and isEndItem().
    /// It stands in the section as it was at firstItem() and stays valid whatever is put, cleared or read anew
    /// meanwhile. One made by default stands at an end.
    class Cursor
    {
    public:
        Cursor() = default;

    private:
        friend class TaviRegistry;
        std::shared_ptr<const Section> section_;
        Section::const_iterator at_;
    };

    /// An empty store that lives in memory.
    TaviRegistry();
    /// The store in the file at @a path (UTF-8), which is made if it does not exist; an empty file is a new store.
    /// Its directory must exist. See above for what happens when the file cannot be used.
    explicit TaviRegistry(const std::string &path);
    /// Closes the file.
    ~TaviRegistry();
    TaviRegistry(const TaviRegistry &) = delete;
    TaviRegistry &operator=(const TaviRegistry &) = delete;

    /// @name Reading
    /// @{

    /// Whether @a key is stored in @a section. Restorers ask this to tell a missing key from 0 or an empty text.
    bool exists(std::string &section, std::string &key);
    bool exists(const char *section, const char *key);

    /// The stored number; 0 for a missing key.
    ///
    /// Of any text this is the decimal number that it begins with, after blanks and a sign; 0 if it begins with
    /// none. A number above the range of long that fits an unsigned long reads as the same bits, as putulong() stored
    /// it; any other number out of range reads as the nearest end of the range.
    long getlong(std::string &section, std::string &key);
    long getlong(const char *section, const char *key);

    /// The stored text, byte for byte; empty for a missing key.
    std::string getstring(std::string &section, std::string &key);
    std::string getstring(const char *section, const char *key);

    /// The stored flag: true for any text that getlong() reads as another number than 0 and for "true", false for
    /// every other text; @a fallback for a missing key.
    bool getbool(std::string &section, std::string &key, bool fallback);
    bool getbool(const char *section, const char *key, bool fallback);
    /// @}

    /// @name Writing
    /// Each replaces what the key held before.
    /// @{

    /// Stores a number as its decimal text.
    void putlong(std::string &section, std::string &key, long value);
    void putlong(const char *section, const char *key, long value);
    /// Stores an unsigned number as its decimal text; getlong() reads it back.
    void putulong(std::string &section, std::string &key, unsigned long value);
    void putulong(const char *section, const char *key, unsigned long value);
    /// Stores a flag as "1" or "0".
    void putbool(std::string &section, std::string &key, bool value);
    void putbool(const char *section, const char *key, bool value);
    /// Stores a text as it is: UTF-8 by convention, with any line breaks, and zero bytes where it is a std::string.
    void putstring(std::string &section, std::string &key, const std::string &value);
    void putstring(const char *section, const char *key, const char *value);

    /// Removes one key; a missing key is no error.
    void clearkey(std::string &section, std::string &key);
    void clearkey(const char *section, const char *key);
    /// Removes all keys of the section, also those that another program has put there unseen.
    void clearsection(std::string &section);
    void clearsection(const char *section);
    /// @}

    /// @name Walking
    /// One walk at a time on one object: firstItem() begins it, nextItem() advances the walk begun last. Keys come
    /// in ascending bytewise order.
    /// @{

    /// Number of keys in the section; 0 for one that was never written.
    size_t size(std::string &section);
    size_t size(const char *section);
    /// Begins a walk over the section as it is now. O(1) besides reading a file that another program has changed.
    Cursor firstItem(std::string &section);
    Cursor firstItem(const char *section);
    /// Advances the walk; at its end, and before any firstItem(), it stays at an end.
    Cursor nextItem();
    /// Whether @a cursor stands past the last key, as it does at once in an empty or unknown section.
    bool isEndItem(const Cursor &cursor);
    /// The key under @a cursor; empty at an end.
    std::string key(const Cursor &cursor);
    /// The text under @a cursor, whatever operation wrote it; empty at an end.
    std::string value(const Cursor &cursor);
    /// @}

    /// The text at @a text; an empty one for a null pointer.
    static std::string reg_fixup_null_cstr(const char *text);

private:
    class Store;
    std::unique_ptr<Store> store_;
    Cursor walk_;
};

#endif
