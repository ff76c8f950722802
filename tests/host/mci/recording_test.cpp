#include "host/mci/recording.h"

#include "host/mci/sound_ring.h"
#include "support/disc_maker.h"
#include "support/fake_file_system.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>

namespace tonquay::host::test {
namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<std::byte>;

Bytes noise(std::size_t size)
{
    std::mt19937 random(5);
    Bytes bytes(size);
    for (std::byte& byte : bytes)
        byte = static_cast<std::byte>(random() & 0xFFU);
    return bytes;
}

/// Files in memory that are said to lie in a folder of this system, or nowhere.
struct PlacedFiles : tonquay::test::FakeFileSystem {
    fs::path place;
    std::string hostPath(std::wstring_view path) override
    {
        return place / std::string(path.begin() + 3, path.end()); // behind "C:\"
    }
};

struct RecordingTest : testing::Test {
    tonquay::test::DiscFolder folder;
    PlacedFiles files;
    Bytes sound = noise(400'000);

    std::unique_ptr<Recording> recorded()
    {
        auto recording = Recording::start(folder.path().string());
        EXPECT_TRUE(recording);
        const auto inlet = (*recording)->inlet();
        for (std::size_t at = 0; at < sound.size(); at += 4000)
            inlet(std::span(sound).subspan(at, 4000));
        return std::move(*recording);
    }

    Bytes copied(const wchar_t* path) const
    {
        const std::string text = files.contents(path).value_or("");
        Bytes bytes(text.size());
        std::ranges::transform(text, bytes.begin(), [](char c) { return static_cast<std::byte>(c); });
        return bytes;
    }
};

TEST_F(RecordingTest, getsItsNameWhereItLiesAndIsCopiedElsewhere)
{
    files.place = folder.path();
    const auto recording = recorded();
    EXPECT_TRUE(fs::is_empty(folder.path())) << "it has no name before";
    EXPECT_TRUE(recording->end());
    EXPECT_EQ(recording->soundBytes(), 400'000);
    ASSERT_TRUE(recording->save(files, L"C:\\named.wav"));
    EXPECT_TRUE(tonquay::test::readFile(folder.path() / "named.wav") == tonquay::test::waveFile(sound));
    EXPECT_EQ(files.allFiles().size(), 0U) << "no copy was made";
    struct stat facts {};
    ASSERT_EQ(::stat((folder.path() / "named.wav").c_str(), &facts), 0);
    const mode_t mask = ::umask(0);
    ::umask(mask);
    EXPECT_EQ(facts.st_mode & 0777U, 0666U & ~mask);

    ASSERT_TRUE(recording->save(files, L"C:\\again.wav")) << "one file is no two";
    EXPECT_TRUE(copied(L"C:\\again.wav") == tonquay::test::waveFile(sound));
    files.place = "/proc/nowhere";
    ASSERT_TRUE(recorded()->end());
    const auto other = recorded();
    ASSERT_TRUE(other->end());
    ASSERT_TRUE(other->save(files, L"C:\\other.wav"));
    EXPECT_TRUE(copied(L"C:\\other.wav") == tonquay::test::waveFile(sound));
}

TEST_F(RecordingTest, leavesNothingBehindWhenTheCopyFails)
{
    files.place = "/proc/nowhere";
    files.capacity = 100'000;
    const auto recording = recorded();
    ASSERT_TRUE(recording->end());
    const auto saved = recording->save(files, L"C:\\a.wav");
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.failure().kind, base::Failure::Kind::full);
    EXPECT_FALSE(files.fileExists(L"C:\\a.wav"));
    files.capacity = 1'000'000;
    EXPECT_TRUE(recording->save(files, L"C:\\a.wav")) << "it is still there";
    EXPECT_TRUE(copied(L"C:\\a.wav") == tonquay::test::waveFile(sound));
}

TEST_F(RecordingTest, itsEndLeavesOutWhatIsUnwantedAndTakesNothingMore)
{
    files.place = folder.path();
    const auto recording = recorded();
    const auto inlet = recording->inlet();
    EXPECT_TRUE(recording->end(1000));
    inlet(sound);
    EXPECT_TRUE(recording->end(5000)) << "too late";
    ASSERT_TRUE(recording->save(files, L"C:\\a.wav"));
    const Bytes wanted(sound.begin(), sound.end() - 1000);
    EXPECT_TRUE(tonquay::test::readFile(folder.path() / "a.wav") == tonquay::test::waveFile(wanted));

    const auto nothing = recorded();
    EXPECT_TRUE(nothing->end(1'000'000));
    EXPECT_EQ(nothing->soundBytes(), 0);
}

TEST(Ring, bytesGoRoundItsEndInOrderAndWhatHasNoRoomIsCounted)
{
    SoundRing ring;
    const Bytes sound = noise(700'000);
    Bytes taken;
    const auto take = [&] {
        for (auto piece = ring.oldest(); !piece.empty(); piece = ring.oldest()) {
            taken.insert(taken.end(), piece.begin(), piece.end());
            ring.drop(piece.size());
        }
    };
    ring.put(sound);
    take();
    ring.put(sound); // over the end of the megabyte
    ring.put(std::span(sound).first(400'000));
    EXPECT_EQ(ring.bytesLost(), 400'000U);
    take();
    Bytes twice = sound;
    twice.insert(twice.end(), sound.begin(), sound.end());
    EXPECT_TRUE(taken == twice);
}

}
}
