#pragma once

#include "platform/dialogs.h"

namespace tonquay::host {

/// Dialogs as windows of their own, before whichever of the program's windows is active. Texts are shown as plain text,
/// without the blanks that once put them in the middle of a box.
class WindowDialogs final : public platform::Dialogs {
public:
    Answer messageBox(std::wstring_view title, std::wstring_view text, Icon icon, Buttons buttons) override;
    std::optional<std::wstring> inputBox(std::wstring_view title, std::wstring_view prompt,
                                         std::wstring_view defaultText) override;
    void beep() override;
    void setPointer(Pointer pointer) override;

private:
    bool busy_ = false;
};

}
