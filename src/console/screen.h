#pragma once

#include <atomic>
#include <string_view>

namespace tonquay::console {

/// Where the program speaks: standard output and standard error, in UTF-8, byte by byte as given. Tests put their own
/// in its place. Texts from a disc or a file pass through screen_text.h first.
class Screen {
public:
    virtual ~Screen() = default;

    virtual void write(std::string_view text) = 0;

    /// One line to standard error; the line end is added here.
    virtual void complain(std::string_view line) = 0;

    /// Standard output is a terminal that lines can be rewritten on.
    virtual bool isTerminal() const = 0;

    /// Width of that terminal as of now; asked anew before every line, since it changes.
    virtual int columns() const = 0;

    /// Hands on what is gathered. False when something written so far was lost (a full disk, a reader that ended).
    [[nodiscard]] virtual bool flush() = 0;
};

/// The screen of this process.
class StandardScreen final : public Screen {
public:
    void write(std::string_view text) override;
    void complain(std::string_view line) override;
    bool isTerminal() const override;
    int columns() const override;
    bool flush() override;

private:
    std::atomic<bool> lost_{false}; ///< diagnostic lines come from the threads that read, too
};

}
