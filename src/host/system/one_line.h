#pragma once

#include <string>
#include <string_view>

namespace tonquay::host {

/// A text as one line for a log or a terminal: each run of control characters (line ends, escapes) becomes one blank.
inline std::string oneLine(std::string_view text)
{
    std::string line;
    line.reserve(text.size());
    bool gap = false;
    for (const char c : text) {
        const bool control = static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
        if (!control)
            line += c;
        else if (!gap)
            line += ' ';
        gap = control;
    }
    return line;
}

}
