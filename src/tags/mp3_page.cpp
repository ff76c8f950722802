#include "tags/mp3_page.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "tags/genres.h"

#include <cmath>

namespace tonquay::tags {

namespace {

constexpr std::wstring_view lineEnd = L"\r\n";

std::wstring sizeLine(std::int64_t length, std::wstring_view date)
{
    std::wstring line = length > 0 ? L"Size:" + base::str(length) + L" bytes,  Date: " : L"Date/Time: ";
    return line.append(date).append(lineEnd);
}

/// A value with what stands around it, or nothing for a blank one.
std::wstring piece(std::wstring_view before, const std::wstring& value, std::wstring_view after)
{
    if (base::isBlank(value))
        return {};
    return std::wstring(before).append(value).append(after);
}

std::wstring bitratePiece(const std::wstring& value)
{
    std::int32_t bitrate = 0;
    if (!base::store(base::val(value), bitrate) || bitrate < 1)
        return {};
    return L"Bitrate: " + base::digits(bitrate) + L" Kbps,  ";
}

std::wstring tagLine(const TagState& state)
{
    const auto isBlank = [&](std::size_t place) { return base::isBlank(state.TagInfo[place]); };
    std::wstring line;
    if (!isBlank(slot::bitrate) || !isBlank(slot::artist) || !isBlank(slot::title))
        line = L"ID3v1 Tag Present";
    if (state.TagInfo[slot::id3v2] == L"2")
        line += line.empty() ? L"ID3v2 Tag Present" : L", ID3v2 Tag Present";
    return piece({}, line, lineEnd);
}

std::wstring timeLine(const std::wstring& playSeconds)
{
    const double time = base::val(playSeconds);
    std::int32_t minutes = 0;
    std::int32_t total = 0;
    if (!base::store(std::floor(time / 60), minutes) || !base::store(std::floor(time + 0.5), total))
        return {};
    const std::int64_t seconds = total - std::int64_t{minutes} * 60;
    if (minutes <= 0 && seconds <= 0)
        return {};
    return L"Track Time: " + base::digits(minutes) + L':' + base::twoDigits(seconds) + std::wstring(lineEnd);
}

}

TagFields tagFields(const TagState& state)
{
    const auto& slots = state.TagInfo;
    TagFields fields;
    fields.artist = slots[slot::artist];
    fields.title = slots[slot::title];
    fields.album = slots[slot::album];
    if (slots[slot::year].size() >= 2)
        fields.year = slots[slot::year];
    fields.genre = GenreNameFromNumber(slots[slot::genre]);
    fields.comment = slots[slot::comment];
    if (base::val(slots[slot::track]) >= 1)
        fields.track = slots[slot::track];
    return fields;
}

std::wstring fileInformation(const TagState& state, std::int64_t length, std::wstring_view date)
{
    const auto& slots = state.TagInfo;
    std::wstring text = sizeLine(length, date);
    text.append(L"Type: MPEG 1.0 Layer 3").append(lineEnd);
    text += bitratePiece(slots[slot::bitrate]);
    text += piece(L"Frequency: ", slots[slot::sampleRate], L" KHz\r\n");
    text += piece(L"Channel Info: ", slots[slot::channels], L",  ");
    text += piece(L"VBR Encoding:  ", slots[slot::vbr], lineEnd);
    text += tagLine(state);
    return text + timeLine(slots[slot::playSeconds]);
}

}
