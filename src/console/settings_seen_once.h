#pragma once

#include "platform/settings_store.h"

#include <map>
#include <string>

namespace tonquay::console {

/// The user's settings, a section as it was when all of it was first asked for. A command that goes over thousands of
/// files asks for the same ones for every file.
class SettingsSeenOnce final : public platform::SettingsStore {
public:
    /// `real` outlives this.
    explicit SettingsSeenOnce(platform::SettingsStore& real) : real_(real) {}

    std::wstring get(std::wstring_view section, std::wstring_view key, std::wstring_view fallback) override
    {
        return real_.get(section, key, fallback);
    }

    std::map<std::wstring, std::wstring> all(std::wstring_view section) override
    {
        const auto [place, isNew] = sections_.try_emplace(std::wstring(section));
        if (isNew)
            place->second = real_.all(section);
        return place->second;
    }

    void set(std::wstring_view section, std::wstring_view key, std::wstring_view value) override
    {
        real_.set(section, key, value);
        sections_.clear();
    }

private:
    platform::SettingsStore& real_;
    std::map<std::wstring, std::map<std::wstring, std::wstring>> sections_;
};

}
