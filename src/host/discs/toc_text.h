#pragma once

#include "host/discs/toc_words.h"

#include <optional>
#include <string>

namespace tonquay::host {

/// The names in one CD_TEXT block of a table of contents.
struct TocText {
    std::wstring title;
    std::wstring performer;
    std::wstring genre; ///< its text only, without the code before it
    std::wstring message;
};

struct TocTextProblem {
    int line = 0;
    std::string text;
};

/// Reads a block from its opening brace to its closing one. Language 0 wins, else the first language that says
/// anything. Items that are not known are passed over. Returns what is wrong, if anything.
std::optional<TocTextProblem> readTocText(TocWords& words, TocText& text);

}
