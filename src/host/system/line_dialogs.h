#pragma once

#include "platform/dialogs.h"

#include <functional>
#include <string>

namespace tonquay::host {

/// Dialogs where there is no window: a box is one line that goes to `sink`, and nobody is waited for. A box with OK
/// counts as read; one with Yes and No is answered with No, since nobody said Yes; an input box and a
/// choice of a file count as cancelled.
class LineDialogs final : public platform::Dialogs {
public:
    using Sink = std::function<void(std::string line)>;

    /// `sink` takes one UTF-8 line without its line end.
    explicit LineDialogs(Sink sink) : sink_(std::move(sink)) {}

    Answer messageBox(std::wstring_view title, std::wstring_view text, Icon icon, Buttons buttons) override;
    std::optional<std::wstring> inputBox(std::wstring_view title, std::wstring_view prompt,
                                         std::wstring_view defaultText) override;
    std::optional<std::wstring> openFile(const FileQuestion& question) override;
    void beep() override {}
    void setPointer(Pointer) override {}

private:
    Sink sink_;
};

}
