#include "console/option_readers.h"

#include "base/text.h"

#include <CLI/CLI.hpp>

#include <charconv>

namespace tonquay::console {

namespace {

std::optional<int> minutesAndSeconds(std::string_view text)
{
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos || text.size() - colon != 3 || colon == 0 || colon > 3)
        return std::nullopt;
    const std::optional<int> minutes = wholeNumber(text.substr(0, colon));
    const std::optional<int> seconds = wholeNumber(text.substr(colon + 1));
    if (!minutes || !seconds || *minutes < 0 || *seconds < 0 || *seconds > 59)
        return std::nullopt;
    return *minutes * 60 + *seconds;
}

}

std::optional<int> wholeNumber(std::string_view text)
{
    int number = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
    if (end.ec != std::errc{} || end.ptr != text.data() + text.size())
        return std::nullopt;
    return number;
}

void addOption(CLI::App& app, const std::string& name, const std::string& value, const std::string& help,
               std::function<std::string(const std::string&)> take)
{
    app.add_option_function<std::string>(
           name,
           [name, take = std::move(take)](const std::string& text) {
               const std::string problem = take(text);
               if (!problem.empty())
                   throw CLI::ValidationError(name.substr(name.find("--")), problem);
           },
           help)
        ->type_name(value);
}

void addNumber(CLI::App& app, const std::string& name, const std::string& value, const std::string& help, int least,
               int most, std::optional<int>& number)
{
    addOption(app, name, value, help, [least, most, &number](const std::string& text) {
        number = wholeNumber(text);
        const bool good = number && *number >= least && *number <= most;
        return good ? std::string{}
                    : fmt::format("\"{}\" is no whole number from {} to {}", shownBytes(text), least, most);
    });
}

void addTime(CLI::App& app, const std::string& name, const std::string& help, std::optional<int>& seconds)
{
    addOption(app, name, "M:SS", help, [&seconds](const std::string& text) {
        seconds = minutesAndSeconds(text);
        return seconds ? std::string{} : fmt::format("\"{}\" is no time like 1:30", shownBytes(text));
    });
}

void addPath(CLI::App& app, const std::string& name, const std::string& value, const std::string& help,
             std::optional<std::string>& path)
{
    addOption(app, name, value, help, [&path](const std::string& text) {
        path = text;
        return text.empty() ? "an empty text" : std::string{};
    });
}

void addName(CLI::App& app, const std::string& name, const std::string& help, std::optional<std::wstring>& text)
{
    addOption(app, name, "TEXT", help, [&text](const std::string& given) {
        text = base::fromHostBytes(given);
        return std::string{};
    });
}

namespace {

/// An option that may be repeated, each time with one text that `take` accepts or answers with what is wrong with it.
void addRepeated(CLI::App& app, const std::string& name, const std::string& value, const std::string& help,
                 std::function<std::string(const std::string&)> take)
{
    app.add_option_function<std::vector<std::string>>(
           name,
           [name, take = std::move(take)](const std::vector<std::string>& given) {
               for (const std::string& text : given)
                   if (const std::string problem = take(text); !problem.empty())
                       throw CLI::ValidationError(name, problem);
           },
           help)
        ->type_name(value)
        ->expected(1)
        // Else every word that follows, the disc or a file too, would be taken for a further text.
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

}

void addTitles(CLI::App& app, std::map<int, std::wstring>& titles)
{
    addRepeated(app, "--title", "N=TEXT", "Title of a track; may be repeated", [&titles](const std::string& text) {
        const std::size_t equals = text.find('=');
        const std::optional<int> number = wholeNumber(std::string_view(text).substr(0, equals));
        if (equals == std::string::npos || !number || *number < 1 || *number > 99)
            return fmt::format("\"{}\" is no track number and title like 3=Rain", shownBytes(text));
        titles[*number] = base::fromHostBytes(std::string_view(text).substr(equals + 1));
        return std::string{};
    });
}

void addTagChanges(CLI::App& app, TagChanges& changes)
{
    addRepeated(
        app, "--set", "FIELD=VALUE",
        "Change title, artist, album, genre, year, track or comment first; may be repeated. Without a value the "
        "field is emptied",
        [&changes](const std::string& text) { return addTagChange(changes, text); });
}

}
