#include "host/discs/toc_words.h"

#include <algorithm>

namespace tonquay::host {

namespace {

constexpr std::string_view blanks = " \t\r\n\v\f";
constexpr std::string_view signs = "{},#";

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

}

TocWord TocWords::take()
{
    TocWord word = std::move(next_);
    advance();
    return word;
}

void TocWords::skipBlanks()
{
    while (!rest_.empty()) {
        if (rest_.starts_with("//"))
            rest_.remove_prefix(std::min(rest_.find('\n'), rest_.size()));
        else if (blanks.find(rest_.front()) == std::string_view::npos)
            return;
        else {
            line_ += rest_.front() == '\n' ? 1 : 0;
            rest_.remove_prefix(1);
        }
    }
}

void TocWords::advance()
{
    skipBlanks();
    next_ = {};
    next_.line = line_;
    if (rest_.empty())
        return;
    if (rest_.front() == '"')
        return takeString();
    // A colon parts the fields of a time only between digits; elsewhere it is a sign.
    std::size_t end = 0;
    for (; end < rest_.size(); ++end) {
        const char c = rest_[end];
        if (c == ':') {
            if (end == 0 || !isDigit(rest_[end - 1]) || end + 1 == rest_.size() || !isDigit(rest_[end + 1]))
                break;
        } else if (c == '"' || signs.find(c) != std::string_view::npos || blanks.find(c) != std::string_view::npos ||
                   rest_.substr(end).starts_with("//")) {
            break;
        }
    }
    next_.kind = end == 0 ? TocWord::Kind::sign : TocWord::Kind::word;
    next_.text = rest_.substr(0, std::max<std::size_t>(end, 1));
    rest_.remove_prefix(next_.text.size());
}

void TocWords::takeString()
{
    next_.kind = TocWord::Kind::string;
    rest_.remove_prefix(1);
    while (!rest_.empty() && rest_.front() != '"') {
        char c = rest_.front();
        std::size_t length = 1;
        if (c == '\\' && rest_.size() > 1) {
            const auto octal = [&](std::size_t i) { return i < rest_.size() && rest_[i] >= '0' && rest_[i] <= '7'; };
            if (octal(1) && octal(2) && octal(3)) {
                c = static_cast<char>((rest_[1] - '0') * 64 + (rest_[2] - '0') * 8 + (rest_[3] - '0'));
                length = 4;
            } else {
                c = rest_[1];
                length = 2;
            }
        }
        line_ += rest_.front() == '\n' ? 1 : 0;
        next_.text.push_back(c);
        rest_.remove_prefix(length);
    }
    broken_ = broken_ || rest_.empty();
    rest_.remove_prefix(std::min<std::size_t>(1, rest_.size()));
}

}
