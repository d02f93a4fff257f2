// SPDX-License-Identifier: MIT
#include "taviapp/registryfile_p.h"

#include "taviapp/fileaside_p.h"
#include "taviapp/registrysections_p.h"
#include "taviapp/writeaheadlog_p.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>
#include <utility>

namespace {

constexpr int application_id = 0x54415649; // "TAVI"
constexpr int layout_version = 1;

/// Kept word for word in the file, where it is compared with this.
constexpr const char table_sql[] =
    "setting (section TEXT NOT NULL, key TEXT NOT NULL, value TEXT NOT NULL, checksum INTEGER NOT NULL, "
    "PRIMARY KEY (section, key)) WITHOUT ROWID";

constexpr std::array<uint32_t, 256> crcTable()
{
    std::array<uint32_t, 256> table = {};
    for (uint32_t i = 0; i < 256; ++i) {
        uint32_t crc = i;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ ((crc & 1U) ? 0xedb88320U : 0U);
        table[i] = crc;
    }
    return table;
}

uint32_t addToCrc(uint32_t crc, std::string_view bytes)
{
    static constexpr std::array<uint32_t, 256> table = crcTable();
    for (const char byte : bytes)
        crc = (crc >> 8) ^ table[(crc ^ static_cast<unsigned char>(byte)) & 0xffU];
    return crc;
}

/// A statement in use: it is made ready for the next use on the way out.
class Use
{
public:
    explicit Use(sqlite3_stmt *statement) : statement_(statement) {}
    ~Use()
    {
        sqlite3_reset(statement_);
        sqlite3_clear_bindings(statement_);
    }
    Use(const Use &) = delete;
    Use &operator=(const Use &) = delete;

    void bind(int index, std::string_view text)
    {
        // A null pointer would bind as NULL.
        sqlite3_bind_text64(statement_, index, text.data() ? text.data() : "", text.size(), SQLITE_STATIC,
                            SQLITE_UTF8);
    }
    void bind(int index, int64_t number) { sqlite3_bind_int64(statement_, index, number); }
    int step() { return sqlite3_step(statement_); }
    int64_t number(int column) { return sqlite3_column_int64(statement_, column); }
    std::string text(int column)
    {
        const auto *bytes = reinterpret_cast<const char *>(sqlite3_column_text(statement_, column));
        return bytes ? std::string(bytes, static_cast<size_t>(sqlite3_column_bytes(statement_, column)))
                     : std::string();
    }

private:
    sqlite3_stmt *statement_;
};

/// Whether memory is out, which is a passing state. A damaged length may ask for more than there can ever be.
bool memoryIsShort()
{
    constexpr int plenty = 1 << 24;
    void *memory = sqlite3_malloc(plenty);
    sqlite3_free(memory);
    return !memory;
}

RegistryFile::Result damaged(std::string reason)
{
    return {RegistryFile::Outcome::Damaged, std::move(reason)};
}

RegistryFile::Result failed(std::string reason)
{
    return {RegistryFile::Outcome::Failed, std::move(reason)};
}

/// What stands at the path, found without opening it: opening and closing a file drops all locks that this process
/// holds on it.
RegistryFile::Result examinePath(const std::string &path)
{
    struct stat status = {};
    const bool there = ::stat(path.c_str(), &status) == 0;
    if (!there && errno != ENOENT)
        return failed(std::strerror(errno));
    if (there && !S_ISREG(status.st_mode))
        return failed("it is not a regular file");
    struct stat log = {};
    const bool has_log = ::stat((path + "-wal").c_str(), &log) == 0 && log.st_size > 0;
    // SQLite would discard such a log.
    if (has_log && (!there || status.st_size == 0))
        return damaged("the file is gone or empty, its write-ahead log is not");
    return {};
}

} // namespace

uint32_t RegistryFile::checksum(std::string_view section, std::string_view key, std::string_view value)
{
    uint32_t crc = 0xffffffffU;
    for (const std::string_view text : {section, key, value}) {
        std::array<char, 8> length = {};
        for (size_t i = 0; i < length.size(); ++i)
            length[i] = static_cast<char>(text.size() >> (8 * i) & 0xffU);
        crc = addToCrc(addToCrc(crc, {length.data(), length.size()}), text);
    }
    return ~crc;
}

RegistryFile::Result RegistryFile::open(const std::string &path, RegistrySections &content,
                                        std::chrono::milliseconds patience)
{
    Result result = examinePath(path);
    if (!result.done())
        return result;
    if (sqlite3_open_v2(path.c_str(), &database_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX,
                        nullptr)
        != SQLITE_OK) {
        result = failed(database_ ? sqlite3_errmsg(database_) : "out of memory");
        abandon();
        return result;
    }
    sqlite3_extended_result_codes(database_, 1);
    sqlite3_busy_timeout(database_, static_cast<int>(patience.count()));
    result = examine(path);
    if (result.done())
        result = prepare();
    if (result.done())
        result = load(content);
    if (result.done())
        result = chooseLog(); // writes into the file, which is sound by now
    if (result.done()) {
        // If another connection holds the lock, it reads and writes the log too and has looked at it in its turn.
        sqlite3_busy_timeout(database_, 0);
        result.broken_log = keepBrokenLog(path);
        sqlite3_busy_timeout(database_, static_cast<int>(patience.count()));
    } else {
        abandon();
    }
    return result;
}

std::optional<std::string> RegistryFile::keepBrokenLog(const std::string &path)
{
    struct stat log = {};
    if (::stat((path + "-wal").c_str(), &log) != 0 || log.st_size == 0)
        return std::nullopt;
    // Nobody writes the log during this transaction.
    if (!run("BEGIN IMMEDIATE").done())
        return std::nullopt;
    std::optional<std::string> kept;
    if (logIsBrokenInside(path + "-wal"))
        kept = copyAside(path, "-wal");
    run("ROLLBACK");
    // Emptied, so that it is told once.
    if (kept)
        run("PRAGMA wal_checkpoint(TRUNCATE)");
    return kept;
}

RegistryFile::Result RegistryFile::ask(const char *sql, std::string &answer)
{
    sqlite3_stmt *statement = nullptr;
    int code = sqlite3_prepare_v2(database_, sql, -1, &statement, nullptr);
    if (code == SQLITE_OK) {
        Use question(statement);
        code = question.step();
        if (code == SQLITE_ROW)
            answer = question.text(0);
    }
    Result result = code == SQLITE_ROW ? Result() : failure(code);
    sqlite3_finalize(statement);
    return result;
}

RegistryFile::Result RegistryFile::examine(const std::string &path)
{
    // Checks come before anything that writes. A new file has no pages.
    std::string pages;
    Result result = ask("PRAGMA page_count", pages);
    if (result.done() && pages == "0") {
        const std::string make = "BEGIN IMMEDIATE; PRAGMA application_id=" + std::to_string(application_id)
                                 + "; PRAGMA user_version=" + std::to_string(layout_version)
                                 + "; CREATE TABLE IF NOT EXISTS " + table_sql + "; COMMIT";
        result = run(make.c_str());
    } else if (result.done()) {
        result = examineSchema();
        // A header that forbids writing, in a file that may be written.
        if (result.done() && sqlite3_db_readonly(database_, "main") == 1
            && ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0)
            result = damaged("its header is damaged");
    }
    return result;
}

RegistryFile::Result RegistryFile::chooseLog()
{
    // Where the file system has no shared memory this stays at a rollback journal, which is as safe.
    run("PRAGMA journal_mode=WAL");
    return run("PRAGMA synchronous=NORMAL");
}

RegistryFile::Result RegistryFile::examineSchema()
{
    const struct {
        const char *sql;
        std::string expected;
        const char *complaint;
    } questions[] = {
        {"PRAGMA application_id", std::to_string(application_id), "it is not a settings file: application id "},
        {"PRAGMA user_version", std::to_string(layout_version), "its layout is not known: version "},
        {"PRAGMA encoding", "UTF-8", "it is not a settings file: encoding "},
        {"SELECT count(*) FROM sqlite_schema", "1", "it is not a settings file: number of tables "},
        {"SELECT sql FROM sqlite_schema", std::string("CREATE TABLE ") + table_sql, "it is not a settings file: "},
        {"PRAGMA quick_check(1)", "ok", "it is damaged: "},
    };
    for (const auto &question : questions) {
        std::string answer;
        Result result = ask(question.sql, answer);
        if (!result.done())
            return result;
        if (answer != question.expected)
            return damaged(question.complaint + answer);
    }
    return {};
}

RegistryFile::Result RegistryFile::prepare()
{
    const struct {
        sqlite3_stmt **statement;
        const char *sql;
    } statements[] = {
        {&put_, "REPLACE INTO setting VALUES (?1, ?2, ?3, ?4)"},
        {&clear_key_, "DELETE FROM setting WHERE section = ?1 AND key = ?2"},
        {&clear_section_, "DELETE FROM setting WHERE section = ?1"},
        {&data_version_, "PRAGMA data_version"},
        {&rows_, "SELECT section, key, value, checksum FROM setting"},
    };
    for (const auto &entry : statements) {
        const int code =
            sqlite3_prepare_v3(database_, entry.sql, -1, SQLITE_PREPARE_PERSISTENT, entry.statement, nullptr);
        if (code != SQLITE_OK)
            return failure(code);
    }
    return {};
}

RegistryFile::Result RegistryFile::load(RegistrySections &content)
{
    // One transaction, so that the version is that of the rows.
    Result result = run("BEGIN");
    if (!result.done())
        return result;
    int64_t version = 0;
    int code = dataVersion(version);
    RegistrySections read;
    if (code == SQLITE_ROW) {
        Use rows(rows_);
        std::optional<std::pair<std::string, std::string>> last;
        while ((code = rows.step()) == SQLITE_ROW) {
            std::string section = rows.text(0);
            std::string key = rows.text(1);
            const std::string value = rows.text(2);
            if (rows.number(3) != checksum(section, key, value)) {
                result = damaged("the checksum of key \"" + key + "\" in section \"" + section + "\" is wrong");
                break;
            }
            // They come as the tree holds them. The check of the database does not look at this, and in a tree out of
            // order a row may be missed when it is written or cleared.
            if (last && std::tie(section, key) <= std::tie(last->first, last->second)) {
                result = damaged("its rows are out of order");
                break;
            }
            read.put(section, key, value);
            last.emplace(std::move(section), std::move(key));
        }
    }
    if (result.done() && code != SQLITE_DONE)
        result = failure(code);
    run("COMMIT");
    if (result.done()) {
        content = std::move(read);
        version_seen_ = version;
    }
    return result;
}

int RegistryFile::dataVersion(int64_t &version)
{
    Use question(data_version_);
    const int code = question.step();
    if (code == SQLITE_ROW)
        version = question.number(0);
    return code;
}

RegistryFile::Result RegistryFile::refresh(RegistrySections &content, bool &changed)
{
    changed = false;
    int64_t version = 0;
    if (const int code = dataVersion(version); code != SQLITE_ROW)
        return failure(code);
    if (version == version_seen_)
        return {};
    const Result result = load(content);
    changed = result.done();
    return result;
}

RegistryFile::Result RegistryFile::write(const RegistryChanges &changes, std::chrono::milliseconds patience)
{
    sqlite3_busy_timeout(database_, static_cast<int>(patience.count()));
    Result result;
    if (changes.count() == 1) {
        result = writeEach(changes);
    } else {
        result = run("BEGIN IMMEDIATE");
        if (result.done())
            result = writeEach(changes);
        if (result.done())
            result = run("COMMIT");
        if (!result.done() && sqlite3_get_autocommit(database_) == 0)
            run("ROLLBACK");
    }
    return result;
}

RegistryFile::Result RegistryFile::writeEach(const RegistryChanges &changes)
{
    for (const auto &[section, change] : changes.all()) {
        if (change.cleared) {
            Use clear(clear_section_);
            clear.bind(1, section);
            if (const int code = clear.step(); code != SQLITE_DONE)
                return failure(code);
        }
        for (const auto &[key, value] : change.keys) {
            Use statement(value ? put_ : clear_key_);
            statement.bind(1, section);
            statement.bind(2, key);
            if (value) {
                statement.bind(3, *value);
                statement.bind(4, static_cast<int64_t>(checksum(section, key, *value)));
            }
            if (const int code = statement.step(); code != SQLITE_DONE)
                return failure(code);
        }
    }
    return {};
}

bool RegistryFile::hasMoved() const
{
    int moved = 0;
    return sqlite3_file_control(database_, "main", SQLITE_FCNTL_HAS_MOVED, &moved) == SQLITE_OK && moved != 0;
}

void RegistryFile::close()
{
    for (sqlite3_stmt **statement : {&put_, &clear_key_, &clear_section_, &data_version_, &rows_}) {
        sqlite3_finalize(*statement);
        *statement = nullptr;
    }
    sqlite3_close(database_);
    database_ = nullptr;
}

void RegistryFile::abandon()
{
    if (database_)
        sqlite3_db_config(database_, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    close();
}

RegistryFile::Result RegistryFile::run(const char *sql)
{
    const int code = sqlite3_exec(database_, sql, nullptr, nullptr, nullptr);
    return code == SQLITE_OK ? Result() : failure(code);
}

RegistryFile::Result RegistryFile::failure(int code) const
{
    const std::string reason = sqlite3_errmsg(database_);
    switch (code & 0xff) {
    case SQLITE_NOMEM:
        return memoryIsShort() ? failed(reason) : damaged("it claims more than memory holds");
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_FORMAT:
    case SQLITE_ERROR: // a schema that cannot be understood
    case SQLITE_DONE:  // an answer of no rows where there must be one
    case SQLITE_CONSTRAINT:
    case SQLITE_MISMATCH:
    case SQLITE_TOOBIG: // a damaged length
        return damaged(reason);
    default:
        return failed(reason);
    }
}
