#include "console/screen.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include <sys/ioctl.h>
#include <unistd.h>

namespace tonquay::console {

void StandardScreen::write(std::string_view text)
{
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size())
        lost_ = true;
}

void StandardScreen::complain(std::string_view line)
{
    // What was said on the other stream before comes first when both are one terminal. One write keeps the line whole.
    if (std::fflush(stdout) != 0)
        lost_ = true;
    const std::string whole = std::string(line) + '\n';
    std::fwrite(whole.data(), 1, whole.size(), stderr);
}

bool StandardScreen::isTerminal() const
{
    const char* kind = std::getenv("TERM");
    return isatty(STDOUT_FILENO) == 1 && kind != nullptr && std::string_view(kind) != "dumb";
}

int StandardScreen::columns() const
{
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0)
        return size.ws_col;
    return 80;
}

bool StandardScreen::flush()
{
    if (std::fflush(stdout) != 0)
        lost_ = true;
    return !lost_;
}

}
