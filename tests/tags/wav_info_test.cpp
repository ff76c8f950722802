#include "tags/wav_info.h"

#include "support/fake_diagnostics.h"
#include "support/fake_file_system.h"

#include <gtest/gtest.h>

namespace {

using namespace tonquay;
using Operation = test::FakeFileSystem::Operation;
using tags::WavInfo;

/// A header of 44 bytes in which only the places that are looked at are filled.
std::string header(std::uint32_t rate, int channels, int bits, const char* mark = "RIFF")
{
    std::string bytes = mark;
    bytes.resize(44, '\0');
    const auto put = [&](std::size_t offset, unsigned value) {
        bytes[offset] = static_cast<char>(value & 0xFF);
        bytes[offset + 1] = static_cast<char>(value >> 8 & 0xFF);
    };
    put(22, static_cast<unsigned>(channels));
    put(24, rate & 0xFFFF);
    put(26, rate >> 16);
    put(34, static_cast<unsigned>(bits));
    return bytes;
}

class WavInfoTest : public testing::Test {
protected:
    bool read(std::string bytes, std::size_t length = 0)
    {
        if (length != 0)
            bytes.resize(length, '\0');
        files.put(path, bytes);
        return tags::ReadWavInfo(files, log, info, path);
    }

    const std::wstring path = L"C:\\song.wav";
    test::FakeFileSystem files;
    test::FakeDiagnostics log;
    WavInfo info;
};

TEST_F(WavInfoTest, theRateIsToldFromOneByte)
{
    const struct {
        std::uint32_t rate;
        std::wstring shown;
        std::int32_t bitRate; ///< stereo, 16 bits
    } cases[] = {
        {8000, L"8000", 256000},    {11025, L"11025", 352800},   {22050, L"22050", 705600},  {32000, L"32000", 1024000},
        {44100, L"44100", 1411200}, {48000, L"48000", 1536000},  {96000, L"32000", 1024000}, {16000, L"48000", 1536000},
        {88200, L"48000", 1536000}, {192000, L"32000", 1024000}, {0x44, L"44100", 1411200},
    };
    for (const auto& c : cases) {
        // 88200 has 88 as its lowest byte, which is nobody's: it shows the rate of the file before.
        EXPECT_TRUE(read(header(c.rate, 2, 16)));
        EXPECT_EQ(info.WavSampleRate, c.shown) << c.rate;
        EXPECT_EQ(info.WavBitRate, c.bitRate) << c.rate;
        EXPECT_EQ(info.WavChannels, 2);
        EXPECT_EQ(info.WavBits, 16);
        EXPECT_EQ(info.WavFileSize, L"44");
    }
}

TEST_F(WavInfoTest, theTimeIsRoundedInTwoWays)
{
    const struct {
        const char* what;
        std::uint32_t rate;
        int channels;
        int bits;
        std::size_t length;
        std::wstring time;
    } cases[] = {
        {"a minute of a disc", 44100, 2, 16, 10'585'000, L"01:00"},
        {"header alone", 44100, 2, 16, 44, L"00:00"},
        // At 8000 bits a second each byte behind the first 1000 is a millisecond.
        {"no sound", 8000, 1, 1, 1000, L"00:00"},
        {"just below half a second", 8000, 1, 1, 1000 + 499, L"00:00"},
        {"half a second", 8000, 1, 1, 1000 + 500, L"00:01"},
        {"twelve and a half", 8000, 1, 1, 1000 + 12'500, L"00:13"},
        {"before the last half second", 8000, 1, 1, 1000 + 59'499, L"00:59"},
        {"the nearest second is the next minute's, the rest is half a second below 0", 8000, 1, 1, 1000 + 59'500,
         L"01:-01"},
        {"the same, nearer", 8000, 1, 1, 1000 + 59'501, L"01:00"},
        {"a minute", 8000, 1, 1, 1000 + 60'000, L"01:00"},
        {"and nearly another", 8000, 1, 1, 1000 + 119'499, L"01:59"},
        {"many minutes", 8000, 1, 1, 1000 + 123 * 60'000 + 7'000, L"123:07"},
        {"less than what is taken for the header", 8000, 1, 1, 44, L"00:-01"},
        {"no channels", 8000, 0, 1, 61'000, L"00:00"},
        {"negative channels", 8000, 0xFFFF, 1, 1000 + 61'000, L"-01:-01"},
    };
    for (const auto& c : cases) {
        EXPECT_TRUE(read(header(c.rate, c.channels, c.bits), c.length));
        EXPECT_EQ(info.WavPlayTime, c.time) << c.what;
    }
}

/// One file after the other, with what each of them leaves as it was.
TEST_F(WavInfoTest, whatAFileDoesNotGiveStaysFromTheOneBefore)
{
    const std::string disc = header(44100, 2, 16);
    struct Values {
        int channels, bits;
        std::wstring rate;
        std::int32_t bitRate;
        std::wstring size, time;
    };
    const struct {
        const char* what;
        std::string bytes;
        bool riff;
        Values values;
    } cases[] = {
        {"unknown rate at first", header(12345, 2, 16), true, {2, 16, L"", 0, L"44", L"00:00"}},
        {"all", disc + std::string(1'764'000 + 956, '.'), true, {2, 16, L"44100", 1411200, L"1765000", L"00:10"}},
        {"no RIFF", header(8000, 1, 8, "RIFX"), false, {1, 8, L"44100", 1411200, L"44", L"00:10"}},
        {"ends before the bits", disc.substr(0, 35), true, {2, 8, L"44100", 705600, L"35", L"00:00"}},
        {"ends before the rate", header(8000, 1, 16).substr(0, 24), true, {1, 8, L"44100", 352800, L"24", L"00:00"}},
        {"ends within the channels", disc.substr(0, 23), true, {1, 8, L"44100", 352800, L"23", L"00:00"}},
        {"bit rate that does not fit",
         header(48000, 32767, 32767),
         true,
         {32767, 32767, L"48000", 352800, L"44", L"00:00"}},
        {"ends within its mark", "RIF", false, {32767, 32767, L"48000", 352800, L"3", L"00:00"}},
        {"empty", "", false, {32767, 32767, L"48000", 352800, L"0", L"00:00"}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(read(c.bytes), c.riff) << c.what;
        EXPECT_EQ(info.WavChannels, c.values.channels) << c.what;
        EXPECT_EQ(info.WavBits, c.values.bits) << c.what;
        EXPECT_EQ(info.WavSampleRate, c.values.rate) << c.what;
        EXPECT_EQ(info.WavBitRate, c.values.bitRate) << c.what;
        EXPECT_EQ(info.WavFileSize, c.values.size) << c.what;
        EXPECT_EQ(info.WavPlayTime, c.values.time) << c.what;
    }
    EXPECT_TRUE(log.lines.empty());
    for (const Operation operation : {Operation::openForReading, Operation::read}) {
        log.lines.clear();
        files.fail(operation, path);
        EXPECT_FALSE(read(disc));
        files.heal(operation, path);
        EXPECT_TRUE(log.says("song.wav"));
        EXPECT_EQ(info.WavChannels, 32767);
        EXPECT_EQ(info.WavFileSize, L"44");
    }
    EXPECT_FALSE(tags::ReadWavInfo(files, log, info, L"C:\\none.wav"));
    EXPECT_EQ(info.WavFileSize, L"0");
    EXPECT_FALSE(files.fileExists(L"C:\\none.wav"));
}

TEST(WavInformation, saysEverythingInSixLines)
{
    const struct {
        WavInfo info;
        std::wstring text;
    } cases[] = {
        {{2, 16, L"44100", 1411200, L"10585000", L"01:00"},
         L"Bit Rate:  1411 Kbps\r\nAudio Sample Size:  16 bit\r\nChannels:  2 (Stereo)\r\nAudio Sample Rate:  44 "
         L"KHz\r\n"
         L"File Size: 10.09 MB\r\nPlay Time: 01:00\r\n"},
        {{1, 8, L"11025", 88200, L"104858", L"00:09"},
         L"Bit Rate:  88 Kbps\r\nAudio Sample Size:  8 bit\r\nChannels:  1 (Mono)\r\nAudio Sample Rate:  11 KHz\r\n"
         L"File Size: .10 MB\r\nPlay Time: 00:09\r\n"},
        {{-3, 0, L"", -1999, L"1310720000", L""},
         L"Bit Rate: -1 Kbps\r\nAudio Sample Size:  0 bit\r\nChannels: -3 (Stereo)\r\nAudio Sample Rate:  0 KHz\r\n"
         L"File Size: 1250.00 MB\r\nPlay Time: \r\n"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(tags::wavInformation(c.info), c.text);
}

}
