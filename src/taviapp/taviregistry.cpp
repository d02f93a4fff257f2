// SPDX-License-Identifier: MIT
#include "taviapp/taviregistry.h"

#include "taviapp/registrystore_p.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string>
#include <string_view>

namespace {

/// The number that a text begins with, as getlong() documents it.
long leadingNumber(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    unsigned long magnitude = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), magnitude);
    if (parsed.ec == std::errc::invalid_argument)
        return 0;
    const bool too_large = parsed.ec == std::errc::result_out_of_range;
    constexpr unsigned long largest = std::numeric_limits<long>::max();
    if (negative)
        return too_large || magnitude > largest ? std::numeric_limits<long>::min() : -static_cast<long>(magnitude);
    return too_large ? std::numeric_limits<long>::max() : static_cast<long>(magnitude);
}

} // namespace

TaviRegistry::TaviRegistry() : store_(std::make_unique<Store>()) {}

TaviRegistry::TaviRegistry(const std::string &path) : store_(std::make_unique<Store>(path)) {}

TaviRegistry::~TaviRegistry() = default;

bool TaviRegistry::exists(std::string &section, std::string &key)
{
    return store_->sections().find(section, key) != nullptr;
}

long TaviRegistry::getlong(std::string &section, std::string &key)
{
    const std::string *text = store_->sections().find(section, key);
    return text ? leadingNumber(*text) : 0;
}

std::string TaviRegistry::getstring(std::string &section, std::string &key)
{
    const std::string *text = store_->sections().find(section, key);
    return text ? *text : std::string();
}

bool TaviRegistry::getbool(std::string &section, std::string &key, bool fallback)
{
    const std::string *text = store_->sections().find(section, key);
    return text ? *text == "true" || leadingNumber(*text) != 0 : fallback;
}

void TaviRegistry::putlong(std::string &section, std::string &key, long value)
{
    store_->put(section, key, std::to_string(value));
}

void TaviRegistry::putulong(std::string &section, std::string &key, unsigned long value)
{
    store_->put(section, key, std::to_string(value));
}

void TaviRegistry::putbool(std::string &section, std::string &key, bool value)
{
    store_->put(section, key, value ? "1" : "0");
}

void TaviRegistry::putstring(std::string &section, std::string &key, const std::string &value)
{
    store_->put(section, key, value);
}

void TaviRegistry::clearkey(std::string &section, std::string &key)
{
    store_->clearKey(section, key);
}

void TaviRegistry::clearsection(std::string &section)
{
    store_->clearSection(section);
}

size_t TaviRegistry::size(std::string &section)
{
    store_->refresh();
    const auto keys = store_->sections().section(section);
    return keys ? keys->size() : 0;
}

TaviRegistry::Cursor TaviRegistry::firstItem(std::string &section)
{
    store_->refresh();
    walk_ = Cursor();
    walk_.section_ = store_->sections().section(section);
    if (walk_.section_)
        walk_.at_ = walk_.section_->begin();
    return walk_;
}

TaviRegistry::Cursor TaviRegistry::nextItem()
{
    // A walk that is over holds no snapshot, so that the next change need not copy the section.
    if (!isEndItem(walk_) && ++walk_.at_ == walk_.section_->end())
        walk_ = Cursor();
    return walk_;
}

bool TaviRegistry::isEndItem(const Cursor &cursor)
{
    return !cursor.section_ || cursor.at_ == cursor.section_->end();
}

std::string TaviRegistry::key(const Cursor &cursor)
{
    return isEndItem(cursor) ? std::string() : cursor.at_->first;
}

std::string TaviRegistry::value(const Cursor &cursor)
{
    return isEndItem(cursor) ? std::string() : cursor.at_->second;
}

std::string TaviRegistry::reg_fixup_null_cstr(const char *text)
{
    return text ? text : "";
}

// The forms that take null-terminated strings.

bool TaviRegistry::exists(const char *section, const char *key)
{
    std::string section_text = reg_fixup_null_cstr(section);
    std::string key_text = reg_fixup_null_cstr(key);
    return exists(section_text, key_text);
}

long TaviRegistry::getlong(const char *section, const char *key)
{
    std::string section_text = reg_fixup_null_cstr(section);
    std::string key_text = reg_fixup_null_cstr(key);
    return getlong(section_text, key_text);
}

std::string TaviRegistry::getstring(const char *section, const char *key)
{
    std::string section_text = reg_fixup_null_cstr(section);
    std::string key_text = reg_fixup_null_cstr(key);
    return getstring(section_text, key_text);
}

bool TaviRegistry::getbool(const char *section, const char *key, bool fallback)
{
    std::string section_text = reg_fixup_null_cstr(section);
    std::string key_text = reg_fixup_null_cstr(key);
    return getbool(section_text, key_text, fallback);
}

void TaviRegistry::putlong(const char *section, const char *key, long value)
{
    std::string section_text = reg_fixup_null_cstr(section);
    std::string key_text = reg_fixup_null_cstr(key);
    putlong(section_text, key_text, value);
}

void TaviRegistry::putulong(const char *section, const char *key, unsigned long value)
{
    std::string section_text = reg_fixup_null_cstr(section);
    std::string key_text = reg_fixup_null_cstr(key);
    putulong(section_text, key_text, value);
}

void TaviRegistry::putbool(const char *section, const char *key, bool value)
{
    std::string section_text = reg_fixup_null_cstr(section);
    std::string key_text = reg_fixup_null_cstr(key);
    putbool(section_text, key_text, value);
}

void TaviRegistry::putstring(const char *section, const char *key, const char *value)
{
    std::string section_text = reg_fixup_null_cstr(section);
    std::string key_text = reg_fixup_null_cstr(key);
    putstring(section_text, key_text, reg_fixup_null_cstr(value));
}

void TaviRegistry::clearkey(const char *section, const char *key)
{
    std::string section_text = reg_fixup_null_cstr(section);
    std::string key_text = reg_fixup_null_cstr(key);
    clearkey(section_text, key_text);
}

void TaviRegistry::clearsection(const char *section)
{
    std::string section_text = reg_fixup_null_cstr(section);
    clearsection(section_text);
}

size_t TaviRegistry::size(const char *section)
{
    std::string section_text = reg_fixup_null_cstr(section);
    return size(section_text);
}

TaviRegistry::Cursor TaviRegistry::firstItem(const char *section)
{
    std::string section_text = reg_fixup_null_cstr(section);
    return firstItem(section_text);
}
