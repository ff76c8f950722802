#include "tags/mp3_page.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "tags/genres.h"

#include <cmath>

namespace tonquay::tags {

namespace {

constexpr std::wstring_view lineEnd = L"\r\n";

void addSizeLine(std::wstring& text, std::int64_t length, std::wstring_view date)
{
    if (length > 0)
        text.append(L"Size:").append(base::str(length)).append(L" bytes,  Date: ");
    else
        text.append(L"Date/Time: ");
    text.append(date).append(lineEnd);
}

/// A value with what stands around it, or nothing for a blank one.
void addPiece(std::wstring& text, std::wstring_view before, std::wstring_view value, std::wstring_view after)
{
    if (!base::isBlank(value))
        text.append(before).append(value).append(after);
}

void addBitrate(std::wstring& text, const std::wstring& value)
{
    std::int32_t bitrate = 0;
    if (base::store(base::val(value), bitrate) && bitrate >= 1)
        addPiece(text, L"Bitrate: ", base::digits(bitrate), L" Kbps,  ");
}

void addTagLine(std::wstring& text, const TagState& state)
{
    const auto isBlank = [&](std::size_t place) { return base::isBlank(state.TagInfo[place]); };
    const bool first = !isBlank(slot::bitrate) || !isBlank(slot::artist) || !isBlank(slot::title);
    const bool second = state.TagInfo[slot::id3v2] == L"2";
    if (first)
        text.append(second ? L"ID3v1 Tag Present, ID3v2 Tag Present" : L"ID3v1 Tag Present").append(lineEnd);
    else if (second)
        text.append(L"ID3v2 Tag Present").append(lineEnd);
}

void addTimeLine(std::wstring& text, const std::wstring& playSeconds)
{
    const double time = base::val(playSeconds);
    std::int32_t minutes = 0;
    std::int32_t total = 0;
    if (!base::store(std::floor(time / 60), minutes) || !base::store(std::floor(time + 0.5), total))
        return;
    const std::int64_t seconds = total - std::int64_t{minutes} * 60;
    if (minutes > 0 || seconds > 0)
        text.append(L"Track Time: ")
            .append(base::digits(minutes))
            .append(L":")
            .append(base::twoDigits(seconds))
            .append(lineEnd);
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
    constexpr std::size_t usualLength = 256;
    std::wstring text;
    text.reserve(usualLength);
    addSizeLine(text, length, date);
    text.append(L"Type: MPEG 1.0 Layer 3").append(lineEnd);
    addBitrate(text, slots[slot::bitrate]);
    addPiece(text, L"Frequency: ", slots[slot::sampleRate], L" KHz\r\n");
    addPiece(text, L"Channel Info: ", slots[slot::channels], L",  ");
    addPiece(text, L"VBR Encoding:  ", slots[slot::vbr], lineEnd);
    addTagLine(text, state);
    addTimeLine(text, slots[slot::playSeconds]);
    return text;
}

}
