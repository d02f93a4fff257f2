// SPDX-License-Identifier: MIT
#include "taviapp/cgatstext_p.h"

#include "taviapp/cgatsreport.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace {

void appendUtf8(std::string &text, uint32_t code)
{
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xc0 | code >> 6);
        text += static_cast<char>(0x80 | (code & 0x3f));
    } else if (code < 0x10000) {
        text += static_cast<char>(0xe0 | code >> 12);
        text += static_cast<char>(0x80 | (code >> 6 & 0x3f));
        text += static_cast<char>(0x80 | (code & 0x3f));
    } else {
        text += static_cast<char>(0xf0 | code >> 18);
        text += static_cast<char>(0x80 | (code >> 12 & 0x3f));
        text += static_cast<char>(0x80 | (code >> 6 & 0x3f));
        text += static_cast<char>(0x80 | (code & 0x3f));
    }
}

/// An odd last byte is left out; a lone surrogate becomes the replacement character.
std::string fromUtf16(std::string_view bytes, bool big_endian)
{
    const auto unit = [&](size_t at) {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        return static_cast<uint32_t>(big_endian ? first << 8 | second : second << 8 | first);
    };
    std::string text;
    text.reserve(bytes.size() / 2);
    for (size_t at = 0; at + 1 < bytes.size(); at += 2) {
        uint32_t code = unit(at);
        if (code >= 0xd800 && code < 0xdc00 && at + 3 < bytes.size()) {
            const uint32_t low = unit(at + 2);
            if (low >= 0xdc00 && low < 0xe000) {
                code = 0x10000 + ((code - 0xd800) << 10) + (low - 0xdc00);
                at += 2;
            }
        }
        appendUtf8(text, code >= 0xd800 && code < 0xe000 ? 0xfffd : code);
    }
    return text;
}

bool isUtf8(std::string_view bytes)
{
    for (size_t at = 0; at < bytes.size();) {
        const auto first = static_cast<unsigned char>(bytes[at++]);
        if (first < 0x80)
            continue;
        const int more = first >= 0xf0 ? 3 : first >= 0xe0 ? 2 : 1;
        if (first < 0xc2 || first > 0xf4 || bytes.size() - at < static_cast<size_t>(more))
            return false;
        uint32_t code = first & (0x3fU >> more);
        for (int i = 0; i < more; ++i) {
            const auto next = static_cast<unsigned char>(bytes[at++]);
            if ((next & 0xc0) != 0x80)
                return false;
            code = code << 6 | (next & 0x3fU);
        }
        constexpr uint32_t least[4] = {0, 0x80, 0x800, 0x10000};
        if (code < least[more] || code > 0x10ffff || (code >= 0xd800 && code < 0xe000))
            return false;
    }
    return true;
}

/// What Windows-1252 has where Latin-1 has control characters; 0 where it has nothing.
constexpr std::array<uint16_t, 32> windows_1252 = {0x20ac, 0,      0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021,
                                                   0x02c6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017d, 0,
                                                   0,      0x2018, 0x2019, 0x201c, 0x201d, 0x2022, 0x2013, 0x2014,
                                                   0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0,      0x017e, 0x0178};

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

} // namespace

bool cgatsDecode(std::string &bytes, CgatsReport &report)
{
    using namespace std::string_view_literals;
    const std::string_view view = bytes;
    if (view.empty()) {
        report.refuse(0, "the file is empty");
        return false;
    }
    if (view.starts_with("\xff\xfe"sv) || view.starts_with("\xfe\xff"sv)) {
        const bool odd = view.size() % 2 != 0;
        bytes = fromUtf16(view.substr(2), view.starts_with("\xfe\xff"sv));
        report.assume(1, "the file is in UTF-16");
        if (odd)
            report.doubt(0, "the file is in UTF-16 and has an odd number of bytes; the last byte is left out");
    } else if (view.starts_with("\xef\xbb\xbf"sv)) {
        bytes.erase(0, 3);
        report.assume(1, "the file begins with a byte order mark");
    }
    while (!bytes.empty() && bytes.back() == '\x1a')
        bytes.pop_back();
    const size_t zero = bytes.find('\0');
    if (zero != std::string::npos) {
        report.refuse(cgatsLineOf(bytes, zero), "there is a zero byte; this is no text file");
        return false;
    }
    return true;
}

std::string cgatsToUtf8(std::string_view bytes, bool *converted)
{
    const bool utf8 = isUtf8(bytes);
    if (converted)
        *converted = !utf8;
    if (utf8)
        return std::string(bytes);
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        const bool special = byte >= 0x80 && byte < 0xa0 && windows_1252[byte - 0x80U] != 0;
        appendUtf8(text, special ? windows_1252[byte - 0x80U] : byte);
    }
    return text;
}

void cgatsUndoubleQuotes(std::string &text)
{
    size_t kept = 0;
    for (size_t at = 0; at < text.size(); ++at) {
        text[kept++] = text[at];
        if (text[at] == '"' && at + 1 < text.size() && text[at + 1] == '"')
            ++at;
    }
    text.resize(kept);
}

bool cgatsEqual(std::string_view a, std::string_view b)
{
    if (a.size() != b.size())
        return false;
    for (size_t i = 0; i < a.size(); ++i) {
        if (lower(a[i]) != lower(b[i]))
            return false;
    }
    return true;
}

std::string cgatsQuoted(std::string_view bytes)
{
    constexpr size_t longest = 40;
    const auto insideCharacter = [&](size_t at) {
        return (static_cast<unsigned char>(bytes[at]) & 0xc0) == 0x80;
    };
    size_t length = std::min(bytes.size(), longest);
    while (length > 0 && length < bytes.size() && insideCharacter(length))
        --length;
    std::string text = "'" + cgatsToUtf8(bytes.substr(0, length));
    for (char &c : text) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f)
            c = ' ';
    }
    return text + (bytes.size() > length ? "...'" : "'");
}

size_t cgatsLineOf(std::string_view text, size_t offset)
{
    size_t line = 1;
    for (size_t i = 0; i < offset; ++i) {
        if (text[i] == '\n' || (text[i] == '\r' && (i + 1 == text.size() || text[i + 1] != '\n')))
            ++line;
    }
    return line;
}
