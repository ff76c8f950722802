#pragma once

#include "platform/settings_store.h"

#include <map>
#include <utility>

namespace tonquay::test {

class FakeSettingsStore final : public platform::SettingsStore {
public:
    std::wstring get(std::wstring_view section, std::wstring_view key, std::wstring_view fallback) override
    {
        const auto found = values.find({std::wstring(section), std::wstring(key)});
        return found == values.end() ? std::wstring(fallback) : found->second;
    }

    void set(std::wstring_view section, std::wstring_view key, std::wstring_view value) override
    {
        values[{std::wstring(section), std::wstring(key)}] = value;
    }

    std::map<std::pair<std::wstring, std::wstring>, std::wstring> values; ///< by section and key
};

}
