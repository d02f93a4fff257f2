// SPDX-License-Identifier: MIT
#include "taviapp/writeaheadlog_p.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <utility>
#include <vector>

// The format of the log is published with SQLite's file format. All words are big-endian; the checksum runs over
// words of the order that the lowest bit of the first word tells.

namespace {

constexpr size_t header_size = 32;
constexpr size_t frame_header_size = 24;
constexpr uint32_t magic = 0x377f0682;

uint32_t word(const unsigned char *bytes)
{
    return static_cast<uint32_t>(bytes[0]) << 24 | static_cast<uint32_t>(bytes[1]) << 16
           | static_cast<uint32_t>(bytes[2]) << 8 | bytes[3];
}

/// The running checksum of a log.
struct Checksum {
    bool big_endian = false;
    uint32_t first = 0;
    uint32_t second = 0;

    void add(const unsigned char *bytes, size_t size)
    {
        for (size_t at = 0; at + 8 <= size; at += 8) {
            first += next(bytes + at) + second;
            second += next(bytes + at + 4) + first;
        }
    }
    bool is(const unsigned char *bytes) const { return word(bytes) == first && word(bytes + 4) == second; }

private:
    uint32_t next(const unsigned char *bytes) const
    {
        const uint32_t value = word(bytes);
        return big_endian ? value : __builtin_bswap32(value);
    }
};

bool read(std::ifstream &file, std::vector<unsigned char> &bytes)
{
    return static_cast<bool>(file.read(reinterpret_cast<char *>(bytes.data()), std::ssize(bytes)));
}

} // namespace

bool logIsBrokenInside(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    std::vector<unsigned char> header(header_size);
    if (!file || !read(file, header))
        return false;
    Checksum checksum;
    checksum.big_endian = (word(header.data()) & 1U) != 0;
    checksum.add(header.data(), header_size - 8);
    const uint32_t page_size = word(header.data() + 8);
    const bool sound = (word(header.data()) & ~1U) == magic && checksum.is(header.data() + 24) && page_size >= 512
                       && page_size <= 65536;
    if (!sound)
        return file.peek() != std::ifstream::traits_type::eof();

    std::vector<unsigned char> frame(frame_header_size + page_size);
    bool broken = false;
    while (read(file, frame)) {
        const bool of_this_log = std::equal(frame.begin() + 8, frame.begin() + 16, header.begin() + 16);
        if (!broken) {
            checksum.add(frame.data(), 8);
            checksum.add(frame.data() + frame_header_size, page_size);
            broken = !of_this_log || !checksum.is(frame.data() + 16);
        } else if (of_this_log && word(frame.data() + 4) != 0) {
            return true;
        }
    }
    return false;
}
