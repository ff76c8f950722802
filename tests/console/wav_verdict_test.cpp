#include "console/wav_verdict.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <functional>

#include <stdlib.h>
#include <sys/stat.h>

namespace tonquay::console {
namespace {

namespace fs = std::filesystem;

class WavVerdictTest : public testing::Test {
protected:
    void SetUp() override
    {
        std::string name = (fs::temp_directory_path() / "tonquay-verdict-XXXXXX").string();
        ASSERT_NE(::mkdtemp(name.data()), nullptr);
        folder = name;
    }
    void TearDown() override { fs::remove_all(folder); }

    fs::path folder;
};

void put(std::string& file, std::size_t offset, std::uint32_t value, std::size_t bytes = 4)
{
    for (std::size_t i = 0; i < bytes; ++i)
        file[offset + i] = static_cast<char>(value >> (8 * i) & 0xFF);
}

std::string samples()
{
    std::string text(2352 * 3, '\0');
    for (std::size_t i = 0; i < text.size(); ++i)
        text[i] = static_cast<char>(i * 31 + i / 256);
    return text;
}

std::string wholeFile()
{
    std::string file = "RIFF....WAVEfmt ........................data....";
    file.resize(44);
    const auto size = static_cast<std::uint32_t>(samples().size());
    put(file, 4, size + 36);
    put(file, 16, 16);
    put(file, 20, 1, 2);
    put(file, 22, 2, 2);
    put(file, 24, 44100);
    put(file, 28, 176400);
    put(file, 32, 4, 2);
    put(file, 34, 16, 2);
    file.replace(36, 4, "data");
    put(file, 40, size);
    return file + samples();
}

TEST_F(WavVerdictTest, brokenFilesAreToldFromWholeOnes)
{
    const std::int64_t size = static_cast<std::int64_t>(samples().size());
    const WavExpectation plain{.sampleBytes = size, .bytesRead = size};
    const WavExpectation unread{.sampleBytes = size, .bytesRead = 0};
    const WavExpectation halfRead{.sampleBytes = size, .bytesRead = 2352};
    const WavExpectation longer{.sampleBytes = size + 2352, .bytesRead = size + 2352};
    const auto changed = [](std::size_t offset, std::uint32_t value, std::size_t bytes) {
        std::string file = wholeFile();
        put(file, offset, value, bytes);
        return file;
    };
    const struct {
        const char* what;
        std::string bytes;
        WavExpectation expected;
        bool whole;
        const char* says;
    } cases[] = {
        {"whole", wholeFile(), plain, true, ""},
        {"an older tail", wholeFile() + std::string(100, 'x'), plain, true, "100 bytes of an older, longer file"},
        {"empty", "", plain, false, "ends in its header, after 0 bytes"},
        {"in the header", wholeFile().substr(0, 43), plain, false, "after 43 bytes"},
        {"header alone", wholeFile().substr(0, 44), plain, false, "7056 bytes of samples are missing"},
        {"one byte short", wholeFile().substr(0, wholeFile().size() - 1), plain, false, "1 bytes of samples"},
        {"no RIFF", "XXXX" + wholeFile().substr(4), plain, false, "\"RIFF\""},
        {"no data chunk", changed(36, 0x5453494C, 4), plain, false, "\"data\" at byte 36"},
        {"sizes never filled in", changed(40, 0, 4), plain, false, "broken off"},
        {"data size short", changed(40, 7055, 4), plain, false, "7055 bytes of samples, the track has 7056"},
        {"data size huge", changed(40, 0xFFFFFFFF, 4), plain, false, "4294967295"},
        {"RIFF size wrong", changed(4, 7056, 4), plain, false, "size at the start"},
        {"mono", changed(22, 1, 2), plain, false, "number of channels in its header is 1"},
        {"48 kHz", changed(24, 48000, 4), plain, false, "sample rate"},
        {"8 bits", changed(34, 8, 2), plain, false, "bits per sample"},
        {"float samples", changed(20, 3, 2), plain, false, "format"},
        {"nothing read, an older whole file there", wholeFile(), unread, false, "0 of 7056 bytes could be read"},
        {"half read", wholeFile(), halfRead, false, "2352 of 7056"},
        {"a shorter track than the disc's", wholeFile(), longer, false, "7056 bytes of samples, the track has 9408"},
    };
    for (const auto& c : cases) {
        const fs::path file = folder / "t.wav";
        std::ofstream(file, std::ios::binary | std::ios::trunc) << c.bytes;
        const FileVerdict verdict = judgeWav(file, c.expected);
        EXPECT_EQ(verdict.whole, c.whole) << c.what << ": " << verdict.text;
        EXPECT_THAT(verdict.text, testing::HasSubstr(c.says)) << c.what;
        EXPECT_EQ(verdict.text.empty(), *c.says == '\0') << c.what << ": " << verdict.text;
    }
}

TEST_F(WavVerdictTest, aRecordingIsJudgedByItsHeaderItsAgeAndItsLength)
{
    constexpr std::int64_t second = 176400;
    const auto recording = [](std::int64_t soundBytes) {
        std::string file = wholeFile().substr(0, 44);
        put(file, 4, static_cast<std::uint32_t>(soundBytes + 36), 4);
        put(file, 40, static_cast<std::uint32_t>(soundBytes), 4);
        return file + std::string(static_cast<std::size_t>(soundBytes), 's');
    };
    const auto past = std::chrono::system_clock::now() - std::chrono::minutes(1);
    const auto future = past + std::chrono::minutes(2);
    const struct {
        const char* what;
        std::string bytes;
        std::chrono::system_clock::time_point runBegan;
        bool whole;
        const char* says;
    } cases[] = {
        {"as long as the track", recording(3 * second), past, true, ""},
        {"0.4 s longer", recording(3 * second + 70560), past, true, ""},
        {"0.4 s shorter", recording(3 * second - 70560), past, true, ""},
        {"0.6 s longer", recording(3 * second + 105840), past, false, "3.6 seconds were recorded, the track has 3.0"},
        {"stopped", recording(second), past, false, "1.0 seconds were recorded"},
        {"nothing", recording(0), past, false, "0.0 seconds were recorded"},
        {"bytes are missing", recording(3 * second).substr(0, 44 + 2 * second), past, false, "header tells of 529200"},
        {"sizes never filled in", wholeFile().substr(0, 40) + std::string(4 + 3 * second, '\0'), past, false,
         "broken off"},
        {"from an earlier run", recording(3 * second), future, false, "nothing was recorded"},
    };
    for (const auto& c : cases) {
        const fs::path file = folder / "t.wav";
        std::ofstream(file, std::ios::binary | std::ios::trunc) << c.bytes;
        const FileVerdict verdict = judgeRecording(file, {.sampleBytes = 3 * second, .runBegan = c.runBegan});
        EXPECT_EQ(verdict.whole, c.whole) << c.what << ": " << verdict.text;
        EXPECT_THAT(verdict.text, testing::HasSubstr(c.says)) << c.what;
    }
}

TEST_F(WavVerdictTest, whatIsNoFileIsNotWhole)
{
    const WavExpectation nothing{};
    EXPECT_THAT(judgeWav(folder / "none.wav", nothing).text, testing::HasSubstr("was not made"));
    EXPECT_FALSE(judgeWav(folder, nothing).whole);
    const fs::path pipe = folder / "pipe.wav";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(judgeWav(pipe, nothing).whole);
}

}
}
