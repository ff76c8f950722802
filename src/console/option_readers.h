#pragma once

#include "console/screen_text.h"
#include "console/tag_changes.h"

#include <CLI/App.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

/// Options of the command line whose text is read and refused here, with a sentence that says what was expected.
/// `name` is that of the parser ("-o,--output"), `value` stands for the text in the help.
namespace tonquay::console {

/// A word of the command line and what it stands for.
template <class Value>
struct Word {
    std::string_view text;
    Value value;
};
template <class Value>
Word(std::string_view, Value) -> Word<Value>;

template <class Words>
std::string listed(const Words& words)
{
    std::string text;
    for (const auto& word : words)
        text += (text.empty() ? "" : ", ") + std::string(word.text);
    return text;
}

std::optional<int> wholeNumber(std::string_view text);

/// An option whose text `take` accepts or answers with what is wrong with it.
void addOption(CLI::App& app, const std::string& name, const std::string& value, const std::string& help,
               std::function<std::string(const std::string&)> take);

/// One of some words.
template <class Value, std::size_t size>
void addChoice(CLI::App& app, const std::string& name, const std::string& value, const std::string& help,
               const std::array<Word<Value>, size>& words, std::function<void(Value)> store)
{
    addOption(app, name, value, help + " (" + listed(words) + ")", [&words, store](const std::string& text) {
        const auto word = std::find_if(words.begin(), words.end(), [&text](const auto& w) { return w.text == text; });
        if (word == words.end())
            return fmt::format("\"{}\" is none of {}", shownBytes(text), listed(words));
        store(word->value);
        return std::string{};
    });
}

/// A whole number from `least` to `most`.
void addNumber(CLI::App& app, const std::string& name, const std::string& value, const std::string& help, int least,
               int most, std::optional<int>& number);

/// A time as M:SS.
void addTime(CLI::App& app, const std::string& name, const std::string& help, std::optional<int>& seconds);

/// A text that is not empty, in the bytes of this system.
void addPath(CLI::App& app, const std::string& name, const std::string& value, const std::string& help,
             std::optional<std::string>& path);

/// Any text.
void addName(CLI::App& app, const std::string& name, const std::string& help, std::optional<std::wstring>& text);

/// "--title N=TEXT", which may be repeated.
void addTitles(CLI::App& app, std::map<int, std::wstring>& titles);

/// "--set FIELD=VALUE", which may be repeated.
void addTagChanges(CLI::App& app, TagChanges& changes);

}
