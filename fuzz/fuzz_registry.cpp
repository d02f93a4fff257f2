// SPDX-License-Identifier: MIT
// A settings store over a file, and a log beside it, of any bytes: what cannot be used stands aside unchanged, told
// in one line, and what is put is there for the next who opens the file.
//
// An input is a byte of flags, the length of the file in two bytes, the lower one first, the file, and its log to the
// end. The files are written in the folder for temporary files; TMPDIR should name one in memory.
#include "fuzz/fuzzcheck.h"
#include "taviapp/taviregistry.h"
#include "tavilib/tavilog.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

namespace {

constexpr uint8_t flag_clear_section = 1;
constexpr uint8_t flag_long_value = 2;
constexpr uint8_t flag_second_store = 4;
constexpr uint8_t flag_no_file = 8;

/// Of the sections that the files of the corpus hold. A checksum keeps others from coming up by chance.
constexpr const char *sections[] = {"window", "a", ""};

using Content = std::map<std::string, TaviRegistry::Section>;

/// A folder of our own, empty between inputs.
class Scratch
{
public:
    Scratch()
    {
        std::string name = std::filesystem::temp_directory_path() / "fuzz_registry_XXXXXX";
        FUZZ_CHECK(mkdtemp(name.data()));
        directory_ = name;
    }
    ~Scratch()
    {
        std::error_code error;
        std::filesystem::remove_all(directory_, error);
    }
    Scratch(const Scratch &) = delete;
    Scratch &operator=(const Scratch &) = delete;

    std::string path(const std::string &suffix = {}) const { return directory_ / ("settings.db" + suffix); }
    void clear() const
    {
        for (const auto &entry : std::filesystem::directory_iterator(directory_))
            std::filesystem::remove(entry.path());
    }
    void write(const std::string &suffix, const std::string &bytes) const
    {
        FUZZ_CHECK(std::ofstream(path(suffix), std::ios::binary) << bytes);
    }
    bool has(const std::string &suffix) const { return std::filesystem::exists(path(suffix)); }
    bool holds(const std::string &suffix, const std::string &bytes) const
    {
        std::ifstream file(path(suffix), std::ios::binary);
        return file && std::string(std::istreambuf_iterator<char>(file), {}) == bytes;
    }

    /// How many times something was put aside.
    size_t asideCount() const
    {
        size_t count = 0;
        while (has(aside(count + 1)) || has(aside(count + 1) + "-wal"))
            ++count;
        return count;
    }
    static std::string aside(size_t number) { return ".damaged-" + std::to_string(number); }

private:
    std::filesystem::path directory_;
};

/// The lines that are logged while it lives.
class Log
{
public:
    Log() { TaviLogSetSink(take, this); }
    ~Log() { TaviLogSetSink(nullptr, nullptr); }
    Log(const Log &) = delete;
    Log &operator=(const Log &) = delete;

    /// A file that cannot be used is one that is put aside; nothing else may come of its bytes.
    size_t count() const
    {
        for (const std::string &line : lines_) {
            const bool aside = line.find(".damaged-") != std::string::npos;
            if (!aside)
                std::fprintf(stderr, "%s\n", line.c_str());
            FUZZ_CHECK(aside);
        }
        return lines_.size();
    }

private:
    static void take(void *log, const TaviLogLine &line) { static_cast<Log *>(log)->lines_.emplace_back(line.text); }
    std::vector<std::string> lines_;
};

Content contentOf(TaviRegistry &registry)
{
    Content content;
    for (std::string section : sections) {
        const size_t size = registry.size(section);
        std::string last;
        for (auto at = registry.firstItem(section); !registry.isEndItem(at); at = registry.nextItem()) {
            std::string key = registry.key(at);
            FUZZ_CHECK(content[section].empty() || last < key);
            FUZZ_CHECK(registry.exists(section, key) && registry.getstring(section, key) == registry.value(at));
            content[section][key] = registry.value(at);
            last = std::move(key);
        }
        FUZZ_CHECK(size == (content.contains(section) ? content[section].size() : 0));
    }
    return content;
}

void put(TaviRegistry &registry, Content &content, std::string section, std::string key, const std::string &value)
{
    registry.putstring(section, key, value);
    content[section][key] = value;
    FUZZ_CHECK(registry.getstring(section, key) == value);
}

void change(TaviRegistry &registry, Content &content, uint8_t flags)
{
    if (flags & flag_clear_section) {
        registry.clearsection("window");
        content.erase("window");
    }
    put(registry, content, "window", "width", "1234");
    put(registry, content, "a", "new", flags & flag_long_value ? std::string(3000, 'x') : std::string());
    if (content["a"].contains("b")) {
        registry.clearkey("a", "b");
        content["a"].erase("b");
    }
}

/// What stands aside behind the opening of these files is they themselves.
void checkAside(const Scratch &scratch, const std::string *file, const std::string &log)
{
    const std::string aside = Scratch::aside(1);
    if (scratch.has(aside))
        FUZZ_CHECK(file && scratch.holds(aside, *file));
    // An empty log may have been made on the way.
    FUZZ_CHECK(scratch.holds(aside + "-wal", log) || (log.empty() && !scratch.has(aside + "-wal")));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 3)
        return 0;
    const uint8_t flags = data[0];
    const std::string bytes(reinterpret_cast<const char *>(data + 3), size - 3);
    const std::string file = bytes.substr(0, static_cast<size_t>(data[1] | data[2] << 8));
    const std::string wal = bytes.substr(file.size());
    const bool has_file = !file.empty() || !(flags & flag_no_file);

    static const Scratch scratch;
    scratch.clear();
    if (has_file)
        scratch.write("", file);
    if (!wal.empty())
        scratch.write("-wal", wal);

    Log log;
    Content content;
    bool aside_at_first = false;
    {
        TaviRegistry registry(scratch.path());
        content = contentOf(registry);
        aside_at_first = log.count() > 0;
        FUZZ_CHECK(log.count() <= 1 && log.count() == scratch.asideCount());
        if (aside_at_first) {
            checkAside(scratch, has_file ? &file : nullptr, wal);
            FUZZ_CHECK(content.empty() || !scratch.has(Scratch::aside(1)));
        }

        change(registry, content, flags);
        FUZZ_CHECK(contentOf(registry) == content);
        if (flags & flag_second_store) {
            TaviRegistry second(scratch.path());
            FUZZ_CHECK(contentOf(second) == content);
            put(second, content, "a", "second", "2");
            FUZZ_CHECK(contentOf(registry) == content);
        }
    }
    TaviRegistry again(scratch.path());
    FUZZ_CHECK(contentOf(again) == content);
    FUZZ_CHECK(log.count() == scratch.asideCount());
    if (aside_at_first)
        checkAside(scratch, has_file ? &file : nullptr, wal);
    return 0;
}
