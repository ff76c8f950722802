#pragma once

#include "base/result.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace tonquay::platform {

/// Other programs, and the end of this one.
class Processes {
public:
    enum class WindowStyle { hidden = 0, normal = 1, minimised = 2 };

    /// A child that was started; 0 is none.
    using Child = std::uint32_t;

    virtual ~Processes() = default;

    /// Starts a program from one command text and returns at once. The text is split here: double quotes group, `\"`
    /// is a quote, an unquoted program path may hold blanks, and arguments that name a drive letter become host paths.
    /// The child runs in the current folder, without our terminal.
    virtual base::Result<Child> start(std::wstring_view command, WindowStyle style) = 0;

    /// Says that a child computes for long and shows nothing, as encoders do. The host may give it longer turns at a
    /// processor, so that many side by side cost no more than a few; nothing else changes, and nothing at all where it
    /// cannot. A child that has ended or was never started is passed over.
    virtual void expectLongWork(Child child) = 0;

    /// The exit code once the child has ended, nothing while it lives. A child that was never started, or whose code
    /// was taken already, answers 0. A signal counts as 128 plus its number.
    virtual std::optional<int> exitCode(Child child) = 0;

    /// Ends the program at once, with `status`, after the host's own short list of end actions (unlocking drives that
    /// it locked, restoring the terminal). Children live on. Nothing is saved.
    [[noreturn]] virtual void endProgram(int status = 0) = 0;
};

}
