#include "console/wav_verdict.h"

#include "base/wav_header.h"
#include "console/judged_file.h"
#include "console/rip_plan.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace tonquay::console {

namespace {

struct Mark {
    std::size_t offset;
    std::string_view text;
};

constexpr std::array marks{Mark{0, "RIFF"}, Mark{8, "WAVE"}, Mark{12, "fmt "}, Mark{36, "data"}};

struct Field {
    std::size_t offset;
    std::size_t bytes;
    std::uint32_t value;
    std::string_view name;
};

constexpr std::array fields{
    Field{16, 4, 16, "size of the format"},   Field{20, 2, 1, "format"},
    Field{22, 2, 2, "number of channels"},    Field{24, 4, 44100, "sample rate"},
    Field{28, 4, 176400, "bytes per second"}, Field{32, 2, 4, "bytes per frame"},
    Field{34, 2, 16, "bits per sample"},
};

std::string formatProblem(const base::WaveHeaderBytes& header)
{
    for (const Mark& mark : marks)
        if (!header.has(mark.offset, mark.text))
            return fmt::format("its header has no \"{}\" at byte {}", mark.text, mark.offset);
    for (const Field& field : fields) {
        const std::uint32_t value = header.number(field.offset, field.bytes);
        if (value != field.value)
            return fmt::format("the {} in its header is {} instead of {}", field.name, value, field.value);
    }
    return {};
}

std::string headerProblem(const base::WaveHeaderBytes& header, std::int64_t sampleBytes)
{
    if (std::string problem = formatProblem(header); !problem.empty())
        return problem;
    const std::int64_t dataSize = header.number(base::dataSizeOffset, 4);
    const std::int64_t riffSize = header.number(base::riffSizeOffset, 4);
    if (dataSize == 0 && sampleBytes != 0)
        return "its header tells of no samples: the writing was broken off";
    if (dataSize != sampleBytes)
        return fmt::format("its header tells of {} bytes of samples, the track has {}", dataSize, sampleBytes);
    if (riffSize != dataSize + 36)
        return fmt::format("the size at the start of its header is {} instead of {}", riffSize, dataSize + 36);
    return {};
}

FileVerdict broken(std::string text)
{
    return {false, std::move(text)};
}

/// Empty, and the header read, when all of it is there.
std::string readHeader(const JudgedFile& file, base::WaveHeaderBytes& header)
{
    if (file.length() < std::ssize(header.bytes) || !file.readAt(0, header.bytes))
        return fmt::format("the file ends in its header, after {} bytes", file.length());
    return {};
}

}

FileVerdict judgeWav(const std::filesystem::path& path, const WavExpectation& expected)
{
    const JudgedFile file(path.string());
    if (!file.problem().empty())
        return broken(file.problem());
    const std::int64_t length = file.length();

    // The reader is asked first: an older whole file of the same length may stand under this name.
    if (expected.bytesRead != expected.sampleBytes)
        return broken(
            fmt::format("{} of {} bytes could be read from the disc", expected.bytesRead, expected.sampleBytes));

    base::WaveHeaderBytes header;
    if (std::string problem = readHeader(file, header); !problem.empty())
        return broken(std::move(problem));
    if (std::string problem = headerProblem(header, expected.sampleBytes); !problem.empty())
        return broken(std::move(problem));

    const std::int64_t tail = length - wavFileBytes(expected.sampleBytes);
    if (tail < 0)
        return broken(fmt::format("{} bytes of samples are missing at its end", -tail));
    if (tail > 0)
        return {true, fmt::format("{} bytes of an older, longer file stand behind its samples", tail),
                expected.sampleBytes};
    return {true, {}, expected.sampleBytes};
}

FileVerdict judgeRecording(const std::filesystem::path& path, const RecordingExpectation& expected)
{
    const JudgedFile file(path.string());
    if (!file.problem().empty())
        return broken(file.problem());
    if (file.changed() < expected.runBegan)
        return broken("nothing was recorded; an older file stands under its name");
    base::WaveHeaderBytes header;
    if (std::string problem = readHeader(file, header); !problem.empty())
        return broken(std::move(problem));
    const std::int64_t soundBytes = file.length() - base::waveHeaderBytes;
    if (std::string problem = headerProblem(header, soundBytes); !problem.empty())
        return broken(std::move(problem));
    const double recorded = playSeconds(soundBytes);
    const double wanted = playSeconds(expected.sampleBytes);
    if (std::abs(recorded - wanted) > recordingTolerance)
        return broken(fmt::format("{:.1f} seconds were recorded, the track has {:.1f}", recorded, wanted));
    return {true, {}, soundBytes};
}

}
