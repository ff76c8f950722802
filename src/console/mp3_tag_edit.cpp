#include "console/mp3_tag_edit.h"

#include "base/numbers.h"
#include "base/text.h"
#include "console/genre_byte.h"
#include "console/screen_text.h"
#include "tags/id3v1_edit.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>

namespace tonquay::console {

using base::Failure;

namespace {

constexpr auto blockBytes = static_cast<std::int64_t>(tags::id3v1Bytes);

struct TextField {
    TagField field;
    tags::Id3v1Text place;
};

constexpr std::array textFields{
    TextField{TagField::title, tags::Id3v1Text::title},     TextField{TagField::artist, tags::Id3v1Text::artist},
    TextField{TagField::album, tags::Id3v1Text::album},     TextField{TagField::year, tags::Id3v1Text::year},
    TextField{TagField::comment, tags::Id3v1Text::comment},
};

/// The last bytes of a file, and where they begin.
struct End {
    std::int64_t fileLength = 0;
    std::optional<tags::Id3v1Block> block{}; ///< nothing when they are none
};

base::Result<End> readEnd(platform::FileSystem& files, std::wstring_view path)
{
    auto file = files.openForReading(path);
    if (!file)
        return file.failure();
    const auto facts = (*file)->facts();
    if (!facts)
        return facts.failure();
    End end{.fileLength = facts->length};
    if (end.fileLength < blockBytes)
        return end;
    tags::Id3v1Block bytes{};
    if (auto moved = (*file)->seek(end.fileLength - blockBytes); !moved)
        return moved.failure();
    const auto count = (*file)->read(bytes);
    if (!count)
        return count.failure();
    if (*count == bytes.size() && tags::isId3v1Block(bytes))
        end.block = bytes;
    return end;
}

/// The track comes first, since a comment has less room beside one.
void apply(const TagChanges& changes, tags::Id3v1Block& block, std::vector<std::string>* remarks)
{
    if (const auto track = changes.find(TagField::track); track != changes.end())
        tags::setId3v1Track(block, static_cast<std::uint8_t>(std::clamp(base::val(track->second), 0.0, 255.0)));
    if (const auto genre = changes.find(TagField::genre); genre != changes.end())
        tags::setId3v1Genre(block, genreNumber(genre->second).value_or(tags::noId3v1Genre));
    for (const auto& [field, place] : textFields) {
        const auto change = changes.find(field);
        if (change == changes.end())
            continue;
        tags::setId3v1Text(block, place, change->second);
        const std::wstring kept =
            base::fromWindows1252(base::windows1252(change->second.substr(0, tags::id3v1Room(block, place))));
        if (remarks != nullptr && kept != change->second)
            remarks->push_back(
                fmt::format("{}: the tag at the end of an MP3 file cannot hold all of it; it says \"{}\"",
                            nameOf(field), shown(kept)));
    }
}

base::Status writeBytes(platform::BinaryFile& file, std::int64_t offset, std::span<const std::byte> bytes)
{
    if (auto moved = file.seek(offset); !moved)
        return moved;
    if (auto written = file.write(bytes); !written)
        return written;
    return file.close();
}

/// Writes what differs, in one piece.
base::Status replaceBlock(platform::FileSystem& files, std::wstring_view path, const End& end,
                          const tags::Id3v1Block& block)
{
    const auto differs = std::ranges::mismatch(*end.block, block).in2;
    if (differs == block.end())
        return {};
    std::size_t last = block.size() - 1;
    while ((*end.block)[last] == block[last])
        --last;
    const auto first = static_cast<std::size_t>(differs - block.begin());
    auto file = files.openBinary(path);
    if (!file)
        return file.failure();
    return writeBytes(**file, end.fileLength - blockBytes + static_cast<std::int64_t>(first),
                      std::span(block).subspan(first, last - first + 1));
}

base::Status appendBlock(platform::FileSystem& files, std::wstring_view path, const End& end,
                         const tags::Id3v1Block& block)
{
    auto file = files.openBinary(path);
    if (!file)
        return file.failure();
    auto written = writeBytes(**file, end.fileLength, block);
    if (written)
        return written;
    // A part of a block would stay behind the sound for good.
    if (auto again = files.openBinary(path); again && (*again)->seek(end.fileLength))
        static_cast<void>((*again)->endHere());
    return written;
}

}

base::Result<std::vector<std::string>> editMp3Tag(platform::FileSystem& files, std::wstring_view path,
                                                  const TagChanges& changes, const platform::FileTags& known)
{
    if (files.isReadOnly(path))
        return Failure{Failure::Kind::refused, files.hostPath(path), "is read-only, so its tag stays as it is"};
    const auto end = readEnd(files, path);
    if (!end)
        return end.failure();
    tags::Id3v1Block block = end->block.value_or(tags::emptyId3v1Block());
    if (!end->block)
        apply(fieldsOf(known), block, nullptr);
    std::vector<std::string> remarks;
    apply(changes, block, &remarks);
    const auto written = end->block ? replaceBlock(files, path, *end, block) : appendBlock(files, path, *end, block);
    if (!written)
        return written.failure();
    const auto now = readEnd(files, path);
    if (!now)
        return now.failure();
    if (now->block != block)
        return Failure{Failure::Kind::other, files.hostPath(path), "does not hold the new tag after it was written"};
    return remarks;
}

}
