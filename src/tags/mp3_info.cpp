#include "tags/mp3_info.h"

#include "base/numbers.h"
#include "base/text.h"
#include "tags/file_bytes.h"
#include "tags/genres.h"
#include "tags/id3v1.h"
#include "tags/mpeg_frame.h"

#include <array>
#include <cstddef>
#include <string>

namespace tonquay::tags {

namespace {

/// Where the text of a frame goes.
struct FrameSlot {
    int frame;
    std::size_t place;
};

constexpr FrameSlot frameSlots[] = {
    {1, slot::track},      {2, slot::title},    {3, slot::artist},     {4, slot::album},
    {5, slot::year},       {7, slot::comment},  {8, slot::composer},   {9, slot::originalArtist},
    {10, slot::copyright}, {11, slot::webLink}, {12, slot::encodedBy},
};
constexpr int genreFrame = 6;

/// The length that an ID3v2 tag gives for itself, as this program has always taken it: right for tags up to 32767
/// bytes.
std::int64_t statedLength(LastingByte& byte)
{
    constexpr std::int64_t seventh = 20917152;
    constexpr std::int64_t ninth = 128;
    std::int64_t length = byte.at(7) * seventh;
    // The product is one of 16 bits, and where it does not fit the byte counts for nothing.
    if (std::int16_t product = 0; base::store(byte.at(8) * 16384, product))
        length += product;
    length += byte.at(9) * ninth;
    return length + byte.at(10);
}

bool isBlank(FileBytes& bytes, std::int64_t first, std::int64_t count)
{
    for (std::int64_t position = first; position < first + count; ++position) {
        const auto byte = bytes.at(position);
        if (!byte)
            break;
        if (*byte != ' ')
            return false;
    }
    return true;
}

/// True for a file whose ID3v2 tag is to be read. The slot then says so; it may say so of another file too.
bool beginsWithTag(FileBytes& bytes, std::int64_t fileLength, std::wstring& present)
{
    LastingByte byte(bytes);
    const std::uint8_t second = byte.at(2);
    if (second == 250 || second == 251)
        return false; // the sound begins at once
    if (second != 'D' || byte.at(3) != '3')
        return false;
    const std::uint8_t version = byte.at(4);
    const std::int64_t length = statedLength(byte);
    present = L"2";
    if (length > fileLength || length >= 2147483647)
        return false;
    if (isBlank(bytes, 11, length)) {
        present.clear();
        return false;
    }
    return version == 3;
}

bool isKept(std::uint32_t code)
{
    const bool isSign = code == ',' || code == '-' || code == '.' || code == '/';
    const bool isPlain = (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z');
    return isSign || isPlain || code >= 192;
}

void clean(std::wstring& text)
{
    // Characters go by their numbers in the tags' own set; one that it does not have goes by that in Unicode.
    const std::string bytes = base::windows1252(text);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool hasByte = bytes[i] != '?';
        if (!isKept(hasByte ? static_cast<unsigned char>(bytes[i]) : static_cast<std::uint32_t>(text[i])))
            text[i] = L' ';
    }
    text = base::trim(text);
}

/// "(17)" and what may follow it is the number of a genre.
std::wstring genreOf(const std::wstring& value)
{
    if (!value.starts_with(L'('))
        return value;
    std::int16_t number = 0;
    return base::store(base::val(value.substr(1)), number) ? GenreNameFromNumber(base::digits(number)) : std::wstring();
}

void takeId3v2(const Id3v2Values& values, TagState& state)
{
    const auto trimmed = [&](int frame) { return std::wstring(base::trim(values(frame))); };
    for (const auto& [frame, place] : frameSlots)
        state.TagInfo[place] = trimmed(frame);
    state.TagInfo[slot::genreName] = genreOf(trimmed(genreFrame));
    for (std::size_t place = slot::artist; place <= slot::genre; ++place)
        clean(state.TagInfo[place]);
}

/// Play time and bitrate of a file whose Xing header counts frames and bytes.
void takeXing(FileBytes& bytes, std::int16_t position, std::int16_t version, StreamValues& stream)
{
    const std::int16_t channels = stream.ChannelCode;
    constexpr std::int64_t framesAndBytes = 3;
    if ((GetXingFlags(bytes, position, version, channels) & framesAndBytes) < framesAndBytes) {
        stream.BitrateKbps = 0;
        stream.PlaySeconds = L"0";
        return;
    }
    // A frame is taken for 1152 samples, so 144 bytes for each kbps and kHz, whatever the version.
    const auto frames = static_cast<double>(GetXingFrames(bytes, position, version, channels));
    const auto size = static_cast<double>(GetXingBytes(bytes, position, version, channels));
    const double kHz = stream.SampleRateKHz;
    if (frames == 0 || !base::store(size * kHz / frames / 144, stream.BitrateKbps))
        stream.BitrateKbps = 320;
    if (std::int16_t seconds = 0; kHz != 0 && base::store(frames * 144 * 8 / kHz / 1000, seconds))
        stream.PlaySeconds = base::digits(seconds);
}

/// The same of a file of one bitrate.
void takeConstantRate(FileBytes& bytes, std::int16_t position, std::int16_t version, std::int64_t fileLength,
                      StreamValues& stream)
{
    stream.BitrateKbps = GetBitrate(bytes, position, version);
    if (stream.BitrateKbps == 0)
        return;
    const double seconds = static_cast<double>(fileLength) / (stream.BitrateKbps * 125.0);
    stream.PlaySeconds = base::digits(static_cast<std::int64_t>(base::roundHalfEven(seconds)));
}

/// False when there is no sound in the file.
bool takeStream(FileBytes& bytes, std::int64_t fileLength, StreamValues& stream)
{
    const std::int16_t position = FindFrameSync(bytes, 1);
    if (position == -1)
        return false;
    stream.MpegVersion = GetMpegVersion(bytes, position);
    const auto version = static_cast<std::int16_t>(base::roundHalfEven(stream.MpegVersion));
    stream.ChannelCode = GetChannelMode(bytes, position);
    stream.SampleRateKHz = GetSampleRate(bytes, position, version);
    stream.IsVbr = HasXingHeader(bytes, position, version, stream.ChannelCode);
    if (stream.IsVbr)
        takeXing(bytes, position, version, stream);
    else
        takeConstantRate(bytes, position, version, fileLength, stream);
    return true;
}

std::wstring_view channelText(std::int16_t code)
{
    constexpr std::array<std::wstring_view, 4> texts{L"Mono", L"Stereo", L"Joint Stereo", L"Dual Channel"};
    const auto index = static_cast<std::size_t>(code);
    return index < texts.size() ? texts[index] : texts[1];
}

void showStream(TagState& state)
{
    const StreamValues& stream = state.stream;
    state.TagInfo[slot::sampleRate] = base::digits(static_cast<std::int64_t>(stream.SampleRateKHz));
    state.TagInfo[slot::playSeconds] = stream.PlaySeconds;
    state.TagInfo[slot::vbr] = stream.IsVbr ? L"Yes" : L"No";
    state.TagInfo[slot::channels] = channelText(stream.ChannelCode);
}

/// What is left when the sound was looked at: the tag at the end decides whether it is shown.
void takeEnd(platform::BinaryFile& file, platform::Diagnostics& log, std::int64_t fileLength, BlockMarker marker,
             TagState& state)
{
    state.TagInfo[slot::bitrate] = base::digits(state.stream.BitrateKbps);
    if (fileLength < id3v1LeastLength)
        return;
    const auto there = readId3v1Block(file, fileLength, state, marker);
    if (platform::passOver(log, there, "Read the tag at the end of a file") && *there) {
        showStream(state);
        return;
    }
    for (std::size_t place = slot::id3v1; place <= slot::id3v2; ++place)
        state.TagInfo[place].clear();
}

}

void ReadMp3Info(platform::FileSystem& files, platform::Diagnostics& log, COptions& options, const Id3v2Reader& id3v2,
                 TagState& state, std::wstring_view path, std::int16_t mode)
{
    ClearTagInfo(state);
    const std::int64_t length = files.length(path);
    if (length < 1)
        return;
    const auto file = files.openForReading(path);
    if (platform::passOver(log, file, "Open an MP3 file"))
        ReadMp3Info(**file, length, log, options, id3v2, state, path, mode);
}

void ReadMp3Info(platform::BinaryFile& file, std::int64_t length, platform::Diagnostics& log, COptions& options,
                 const Id3v2Reader& id3v2, TagState& state, std::wstring_view path, std::int16_t mode)
{
    ClearTagInfo(state);
    if (length < 1)
        return;
    ResetTagFields(state, options);
    FileBytes bytes(file, log);
    if (mode < 1 && beginsWithTag(bytes, length, state.TagInfo[slot::id3v2])) {
        takeId3v2(id3v2(path), state);
        return;
    }
    if (!takeStream(bytes, length, state.stream)) {
        ClearTagInfo(state);
        return;
    }
    takeEnd(file, log, length, mode == 2 ? BlockMarker::assumed : BlockMarker::wanted, state);
}

}
