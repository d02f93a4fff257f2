// SPDX-License-Identifier: MIT
#ifndef TESTS_TAVIAPP_REGISTRYSCRIPT_H
#define TESTS_TAVIAPP_REGISTRYSCRIPT_H

#include "taviapp/taviregistry.h"

#include <cstdint>
#include <map>
#include <string>

/// An endless series of changes to a store, each the function of its seed and number alone, so that a program that is
/// killed in the middle and the test that judges it agree about what was written.
namespace registryscript {

constexpr int section_count = 4;
constexpr int key_count = 40;

/// What a store should hold: section, key, text.
using Model = std::map<std::string, std::map<std::string, std::string>>;

inline uint64_t mixed(uint64_t value)
{
    value += 0x9e3779b97f4a7c15U;
    value = (value ^ (value >> 30)) * 0xbf58476d1ce4e5b9U;
    value = (value ^ (value >> 27)) * 0x94d049bb133111ebU;
    return value ^ (value >> 31);
}

struct Change {
    enum Kind { Put, ClearKey, ClearSection } kind;
    std::string section;
    std::string key;
    std::string value;
};

/// Mostly puts of short texts, some of texts that take several pages of the file.
inline Change changeAt(uint64_t seed, uint64_t number)
{
    const uint64_t dice = mixed(seed ^ mixed(number));
    Change change;
    const uint64_t kind = dice % 100;
    change.kind = kind < 88 ? Change::Put : kind < 98 ? Change::ClearKey : Change::ClearSection;
    change.section = "section " + std::to_string((dice >> 8) % section_count);
    change.key = "key " + std::to_string((dice >> 16) % key_count);
    const size_t length = kind < 3 ? 9000 : (dice >> 32) % 200;
    change.value = std::to_string(number) + " " + std::string(length, static_cast<char>('a' + (dice >> 40) % 26));
    return change;
}

inline void make(TaviRegistry &registry, Change change)
{
    switch (change.kind) {
    case Change::Put:
        registry.putstring(change.section, change.key, change.value);
        break;
    case Change::ClearKey:
        registry.clearkey(change.section, change.key);
        break;
    case Change::ClearSection:
        registry.clearsection(change.section);
        break;
    }
}

inline void make(Model &model, const Change &change)
{
    if (change.kind == Change::Put)
        model[change.section][change.key] = change.value;
    else if (change.kind == Change::ClearKey)
        model[change.section].erase(change.key);
    else
        model.erase(change.section);
    if (model[change.section].empty())
        model.erase(change.section);
}

/// What a store holds in the sections of the script.
inline Model contentOf(TaviRegistry &registry)
{
    Model content;
    for (int i = 0; i < section_count; ++i) {
        std::string section = "section " + std::to_string(i);
        for (auto at = registry.firstItem(section); !registry.isEndItem(at); at = registry.nextItem())
            content[section][registry.key(at)] = registry.value(at);
    }
    return content;
}

} // namespace registryscript

#endif
