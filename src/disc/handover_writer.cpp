#include "disc/handover_writer.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/sequential.h"
#include "base/text.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tonquay::disc {

namespace {

constexpr std::size_t titleFields = 100;

// A file name may have 255 bytes. Around two names stand at most " - ", a track number with its blank and an ending.
constexpr std::size_t bytesOfTwoNames = 240;
constexpr std::size_t bytesOfOneName = bytesOfTwoNames / 2;
constexpr std::size_t bytesOfNote = 2000;

struct CharacterRange {
    char32_t first;
    char32_t last;
};

// Of the marks that turn the writing only those with a lasting effect are here; the joiners inside emoji must stay.
constexpr std::array dropped{
    CharacterRange{0x0000, 0x001F}, CharacterRange{0x007F, 0x009F}, CharacterRange{0x2028, 0x202E},
    CharacterRange{0x2066, 0x2069}, CharacterRange{0xFEFF, 0xFEFF}, CharacterRange{0xFFFE, 0xFFFF},
};

bool isDropped(wchar_t c)
{
    // Lone surrogates stand for bytes that were no UTF-8. One such byte in the file would make it unreadable as UTF-8
    // and so cost every other name its accents.
    const auto code = static_cast<char32_t>(c);
    if (code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
        return true;
    return std::any_of(dropped.begin(), dropped.end(),
                       [code](const CharacterRange& range) { return code >= range.first && code <= range.last; });
}

/// What a file name keeps of it is nothing, or dots, which would lead out of the output folder.
bool namesNoFolder(std::wstring_view name)
{
    return name.find_first_not_of(L". \\/?:*\"><|") == std::wstring_view::npos;
}

bool leavesDotsOnly(std::wstring_view name)
{
    return namesNoFolder(name) && name.find(L'.') != std::wstring_view::npos;
}

std::size_t bytesOf(std::wstring_view text)
{
    std::size_t bytes = 0;
    for (const wchar_t c : text)
        bytes += c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
    return bytes;
}

std::wstring cut(const std::wstring& text, std::size_t bytes)
{
    std::size_t length = 0;
    for (std::size_t used = 0; length < text.size(); ++length) {
        used += bytesOf({&text[length], 1});
        if (used > bytes)
            break;
    }
    return std::wstring(base::trim(std::wstring_view(text).substr(0, length)));
}

std::wstring cleaned(std::wstring_view name)
{
    std::wstring kept;
    // Past this nothing could survive the cutting; the bound keeps a hostile name from costing time.
    for (const wchar_t c : name.substr(0, 16 * bytesOfNote)) {
        if (isDropped(c))
            continue;
        kept += c == L'"' || c == L'`' ? L'\'' : c == L'~' ? L'-' : c;
    }
    return cut(std::wstring(base::trim(kept)), bytesOfNote);
}

/// Encoders get these between double quotes: a backslash before the closing one would make it a plain character, and
/// the text would go on into the switches behind it. File names lose every backslash anyhow.
std::wstring cleanedNote(std::wstring_view note)
{
    std::wstring kept = cleaned(note);
    while (kept.ends_with(L'\\') || kept.ends_with(L' '))
        kept.pop_back();
    return kept;
}

/// The field as it travels; the reader turns it back.
std::wstring mapped(std::wstring_view text)
{
    return base::replaced(base::replaced(text, L'\'', L'`'), L',', L'~');
}

platform::DiscNames clean(const platform::DiscTable& table)
{
    const platform::DiscNames& names = table.names;
    platform::DiscNames result{.artist = cleaned(names.artist),
                               .album = cleaned(names.album),
                               .year = cleanedNote(names.year),
                               .genre = cleanedNote(names.genre),
                               .comment = cleanedNote(names.comment),
                               .titles = {}};
    result.titles.resize(std::min(table.tracks.size(), titleFields));
    for (std::size_t i = 0; i < std::min(result.titles.size(), names.titles.size()); ++i)
        result.titles[i] = cleaned(names.titles[i]);
    return result;
}

/// Drops what would be no name of a folder or file, and fills what is missing. True when anything changed.
bool fillMissing(platform::DiscNames& names, std::string_view discId)
{
    bool filled = false;
    if (namesNoFolder(names.artist)) {
        filled = true;
        names.artist = L"Unknown Artist";
    }
    if (namesNoFolder(names.album)) {
        filled = true;
        names.album = L"Unknown Title";
        const std::wstring id = cleaned(base::fromHostBytes(discId.substr(0, bytesOfOneName)));
        if (!id.empty())
            names.album += L" (" + id + L')';
    }
    for (std::size_t i = 0; i < names.titles.size(); ++i) {
        if (!names.titles[i].empty() && !leavesDotsOnly(names.titles[i]))
            continue;
        filled = true;
        names.titles[i] = L"Track " + base::twoDigits(static_cast<std::int64_t>(i) + 1);
    }
    return filled;
}

void bound(platform::DiscNames& names)
{
    std::size_t longest = bytesOf(names.album);
    for (const std::wstring& title : names.titles)
        longest = std::max(longest, bytesOf(title));
    const std::size_t forArtist = bytesOfTwoNames - std::min(longest, bytesOfOneName);
    names.artist = cut(names.artist, forArtist);
    const std::size_t forOthers = bytesOfTwoNames - bytesOf(names.artist);
    names.album = cut(names.album, forOthers);
    for (std::wstring& title : names.titles)
        title = cut(title, forOthers);
}

std::string note(std::string_view what, std::wstring_view before, std::wstring_view after)
{
    constexpr std::size_t shown = 200;
    const auto text = [](std::wstring_view name) {
        std::wstring kept(name.substr(0, shown));
        std::erase_if(kept, isDropped);
        return '"' + base::utf8(cut(kept, shown)) + '"';
    };
    std::string line = std::string(what) + ' ' + text(before);
    return line + (after.empty() ? " is left out" : " is handed over as " + text(after));
}

std::vector<std::string> changes(const platform::DiscNames& before, const platform::DiscNames& after)
{
    std::vector<std::string> lines;
    const auto compare = [&lines](std::string_view what, const std::wstring& was, const std::wstring& is) {
        if (!was.empty() && base::trim(was) != is)
            lines.push_back(note(what, was, is));
    };
    compare("artist", before.artist, after.artist);
    compare("album", before.album, after.album);
    for (std::size_t i = 0; i < std::min(before.titles.size(), after.titles.size()); ++i)
        compare("title " + std::to_string(i + 1), before.titles[i], after.titles[i]);
    compare("comment", before.comment, after.comment);
    compare("genre", before.genre, after.genre);
    compare("year", before.year, after.year);
    return lines;
}

}

HandOver makeHandOver(const platform::DiscTable& table, wchar_t driveLetter)
{
    platform::DiscNames names = clean(table);
    // A name that is cut may end as one of dots, and what stands in its place takes room from the others.
    fillMissing(names, table.discId);
    do
        bound(names);
    while (fillMissing(names, table.discId));

    base::SequentialWriter file;
    file.text(mapped(names.artist)).text(mapped(names.album));
    file.number(static_cast<std::int64_t>(names.titles.size())).endRecord();
    for (std::size_t i = 0; i < titleFields; ++i)
        file.text(i < names.titles.size() ? mapped(names.titles[i]) : std::wstring{}).endRecord();
    file.text(mapped(names.comment)).text(mapped(names.genre)).text(mapped(names.year));
    file.text(std::wstring(1, driveLetter)).endRecord();
    return {file.bytes(), changes(table.names, names)};
}

}
