// SPDX-License-Identifier: MIT
// Lines and words of text files: every byte of a file comes out once, whatever the sizes of the buffers.
#include "fuzz/fuzzcheck.h"
#include "tavilib/tavifile.h"
#include "tavilib/tavistring.h"

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace {

/// What reading lines into a buffer of @a size has to give, by the documented rules.
std::vector<std::string> expectedPieces(const std::string &text, size_t size)
{
    std::vector<std::string> lines(1);
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
            continue;
        if (text[i] == '\n')
            lines.emplace_back();
        else
            lines.back() += text[i];
    }
    if (lines.back().empty())
        lines.pop_back(); // behind the last line break
    std::vector<std::string> pieces;
    for (const std::string &line : lines) {
        size_t at = 0;
        do {
            pieces.push_back(line.substr(at, size - 1));
            at += size - 1;
        } while (at < line.size());
    }
    return pieces;
}

/// All pieces that the reader gives. The buffer is filled with @a filler before each, so that a second reading with
/// another filler tells how far the reader wrote, even if there are zero bytes.
std::vector<std::string> readBuffers(std::string &text, size_t size, size_t file_buffer, char filler)
{
    FILE *file = fmemopen(text.data(), text.size(), "rb");
    FUZZ_CHECK(file);
    std::vector<char> stream_buffer(file_buffer + 1);
    FUZZ_CHECK(std::setvbuf(file, stream_buffer.data(), file_buffer == 0 ? _IONBF : _IOFBF, file_buffer) == 0);
    std::vector<std::string> buffers;
    std::string buffer(size, filler);
    while (GetLineEOFOKLevel2(file, buffer.data(), static_cast<int>(size)) == 0) {
        buffers.push_back(buffer);
        buffer.assign(size, filler);
        FUZZ_CHECK(buffers.size() <= text.size());
    }
    Tavi_fclose(file);
    return buffers;
}

void checkTokens(const std::string &line)
{
    constexpr const char *delimiters = " \t\n\r";
    std::vector<char> copy(line.c_str(), line.c_str() + std::strlen(line.c_str()) + 1);
    std::vector<std::string> expected;
    bool inside = false;
    for (const char *c = line.c_str(); *c; ++c) {
        const bool delimiter = std::strchr(delimiters, *c) != nullptr;
        if (!delimiter && !inside)
            expected.emplace_back();
        if (!delimiter)
            expected.back() += *c;
        inside = !delimiter;
    }
    char *save = nullptr;
    size_t count = 0;
    for (char *token = Tavi_strtok(copy.data(), delimiters, &save); token;
         token = Tavi_strtok(nullptr, delimiters, &save)) {
        FUZZ_CHECK(count < expected.size() && expected[count] == token);
        ++count;
    }
    FUZZ_CHECK(count == expected.size());
    FUZZ_CHECK(!Tavi_strtok(nullptr, delimiters, &save));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 3)
        return 0;
    const size_t buffer_size = 2 + data[0] % 64;
    const size_t file_buffer = data[1] % 32;
    std::string text(reinterpret_cast<const char *>(data + 2), size - 2);

    const std::vector<std::string> first = readBuffers(text, buffer_size, file_buffer, '\xaa');
    const std::vector<std::string> second = readBuffers(text, buffer_size, file_buffer, '\x55');
    const std::vector<std::string> expected = expectedPieces(text, buffer_size);
    FUZZ_CHECK(first.size() == expected.size() && second.size() == expected.size());
    for (size_t i = 0; i < first.size(); ++i) {
        size_t written = 0;
        while (written < buffer_size && first[i][written] == second[i][written])
            ++written;
        FUZZ_CHECK(written > 0 && first[i][written - 1] == '\0');
        FUZZ_CHECK(first[i].substr(0, written - 1) == expected[i]);
        checkTokens(expected[i]);
    }
    return 0;
}
