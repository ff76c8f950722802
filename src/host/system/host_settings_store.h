#pragma once

#include "platform/diagnostics.h"
#include "platform/settings_store.h"

#include <string>

namespace tonquay::host {

/// The user's settings as a text file of sections and lines:
///
///     [Main]
///     Window=1200,300
///
/// Keys and values are UTF-8; a backslash, a line end and a blank at an end of a value are written as \\, \n, \r and
/// \_ . Sections and keys are found in any case and
/// keep the one that they were first stored in. Lines that are no setting stay as they are. The file is read anew at
/// each call, since two programs share it.
class HostSettingsStore final : public platform::SettingsStore {
public:
    /// `file` is a host path; its folder is made with the first setting.
    HostSettingsStore(std::string file, platform::Diagnostics& log) : file_(std::move(file)), log_(log) {}

    std::wstring get(std::wstring_view section, std::wstring_view key, std::wstring_view fallback) override;
    std::map<std::wstring, std::wstring> all(std::wstring_view section) override;
    void set(std::wstring_view section, std::wstring_view key, std::wstring_view value) override;

private:
    std::string file_;
    platform::Diagnostics& log_;
};

}
