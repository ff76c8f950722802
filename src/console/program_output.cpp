#include "console/program_output.h"

#include "console/screen_text.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <utility>

namespace tonquay::console {

namespace {

std::int64_t lengthOf(const std::string& file)
{
    std::error_code error;
    const auto length = std::filesystem::file_size(file, error);
    return error ? 0 : static_cast<std::int64_t>(length);
}

/// What stands on a line at the end: behind the last carriage return that something follows.
std::string_view lastState(std::string_view line)
{
    while (line.ends_with('\r'))
        line.remove_suffix(1);
    return line.substr(line.rfind('\r') + 1);
}

/// Without the sequences that move a terminal's cursor or erase (ECMA-48, CSI): programs write them to files too.
std::string withoutControls(std::string_view line)
{
    std::string text;
    while (!line.empty()) {
        const std::size_t start = std::min(line.find("\x1b["), line.size());
        text += line.substr(0, start);
        line.remove_prefix(start);
        const std::size_t last = line.find_first_not_of("0123456789;?", std::min<std::size_t>(2, line.size()));
        line.remove_prefix(last == std::string_view::npos ? line.size() : last + 1);
    }
    return text;
}

}

ProgramOutput::ProgramOutput(Screen& screen, std::string file)
    : screen_(screen),
      file_(std::move(file)),
      shown_(lengthOf(file_))
{}

void ProgramOutput::showNew()
{
    constexpr std::int64_t mostAtOnce = 1 << 20;
    const std::int64_t length = lengthOf(file_);
    // A new file was begun.
    if (length < shown_)
        shown_ = 0;
    std::string text(static_cast<std::size_t>(std::min(length - shown_, mostAtOnce)), '\0');
    std::ifstream in(file_, std::ios::binary);
    in.seekg(shown_);
    in.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(in.gcount()));
    for (std::size_t start = 0, end = 0; (end = text.find('\n', start)) != std::string::npos; start = end + 1) {
        const std::string line = withoutControls(lastState(std::string_view(text).substr(start, end - start)));
        if (!line.empty())
            screen_.complain(shownBytes(line));
        shown_ += static_cast<std::int64_t>(end - start) + 1;
    }
}

}
