#include "tagging/tag_values.h"

#include "base/numbers.h"
#include "base/text.h"
#include "naming/prefix_move.h"
#include "tags/genres.h"

#include <array>

namespace tonquay::tagging {

namespace {

constexpr std::size_t textWidth = 30;
constexpr std::size_t yearWidth = 4;

struct Category {
    std::wstring_view begins; ///< in upper case
    std::wstring_view ends;
    std::wstring_view genre;
};

/// The first row that fits counts.
constexpr std::array categories{
    Category{L"BLUE", L"", L"R&B"},        Category{L"CLAS", L"ROCK", L"Classic Rock"},
    Category{L"CLAS", L"", L"Classical"},  Category{L"COUN", L"", L"Country"},
    Category{L"FOLK", L"", L"Pop-Folk"},   Category{L"HARD", L"", L"Hard Rock"},
    Category{L"JAZZ", L"", L"Jazz"},       Category{L"NEWA", L"", L"New Age"},
    Category{L"REGG", L"", L"Reggae"},     Category{L"ROCK", L"", L"Rock"},
    Category{L"SOUN", L"", L"Soundtrack"},
};

std::wstring_view shownGenreNamed(std::wstring_view name)
{
    for (std::size_t i = 0; i < tags::genreCount; ++i)
        if (tags::shownGenre(i) == name)
            return tags::shownGenre(i);
    return {};
}

std::wstring textField(std::wstring_view text)
{
    return naming::fixedWidth(base::trim(text), textWidth);
}

}

void FillGenreList(controls::ComboBox& list)
{
    for (std::size_t i = 0; i < tags::genreCount; ++i)
        list.add(std::wstring(tags::shownGenre(i)));
}

std::wstring_view genreForCategory(std::wstring_view category)
{
    const std::wstring_view trimmed = base::trim(category);
    const std::wstring upper = base::upper(trimmed);
    for (const Category& row : categories)
        if (upper.starts_with(row.begins) && upper.ends_with(row.ends))
            return row.genre;
    return shownGenreNamed(trimmed);
}

TagValues tagValuesOf(const state::DiscInfo& disc)
{
    return {disc.discArtist, disc.discAlbum, disc.discYear, disc.discComment,
            std::wstring(genreForCategory(disc.discGenre))};
}

void fillTagInfo(tags::TagState& tags, const TagValues& values, std::wstring_view title, std::wstring_view track)
{
    tags.TagInfo[tags::slot::artist] = textField(values.artist);
    tags.TagInfo[tags::slot::title] = textField(title);
    tags.TagInfo[tags::slot::album] = textField(values.album);
    tags.TagInfo[tags::slot::comment] = textField(values.comment);
    tags.TagInfo[tags::slot::year] = naming::fixedWidth(values.year, yearWidth);
    tags.TagInfo[tags::slot::genre] = base::digits(tags::GenreNumberFromName(values.genre));
    tags.TagInfo[tags::slot::track] = track;
}

}
