#include "tags/vorbis_tag.h"

#include "base/numbers.h"
#include "base/text.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <utility>

namespace tonquay::tags {

using namespace std::string_view_literals;

namespace {

constexpr std::size_t blockBytes = 2048;

// The comment packet by the length of its vendor text, which stands behind its mark.
constexpr std::string_view vendorOf29 = "\3vorbis\x1D";
constexpr std::string_view vendorOf32 = "\3vorbis ";
constexpr std::string_view setupMark = "\5vorbis";
// A packet's last byte, and the setup packet right behind it.
constexpr std::string_view endAndSetup = "\1\5vorbis";
constexpr std::string_view threeNuls = "\0\0\0"sv;

/// Fills the block, or makes it smaller where the file ends.
base::Status fill(platform::BinaryFile& file, std::string& block)
{
    const auto count = file.read(std::as_writable_bytes(std::span(block)));
    if (!count)
        return count.failure();
    block.resize(*count);
    return {};
}

/// A block of the file that begins with the comments and has the setup packet in it, so that they are whole; empty when
/// none is found.
base::Result<std::string> commentBlock(platform::BinaryFile& file, std::int64_t length)
{
    std::string block;
    for (std::int64_t remaining = length; remaining > 0; remaining -= std::int64_t{blockBytes}) {
        block.resize(static_cast<std::size_t>(std::min(remaining, std::int64_t{blockBytes})));
        if (auto filled = fill(file, block); !filled)
            return filled.failure();
        const std::size_t hit = std::min(block.find(vendorOf29), block.find(vendorOf32));
        if (hit == std::string::npos)
            continue;
        // The place in the block is taken for one in the file. That is so in the first block; a later one leads to the
        // file's beginning, where the next test fails.
        if (auto moved = file.seek(static_cast<std::int64_t>(hit)); !moved)
            return moved.failure();
        if (auto filled = fill(file, block); !filled)
            return filled.failure();
        constexpr std::size_t behindMark = 6;
        return block.find(setupMark, behindMark) == std::string::npos ? std::string() : std::move(block);
    }
    return std::string();
}

/// The value that begins at `begin`, with its key at `start`. Nothing when no end is found.
std::optional<std::wstring> valueAt(std::string_view block, std::size_t start, std::size_t begin)
{
    std::size_t end = block.find(threeNuls, start);
    if (const std::size_t packetEnd = block.find(endAndSetup, start); packetEnd < end)
        end = packetEnd + 1;
    if (end == std::string_view::npos)
        return std::nullopt;
    // Up to the character before the end, which is no part of the text: in front of three NULs stands the low byte of
    // the next comment's length, in front of the setup packet the last byte of this one.
    const std::size_t behind = end - 1;
    return base::fromFileBytes(behind > begin ? block.substr(begin, behind - begin) : std::string_view());
}

std::wstring withoutLineEnd(const std::wstring& text)
{
    return text.ends_with(L"\r\n") ? text.substr(0, text.size() - 2) : text;
}

struct Field {
    std::wstring_view key;
    std::size_t valueOffset; ///< from the key's beginning
    void (*take)(VorbisTag&, const std::wstring&);
};

constexpr Field plain(std::wstring_view key, void (*take)(VorbisTag&, const std::wstring&))
{
    return {key, key.size(), take};
}

constexpr std::array fields{
    plain(L"TITLE=", [](VorbisTag& tag, const std::wstring& value) { tag.Title = value; }),
    plain(L"ARTIST=", [](VorbisTag& tag, const std::wstring& value) { tag.Artist = value; }),
    // Without "=", so that the word alone is found as well; the value begins where it would behind one.
    Field{L"COMMENT", 8, [](VorbisTag& tag, const std::wstring& value) { tag.Comment = withoutLineEnd(value); }},
    plain(L"ALBUM=", [](VorbisTag& tag, const std::wstring& value) { tag.Album = value; }),
    plain(L"DATE=", [](VorbisTag& tag, const std::wstring& value) { tag.Date = value; }),
    plain(L"TRACKNUMBER=",
          [](VorbisTag& tag, const std::wstring& value) { base::store(base::val(value), tag.TrackNumber); }),
    plain(L"GENRE=", [](VorbisTag& tag, const std::wstring& value) { tag.Genre = value; }),
    plain(L"ENCODED_USING=", [](VorbisTag& tag, const std::wstring& value) { tag.EncodedUsing = value; }),
};

/// Stops at a key whose value has no end.
VorbisTag fieldsOf(std::string_view block)
{
    VorbisTag tag;
    // One character a byte, so that places in it are places in the block.
    const std::wstring searched = base::upper(base::fromWindows1252(block));
    for (const Field& field : fields) {
        const std::size_t start = searched.find(field.key);
        if (start == std::wstring::npos)
            continue;
        const auto value = valueAt(block, start, start + field.valueOffset);
        if (!value)
            break;
        field.take(tag, *value);
    }
    return tag;
}

}

VorbisTag ReadVorbisTag(platform::FileSystem& files, platform::Diagnostics& log, std::wstring_view path)
{
    const auto file = files.openForReading(path);
    if (!platform::passOver(log, file, "Open the file for its comments"))
        return {};
    const auto block = commentBlock(**file, files.length(path));
    if (!platform::passOver(log, block, "Read the comments of " + files.hostPath(path)))
        return {};
    return fieldsOf(*block);
}

}
