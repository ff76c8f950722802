#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tonquay::platform {

/// What the program puts before a person and waits on. A box runs its own loop: timers and posted calls go on.
class Dialogs {
public:
    enum class Icon { none, information, exclamation, stop, question };
    enum class Buttons { ok, yesNo };
    enum class Answer { ok, yes, no };
    enum class Pointer { normal, busy };

    virtual ~Dialogs() = default;

    virtual Answer messageBox(std::wstring_view title, std::wstring_view text, Icon icon,
                              Buttons buttons = Buttons::ok) = 0;

    /// One line of text; nothing when the person cancels.
    virtual std::optional<std::wstring> inputBox(std::wstring_view title, std::wstring_view prompt,
                                                 std::wstring_view defaultText) = 0;

    /// One file to open, in the program's form; nothing when the person cancels. The file need not exist.
    struct FileQuestion {
        std::wstring title{};
        std::wstring folder{};     ///< where the person starts to look, in the program's form
        std::wstring filterName{}; ///< of the files that are shown, in words
        std::wstring pattern{};    ///< * and ?, without regard to case
        std::wstring fileName{};   ///< proposed
    };
    virtual std::optional<std::wstring> openFile(const FileQuestion& question) = 0;

    virtual void beep() = 0;

    /// The pointer of the whole screen.
    virtual void setPointer(Pointer pointer) = 0;
};

}
