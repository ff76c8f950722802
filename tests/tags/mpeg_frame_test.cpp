#include "tags/mpeg_frame.h"

#include "support/fake_diagnostics.h"
#include "support/fake_file_system.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

using namespace tonquay;
using namespace tonquay::tags;
using namespace std::string_literals;
using Operation = test::FakeFileSystem::Operation;

std::string zeros(std::size_t count)
{
    return std::string(count, '\0');
}

class MpegFrame : public testing::Test {
protected:
    /// What `look` says of a file.
    template <class Look>
    auto in(const std::string& contents, Look look)
    {
        files.put(path, contents);
        auto file = files.openForReading(path);
        FileBytes bytes(**file, log);
        return look(bytes);
    }

    const std::wstring path = L"C:\\song.mp3";
    test::FakeFileSystem files;
    test::FakeDiagnostics log;
};

TEST_F(MpegFrame, theFirstPairThatLooksLikeOneIsTheFrame)
{
    const struct {
        const char* what;
        std::string bytes;
        int position;
        std::int16_t start = 1;
    } cases[] = {
        {"empty", "", -1},
        {"nothing but a frame's first byte", "\xFF", -1},
        {"the pair alone", "\xFF\xFB", 1},
        {"a first byte that ends the file", "ab\xFF", -1},
        {"a pair that ends the file", "ab\xFF\xFB", 3},
        {"the other way round", "\xFB\xFF", -1},
        {"smallest second byte", "\xFF\xF0", 1},
        {"one below it", "\xFF\xEF", -1},
        {"first bytes in a row", "\xFF\x01\xFF\xFF\xFB", 3},
        {"from a start", "\xFF\xFB\xFF\xFB", 3, 2},
        {"a start before the file", "\xFF\xFB", -1, 0},
        {"a start behind the file", "\xFF\xFB", -1, 3},
        {"in two blocks of the reader", zeros(4095) + "\xFF\xFB", 4096},
        {"the last place", zeros(32765) + "\xFF\xFB", 32766},
        {"behind it", zeros(32766) + "\xFF\xFB", -1},
        {"far behind it", zeros(70000) + "\xFF\xFB", -1},
    };
    for (const auto& c : cases)
        EXPECT_EQ(in(c.bytes, [&](FileBytes& bytes) { return FindFrameSync(bytes, c.start); }), c.position) << c.what;
    EXPECT_TRUE(log.lines.empty());
    files.fail(Operation::read, path);
    EXPECT_EQ(in("\xFF\xFB", [](FileBytes& bytes) { return FindFrameSync(bytes, 1); }), -1);
    EXPECT_TRUE(log.says("song.mp3"));
}

TEST_F(MpegFrame, theHeaderGivesWhatTheTablesSay)
{
    const auto withThird = [&](int byte, auto look) { return in("\xFF\xFB"s + static_cast<char>(byte), look); };
    const struct {
        std::int16_t version;
        std::vector<int> bitrates;
        std::vector<int> sampleRates;
    } tables[] = {
        {0, std::vector<int>(16, 0), {0, 0, 0, 0}},
        {1, {128, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 128}, {44, 48, 32, 44}},
        {2, {128, 128, 16, 24, 32, 128, 128, 56, 64, 128, 128, 128, 128, 128, 128, 128}, {22, 24, 16, 44}},
    };
    for (const auto& table : tables) {
        const auto bitrate = [&](FileBytes& bytes) { return GetBitrate(bytes, 1, table.version); };
        const auto sampleRate = [&](FileBytes& bytes) { return GetSampleRate(bytes, 1, table.version); };
        for (int index = 0; index < 16; ++index)
            EXPECT_EQ(withThird(index << 4 | 15, bitrate), table.bitrates[static_cast<std::size_t>(index)]) << index;
        for (int index = 0; index < 4; ++index)
            EXPECT_EQ(withThird(index << 2 | 0xF3, sampleRate), table.sampleRates[static_cast<std::size_t>(index)]);
    }
    const int channels[] = {1, 1, 1, 2, 2, 2, 3, 3, 3, 3, 3, 0, 0, 0, 1, 1};
    for (int bits = 0; bits < 16; ++bits)
        EXPECT_EQ(in("\xFF\xFB\x90"s + static_cast<char>(bits << 4 | 15),
                     [](FileBytes& bytes) { return GetChannelMode(bytes, 1); }),
                  channels[bits])
            << bits;
    const std::pair<const char*, float> versions[] = {
        {"\xFF\xE7", 2.5F}, {"\xFF\xEF", 0.F}, {"\xFF\xF7", 2.F}, {"\xFF\xFF", 1.F}, {"\xFF", 2.5F}};
    for (const auto& [bytes, version] : versions)
        EXPECT_EQ(in(bytes, [](FileBytes& file) { return GetMpegVersion(file, 1); }), version);
}

TEST_F(MpegFrame, whatLiesBehindTheLastPlaceIsNotRead)
{
    const std::string frame = "\xFF\xFB\x14\x40" + zeros(32) + "Xing" + zeros(3) + "\x03";
    const struct {
        std::int16_t position;
        int bitrate; ///< 128 and 44 without their byte
        int sampleRate;
        int channels; ///< 1 without its byte
        bool xing;
        int flags;
    } cases[] = {
        {1, 32, 48, 2, true, 3},      {32727, 32, 48, 2, true, 3},   {32728, 32, 48, 2, true, 0},
        {32731, 32, 48, 2, true, 0},  {32732, 32, 48, 2, false, 0},  {32764, 32, 48, 2, false, 0},
        {32765, 32, 48, 1, false, 0}, {32766, 128, 44, 1, false, 0},
    };
    for (const auto& c : cases)
        in(zeros(static_cast<std::size_t>(c.position - 1)) + frame, [&](FileBytes& bytes) {
            EXPECT_EQ(FindFrameSync(bytes, 1), c.position);
            EXPECT_EQ(GetBitrate(bytes, c.position, 1), c.bitrate) << c.position;
            EXPECT_EQ(GetSampleRate(bytes, c.position, 1), c.sampleRate) << c.position;
            EXPECT_EQ(GetChannelMode(bytes, c.position), c.channels) << c.position;
            EXPECT_EQ(HasXingHeader(bytes, c.position, 1, 1), c.xing) << c.position;
            EXPECT_EQ(GetXingFlags(bytes, c.position, 1, 1), c.flags) << c.position;
            return 0;
        });
}

TEST_F(MpegFrame, theXingHeaderHasItsPlaceByVersionAndChannels)
{
    const std::string header = "Xing\x80\0\0\x01\0\0\x03\xE8\0\x06\x64\x5D"s;
    for (const std::int16_t version : {std::int16_t{0}, std::int16_t{1}, std::int16_t{2}})
        for (const std::int16_t channels : {std::int16_t{0}, std::int16_t{1}, std::int16_t{3}})
            for (const std::size_t distance : {13u, 21u, 36u}) {
                const std::size_t right = channels == 0 ? (version == 1 ? 21u : 13u) : (version == 1 ? 36u : 21u);
                in(zeros(distance) + header, [&](FileBytes& bytes) {
                    EXPECT_EQ(HasXingHeader(bytes, 1, version, channels), distance == right) << version << channels;
                    if (distance == right) {
                        EXPECT_EQ(GetXingFlags(bytes, 1, version, channels), 0x80000001);
                        EXPECT_EQ(GetXingFrames(bytes, 1, version, channels), 1000);
                        EXPECT_EQ(GetXingBytes(bytes, 1, version, channels), 0x06645D);
                    }
                    return 0;
                });
            }
    for (const char* other : {"Xin", "XinG", "Info"})
        EXPECT_FALSE(in(zeros(36) + other, [](FileBytes& bytes) { return HasXingHeader(bytes, 1, 1, 1); })) << other;
}

TEST_F(MpegFrame, aNumberThatTheFileCutsOffEndsInItsLastByte)
{
    const std::pair<std::string, std::int64_t> cases[] = {
        {"\xFF\xFF\xFF\xFF\x01", 0xFFFFFFFF}, {"\x01\x02\x03", 0x01020303}, {"\x01", 0x01010101}, {"", 0}};
    for (const auto& [bytes, number] : cases)
        EXPECT_EQ(in(bytes, [](FileBytes& file) { return ReadBigEndian32(file, 1); }), number);
}

}
