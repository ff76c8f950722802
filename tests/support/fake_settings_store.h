#pragma once

#include "base/text.h"
#include "platform/settings_store.h"

#include <algorithm>
#include <string>
#include <vector>

namespace tonquay::test {

/// Settings in memory, found in any case.
class FakeSettingsStore final : public platform::SettingsStore {
public:
    struct Entry {
        std::wstring section;
        std::wstring key; ///< in the case that it was first stored in
        std::wstring value;
    };

    std::wstring get(std::wstring_view section, std::wstring_view key, std::wstring_view fallback) override
    {
        const auto found = find(section, key);
        return found == entries.end() ? std::wstring(fallback) : found->value;
    }

    std::map<std::wstring, std::wstring> all(std::wstring_view section) override
    {
        std::map<std::wstring, std::wstring> values;
        for (const Entry& entry : entries)
            if (base::sameText(entry.section, section))
                values[base::upper(entry.key)] = entry.value;
        return values;
    }

    void set(std::wstring_view section, std::wstring_view key, std::wstring_view value) override
    {
        if (const auto found = find(section, key); found != entries.end())
            found->value = value;
        else
            entries.push_back({std::wstring(section), std::wstring(key), std::wstring(value)});
    }

    std::vector<Entry> entries; ///< in the order in which they were first stored

private:
    std::vector<Entry>::iterator find(std::wstring_view section, std::wstring_view key)
    {
        return std::ranges::find_if(entries, [&](const Entry& entry) {
            return base::sameText(entry.section, section) && base::sameText(entry.key, key);
        });
    }
};

}
