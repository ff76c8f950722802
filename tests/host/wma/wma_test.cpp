#include "host/wma/asf_header.h"
#include "host/wma/asf_layout.h"
#include "host/wma/block_encoder.h"
#include "host/wma/host_wma_encoder.h"
#include "host/wma/wma_file.h"
#include "support/fake_diagnostics.h"
#include "support/fake_file_system.h"
#include "support/run_program.h"
#include "support/temp_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

/// Real encodes, on files in memory that are then put on the disk for others to judge.
namespace tonquay::host {
namespace {

using platform::WmaEncoder;
using test::FakeFileSystem;
using testing::HasSubstr;

constexpr std::size_t frameBytes = 4;
constexpr std::uint32_t rate = 128000;

/// A tone of its own on each side, with a bit of noise so that no two places are alike.
std::vector<std::byte> music(std::size_t frames)
{
    std::vector<std::byte> sound;
    std::uint32_t noise = 1;
    const auto add = [&sound](double value) {
        const auto sample = static_cast<std::uint16_t>(static_cast<std::int16_t>(value));
        sound.push_back(static_cast<std::byte>(sample & 0xFF));
        sound.push_back(static_cast<std::byte>(sample >> 8));
    };
    for (std::size_t i = 0; i < frames; ++i) {
        noise = noise * 1664525 + 1013904223;
        const double hiss = static_cast<double>(noise >> 16) / 65536 - 0.5;
        const double phase = 2 * std::numbers::pi * static_cast<double>(i) / 44100;
        add(8000 * std::sin(440 * phase) + 4000 * hiss);
        add(8000 * std::sin(660 * phase) - 4000 * hiss);
    }
    return sound;
}

double sampleAt(std::string_view bytes, std::size_t frame)
{
    const auto low = static_cast<unsigned char>(bytes[frame * frameBytes]);
    const auto high = static_cast<unsigned char>(bytes[frame * frameBytes + 1]);
    return static_cast<std::int16_t>(low | high << 8);
}

/// How alike the left sides of two stretches are: 1 is equal.
double likeness(std::string_view one, std::string_view other, std::size_t first, std::size_t count)
{
    double both = 0, ones = 0, others = 0;
    for (std::size_t i = first; i < first + count; ++i) {
        const double a = sampleAt(one, i);
        const double b = sampleAt(other, i);
        both += a * b;
        ones += a * a;
        others += b * b;
    }
    return ones > 0 && others > 0 ? both / std::sqrt(ones * others) : 0;
}

std::uint64_t field(const std::string& bytes, std::size_t offset)
{
    std::uint64_t value = 0;
    for (std::size_t i = 8; i-- > 0;)
        value = value << 8 | static_cast<unsigned char>(bytes[offset + i]);
    return value;
}

struct Wma : testing::Test {
    FakeFileSystem files;
    test::FakeDiagnostics log;
    HostWmaEncoder encoder{files, log};
    test::TempFolder folder;
    const std::wstring target = L"C:\\out.WMA";

    WmaEncoder::Handle open(std::uint32_t bitrate = rate)
    {
        return encoder.BASS_WMA_EncodeOpenFile(44100, 2, 0, bitrate, target);
    }

    void encode(const std::vector<std::byte>& sound, std::uint32_t bitrate = rate, std::size_t piece = 20000)
    {
        const auto handle = open(bitrate);
        ASSERT_TRUE(encoder.BASS_WMA_EncodeSetTag(handle, L"", L"", 0));
        for (std::span rest(sound); !rest.empty(); rest = rest.subspan(std::min(piece, rest.size())))
            ASSERT_TRUE(encoder.BASS_WMA_EncodeWrite(handle, rest.first(std::min(piece, rest.size()))));
        ASSERT_TRUE(encoder.BASS_WMA_EncodeClose(handle));
    }

    std::string onDisk()
    {
        test::writeHostFile(folder / "out.WMA", files.contents(target).value_or(""));
        return folder / "out.WMA";
    }

    std::string probe(const std::string& entry)
    {
        return test::runProgram({"ffprobe", "-v", "error", "-show_entries", entry, "-of", "default=nw=1", onDisk()})
            .out;
    }

    std::string decoded()
    {
        const test::ProgramEnd end =
            test::runProgram({"ffmpeg", "-v", "error", "-y", "-i", onDisk(), "-f", "s16le", folder / "out.raw"});
        EXPECT_EQ(end.out, "");
        return test::readHostFile(folder / "out.raw");
    }
};

std::string asText(const std::vector<std::byte>& bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

TEST_F(Wma, everyUsualRateIsOfferedAndAFileAsAWholeHasIt)
{
    const auto rates = encoder.BASS_WMA_EncodeGetRates(44100, 2, 0);
    EXPECT_EQ(rates.size(), 14U);
    EXPECT_TRUE(encoder.BASS_WMA_EncodeGetRates(48000, 2, 0).empty());
    EXPECT_NE(encoder.BASS_ErrorGetCode(), 0);

    const std::size_t seconds = 30;
    const auto sound = music(seconds * 44100);
    for (const std::uint32_t bitrate : rates) {
        encode(sound, bitrate);
        const auto bits = static_cast<double>(files.contents(target)->size()) * 8 / seconds;
        EXPECT_NEAR(bits / bitrate, 1, 0.035) << bitrate;
        EXPECT_THAT(probe("stream=codec_name,sample_rate,channels"), HasSubstr("wmav2"));
        EXPECT_THAT(probe("format=duration"), HasSubstr("duration=30.000000"));
    }
}

TEST_F(Wma, aDecodeBeginsWithTheFirstSampleAndHasEveryOne)
{
    for (const std::size_t frames : {588U * 75U, 2048U * 20U, 2048U * 20U + 1U, 588U}) {
        const auto sound = music(frames);
        encode(sound, 192000, 4 * 777);
        const std::string back = decoded();
        const std::size_t blocks = (frames + 2047) / 2048;
        ASSERT_EQ(back.size(), (blocks + 1) * 2048 * frameBytes) << frames;
        const std::size_t part = std::min<std::size_t>(frames, 500);
        const std::string wanted = asText(sound);
        EXPECT_GT(likeness(wanted, back, 0, part), 0.98) << frames;
        EXPECT_GT(likeness(wanted, back, frames - part, part), 0.98) << frames;
        EXPECT_GT(likeness(wanted, back, 0, frames), 0.98) << frames;

        const auto read = readWmaFile(onDisk());
        ASSERT_TRUE(read && read->windowsMediaAudio && read->finished);
        EXPECT_NEAR(read->toldSeconds, static_cast<double>(frames) / 44100, 0.001);
        EXPECT_DOUBLE_EQ(read->heldSeconds, static_cast<double>(blocks * 2048) / 44100);
    }
}

TEST_F(Wma, tagsComeBackCharacterForCharacter)
{
    const auto handle = open();
    for (const auto& [key, text] : {std::pair{L"Title", L"Łódź 東京 😀"},
                                    {L"Author", L"Ὀρφεύς"},
                                    {L"WM/AlbumTitle", L"Ål\xDCE9"},
                                    {L"Description", L" a \"b\""},
                                    {L"Rating", L"5"},
                                    {L"Copyright", L"©"},
                                    {L"WM/Genre", L"Rock"},
                                    {L"WM/Year", L"1999"}})
        EXPECT_TRUE(encoder.BASS_WMA_EncodeSetTag(handle, key, text, 0));
    EXPECT_TRUE(encoder.BASS_WMA_EncodeSetTag(handle, L"", L"", 0));
    EXPECT_FALSE(encoder.BASS_WMA_EncodeSetTag(handle, L"Title", L"late", 0));
    EXPECT_TRUE(encoder.BASS_WMA_EncodeWrite(handle, music(588)));
    EXPECT_TRUE(encoder.BASS_WMA_EncodeClose(handle));

    const std::string tags = probe("format_tags");
    for (const char* tag : {"TAG:Title=Łódź 東京 😀\n", "=Ὀρφεύς\n", "=Ål\uFFFD\n", "= a \"b\"\n", "TAG:Rating=5\n",
                            "TAG:Copyright=©\n", "=Rock\n", "TAG:WM/Year=1999\n"})
        EXPECT_THAT(tags, HasSubstr(tag));
    const auto read = readWmaFile(onDisk());
    EXPECT_EQ(std::tie(read->title, read->artist, read->album), std::tuple(L"Łódź 東京 😀", L"Ὀρφεύς", L"Ål\uFFFD"));
    EXPECT_EQ(std::tie(read->comment, read->genre, read->year), std::tuple(L" a \"b\"", L"Rock", L"1999"));

    // Beside title and author the format has a place for the description, which is where most players look.
    const std::string bytes = *files.contents(target);
    const std::string wide(" \0a\0 \0\"\0b\0\"\0\0\0", 14);
    const auto first = bytes.find(wide);
    EXPECT_NE(bytes.find(wide, first + 1), std::string::npos);
    EXPECT_EQ(field(bytes, 30 + 40), bytes.size()) << "the file's size in its header";

    encode(music(588));
    EXPECT_EQ(probe("format_tags"), "") << "none of anybody's";
}

TEST_F(Wma, anOlderLongerFileLeavesNothingBehindAndIsKeptFromARateThatIsNotOffered)
{
    files.put(target, std::string(1 << 20, 'x'));
    for (const std::uint32_t bitrate : {0U, 33000U, 24000U, 1000000U}) {
        EXPECT_EQ(open(bitrate), 0U);
        EXPECT_NE(encoder.BASS_ErrorGetCode(), 0);
    }
    EXPECT_EQ(files.length(target), 1 << 20);
    EXPECT_EQ(log.lines.size(), 4U);
    encode(music(44100));
    EXPECT_LT(files.length(target), 20000);
    EXPECT_THAT(probe("format=duration"), HasSubstr("=1.000000"));
}

TEST_F(Wma, whatIsThereOfAnUnfinishedFilePlays)
{
    const auto handle = open();
    encoder.BASS_WMA_EncodeSetTag(handle, L"Title", L"Part", 0);
    encoder.BASS_WMA_EncodeSetTag(handle, L"", L"", 0);
    ASSERT_TRUE(encoder.BASS_WMA_EncodeWrite(handle, music(44100 * 10)));
    const auto read = readWmaFile(onDisk());
    EXPECT_TRUE(read && read->windowsMediaAudio && !read->finished);
    EXPECT_EQ(read->title, L"Part");
    const std::string back = decoded();
    EXPECT_GT(back.size(), 44100U * 7 * frameBytes);
    EXPECT_GT(likeness(asText(music(44100 * 10)), back, 0, 44100 * 7), 0.98);

    EXPECT_FALSE(encoder.BASS_StreamFree(handle + 1));
    EXPECT_TRUE(encoder.BASS_StreamFree(handle)) << "freed while open: finished";
    EXPECT_TRUE(readWmaFile(onDisk())->finished);
    EXPECT_FALSE(encoder.BASS_StreamFree(handle));
    EXPECT_FALSE(encoder.BASS_WMA_EncodeClose(handle));
}

TEST_F(Wma, anEncoderThatIsTakenDownFinishesItsFile)
{
    {
        HostWmaEncoder other(files, log);
        const auto handle = other.BASS_WMA_EncodeOpenFile(44100, 2, 0, rate, target);
        ASSERT_TRUE(other.BASS_WMA_EncodeWrite(handle, music(44100)));
    }
    EXPECT_THAT(probe("format=duration"), HasSubstr("=1.000000"));
}

TEST_F(Wma, aWriteThatFailsIsToldOnceAndTheHeaderStaysThatOfAnUnfinishedFile)
{
    struct Case {
        FakeFileSystem::Operation operation;
        int after;
    };
    using enum FakeFileSystem::Operation;
    for (const Case& c : {Case{write, 20}, {write, 2}, {seek, 3}}) {
        log.lines.clear();
        const auto handle = open(320000);
        ASSERT_TRUE(encoder.BASS_WMA_EncodeSetTag(handle, L"", L"", 0));
        files.fail(c.operation, target, base::Failure::Kind::full, c.after);
        const auto sound = music(44100);
        bool going = true;
        for (int i = 0; i < 20 && going; ++i)
            going = encoder.BASS_WMA_EncodeWrite(handle, sound);
        EXPECT_FALSE(going);
        EXPECT_FALSE(encoder.BASS_WMA_EncodeWrite(handle, sound)) << "nothing more";
        EXPECT_FALSE(encoder.BASS_WMA_EncodeClose(handle));
        EXPECT_EQ(log.lines.size(), 1U);
        files.heal(c.operation, target);
        const auto read = readWmaFile(onDisk());
        EXPECT_TRUE(read && read->windowsMediaAudio && !read->finished);
    }
}

TEST_F(Wma, whatCannotBeMadeIsRefused)
{
    files.fail(FakeFileSystem::Operation::openBinary, target, base::Failure::Kind::refused);
    EXPECT_EQ(open(), 0U);
    EXPECT_EQ(log.lines.size(), 1U);
    EXPECT_FALSE(encoder.BASS_WMA_EncodeWrite(0, music(10)));
    EXPECT_FALSE(encoder.BASS_WMA_EncodeSetTag(4711, L"Title", L"x", 0));
    EXPECT_FALSE(encoder.BASS_ChannelStop(0));
}

TEST_F(Wma, loudNoiseAndSilenceAreEncodedAtTheLowestRate)
{
    std::vector<std::byte> sound;
    for (std::uint32_t i = 0, noise = 1; i < 44100 * frameBytes; ++i, noise = noise * 1664525 + 1013904223)
        sound.push_back(i % 2 == 0 ? std::byte{0xFF} : static_cast<std::byte>((noise >> 24) % 2 == 0 ? 0x80 : 0x7F));
    sound.resize(sound.size() * 2);
    encode(sound, 32000);
    EXPECT_EQ(decoded().size() / frameBytes, (88200 / 2048 + 2) * 2048U);
}

TEST_F(Wma, otherFilesAreNoWindowsMediaAudio)
{
    encode(music(44100));
    std::string bytes = *files.contents(target);
    const auto wma = [&](const std::string& text) {
        test::writeHostFile(folder / "x.WMA", text);
        const auto read = readWmaFile(folder / "x.WMA");
        return read && read->windowsMediaAudio;
    };
    EXPECT_TRUE(wma(bytes));
    EXPECT_FALSE(wma(""));
    EXPECT_FALSE(wma("RIFF"));
    for (const std::size_t length : {10U, 100U, 400U})
        EXPECT_FALSE(wma(bytes.substr(0, length))) << length;
    EXPECT_FALSE(readWmaFile(folder / "none.WMA"));
    const auto cut = [&] {
        test::writeHostFile(folder / "x.WMA", bytes.substr(0, bytes.size() / 2));
        return *readWmaFile(folder / "x.WMA");
    }();
    EXPECT_FALSE(cut.finished);
    EXPECT_LT(cut.heldSeconds, 0.6);
}

TEST(AsfHeader, aHeaderWithoutFilePropertiesStays)
{
    std::vector<std::byte> header(300);
    const auto before = header;
    EXPECT_FALSE(asf::setBroadcast(header, true));
    EXPECT_FALSE(asf::setPlayTime(header, 1));
    EXPECT_EQ(header, before);
}

}
}
