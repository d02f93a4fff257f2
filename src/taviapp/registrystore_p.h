// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_REGISTRYSTORE_P_H
#define TAVIAPP_REGISTRYSTORE_P_H

#include "taviapp/registryfile_p.h"
#include "taviapp/registrysections_p.h"
#include "taviapp/taviregistry.h"

#include <chrono>
#include <string>

/// What a TaviRegistry holds, and what is done about its file when that fails. Not installed.
///
/// All sections are held in memory, and getters answer from there. A change is made in memory, noted, and written
/// with all that is noted; a note is forgotten when the file has it. So a failed write costs nothing but its
/// repetition, and values that are read anew from the file are overlaid with those that it does not have yet.
class TaviRegistry::Store
{
public:
    /// In memory.
    Store() = default;
    explicit Store(const std::string &path);
    ~Store();
    Store(const Store &) = delete;
    Store &operator=(const Store &) = delete;

    const RegistrySections &sections() const { return sections_; }

    void put(const std::string &section, const std::string &key, const std::string &value);
    void clearKey(const std::string &section, const std::string &key);
    void clearSection(const std::string &section);
    /// Reads the file anew if another program has written to it.
    void refresh();

private:
    bool hasFile() const { return !path_.empty(); }
    void flush();
    void attach();
    void detach();
    /// Gives up an open file that turned out damaged.
    void moveAside(const std::string &reason);
    bool renameDamaged(const std::string &reason);
    /// Logs that the file cannot be @a done, once until something succeeds.
    void tellFailure(const char *done, const std::string &reason);
    /// How long to wait for other programs: hardly, after a failure, so that a store that cannot be written does not
    /// hold up each change.
    std::chrono::milliseconds patience() const;

    RegistrySections sections_;
    RegistryChanges changes_;
    RegistryFile file_;
    std::string path_;     ///< Absolute, with links resolved; empty for a store in memory.
    bool failing_ = false; ///< A failure has been told, and nothing succeeded since.
};

#endif
