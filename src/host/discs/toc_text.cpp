#include "host/discs/toc_text.h"

#include "base/text.h"

#include "host/discs/sheet.h"

namespace tonquay::host {

namespace {

using Problem = std::optional<TocTextProblem>;

Problem problem(const TocWord& word, std::string text)
{
    return TocTextProblem{word.line, std::move(text)};
}

/// Bytes in braces: { 0, 12, 82 }.
Problem takeBytes(TocWords& words, std::string& bytes)
{
    words.take();
    while (!words.peek().isSign('}')) {
        const TocWord word = words.take();
        if (word.isSign(','))
            continue;
        const auto byte = word.kind == TocWord::Kind::word ? wholeNumber(word.text, 255) : std::nullopt;
        if (!byte)
            return problem(word, "binary data holds numbers from 0 to 255 only");
        bytes.push_back(static_cast<char>(*byte));
    }
    words.take();
    return {};
}

/// The genre has a code of two bytes before its text.
std::string genreText(const std::string& bytes)
{
    constexpr std::size_t codeBytes = 2;
    const std::string text = bytes.size() > codeBytes ? bytes.substr(codeBytes) : std::string();
    return text.substr(0, text.find('\0'));
}

Problem takeItem(TocWords& words, TocText& text)
{
    const TocWord item = words.take();
    if (item.kind != TocWord::Kind::word)
        return problem(item, "\"" + shown(item.text) + "\" is no item of CD_TEXT");
    std::string value;
    const bool binary = words.peek().isSign('{');
    if (binary) {
        if (Problem found = takeBytes(words, value))
            return found;
    } else if (words.peek().kind == TocWord::Kind::string) {
        value = words.take().text;
    }
    const std::wstring name = base::upper(base::fromHostBytes(item.text));
    if (name == L"TITLE" && !binary)
        text.title = base::fromFileBytes(value);
    else if (name == L"PERFORMER" && !binary)
        text.performer = base::fromFileBytes(value);
    else if (name == L"MESSAGE" && !binary)
        text.message = base::fromFileBytes(value);
    else if (name == L"GENRE")
        text.genre = base::fromFileBytes(binary ? genreText(value) : value);
    return {};
}

Problem takeLanguage(TocWords& words, TocText& text, bool& wins)
{
    const TocWord number = words.take();
    const auto language = wholeNumber(number.text, 7);
    if (!language)
        return problem(number, "\"" + shown(number.text) + "\" is no language from 0 to 7");
    if (!words.peek().isSign('{'))
        return problem(words.peek(), "no { behind LANGUAGE");
    words.take();
    TocText found;
    while (!words.peek().isSign('}'))
        if (Problem wrong = takeItem(words, found))
            return wrong;
    words.take();
    if (wins)
        return {};
    wins = *language == 0;
    const bool empty = text.title.empty() && text.performer.empty() && text.genre.empty() && text.message.empty();
    if (wins || empty)
        text = found;
    return {};
}

/// LANGUAGE_MAP { 0 : EN 1 : 9 }: which languages these are does not matter here.
Problem skipMap(TocWords& words)
{
    if (!words.peek().isSign('{'))
        return problem(words.peek(), "no { behind LANGUAGE_MAP");
    words.take();
    while (!words.peek().isSign('}')) {
        const TocWord word = words.take();
        if (word.kind != TocWord::Kind::word && !word.isSign(':'))
            return problem(word, "\"" + shown(word.text) + "\" has no place in LANGUAGE_MAP");
    }
    words.take();
    return {};
}

}

std::optional<TocTextProblem> readTocText(TocWords& words, TocText& text)
{
    if (!words.peek().isSign('{'))
        return problem(words.peek(), "no { behind CD_TEXT");
    words.take();
    bool wins = false;
    while (!words.peek().isSign('}')) {
        const TocWord word = words.take();
        const std::wstring name = base::upper(base::fromHostBytes(word.text));
        Problem found;
        if (word.kind == TocWord::Kind::word && name == L"LANGUAGE_MAP")
            found = skipMap(words);
        else if (word.kind == TocWord::Kind::word && name == L"LANGUAGE")
            found = takeLanguage(words, text, wins);
        else
            found =
                problem(word, word.kind == TocWord::Kind::end ? "CD_TEXT without its closing }"
                                                              : "\"" + shown(word.text) + "\" is no part of CD_TEXT");
        if (found)
            return found;
    }
    words.take();
    return {};
}

}
