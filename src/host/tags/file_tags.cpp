#include "host/tags/file_tags.h"

#include "base/text.h"
#include "host/tags/bounded_stream.h"
#include "host/tags/careful_frames.h"
#include "host/tags/library_file.h"
#include "host/tags/library_text.h"
#include "host/tags/mpeg_sound.h"
#include "host/tags/ogg_end.h"
#include "host/tags/plain_file.h"
#include "host/tags/wav_sound.h"

#include <id3v1tag.h>
#include <id3v2tag.h>
#include <vorbisfile.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <optional>
#include <string_view>

namespace tonquay::host {

namespace {

using platform::FileTags;
using platform::SoundReading;

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
            field = textOf(value);
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

void readId3(BoundedStream& stream, FileTags& tags)
{
    constexpr std::int64_t blockBytes = 128;
    const std::int64_t length = stream.length();
    LibraryFile file(&stream);
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
    const auto file = openPlainFile(hostPath);
    if (!file)
        return file.failure();
    const int descriptor = file->descriptor.get();
    FileTags tags;
    try {
        BoundedStream stream(descriptor, file->length);
        if (const TagLib::ByteVector mark = stream.readBlock(4); mark == "OggS")
            readOgg(descriptor, file->length, tags);
        else if (mark == "RIFF" || mark == "RF64")
            readWav(descriptor, file->length, tags);
        else
            readMp3(stream, descriptor, reading, tags);
    } catch (const std::exception& error) {
        return base::Failure{base::Failure::Kind::invalid, hostPath,
                             "its tags cannot be read: " + std::string(error.what())};
    }
    return tags;
}

}
