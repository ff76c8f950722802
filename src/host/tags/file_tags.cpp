#include "host/tags/file_tags.h"

#include "base/text.h"
#include "host/posix/descriptor.h"
#include "host/tags/bounded_stream.h"
#include "host/tags/careful_frames.h"
#include "host/tags/mpeg_sound.h"
#include "host/tags/ogg_end.h"
#include "host/tags/wav_sound.h"

#include <id3v1tag.h>
#include <id3v2tag.h>
#include <vorbisfile.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <exception>
#include <optional>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>

namespace tonquay::host {

namespace {

using platform::FileTags;
using platform::SoundReading;

/// The library keeps UTF-16 units; a half of a pair alone is no character and must not pass for a byte of a file name.
std::wstring text(const TagLib::String& from)
{
    const TagLib::wstring units = from.toWString();
    std::wstring result;
    for (std::size_t i = 0; i < units.size(); ++i) {
        const auto unit = static_cast<char32_t>(units[i]);
        const auto next = i + 1 < units.size() ? static_cast<char32_t>(units[i + 1]) : U'\0';
        if (unit >= 0xD800 && unit < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
            result.push_back(static_cast<wchar_t>(0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00)));
            ++i;
        } else {
            const bool noCharacter = unit > 0x10FFFF || (unit >= 0xD800 && unit < 0xE000);
            result.push_back(noCharacter ? L'\uFFFD' : static_cast<wchar_t>(unit));
        }
    }
    return result;
}

/// A year or a track number; what is beyond sense is none.
int number(unsigned int value)
{
    return value <= 9999 ? static_cast<int>(value) : 0;
}

/// Fields that are there already stay.
void fillIn(FileTags& tags, const TagLib::Tag& from)
{
    const auto fill = [](std::wstring& field, const TagLib::String& value) {
        if (field.empty())
            field = text(value);
    };
    fill(tags.title, from.title());
    fill(tags.artist, from.artist());
    fill(tags.album, from.album());
    fill(tags.genre, from.genre());
    fill(tags.comment, from.comment());
    if (tags.year == 0)
        tags.year = number(from.year());
    if (tags.track == 0)
        tags.track = number(from.track());
}

class Windows1252 final : public TagLib::ID3v1::StringHandler {
public:
    TagLib::String parse(const TagLib::ByteVector& data) const override
    {
        std::string_view bytes(data.data(), data.size());
        bytes = bytes.substr(0, bytes.find('\0'));
        const std::wstring trimmed(base::trim(base::fromWindows1252(bytes)));
        return TagLib::String(base::utf8(trimmed), TagLib::String::UTF8);
    }
};

/// The library has one handler for the whole process. It is set once, before the first block is read, and stays.
void readId3v1AsWindows1252()
{
    static const Windows1252 handler;
    static const bool set = (TagLib::ID3v1::Tag::setStringHandler(&handler), true);
    static_cast<void>(set);
}

/// A file that is read at places that we name, instead of one that the library searches by itself.
class PlainFile final : public TagLib::File {
public:
    explicit PlainFile(TagLib::IOStream* stream) : File(stream) {}

    TagLib::Tag* tag() const override { return nullptr; }
    TagLib::AudioProperties* audioProperties() const override { return nullptr; }
    bool save() override { return false; }
};

void readId3(BoundedStream& stream, FileTags& tags)
{
    constexpr std::int64_t blockBytes = 128;
    const std::int64_t length = stream.length();
    PlainFile file(&stream);
    file.seek(0);
    if (file.readBlock(3) == TagLib::ID3v2::Header::fileIdentifier()) {
        const CarefulFrames frames;
        fillIn(tags, TagLib::ID3v2::Tag(&file, 0, &frames));
    }
    if (length < blockBytes)
        return;
    readId3v1AsWindows1252();
    file.seek(length - blockBytes);
    if (file.readBlock(3) == TagLib::ID3v1::Tag::fileIdentifier())
        fillIn(tags, TagLib::ID3v1::Tag(&file, length - blockBytes));
}

void readMp3(BoundedStream& stream, int descriptor, SoundReading reading, FileTags& tags)
{
    readId3(stream, tags);
    const std::int64_t length = stream.length();
    const std::optional<MpegSound> sound =
        reading == SoundReading::whole ? walkMpegSound(descriptor, length) : estimateMpegSound(descriptor, length);
    if (!sound)
        return;
    tags.kind = FileTags::Kind::mp3;
    tags.stream = {.bitrateKbps = 0,
                   .sampleRateHz = sound->sampleRateHz,
                   .channels = sound->channels,
                   .seconds = std::round(sound->seconds * 1000) / 1000,
                   .complete = sound->complete};
    if (sound->seconds > 0)
        tags.stream.bitrateKbps =
            static_cast<int>(std::lround(static_cast<double>(sound->bytes) * 8 / 1000 / sound->seconds));
}

void readWav(int descriptor, std::int64_t length, FileTags& tags)
{
    const std::optional<WavSound> sound = wavSound(descriptor, length);
    if (!sound)
        return;
    tags.kind = FileTags::Kind::wav;
    tags.stream = {.bitrateKbps = static_cast<int>(std::lround(sound->bytesPerSecond * 8.0 / 1000)),
                   .sampleRateHz = sound->sampleRateHz,
                   .channels = sound->channels,
                   .seconds = std::round(static_cast<double>(sound->bytes) / sound->bytesPerSecond * 1000) / 1000,
                   .complete = sound->complete};
}

void readOgg(int descriptor, std::int64_t length, FileTags& tags)
{
    BoundedStream stream(descriptor, length);
    TagLib::Ogg::Vorbis::File file(&stream, true);
    const TagLib::Vorbis::Properties* sound = file.audioProperties();
    if (!file.isValid() || !file.tag() || !sound)
        return;
    tags.kind = FileTags::Kind::oggVorbis;
    fillIn(tags, *file.tag());
    // Places and rates without sense overflow inside the library.
    const auto sane = [](int value) { return std::max(value, 0); };
    // The library misses a page whose mark lies across two of its blocks, and takes an earlier one for the last.
    const std::optional<std::int64_t> end = endOfLastPage(descriptor, length);
    const int rate = sane(sound->sampleRate());
    const double seconds = sane(sound->lengthInMilliseconds()) / 1000.0;
    tags.stream = {.bitrateKbps = sane(sound->bitrate()),
                   .sampleRateHz = rate,
                   .channels = sane(sound->channels()),
                   .seconds = end && *end >= 0 && rate > 0 ? static_cast<double>(*end) / rate : seconds,
                   .complete = end.has_value()};
}

}

base::Result<FileTags> readFileTags(const std::string& hostPath, platform::SoundReading reading)
{
    // Without waiting, so that a pipe of that name does not hold us up before it is refused.
    const Descriptor file(::open(hostPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file)
        return systemFailure(hostPath, "opened", errno);
    struct stat found {};
    if (::fstat(file.get(), &found) != 0)
        return systemFailure(hostPath, "read", errno);
    if (S_ISDIR(found.st_mode))
        return base::Failure{base::Failure::Kind::invalid, hostPath, "this is a folder"};
    if (!S_ISREG(found.st_mode))
        return base::Failure{base::Failure::Kind::invalid, hostPath, "this is no plain file"};
    FileTags tags;
    try {
        BoundedStream stream(file.get(), found.st_size);
        if (const TagLib::ByteVector mark = stream.readBlock(4); mark == "OggS")
            readOgg(file.get(), found.st_size, tags);
        else if (mark == "RIFF" || mark == "RF64")
            readWav(file.get(), found.st_size, tags);
        else
            readMp3(stream, file.get(), reading, tags);
    } catch (const std::exception& error) {
        return base::Failure{base::Failure::Kind::invalid, hostPath,
                             "its tags cannot be read: " + std::string(error.what())};
    }
    return tags;
}

}
