#pragma once

#include <map>
#include <string>
#include <string_view>

namespace tonquay::platform {

/// Small settings that belong to the user and not to the program folder: one text by section and key.
/// Sections and keys are the same in any case.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;

    /// The stored text, or `fallback` when there is none or it cannot be read.
    virtual std::wstring get(std::wstring_view section, std::wstring_view key, std::wstring_view fallback) = 0;

    /// All that is stored in a section: the values by their keys, which are in upper case. Empty when nothing is, or
    /// when it cannot be read. For who needs many of them: a look into the store costs the same for one as for all.
    virtual std::map<std::wstring, std::wstring> all(std::wstring_view section) = 0;

    /// Stores at once. A failure is passed over and leaves a line.
    virtual void set(std::wstring_view section, std::wstring_view key, std::wstring_view value) = 0;
};

}
