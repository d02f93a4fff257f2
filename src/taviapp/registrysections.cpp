// SPDX-License-Identifier: MIT
#include "taviapp/registrysections_p.h"

std::shared_ptr<const RegistrySections::Section> RegistrySections::section(std::string_view name) const
{
    const auto found = sections_.find(name);
    return found == sections_.end() ? nullptr : found->second;
}

const std::string *RegistrySections::find(std::string_view section, std::string_view key) const
{
    const auto found = sections_.find(section);
    if (found == sections_.end())
        return nullptr;
    const auto item = found->second->find(key);
    return item == found->second->end() ? nullptr : &item->second;
}

RegistrySections::Section &RegistrySections::writable(std::shared_ptr<Section> &section)
{
    if (!section)
        section = std::make_shared<Section>();
    else if (section.use_count() > 1)
        section = std::make_shared<Section>(*section);
    return *section;
}

void RegistrySections::put(const std::string &section, const std::string &key, const std::string &value)
{
    writable(sections_[section]).insert_or_assign(key, value);
}

void RegistrySections::clearKey(const std::string &section, const std::string &key)
{
    const auto found = sections_.find(section);
    if (found == sections_.end() || !found->second->contains(key))
        return;
    writable(found->second).erase(key);
    if (found->second->empty())
        sections_.erase(found);
}

void RegistrySections::clearSection(const std::string &section)
{
    sections_.erase(section);
}

size_t RegistryChanges::count() const
{
    size_t statements = 0;
    for (const auto &[name, section] : sections_)
        statements += section.keys.size() + (section.cleared ? 1 : 0);
    return statements;
}

void RegistryChanges::put(const std::string &section, const std::string &key, const std::string &value)
{
    sections_[section].keys.insert_or_assign(key, value);
}

void RegistryChanges::clearKey(const std::string &section, const std::string &key)
{
    sections_[section].keys.insert_or_assign(key, std::nullopt);
}

void RegistryChanges::clearSection(const std::string &section)
{
    Section &changes = sections_[section];
    changes.cleared = true;
    changes.keys.clear();
}

void RegistryChanges::putMissing(const RegistrySections &known, const RegistrySections &target)
{
    for (const auto &[name, section] : known.all()) {
        for (const auto &[key, value] : *section) {
            if (!target.find(name, key))
                put(name, key, value);
        }
    }
}

void RegistryChanges::applyTo(RegistrySections &target) const
{
    for (const auto &[name, section] : sections_) {
        if (section.cleared)
            target.clearSection(name);
        for (const auto &[key, value] : section.keys) {
            if (value)
                target.put(name, key, *value);
            else
                target.clearKey(name, key);
        }
    }
}
