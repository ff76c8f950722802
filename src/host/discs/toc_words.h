#pragma once

#include <string>
#include <string_view>

namespace tonquay::host {

/// One word of a cdrdao table of contents, with the line that it begins on.
struct TocWord {
    enum class Kind { word, string, sign, end };

    Kind kind = Kind::end;
    std::string text; ///< of a string: its bytes without the quotes, escapes undone
    int line = 0;

    bool isSign(char sign) const { return kind == Kind::sign && text[0] == sign; }
};

/// Takes the words off a table of contents, one after the other: bare words and numbers, strings in double quotes
/// (with \" \\ and \ooo), the signs { } , : # and comments from // to the end of the line, which are passed over.
/// Times such as 12:30:05 are one word.
class TocWords {
public:
    explicit TocWords(std::string_view bytes) : rest_(bytes) { advance(); }

    const TocWord& peek() const { return next_; }
    TocWord take();

    /// True when a string had no closing quote.
    bool broken() const { return broken_; }

private:
    void advance();
    void skipBlanks();
    void takeString();

    std::string_view rest_;
    TocWord next_;
    int line_ = 1;
    bool broken_ = false;
};

}
