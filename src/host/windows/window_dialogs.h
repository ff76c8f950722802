#pragma once

#include "platform/dialogs.h"

#include <QString>

#include <functional>
#include <string>

namespace tonquay::host {

/// Dialogs as windows of their own, before whichever of the program's windows is active. Texts are shown as plain text,
/// without the blanks that once put them in the middle of a box; files in the form of this system.
class WindowDialogs final : public platform::Dialogs {
public:
    /// The same place in the form of this system and in the program's.
    struct PathForms {
        std::function<std::string(std::wstring_view)> hostPath;
        std::function<std::wstring(std::string_view)> programPath;
    };

    explicit WindowDialogs(PathForms paths) : paths_(std::move(paths)) {}

    Answer messageBox(std::wstring_view title, std::wstring_view text, Icon icon, Buttons buttons) override;
    std::optional<std::wstring> inputBox(std::wstring_view title, std::wstring_view prompt,
                                         std::wstring_view defaultText) override;
    std::optional<std::wstring> openFile(const FileQuestion& question) override;
    void beep() override;
    void setPointer(Pointer pointer) override;

private:
    QString shown(std::wstring_view text) const;

    PathForms paths_;
    bool busy_ = false;
};

}
