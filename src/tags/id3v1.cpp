#include "tags/id3v1.h"

#include "base/numbers.h"
#include "base/text.h"
#include "tags/id3v1_layout.h"
#include "tags/tag_text.h"

#include <algorithm>
#include <string>

namespace tonquay::tags {

using base::Failure;
using id3v1::Place;

namespace {

constexpr std::size_t markerBytes = id3v1::marker.size();

bool beginsWithMarker(std::span<const std::byte> bytes)
{
    return bytes.size() >= markerBytes && std::ranges::equal(bytes.first(markerBytes), id3v1::marker);
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

Failure shorterMeanwhile()
{
    return {Failure::Kind::invalid, {}, "has become shorter meanwhile"};
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
        return shorterMeanwhile();
    return beginsWithMarker(bytes);
}

base::Status writeInto(platform::BinaryFile& file, std::int64_t length, TagState& state, COptions& options)
{
    const auto there = findBlock(file, length);
    if (!there)
        return there.failure();
    if (auto moved = file.seek(*there ? length - static_cast<std::int64_t>(id3v1Bytes - markerBytes) : length); !moved)
        return moved;
    if (!*there)
        if (auto begun = file.write(id3v1::marker); !begun)
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
    fields.Title = FitTagText(fields.Title, id3v1::title.width, options);
    fields.Artist = FitTagText(fields.Artist.text(), id3v1::artist.width, options);
    return {};
}

Id3v1Block id3v1Block(const Id3v1Fields& fields)
{
    Id3v1Block block{};
    std::ranges::copy(id3v1::marker, block.begin());
    put(block, id3v1::title, fields.Title);
    put(block, id3v1::artist, fields.Artist.text());
    put(block, id3v1::album, fields.Album.text());
    put(block, id3v1::year, fields.Year.text());
    put(block, id3v1::comment, fields.Comment.text());
    block[id3v1::track] = std::byte{fields.Track};
    block[id3v1::genre] = std::byte{fields.Genre};
    return block;
}

bool takeId3v1Block(std::span<const std::byte> block, TagState& state)
{
    if (block.size() != id3v1Bytes || !beginsWithMarker(block))
        return false;
    Id3v1Fields& fields = state.id3v1;
    // What an earlier reader of the file has found is kept.
    if (base::isBlank(fields.Title))
        fields.Title = textAt(block, id3v1::title);
    if (base::isBlank(fields.Artist.text()))
        fields.Artist = textAt(block, id3v1::artist);
    if (base::isBlank(fields.Album.text()))
        fields.Album = textAt(block, id3v1::album);
    if (base::isBlank(fields.Year.text()))
        fields.Year = textAt(block, id3v1::year);
    if (base::isBlank(fields.Comment.text()))
        fields.Comment = textAt(block, id3v1::comment);
    if (fields.Track == 0 && block[id3v1::zero] == std::byte{0}) {
        fields.Track = std::to_integer<std::uint8_t>(block[id3v1::track]);
        state.TagInfo[slot::id3v1] = L"id3v1";
    }
    fields.Genre = std::to_integer<std::uint8_t>(block[id3v1::genre]);

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
    if (length < id3v1LeastLength)
        return false;
    // What is assumed need not be there: a file may be one byte short of it.
    const std::size_t skipped = blockMarker == BlockMarker::wanted ? 0 : markerBytes;
    Id3v1Block block{};
    std::ranges::copy(id3v1::marker, block.begin());
    if (auto moved = file.seek(length - static_cast<std::int64_t>(id3v1Bytes - skipped)); !moved)
        return moved.failure();
    const auto count = file.read(std::span(block).subspan(skipped));
    if (!count)
        return count.failure();
    if (*count + skipped < markerBytes)
        return shorterMeanwhile();
    return *count + skipped == id3v1Bytes && takeId3v1Block(block, state);
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
