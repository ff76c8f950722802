#include "utility/tag_file.h"

#include "utility/losses.h"
#include "utility/planned_tag.h"

#include <algorithm>
#include <array>
#include <span>

namespace tonquay::utility {

namespace {

using base::Result;

constexpr std::size_t startBytes = 64;

/// Fewer bytes where the file ends.
Result<std::string> readAt(platform::BinaryFile& file, std::int64_t place, std::size_t count)
{
    std::string bytes(count, '\0');
    if (const auto moved = file.seek(place); !moved)
        return moved.failure();
    const auto done = file.read(std::as_writable_bytes(std::span(bytes)));
    if (!done)
        return done.failure();
    bytes.resize(*done);
    return bytes;
}

std::wstring shownValue(const TagFile& file, std::size_t field)
{
    const tags::clsFrame* const frame = frameOf(file.tag->frames(), field);
    if (frame != nullptr && !isPlain(*frame))
        if (const auto* const source = sourceOf(file.contents, *frame); source != nullptr && !source->text.empty())
            return source->text;
    return file.tag->GetFrameValue(idOf(field));
}

/// Files that a tag in front would make useless, by how they begin.
struct Sort {
    std::string_view start;
    std::size_t at;
    std::wstring_view name;
};

constexpr std::array sorts = std::to_array<Sort>({
    {"RIFF", 0, L"a WAV file"},
    {"FORM", 0, L"an AIFF file"},
    {"OggS", 0, L"an Ogg file"},
    {"fLaC", 0, L"a FLAC file"},
    {"ftyp", 4, L"an MP4 file"},
    {"\x30\x26\xB2\x75", 0, L"a WMA file"},
});

/// An MP3 file whose first frame tells how much silence the encoder has put around the sound.
bool tellsOfSilence(std::string_view start)
{
    return start.starts_with('\xFF') &&
           (start.find("Info") != std::string_view::npos || start.find("Xing") != std::string_view::npos);
}

std::wstring flagsLine(std::byte flags)
{
    constexpr std::byte unsynchronised{0x80};
    constexpr std::byte extended{0x40};
    constexpr std::byte experimental{0x20};
    if ((flags & extended) != std::byte{0})
        return L"The tag's flags promise an extended header that is not there: most programs will not find its values.";
    if ((flags & unsynchronised) != std::byte{0})
        return L"The tag's flags say that it is unsynchronised, which it is not: some letters may be misread "
               L"elsewhere.";
    if ((flags & ~experimental) != std::byte{0})
        return L"The tag's flags have no meaning: some programs may refuse it.";
    return {};
}

}

Result<TagFile> readTagFile(const TagServices& services, std::wstring_view path)
{
    TagFile result;
    result.path = path;
    // First, since it knows best what is no file to read.
    auto contents = services.readContents(services.files.hostPath(path));
    if (!contents)
        return contents.failure();
    result.contents = std::move(*contents);
    const auto file = services.files.openForReading(path);
    if (!file)
        return file.failure();
    if (const auto read = (*file)->read(result.header.bytes); !read)
        return read.failure();
    const std::int64_t soundAt =
        result.hasTag() ? std::int64_t{result.header.bodySize()} + static_cast<std::int64_t>(tags::id3v2HeaderBytes)
                        : 0;
    if (result.hasTag()) {
        auto end = readAt(**file, result.header.bodySize(), tags::id3v2HeaderBytes);
        if (!end)
            return end.failure();
        result.tagEnd = std::move(*end);
    }
    auto start = readAt(**file, soundAt, startBytes);
    if (!start)
        return start.failure();
    result.start = std::move(*start);
    result.tag = std::make_unique<tags::clsID3v2>(services.files, services.log, services.clock);
    result.tag->ReadTag(path);
    for (std::size_t field = 0; field < fieldCount; ++field)
        result.values[field] = shownValue(result, field);
    return result;
}

std::vector<std::wstring> oddities(const TagFile& file, bool written)
{
    std::vector<std::wstring> lines;
    const auto* const sort = std::ranges::find_if(sorts, [&](const Sort& entry) {
        return file.start.substr(std::min(entry.at, file.start.size())).starts_with(entry.start);
    });
    if (written && sort != sorts.end())
        lines.push_back(L"This is no MP3 file but " + std::wstring(sort->name) +
                        L": with a tag in front other programs may not know it any more.");
    if (written)
        if (std::wstring line = flagsLine(file.header.flags()); !line.empty())
            lines.push_back(std::move(line));
    if (file.tagEnd.find_first_not_of('\0') != std::string::npos)
        lines.emplace_back(
            L"The last ten bytes of the old tag stay in front of the sound. Most programs pass over that.");
    if (file.hasTag() && tellsOfSilence(file.start))
        lines.emplace_back(L"Ten bytes come to stand between the tag and the sound: some programs will then play the "
                           L"silence that the encoder has put around it.");
    return lines;
}

}
