#include "tags/file_sight.h"

#include "base/format.h"
#include "base/text.h"
#include "tags/id3v2_tag.h"
#include "tags/mp3_info.h"
#include "tags/mp3_page.h"
#include "tags/vorbis_fields.h"
#include "tags/vorbis_tag.h"

#include <cstdint>

namespace tonquay::tags {

namespace {

/// How a file's date is shown; nothing for one that is not known.
std::wstring dateOf(platform::FileSystem& files, std::wstring_view path)
{
    const auto changed = files.lastChange(path);
    return changed ? base::dateAndTime(*changed) : std::wstring();
}

}

FileSort fileSort(std::wstring_view name)
{
    const std::wstring ending = base::upper(name.substr(name.rfind(L'.') + 1));
    return ending == L"OGG" ? FileSort::ogg : ending == L"WAV" ? FileSort::wav : FileSort::mp3;
}

FileSight mp3Sight(platform::FileSystem& files, platform::Diagnostics& log, platform::Clock& clock, COptions& options,
                   TagState& state, std::wstring_view path)
{
    // One look at an open file tells all; a file that cannot be opened still has a size and a date.
    const auto file = files.openForReading(path);
    const auto facts = file ? (*file)->facts() : base::Result<platform::BinaryFile::Facts>(file.failure());
    const std::int64_t length = facts ? facts->length : files.length(path);
    if (length < 1)
        return {.information = L"Corrupt file"};
    if (platform::passOver(log, file, "Open an MP3 file")) {
        clsID3v2 tag(files, log, clock);
        const Id3v2Reader id3v2 = [&](std::wstring_view) -> Id3v2Values {
            tag.ReadTag(**file, base::utf8(path));
            return [&tag](int frame) { return tag.GetFrameValue(static_cast<FrameValueID>(frame)); };
        };
        ReadMp3Info(**file, length, log, options, id3v2, state, path);
    } else {
        ClearTagInfo(state);
    }
    const std::wstring date = facts ? base::dateAndTime(facts->lastChange) : dateOf(files, path);
    return {.information = fileInformation(state, length, date), .fields = tagFields(state)};
}

FileSight oggSight(platform::FileSystem& files, platform::Diagnostics& log, std::wstring_view path)
{
    const std::int64_t length = files.length(path);
    FileSight sight{.information = oggInformation(length, dateOf(files, path))};
    if (length > 0)
        sight.fields = shownFields(ReadVorbisTag(files, log, path));
    return sight;
}

FileSight wavSight(platform::FileSystem& files, platform::Diagnostics& log, WavInfo& info, std::wstring_view path)
{
    ReadWavInfo(files, log, info, path);
    return {.information = wavInformation(info)};
}

}
