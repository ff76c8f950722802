#include "console/decoded_verdict.h"

#include "console/judged_file.h"

#include <fmt/format.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace tonquay::console {

namespace {

constexpr std::int64_t headerBytes = 44;
using Header = std::array<std::byte, headerBytes>;

std::uint32_t littleEndian(const Header& header, std::size_t offset, std::size_t bytes)
{
    std::uint32_t value = 0;
    for (std::size_t i = bytes; i > 0; --i)
        value = value << 8 | std::to_integer<std::uint32_t>(header[offset + i - 1]);
    return value;
}

bool has(const Header& header, std::size_t offset, const char (&mark)[5])
{
    return std::memcmp(&header[offset], mark, 4) == 0;
}

/// Of 16-bit PCM; 0 channels for anything else.
struct WavSound {
    std::uint32_t channels = 0;
    std::uint32_t sampleRateHz = 0;
    std::int64_t bytes = 0;
};

WavSound soundOf(const Header& h)
{
    const bool canonical = has(h, 0, "RIFF") && has(h, 8, "WAVE") && has(h, 12, "fmt ") && has(h, 36, "data");
    if (!canonical || littleEndian(h, 20, 2) != 1 || littleEndian(h, 34, 2) != 16)
        return {};
    return {littleEndian(h, 22, 2), littleEndian(h, 24, 4), littleEndian(h, 40, 4)};
}

/// How many samples of a channel a decoder may leave out.
constexpr double mostLeftOut = 529 + 2 * 4095;

std::string lengthProblem(double seconds, const platform::FileTags::Stream& stream)
{
    constexpr double rounding = 0.002;
    if (seconds > stream.seconds + rounding)
        return fmt::format("it has {:.2f} seconds of sound, the MP3 file only {:.2f}", seconds, stream.seconds);
    if (seconds < stream.seconds - mostLeftOut / stream.sampleRateHz - rounding)
        return fmt::format("it has {:.2f} of {:.2f} seconds of sound", seconds, stream.seconds);
    return {};
}

std::string problemOf(const JudgedFile& file, const DecodedExpectation& expected, DecodedVerdict& verdict)
{
    const platform::FileTags::Stream& stream = expected.stream;
    if (expected.decoderExit != 0)
        return fmt::format("the decoder ended with status {}", expected.decoderExit);
    if (!file.problem().empty())
        return file.problem();
    if (file.changed() < expected.runBegan)
        return "the file is an older one; nothing was written";
    Header header{};
    if (!file.readAt(0, header))
        return "the file ends before its header does";
    const WavSound sound = soundOf(header);
    if (sound.channels == 0 || sound.sampleRateHz == 0)
        return "it is no WAV file of 16-bit sound";
    if (sound.bytes != file.length() - headerBytes)
        return fmt::format("its header tells of {} bytes of sound, it has {}", sound.bytes,
                           file.length() - headerBytes);
    if (sound.sampleRateHz != static_cast<std::uint32_t>(stream.sampleRateHz) ||
        sound.channels != static_cast<std::uint32_t>(stream.channels))
        return fmt::format("its sound is of {} Hz and {} channels, the MP3 file's of {} Hz and {}", sound.sampleRateHz,
                           sound.channels, stream.sampleRateHz, stream.channels);
    constexpr double bytesPerSample = 2;
    verdict.seconds = static_cast<double>(sound.bytes) / (bytesPerSample * sound.channels * sound.sampleRateHz);
    if (!stream.complete)
        return fmt::format("the MP3 file is cut short: {:.2f} seconds of it are there", stream.seconds);
    return lengthProblem(verdict.seconds, stream);
}

}

DecodedVerdict judgeDecoded(const std::string& hostPath, const DecodedExpectation& expected)
{
    const JudgedFile file(hostPath);
    DecodedVerdict verdict;
    verdict.text = problemOf(file, expected, verdict);
    verdict.whole = verdict.text.empty();
    return verdict;
}

}
