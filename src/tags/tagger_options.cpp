#include "tags/tagger_options.h"

#include "base/numbers.h"
#include "base/text.h"

#include <charconv>
#include <limits>

namespace tonquay::tags {

namespace {

std::wstring_view flagText(bool on)
{
    return on ? L"True" : L"False";
}

bool isOn(std::wstring_view text)
{
    return text == L"True";
}

/// A text that is a number from its first character to its last, rounded to a whole one, goes into the field when it
/// fits there. base::val would make a 0 of any other text.
template <class Integer>
void takeNumber(std::wstring_view stored, Integer& field)
{
    const std::string text = base::utf8(base::trim(stored));
    const char* const end = text.data() + text.size();
    const char* const begin = text.data() + (text.starts_with('+') ? 1 : 0);
    if (begin == end || std::string_view("+-.0123456789").find(*begin) == std::string_view::npos)
        return; // among others "inf" and "nan"
    double value = 0;
    const auto read = std::from_chars(begin, end, value);
    if (read.ec != std::errc{} || read.ptr != end)
        return;
    const double whole = base::roundHalfEven(value);
    if (whole >= std::numeric_limits<Integer>::min() && whole <= std::numeric_limits<Integer>::max())
        field = static_cast<Integer>(whole);
}

}

COptions::COptions(platform::SettingsStore& store, std::wstring_view applicationFolder)
    : store_(store),
      applicationFolder_(applicationFolder),
      defaultGenreList_(applicationFolder_ + (applicationFolder.ends_with(L'\\') ? L"genre.gls" : L"\\genre.gls")),
      genreListName_(defaultGenreList_),
      startDir_(applicationFolder)
{}

bool COptions::ConvertUnderscore() const
{
    return isOn(convertUnderscore_);
}

void COptions::ConvertUnderscore(bool on)
{
    convertUnderscore_ = flagText(on);
}

void COptions::readOptions()
{
    const auto stored = store_.all(section);
    const auto find = [&stored](std::wstring_view key) {
        const auto found = stored.empty() ? stored.end() : stored.find(base::upper(key));
        return found == stored.end() ? nullptr : &found->second;
    };
    const auto text = [&find](std::wstring_view key, std::wstring_view fallback) -> std::wstring_view {
        const std::wstring* const found = find(key);
        return found == nullptr ? fallback : std::wstring_view(*found);
    };
    const auto flag = [&find](std::wstring_view key, bool fallback) {
        const std::wstring* const found = find(key);
        return found == nullptr ? fallback : isOn(*found);
    };
    const auto number = [&find](std::wstring_view key, auto fallback, auto& field) {
        if (const std::wstring* const found = find(key); found != nullptr)
            takeNumber(*found, field);
        else
            field = fallback;
    };
    genreListName_ = text(L"GenreListName", defaultGenreList_);
    number(L"DefaultGenre", std::uint8_t{0}, defaultGenre_);
    startDir_ = text(L"StartDir", applicationFolder_);
    fillUp_ = text(L"FillUp", L"");
    askReadOnly_ = flag(L"AskReadOnly", true);
    nextConvert_ = flag(L"NextConvert", true);
    showMp3Error_ = flag(L"ShowMp3Error", false);
    convertTrackNo_ = flag(L"ConvertTrackNo", true);
    recognize_ = text(L"Recognize", L"12345");
    number(L"ConvertTo", std::int16_t{1}, convertTo_);
    ConvertUnderscore(flag(L"ConvertUnderscore", true));
    mp3Player_ = text(L"mp3Player", L"");
    infoInclude_ = text(L"InfoInclude", L"");
    fillOnlyEmpty_ = flag(L"FillOnlyEmpty", true);
    number(L"TrackNoAtBeginning", std::uint8_t{2}, trackNo_);
    lowercase_ = flag(L"Lowercase", true);
}

void COptions::writeOptions()
{
    const auto put = [this](std::wstring_view key, std::wstring_view value) { store_.set(section, key, value); };
    // Read with a capital; to the store that is the same key.
    put(L"genreListName", genreListName_);
    put(L"DefaultGenre", base::digits(defaultGenre_));
    put(L"StartDir", startDir_);
    put(L"FillUp", fillUp_);
    put(L"AskReadOnly", flagText(askReadOnly_));
    put(L"NextConvert", flagText(nextConvert_));
    put(L"ShowMp3Error", flagText(showMp3Error_));
    put(L"ConvertTrackNo", flagText(convertTrackNo_));
    put(L"Recognize", recognize_);
    put(L"ConvertTo", base::digits(convertTo_));
    put(L"ConvertUnderscore", convertUnderscore_);
    put(L"mp3Player", mp3Player_);
    put(L"InfoInclude", infoInclude_);
    put(L"FillOnlyEmpty", flagText(fillOnlyEmpty_));
    put(L"TrackNoAtBeginning", base::digits(trackNo_));
    put(L"Lowercase", flagText(lowercase_));
}

}
