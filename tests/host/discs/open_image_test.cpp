#include "host/discs/disc.h"
#include "host/discs/sound_file.h"

#include "support/disc_maker.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>

namespace tonquay::host {

namespace {

namespace fs = std::filesystem;
using test::DiscFolder;
using test::writeFile;

std::string cueFor(const std::string& name, const std::string& type = "BINARY")
{
    return "FILE \"" + name + "\" " + type + "\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n";
}

std::vector<std::byte> soundOf(int sectors)
{
    std::vector<std::byte> sound;
    for (int i = 0; i < sectors; ++i) {
        const auto sector = test::patternSector(i);
        sound.insert(sound.end(), sector.begin(), sector.end());
    }
    return sound;
}

/// The failure with the folder taken out, or "opened".
std::string outcome(const fs::path& image, const fs::path& folder)
{
    const auto disc = openImage(image);
    if (disc)
        return "opened";
    std::string text = base::describe(disc.failure());
    const std::string prefix = folder.string() + "/";
    for (std::size_t at = text.find(prefix); at != std::string::npos; at = text.find(prefix))
        text.erase(at, prefix.size());
    return text;
}

TEST(OpenImage, aFileIsFoundByTheNameThatTheSheetGives)
{
    struct Case {
        const char* what;
        std::string written;
        std::string onDisk;
        std::string type;
    };
    const Case cases[] = {
        {"as written", "a b.bin", "a b.bin", "BINARY"},
        {"another case", "ALBUM.BIN", "album.bin", "BINARY"},
        {"another case past ASCII", "\xC3\x84RGER.bin", "\xC3\xA4rger.bin", "BINARY"},
        {"in a folder", "cd1/a.bin", "cd1/a.bin", "BINARY"},
        {"in a folder, with a backslash", "cd1\\a.bin", "cd1/a.bin", "BINARY"},
        {"a path of another system", "C:\\Music\\Album\\a.bin", "a.bin", "BINARY"},
        {"a path of another machine", "/home/somebody/a.bin", "a.bin", "BINARY"},
        {"Windows-1252 in the sheet", "\xC4rger.bin", "\xC3\x84rger.bin", "BINARY"},
        {"Windows-1252 in both", "\xC4rger.bin", "\xC4rger.bin", "BINARY"},
        {"packed since", "a.wav", "a.flac", "WAVE"},
        {"packed, another case", "A.WAV", "a.Flac", "WAVE"},
        {"a sound file called binary", "a.wav", "a.wav", "BINARY"},
    };
    for (const Case& c : cases) {
        const DiscFolder folder;
        fs::create_directories(folder.path() / "cd1");
        const fs::path data = folder.path() / c.onDisk;
        const bool flac = data.extension() == ".flac" || data.extension() == ".Flac";
        const bool sound = flac || data.extension() == ".wav";
        writeFile(sound ? folder.path() / (flac ? "tmp" : "a.wav") : data,
                  sound ? test::waveFile(soundOf(3)) : soundOf(3));
        if (flac) {
            const std::string command =
                "flac --totally-silent -o '" + data.string() + "' '" + (folder.path() / "tmp").string() + "'";
            ASSERT_EQ(std::system(command.c_str()), 0);
        }
        writeFile(folder.path() / "x.CUE", cueFor(c.written, c.type));
        const auto disc = openImage(folder.path() / "x.CUE");
        ASSERT_TRUE(disc) << c.what << ": " << base::describe(disc.failure());
        std::vector<std::byte> run(3 * Disc::sectorBytes);
        EXPECT_EQ((*disc)->read(0, run).sectors, 3u) << c.what;
        EXPECT_TRUE(run == soundOf(3)) << c.what;
    }
}

TEST(OpenImage, whatCannotBeOpenedSaysWhy)
{
    struct Case {
        const char* what;
        std::function<void(const fs::path&)> prepare; ///< x.cue in a folder
        std::string image;
        std::string message;
    };
    const auto nothing = [](const fs::path&) {};
    const auto sheet = [](const std::string& text) {
        return [=](const fs::path& folder) { writeFile(folder / "x.cue", text); };
    };
    const auto sound = [](const std::string& arguments, const std::string& name) {
        return [=](const fs::path& folder) {
            writeFile(folder / "x.cue", cueFor(name, "WAVE"));
            const std::string command =
                "sox -n " + arguments + " '" + (folder / name).string() + "' synth 0.1 sine 440";
            ASSERT_EQ(std::system(command.c_str()), 0);
        };
    };
    const Case cases[] = {
        {"no such sheet", nothing, "x.cue", "x.cue: there is no such file"},
        {"no image", nothing, "x.iso", "x.iso: a disc image is a .cue, .toc or .nrg file"},
        {"a folder", [](const fs::path& folder) { fs::create_directory(folder / "x.cue"); }, "x.cue",
         "x.cue: this is a folder"},
        {"a pipe", [](const fs::path& folder) { ASSERT_EQ(mkfifo((folder / "x.cue").c_str(), 0600), 0); }, "x.cue",
         "x.cue: this is no plain file"},
        {"8 MB", sheet(std::string(8'000'000, '\n')), "x.cue", "x.cue: a sheet is never as large as this"},
        {"data is missing", sheet(cueFor("a.bin")), "x.cue", "x.cue:1: the file \"a.bin\" is not there"},
        {"data is a folder",
         [](const fs::path& folder) {
             writeFile(folder / "x.cue", cueFor("a.bin"));
             fs::create_directory(folder / "a.bin");
         },
         "x.cue", "x.cue:1: a.bin: this is a folder"},
        {"data is empty",
         [](const fs::path& folder) {
             writeFile(folder / "x.cue", cueFor("a.bin"));
             writeFile(folder / "a.bin", std::string());
         },
         "x.cue", "x.cue:2: track 1 is empty"},
        {"a wave cut short",
         [](const fs::path& folder) {
             writeFile(folder / "x.cue", cueFor("a.wav", "WAVE") + "TRACK 02 AUDIO\nINDEX 01 00:00:08\n");
             writeFile(folder / "a.wav", test::waveFile(soundOf(10)));
             fs::resize_file(folder / "a.wav", 44 + 5 * Disc::sectorBytes);
         },
         "x.cue", "x.cue:3: \"a.wav\" ends before this: it has 11760 bytes of sound or data, needed are 18816"},
        {"a wave that is none",
         [](const fs::path& folder) {
             writeFile(folder / "x.cue", cueFor("a.wav", "WAVE"));
             writeFile(folder / "a.wav", soundOf(2));
         },
         "x.cue", "x.cue:1: a.wav: this is no sound file that can be read: Format not recognised."},
        {"48 kHz", sound("-r 48000 -b 16 -c 2", "a.wav"), "x.cue",
         "x.cue:1: a.wav: the sound of a disc is 44100 Hz, 2 channels, 16 bits; this is 48000 Hz, 2 channels, 16 bits"},
        {"mono", sound("-r 44100 -b 16 -c 1", "a.wav"), "x.cue",
         "x.cue:1: a.wav: the sound of a disc is 44100 Hz, 2 channels, 16 bits; this is 44100 Hz, 1 channel, 16 bits"},
        {"24 bit", sound("-r 44100 -b 24 -c 2", "a.flac"), "x.cue",
         "x.cue:1: a.flac: the sound of a disc is 44100 Hz, 2 channels, 16 bits; this is 44100 Hz, 2 channels, not 16 "
         "bits"},
        {"Ogg called wave", sound("-r 44100 -c 2 -t ogg", "a.wav"), "x.cue",
         "x.cue:1: a.wav: only WAVE, AIFF and FLAC files hold the exact sound of a disc"},
        {"an empty Nero image", [](const fs::path& folder) { writeFile(folder / "x.nrg", std::string()); }, "x.nrg",
         "x.nrg: this is no Nero image: it is too short"},
        {"an empty table", [](const fs::path& folder) { writeFile(folder / "x.toc", std::string()); }, "x.toc",
         "x.toc: there is no track in this table of contents"},
    };
    for (const Case& c : cases) {
        const DiscFolder folder;
        c.prepare(folder.path());
        EXPECT_EQ(outcome(folder.path() / c.image, folder.path()), c.message) << c.what;
    }
}

TEST(OpenImage, aFileThatMayNotBeReadSaysSo)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "everything may be read by root";
    const DiscFolder folder;
    writeFile(folder.path() / "x.cue", cueFor("a.bin"));
    writeFile(folder.path() / "a.bin", soundOf(1));
    fs::permissions(folder.path() / "a.bin", fs::perms::none);
    EXPECT_EQ(outcome(folder.path() / "x.cue", folder.path()), "x.cue:1: a.bin: this file may not be read");
}

/// Frames that are lost from the middle of a FLAC file end the reading there, and only there.
TEST(OpenImage, aDamagedFlacIsReadUpToItsDamage)
{
    const DiscFolder folder;
    const test::DiscPlan plan{.tracks = {{.sectors = 300}}, .format = test::DiscFormat::cueFlac};
    const auto image = test::makeDisc(folder.path(), plan);
    auto bytes = test::readFile(folder.path() / "album.flac");
    std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(bytes.size() / 2), 40'000, std::byte{0});
    writeFile(folder.path() / "album.flac", bytes);
    const auto disc = openImage(image);
    ASSERT_TRUE(disc) << base::describe(disc.failure());
    std::vector<std::byte> run(300 * Disc::sectorBytes);
    const Disc::Read read = (*disc)->read(0, run);
    EXPECT_EQ(read.end, Disc::ReadEnd::unreadable);
    EXPECT_GT(read.sectors, 100u);
    const auto expected = test::expectedSound(plan, 0);
    EXPECT_TRUE(std::equal(run.begin(), run.begin() + static_cast<std::ptrdiff_t>(read.sectors * Disc::sectorBytes),
                           expected.begin()));
}

TEST(OpenImage, aRefusedSoundFileClosesNobodyElsesFile)
{
    const DiscFolder folder;
    writeFile(folder.path() / "noise.flac", std::string(5000, 'x'));
    const int file = open((folder.path() / "noise.flac").c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_GE(file, 0);
    EXPECT_FALSE(SoundFile::open(file, "noise.flac"));
    EXPECT_NE(fcntl(file, F_GETFD), -1) << "its owner has yet to close it";
    close(file);
}

TEST(OpenImage, theNameTellsWhatIsAnImage)
{
    for (const char* const name : {"a.cue", "a.CUE", "/x/a.Toc", "a.nrg"})
        EXPECT_TRUE(isImageName(name)) << name;
    for (const char* const name : {"a.bin", "cue", ".cue", "a.cue.bak", "a", ""})
        EXPECT_FALSE(isImageName(name)) << name;
}

TEST(DiscId, isMadeFromTheTable)
{
    using Tracks = std::vector<platform::DiscTrack>;
    // A table and its identifier as MusicBrainz documents them.
    const Tracks known{{1, 0, 15213, true},     {2, 15213, 16951, true}, {3, 32164, 14278, true},
                       {4, 46442, 16822, true}, {5, 63264, 17075, true}, {6, 80339, 14973, true}};
    const std::string id = "49HHV7Eb8UKF3aQiNmu1GR8vKTY-";
    EXPECT_EQ(discId(known), id);

    Tracks enhanced = known;
    enhanced.push_back({7, 95312 + 11400, 5000, false});
    EXPECT_EQ(discId(enhanced), id) << "a data track in a second session does not count";
    Tracks mixed = known;
    mixed.front().audio = false;
    EXPECT_EQ(discId(mixed), id) << "a data track before the music counts";
    Tracks later = known;
    for (platform::DiscTrack& track : later)
        track.number += 3;
    EXPECT_EQ(discId(later).size(), 28u);
    EXPECT_NE(discId(later), id);
    EXPECT_EQ(discId({{1, 0, 100, false}}).size(), 28u) << "data only";

    EXPECT_EQ(discId({}), "");
    EXPECT_EQ(discId({{100, 0, 10, true}}), "");
    EXPECT_EQ(discId({{1, 0, 10, true}, {3, 10, 10, true}}), "");
    EXPECT_EQ(discId({{1, 0, 2'000'000'000, true}}), "") << "longer than a disc";
}

}

}
