// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_REGISTRYFILE_P_H
#define TAVIAPP_REGISTRYFILE_P_H

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;
class RegistryChanges;
class RegistrySections;

/// The settings file of a store: an SQLite database in WAL mode with one table of texts, each row with a checksum
/// over its section, key and value, so that a flipped bit is noticed where the database itself would not.
///
/// This class reads, writes and judges; what is done about a file that fails is TaviRegistry's affair. It writes
/// nothing into a file that it has not found sound. Not installed.
class RegistryFile
{
public:
    enum class Outcome {
        Done,
        Failed, ///< Not now: no permission, locked, disk full. The file is left as it is.
        Damaged ///< The file is damaged or no settings file.
    };
    struct Result {
        Outcome outcome = Outcome::Done;
        std::string reason; ///< In words, unless done.
        /// Set if the file's log was found damaged as it was opened: where a copy of it stands, empty for nowhere.
        std::optional<std::string> broken_log = {};
        bool done() const { return outcome == Outcome::Done; }
    };

    RegistryFile() = default;
    ~RegistryFile() { close(); }
    RegistryFile(const RegistryFile &) = delete;
    RegistryFile &operator=(const RegistryFile &) = delete;

    /// Opens the file at @a path (absolute, links resolved), makes it if it is not there or empty, and reads all of
    /// it into @a content. Nothing stays open unless done. Waits for
    /// other connections for @a patience. To be called under a DirectoryLock.
    Result open(const std::string &path, RegistrySections &content, std::chrono::milliseconds patience);
    bool isOpen() const { return database_ != nullptr; }

    /// Closes a sound file: its log is folded into it. Under a DirectoryLock, because that removes files by name.
    void close();
    /// Closes without touching the file or its companions any more.
    void abandon();

    /// Whether the path leads to another file by now, or to none.
    bool hasMoved() const;
    /// Reads the file into @a content anew if another connection has written to it since it was last read; tells in
    /// @a changed whether it has.
    Result refresh(RegistrySections &content, bool &changed);
    /// Writes all changes or none; waits for other writers for @a patience.
    Result write(const RegistryChanges &changes, std::chrono::milliseconds patience);

    /// CRC-32 (the polynomial of ISO 3309) over the three texts and their lengths.
    static uint32_t checksum(std::string_view section, std::string_view key, std::string_view value);

private:
    Result examine(const std::string &path);
    Result examineSchema();
    Result chooseLog();
    Result prepare();
    Result load(RegistrySections &content);
    std::optional<std::string> keepBrokenLog(const std::string &path);
    Result writeEach(const RegistryChanges &changes);
    Result run(const char *sql);
    Result ask(const char *sql, std::string &answer);
    Result failure(int code) const;
    int dataVersion(int64_t &version);

    sqlite3 *database_ = nullptr;
    sqlite3_stmt *put_ = nullptr;
    sqlite3_stmt *clear_key_ = nullptr;
    sqlite3_stmt *clear_section_ = nullptr;
    sqlite3_stmt *data_version_ = nullptr;
    sqlite3_stmt *rows_ = nullptr;
    int64_t version_seen_ = 0;
};

#endif
