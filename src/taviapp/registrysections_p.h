// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_REGISTRYSECTIONS_P_H
#define TAVIAPP_REGISTRYSECTIONS_P_H

#include "taviapp/taviregistry.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// @file
/// What a settings store holds and what has been changed in it, in memory alone. Not installed.

/// The sections of a store. A section that somebody holds is copied before it is changed, so that a held one is a
/// snapshot; a section without keys is not kept.
class RegistrySections
{
public:
    using Section = TaviRegistry::Section;
    using Map = std::map<std::string, std::shared_ptr<Section>, std::less<>>;

    const Map &all() const { return sections_; }

    /// The section as it is now; null for one without keys. O(log sections).
    std::shared_ptr<const Section> section(std::string_view name) const;
    /// The text of a key, valid until the next change; null if it is not stored.
    const std::string *find(std::string_view section, std::string_view key) const;

    void put(const std::string &section, const std::string &key, const std::string &value);
    void clearKey(const std::string &section, const std::string &key);
    void clearSection(const std::string &section);

private:
    static Section &writable(std::shared_ptr<Section> &section);
    Map sections_;
};

/// Changes that are not yet in the file, folded to the last one of each key.
class RegistryChanges
{
public:
    struct Section {
        bool cleared = false; ///< All earlier keys go first.
        /// The new text, or none for a key to be removed.
        std::map<std::string, std::optional<std::string>, std::less<>> keys;
    };
    using Map = std::map<std::string, Section, std::less<>>;

    bool isEmpty() const { return sections_.empty(); }
    const Map &all() const { return sections_; }
    /// How many statements it takes to write them.
    size_t count() const;

    void put(const std::string &section, const std::string &key, const std::string &value);
    void clearKey(const std::string &section, const std::string &key);
    void clearSection(const std::string &section);
    void forget() { sections_.clear(); }

    /// Puts every key of @a known that @a target lacks.
    void putMissing(const RegistrySections &known, const RegistrySections &target);
    /// Makes the changes in @a target.
    void applyTo(RegistrySections &target) const;

private:
    Map sections_;
};

#endif
