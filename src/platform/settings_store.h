#pragma once

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

    /// Stores at once. A failure is passed over and leaves a line.
    virtual void set(std::wstring_view section, std::wstring_view key, std::wstring_view value) = 0;
};

}
