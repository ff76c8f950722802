#include "fake_screen.h"

#include "base/text.h"

namespace tonquay::console {

void Terminal::put(char32_t character)
{
    if (column_ >= columns_) {
        wrapped = true;
        column_ = 0;
        ++row_;
    }
    if (row_ >= screen_.size())
        screen_.resize(row_ + 1);
    std::vector<char32_t>& line = screen_[row_];
    if (line.size() <= column_)
        line.resize(column_ + 1, U' ');
    line[column_++] = character;
}

void Terminal::show(std::string_view output)
{
    const std::wstring text = base::fromHostBytes(output);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::wstring_view rest = std::wstring_view(text).substr(i);
        if (rest.starts_with(L"\x1b[2A")) {
            row_ -= std::min<std::size_t>(row_, 2);
            i += 3;
        } else if (rest.starts_with(L"\x1b[J")) {
            screen_.resize(row_ + 1);
            screen_[row_].resize(std::min(screen_[row_].size(), column_));
            i += 2;
        } else if (text[i] == L'\n') {
            ++row_;
            column_ = 0;
            if (row_ >= screen_.size())
                screen_.resize(row_ + 1);
        } else if (text[i] == L'\r') {
            column_ = 0;
        } else {
            unknownCode = unknownCode || text[i] < L' ';
            put(static_cast<char32_t>(text[i]));
        }
    }
}

std::vector<std::string> Terminal::lines() const
{
    std::vector<std::string> lines;
    for (const std::vector<char32_t>& line : screen_) {
        std::wstring text;
        for (const char32_t c : line)
            text += static_cast<wchar_t>(c);
        lines.push_back(base::utf8(text));
    }
    return lines;
}

}
