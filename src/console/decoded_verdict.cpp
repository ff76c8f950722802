#include "console/decoded_verdict.h"

#include "base/wav_header.h"
#include "console/judged_file.h"

#include <fmt/format.h>

#include <cstdint>

namespace tonquay::console {

namespace {

/// Of 16-bit PCM; 0 channels for anything else.
struct WavSound {
    std::uint32_t channels = 0;
    std::uint32_t sampleRateHz = 0;
    std::int64_t bytes = 0;
};

WavSound soundOf(const base::WaveHeaderBytes& h)
{
    const bool canonical = h.has(0, "RIFF") && h.has(8, "WAVE") && h.has(12, "fmt ") && h.has(36, "data");
    if (!canonical || h.number(20, 2) != 1 || h.number(34, 2) != 16)
        return {};
    return {h.number(22, 2), h.number(24, 4), h.number(base::dataSizeOffset, 4)};
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
    base::WaveHeaderBytes header;
    if (!file.readAt(0, header.bytes))
        return "the file ends before its header does";
    const WavSound sound = soundOf(header);
    if (sound.channels == 0 || sound.sampleRateHz == 0)
        return "it is no WAV file of 16-bit sound";
    const std::int64_t bytes = file.length() - base::waveHeaderBytes;
    if (sound.bytes != bytes)
        return fmt::format("its header tells of {} bytes of sound, it has {}", sound.bytes, bytes);
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
