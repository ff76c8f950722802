#include "console/tag_changes.h"

#include "base/numbers.h"
#include "base/text.h"
#include "console/genre_byte.h"
#include "console/option_readers.h"
#include "console/screen_text.h"
#include "tags/genres.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

namespace tonquay::console {

namespace {

constexpr int lastYear = 3000;
constexpr int lastTrack = 99;

/// A number as a tag says it; nothing for a text that is none within 1 and `most`.
std::optional<std::wstring> plainNumber(const std::string& text, int most)
{
    const std::optional<int> number = wholeNumber(text);
    if (!number || *number < 1 || *number > most)
        return std::nullopt;
    return base::digits(*number);
}

std::optional<std::wstring> genreName(const std::string& text)
{
    const auto number = genreNumber(base::fromHostBytes(text));
    return number ? std::optional(tags::GenreNameFromNumber(base::digits(*number))) : std::nullopt;
}

std::optional<std::wstring> valueFor(TagField field, const std::string& text)
{
    if (text.empty())
        return std::wstring();
    switch (field) {
    case TagField::year: return plainNumber(text, lastYear);
    case TagField::track: return plainNumber(text, lastTrack);
    case TagField::genre: return genreName(text);
    default: return base::fromHostBytes(text);
    }
}

std::string problemWith(TagField field, const std::string& text)
{
    const std::string value = shownBytes(text);
    switch (field) {
    case TagField::year: return fmt::format("\"{}\" is no year from 1 to {}", value, lastYear);
    case TagField::track: return fmt::format("\"{}\" is no track number from 1 to {}", value, lastTrack);
    default: return fmt::format("\"{}\" is no genre of the table that MP3 tags know", value);
    }
}

}

std::string_view nameOf(TagField field)
{
    return std::ranges::find(tagFieldNames, field, &TagFieldName::field)->name;
}

TagChanges fieldsOf(const platform::FileTags& tags)
{
    const auto number = [](int value) { return value > 0 ? base::digits(value) : std::wstring(); };
    return {{TagField::title, tags.title},        {TagField::artist, tags.artist}, {TagField::album, tags.album},
            {TagField::year, number(tags.year)},  {TagField::genre, tags.genre},   {TagField::comment, tags.comment},
            {TagField::track, number(tags.track)}};
}

std::string addTagChange(TagChanges& changes, const std::string& text)
{
    const std::size_t equals = text.find('=');
    const auto named = std::ranges::find(tagFieldNames, std::string_view(text).substr(0, equals), &TagFieldName::name);
    if (equals == std::string::npos || named == tagFieldNames.end())
        return fmt::format("\"{}\" is no field and value like title=Rain; the fields are title, artist, album, genre, "
                           "year, track, comment",
                           shownBytes(text));
    const std::string given = text.substr(equals + 1);
    std::optional<std::wstring> value = valueFor(named->field, given);
    if (!value)
        return problemWith(named->field, given);
    changes[named->field] = std::move(*value);
    return {};
}

}
