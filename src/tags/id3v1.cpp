#include "tags/id3v1.h"

#include "base/numbers.h"
#include "base/text.h"
#include "tags/tag_text.h"

#include <algorithm>
#include <string>

namespace tonquay::tags {

using base::Failure;

namespace {

/// A text field of the block.
struct Place {
    std::size_t offset;
    std::size_t width;
};

constexpr std::size_t markerBytes = 3;
constexpr Place titlePlace{3, 30};
constexpr Place artistPlace{33, 30};
constexpr Place albumPlace{63, 30};
constexpr Place yearPlace{93, 4};
constexpr Place commentPlace{97, 28};
constexpr std::size_t zeroOffset = 125;
constexpr std::size_t trackOffset = 126;
constexpr std::size_t genreOffset = 127;

constexpr std::array marker{std::byte{'T'}, std::byte{'A'}, std::byte{'G'}};

bool beginsWithMarker(std::span<const std::byte> bytes)
{
    return bytes.size() >= markerBytes && std::ranges::equal(bytes.first(markerBytes), marker);
}

void put(Id3v1Block& block, Place place, std::wstring_view text)
{
    std::wstring whole(text.substr(0, place.width));
    whole.resize(place.width, L' ');
    std::ranges::transform(base::windows1252(BlankToNul(whole)),
                           block.begin() + static_cast<std::ptrdiff_t>(place.offset),
                           [](char c) { return static_cast<std::byte>(c); });
}

std::wstring textAt(std::span<const std::byte> block, Place place)
{
    std::string bytes;
    for (const std::byte byte : block.subspan(place.offset, place.width))
        bytes.push_back(static_cast<char>(byte));
    return base::fromWindows1252(bytes);
}

base::Status takeNumber(const std::wstring& text, std::uint8_t& field)
{
    std::int32_t number = 0;
    if (!base::store(base::val(text), number) || number < 0 || number > 255)
        return Failure{Failure::Kind::invalid, base::utf8(text), "does not fit into the byte that the tag has for it"};
    field = static_cast<std::uint8_t>(number);
    return {};
}

/// Moves to the block at the end of a file. True when there is one; the place is then behind its marker.
base::Result<bool> findBlock(platform::BinaryFile& file, std::int64_t length)
{
    if (length < id3v1LeastLength)
        return false;
    if (auto moved = file.seek(length - static_cast<std::int64_t>(id3v1Bytes)); !moved)
        return moved.failure();
    std::array<std::byte, markerBytes> bytes{};
    const auto count = file.read(bytes);
    if (!count)
        return count.failure();
    // A new block would then begin behind a gap.
    if (*count < markerBytes)
        return Failure{Failure::Kind::invalid, {}, "has become shorter meanwhile"};
    return beginsWithMarker(bytes);
}

/// Moves behind the place of a marker, whatever stands there.
base::Result<bool> passMarker(platform::BinaryFile& file, std::int64_t length)
{
    if (length < id3v1LeastLength)
        return false;
    if (auto moved = file.seek(length - static_cast<std::int64_t>(id3v1Bytes - markerBytes)); !moved)
        return moved.failure();
    return true;
}

base::Status writeInto(platform::BinaryFile& file, std::int64_t length, TagState& state, COptions& options)
{
    const auto there = findBlock(file, length);
    if (!there)
        return there.failure();
    if (auto moved = file.seek(*there ? length - static_cast<std::int64_t>(id3v1Bytes - markerBytes) : length); !moved)
        return moved;
    if (!*there)
        if (auto begun = file.write(marker); !begun)
            return begun;
    if (auto taken = fieldsFromTagInfo(state, options); !taken)
        return taken;
    // In one piece: of a block that is there already, either all is replaced or nothing, as far as a disk can.
    const Id3v1Block block = id3v1Block(state.id3v1);
    if (auto written = file.write(std::span(block).subspan(markerBytes)); !written)
        return written;
    return file.close();
}

}

base::Status fieldsFromTagInfo(TagState& state, COptions& options)
{
    Id3v1Fields& fields = state.id3v1;
    const auto trimmed = [&](std::size_t slot) { return std::wstring(base::trim(state.TagInfo[slot])); };
    fields.Artist = trimmed(slot::artist);
    fields.Title = trimmed(slot::title);
    fields.Album = trimmed(slot::album);
    fields.Comment = trimmed(slot::comment);
    if (auto taken = takeNumber(state.TagInfo[slot::genre], fields.Genre); !taken)
        return taken;
    if (auto taken = takeNumber(state.TagInfo[slot::track], fields.Track); !taken)
        return taken;
    fields.Year = state.TagInfo[slot::year];
    fields.Title = FitTagText(fields.Title, titlePlace.width, options);
    fields.Artist = FitTagText(fields.Artist.text(), artistPlace.width, options);
    return {};
}

Id3v1Block id3v1Block(const Id3v1Fields& fields)
{
    Id3v1Block block{};
    std::ranges::copy(marker, block.begin());
    put(block, titlePlace, fields.Title);
    put(block, artistPlace, fields.Artist.text());
    put(block, albumPlace, fields.Album.text());
    put(block, yearPlace, fields.Year.text());
    put(block, commentPlace, fields.Comment.text());
    block[trackOffset] = std::byte{fields.Track};
    block[genreOffset] = std::byte{fields.Genre};
    return block;
}

bool takeId3v1Block(std::span<const std::byte> block, TagState& state)
{
    if (block.size() != id3v1Bytes || !beginsWithMarker(block))
        return false;
    Id3v1Fields& fields = state.id3v1;
    // What an earlier reader of the file has found is kept.
    if (base::isBlank(fields.Title))
        fields.Title = textAt(block, titlePlace);
    if (base::isBlank(fields.Artist.text()))
        fields.Artist = textAt(block, artistPlace);
    if (base::isBlank(fields.Album.text()))
        fields.Album = textAt(block, albumPlace);
    if (base::isBlank(fields.Year.text()))
        fields.Year = textAt(block, yearPlace);
    if (base::isBlank(fields.Comment.text()))
        fields.Comment = textAt(block, commentPlace);
    if (fields.Track == 0 && block[zeroOffset] == std::byte{0}) {
        fields.Track = std::to_integer<std::uint8_t>(block[trackOffset]);
        state.TagInfo[slot::id3v1] = L"id3v1";
    }
    fields.Genre = std::to_integer<std::uint8_t>(block[genreOffset]);

    state.TagInfo[slot::title] = TrimTagText(fields.Title);
    state.TagInfo[slot::artist] = TrimTagText(fields.Artist.text());
    state.TagInfo[slot::album] = TrimTagText(fields.Album.text());
    state.TagInfo[slot::comment] = TrimTagText(fields.Comment.text());
    state.TagInfo[slot::genre] = base::digits(fields.Genre);
    state.TagInfo[slot::track] = base::digits(fields.Track);
    // A year of fewer than four characters brings the NULs that fill its field.
    const std::wstring year(base::trim(TrimTagText(fields.Year.text())));
    state.TagInfo[slot::year] = base::val(year) <= 0 ? std::wstring() : year;
    return true;
}

base::Result<bool> readId3v1Block(platform::BinaryFile& file, std::int64_t length, TagState& state,
                                  BlockMarker blockMarker)
{
    auto there = blockMarker == BlockMarker::wanted ? findBlock(file, length) : passMarker(file, length);
    if (!there || !*there)
        return there;
    Id3v1Block block{};
    std::ranges::copy(marker, block.begin());
    const auto count = file.read(std::span(block).subspan(markerBytes));
    if (!count)
        return count.failure();
    return *count == id3v1Bytes - markerBytes && takeId3v1Block(block, state);
}

void WriteId3v1Tag(platform::FileSystem& files, platform::Diagnostics& log, COptions& options, TagState& state,
                   std::wstring_view path)
{
    const std::int64_t length = files.length(path);
    if (length < 1) {
        log.line("tags", files.hostPath(path) + ": is empty or no file, so it gets no tag");
        return;
    }
    if (!platform::passOver(log, files.clearAttributes(path), "Make the file writable for its tag"))
        return;
    const auto file = files.openBinary(path);
    if (!platform::passOver(log, file, "Open the file for its tag"))
        return;
    platform::passOver(log, writeInto(**file, length, state, options), "Write the tag of " + files.hostPath(path));
}

}
