#include "engine/cd_text_list.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/red_book.h"
#include "base/text.h"
#include "engine/error_reporters.h"

#include <algorithm>

namespace tonquay::engine {

namespace {

const CdTextFault noSuchIndex{9, L"Subscript out of range"};
const CdTextFault noSuchPart{5, L"Invalid procedure call or argument"};
const CdTextFault tooLarge{6, L"Overflow"};

bool beginsWith(const std::wstring& tag, std::wstring_view key)
{
    return base::upper(tag.substr(0, key.size())) == key;
}

/// Takes "3=text" into `names`.
CdTextFault take(std::wstring_view numbered, std::int32_t trackCount, std::map<std::int32_t, std::wstring>& names)
{
    const std::size_t equals = numbered.find(L'=');
    if (equals == std::wstring_view::npos)
        return noSuchPart;
    std::int32_t number = 0;
    if (!base::store(base::val(numbered.substr(0, equals)), number))
        return tooLarge;
    if (number < 0 || number > trackCount)
        return noSuchIndex;
    names[number] = numbered.substr(equals + 1);
    return {};
}

}

CdTextFault readCdText(std::string_view block, std::int32_t trackCount, CdTextNames& names,
                       const std::function<void(std::int32_t, const std::wstring&)>& seen)
{
    constexpr std::wstring_view title = L"TITLE";
    constexpr std::wstring_view performer = L"PERFORMER";
    if (trackCount < 0)
        return noSuchIndex;
    std::size_t place = 0;
    while (true) {
        const std::string_view bytes = block.substr(place, block.find('\0', place) - place);
        const std::wstring tag = base::fromHostBytes(bytes);
        seen(static_cast<std::int32_t>(place), tag);
        if (tag.empty())
            return {};
        CdTextFault fault;
        if (beginsWith(tag, title))
            fault = take(std::wstring_view(tag).substr(title.size()), trackCount, names.titles);
        else if (beginsWith(tag, performer))
            fault = take(std::wstring_view(tag).substr(performer.size()), trackCount, names.performers);
        if (fault.number != 0)
            return fault;
        place = std::min(place + bytes.size() + 1, block.size());
    }
}

void LoadTrackListFromCDText(EngineContext& c, std::string_view tags, std::int32_t trackCount)
{
    CdTextNames names;
    // The boxes were put in to see what comes, and have stayed.
    const CdTextFault fault = readCdText(tags, trackCount, names, [&c](std::int32_t place, const std::wstring& tag) {
        c.dialogs.messageBox(L"CD-Tonquay", place == 0 ? tag : L"tag" + base::str(place) + L":   " + tag,
                             platform::Dialogs::Icon::none);
    });
    if (fault.number != 0) {
        LogError(c.log, fault.number, L"LoadTrackListFromCDText", L"cdrip1", fault.description);
        return;
    }
    c.form.txtCDArtist.text = names.performers[0];
    c.form.txtCDAlbum.text = names.titles[0];
    for (std::int32_t i = 0; i < trackCount; ++i) {
        const std::int32_t length = c.engine.BASS_CD_GetTrackLength(c.engineDrive, static_cast<std::uint32_t>(i));
        if (length <= 0)
            continue;
        const auto seconds = static_cast<std::int32_t>(
            base::roundHalfEven(static_cast<double>(length) / base::red_book::bytesPerSecond));
        c.form.lstTracks.add(base::twoDigits(i + 1) + L'\t' + names.performers[i + 1] + L" / " + names.titles[i + 1] +
                             L"\t[" + Seconds2HMS(seconds) + L']');
    }
}

}
