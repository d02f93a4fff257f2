// SPDX-License-Identifier: MIT
#include "taviapp/registrystore_p.h"

#include "taviapp/fileaside_p.h"
#include "tavilib/tavilog.h"

#include <filesystem>
#include <system_error>

namespace {

constexpr const char unit[] = "taviregistry";

/// The path by which the database library knows the file too: its companions stand beside what a link points at.
std::string resolved(const std::string &path)
{
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    if (error)
        return path;
    const std::filesystem::path canonical = std::filesystem::weakly_canonical(absolute, error);
    return error ? absolute.string() : canonical.string();
}

} // namespace

TaviRegistry::Store::Store(const std::string &path)
{
    if (path.empty() || path.find('\0') != std::string::npos) {
        tellFailure("opened", "its name is empty or holds a zero byte");
        return;
    }
    path_ = resolved(path);
    attach();
}

TaviRegistry::Store::~Store()
{
    if (!hasFile())
        return;
    flush();
    if (file_.isOpen())
        detach();
}

void TaviRegistry::Store::put(const std::string &section, const std::string &key, const std::string &value)
{
    sections_.put(section, key, value);
    if (hasFile()) {
        changes_.put(section, key, value);
        flush();
    }
}

void TaviRegistry::Store::clearKey(const std::string &section, const std::string &key)
{
    sections_.clearKey(section, key);
    if (hasFile()) {
        changes_.clearKey(section, key);
        flush();
    }
}

void TaviRegistry::Store::clearSection(const std::string &section)
{
    sections_.clearSection(section);
    if (hasFile()) {
        changes_.clearSection(section);
        flush();
    }
}

void TaviRegistry::Store::refresh()
{
    if (!file_.isOpen())
        return;
    if (file_.hasMoved()) {
        detach();
        attach();
        flush();
        return;
    }
    RegistrySections content;
    bool changed = false;
    const RegistryFile::Result result = file_.refresh(content, changed);
    if (result.outcome == RegistryFile::Outcome::Damaged) {
        moveAside(result.reason);
        attach();
        flush();
        return;
    }
    if (!result.done()) {
        tellFailure("read", result.reason);
        return;
    }
    if (changed) {
        changes_.applyTo(content);
        sections_ = std::move(content);
    }
    if (changes_.isEmpty())
        failing_ = false;
}

void TaviRegistry::Store::flush()
{
    // A file that turns out damaged is replaced, and the writing tried once more.
    for (int attempt = 0; attempt < 2 && !changes_.isEmpty(); ++attempt) {
        if (file_.isOpen() && file_.hasMoved())
            detach();
        if (!file_.isOpen())
            attach();
        if (!file_.isOpen())
            return;
        const RegistryFile::Result result = file_.write(changes_, patience());
        if (result.done()) {
            changes_.forget();
            failing_ = false;
            return;
        }
        if (result.outcome == RegistryFile::Outcome::Failed) {
            tellFailure("written", result.reason);
            return;
        }
        moveAside(result.reason);
    }
}

void TaviRegistry::Store::attach()
{
    const DirectoryLock lock(path_, patience());
    RegistrySections content;
    RegistryFile::Result result = file_.open(path_, content, patience());
    if (result.outcome == RegistryFile::Outcome::Damaged && renameDamaged(result.reason))
        result = file_.open(path_, content, patience());
    if (!result.done()) {
        tellFailure("opened", result.reason);
        return;
    }
    if (result.broken_log) {
        const std::string kept =
            result.broken_log->empty() ? "it could not be copied" : "a copy is " + *result.broken_log;
        TaviLogMessage(unit, "TaviRegistry", TAVILOG_ERROR, TAVILOG_FORM_TEXT, 1,
                       "The log of settings file %s is damaged, its last changes are lost; %s", path_.c_str(),
                       kept.c_str());
    }
    // Of an opened store all that is known is in the changes; one that lost its file knows what that held.
    changes_.putMissing(sections_, content);
    changes_.applyTo(content);
    sections_ = std::move(content);
    if (changes_.isEmpty())
        failing_ = false;
}

void TaviRegistry::Store::detach()
{
    const DirectoryLock lock(path_, patience());
    if (file_.hasMoved())
        file_.abandon(); // what stands at the path now is another's
    else
        file_.close();
}

void TaviRegistry::Store::moveAside(const std::string &reason)
{
    const DirectoryLock lock(path_, patience());
    const bool moved_already = file_.hasMoved();
    file_.abandon();
    if (!moved_already)
        renameDamaged(reason);
}

bool TaviRegistry::Store::renameDamaged(const std::string &reason)
{
    std::string error;
    const std::string aside = moveDatabaseAside(path_, error);
    if (aside.empty()) {
        tellFailure("renamed", error + " (" + reason + ")");
        return false;
    }
    TaviLogMessage(unit, "TaviRegistry", TAVILOG_ERROR, TAVILOG_FORM_TEXT, 1,
                   "Settings file %s cannot be used and is now %s: %s", path_.c_str(), aside.c_str(), reason.c_str());
    return true;
}

void TaviRegistry::Store::tellFailure(const char *done, const std::string &reason)
{
    if (failing_)
        return;
    failing_ = true;
    TaviLogMessage(unit, "TaviRegistry", TAVILOG_ERROR, TAVILOG_FORM_TEXT, 1,
                   "Settings file %s cannot be %s, values stay in memory: %s", path_.c_str(), done, reason.c_str());
}

std::chrono::milliseconds TaviRegistry::Store::patience() const
{
    return std::chrono::milliseconds(failing_ ? 20 : 2000);
}
