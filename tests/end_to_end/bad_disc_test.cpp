#include "end_to_end/sandbox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>

namespace tonquay::test {

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

void expectRefusal(const Sandbox& box, const Ended& ended, int status, const std::string& says)
{
    EXPECT_EQ(ended.status, status) << ended.all();
    EXPECT_EQ(ended.out, "");
    EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
    EXPECT_THAT(ended.err, HasSubstr(says));
    EXPECT_FALSE(fs::exists(box.out()));
    EXPECT_EQ(box.strays(), "");
}

std::string sheet(const std::string& tracks)
{
    return "FILE \"album.bin\" BINARY\n" + tracks;
}

std::string textOf(const fs::path& path)
{
    const auto bytes = readFile(path);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

}

TEST(BadDisc, whatIsNoDiscAtAll)
{
    struct Case {
        const char* what;
        const char* disc;
        const char* says;
    };
    const Sandbox box;
    fs::create_directory(box.discs() / "folder.cue");
    writeFile(box.discs() / "text.txt", std::string("text"));
    writeFile(box.discs() / "link.cue", std::string());
    fs::remove(box.discs() / "link.cue");
    fs::create_symlink("link.cue", box.discs() / "link.cue");
    const std::vector<Case> cases{
        {"no such file", "discs/none.cue", "none.cue: there is no such file"},
        {"no such device", "/dev/none", "/dev/none: there is no such file or device"},
        {"a folder", "discs", "this is a folder"},
        {"a folder with the name of an image", "discs/folder.cue", "this is a folder"},
        {"no image", "discs/text.txt", "no disc image"},
        {"no drive", "/dev/null", "/dev/null"},
        {"a link to itself", "discs/link.cue", "link.cue"},
        {"a name of 5000 characters", nullptr, "File name too long"},
    };
    const std::string longName(5000, 'x');
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const std::string disc = c.disc != nullptr ? c.disc : longName + ".cue";
        const Ended ended = box.run({"rip", "--format", "wav", "--output", "out", disc});
        EXPECT_EQ(ended.status, 3) << ended.all();
        EXPECT_THAT(ended.err, HasSubstr(c.says));
        EXPECT_FALSE(fs::exists(box.out()));
        EXPECT_EQ(box.run({"list", disc}).status, 3);
    }
}

TEST(BadDisc, sheetsThatDoNotAddUp)
{
    std::string hundred;
    for (int i = 1; i <= 100; ++i)
        hundred += "TRACK " + std::to_string(i) + " AUDIO\nINDEX 01 00:00:" + (i < 10 ? "0" : "") +
                   std::to_string(i % 75) + "\n";
    std::string binary;
    for (const std::byte byte : patternSector(3))
        binary += static_cast<char>(byte);
    struct Case {
        const char* what;
        const char* file;
        std::string text;
        std::string says;
    };
    const std::vector<Case> cases{
        {"empty", "a.cue", "", "a.cue"},
        {"blank lines", "a.cue", "\r\n\r\n", "a.cue"},
        {"binary", "a.cue", binary, "a.cue"},
        {"zeros", "a.cue", std::string(5000, '\0'), "a.cue"},
        {"10 MB", "a.cue", std::string(10 << 20, 'x'), "never as large"},
        {"one line of 400 KB", "a.cue", "TITLE \"" + std::string(400000, 'x') + "\"\n", "a.cue"},
        {"no file line", "a.cue", "TRACK 01 AUDIO\nINDEX 01 00:00:00\n", "a.cue:1"},
        {"no track", "a.cue", sheet(""), "a.cue"},
        {"no index", "a.cue", sheet("TRACK 01 AUDIO\n"), "a.cue"},
        {"times backwards", "a.cue", sheet("TRACK 01 AUDIO\nINDEX 01 00:00:30\nTRACK 02 AUDIO\nINDEX 01 00:00:10\n"),
         "a.cue:5"},
        {"99:99:99", "a.cue", sheet("TRACK 01 AUDIO\nINDEX 01 99:99:99\n"), "a.cue:3"},
        {"a number twice", "a.cue", sheet("TRACK 01 AUDIO\nINDEX 01 00:00:00\nTRACK 01 AUDIO\nINDEX 01 00:00:10\n"),
         "a.cue:4"},
        {"100 tracks", "a.cue", sheet(hundred), "a.cue"},
        {"data missing", "a.cue", "FILE \"none.bin\" BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n",
         "a.cue:1: the file \"none.bin\" is not there"},
        {"data that is a folder", "a.cue", "FILE \".\" BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n", "a.cue:1"},
        {"a device as data", "a.cue", "FILE \"/dev/zero\" BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n", "a.cue:1"},
        {"its own sheet as data", "a.cue", "FILE \"a.cue\" BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n", "a.cue"},
        {"a start behind the end", "a.cue",
         sheet("TRACK 01 AUDIO\nINDEX 01 00:00:00\nTRACK 02 AUDIO\nINDEX 01 10:00:00\n"), "a.cue"},
        {"no WAVE file", "a.cue", "FILE \"album.bin\" WAVE\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n", "a.cue:1"},
        {"data only", "a.cue", sheet("TRACK 01 MODE1/2352\nINDEX 01 00:00:00\n"), "holds data only"},
        {"empty", "a.toc", "", "a.toc"},
        {"binary", "a.toc", binary, "a.toc"},
        {"data missing", "a.toc", "CD_DA\nTRACK AUDIO\nFILE \"none.bin\" 0\n", "none.bin"},
        {"longer than its data", "a.toc", "CD_DA\nTRACK AUDIO\nFILE \"album.bin\" 0 10:00:00\n", "a.toc:3"},
        {"empty", "a.nrg", "", "a.nrg"},
        {"a footer only", "a.nrg", std::string("NER5\0\0\0\0\0\0\0\0", 12), "a.nrg"},
        {"a footer that points behind the end", "a.nrg", "NER5\x7F" + std::string(7, '\xFF'), "a.nrg"},
        {"binary", "a.nrg", binary, "a.nrg"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.file) + ": " + c.what);
        const Sandbox box;
        static_cast<void>(makeDisc(box.discs(), plainDisc(1, 100)));
        writeFile(box.discs() / c.file, c.text);
        const Ended ended = box.rip(box.discs() / c.file);
        expectRefusal(box, ended, 3, c.says);
        EXPECT_EQ(std::count(ended.err.begin(), ended.err.end(), '\n'), 1) << ended.err;
    }
}

TEST(BadDisc, imagesWhoseDataIsShort)
{
    struct Case {
        const char* what;
        DiscFormat format;
        int status;
    };
    const std::vector<Case> cases{
        {"one file", DiscFormat::cueBin, 3},
        {"high byte first", DiscFormat::cueSwapped, 3},
        {"WAVE", DiscFormat::cueWave, 3},
        {"FLAC, whose header still tells of all", DiscFormat::cueFlac, 1},
        {"toc", DiscFormat::tocBin, 3},
        {"first Nero format", DiscFormat::nrgFirst, 3},
        {"second Nero", DiscFormat::nrgSecond, 3},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const Sandbox box;
        const fs::path disc = makeDisc(box.discs(), plainDisc(2, 100, c.format));
        for (const auto& entry : fs::directory_iterator(box.discs()))
            if (entry.path().extension() != ".cue" && entry.path().extension() != ".toc")
                fs::resize_file(entry.path(), entry.file_size() / 5);
        const Ended ended = box.rip(disc);
        EXPECT_EQ(ended.status, c.status) << ended.all();
        EXPECT_TRUE(isProblemLines(ended.err)) << ended.all();
        if (c.status == 3)
            expectRefusal(box, ended, 3, "album");
        else
            EXPECT_THAT(ended.err, AllOf(HasSubstr("track 1"), HasSubstr("track 2")));
    }
}

TEST(BadDisc, dataThatIsCutWhileItIsRead)
{
    const Sandbox box;
    const DiscPlan plan = plainDisc(3, 3000);
    const fs::path disc = makeDisc(box.discs(), plan);
    const auto rip = box.stoppedInFirstTrack(disc, "Ann Lee/First Light");
    fs::resize_file(box.discs() / "album.bin", std::uintmax_t{2352} * 5000);
    rip->send(SIGCONT);
    const Ended ended = rip->wait();
    ASSERT_EQ(ended.status, 1) << ended.all();
    EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
    EXPECT_THAT(ended.err, AllOf(Not(HasSubstr("track 1")), HasSubstr("track 2"), HasSubstr("track 3")));
    Tree files = treeOf(box.out());
    EXPECT_EQ(files["Ann Lee/First Light/Song 1.wav"], ripped(plan, 0));
    for (const char* name : {"Ann Lee/First Light/Song 2.wav", "Ann Lee/First Light/Song 3.wav"})
        EXPECT_LT(files[name].size(), ripped(plan, 1).size()) << name;
    EXPECT_THAT(ended.out, HasSubstr("\"whole\":1,\"broken\":2"));
}

TEST(BadDisc, anImageThatGoesAwayIsADiscThatWasTakenOut)
{
    const Sandbox box;
    const DiscPlan plan = plainDisc(3, 3000);
    const fs::path disc = makeDisc(box.discs(), plan);
    const auto rip = box.stoppedInFirstTrack(disc, "Ann Lee/First Light");
    fs::remove(box.discs() / "album.bin");
    fs::remove(disc);
    rip->send(SIGCONT);
    const Ended ended = rip->wait();
    EXPECT_TRUE(ended.status == 0 || ended.status == 1) << ended.all();
    // Whatever became of each track, it is said: a file is whole, or it is named.
    const Tree files = treeOf(box.out());
    for (std::size_t i = 0; i < 3; ++i) {
        const std::string name = "Ann Lee/First Light/" + plan.tracks[i].title + ".wav";
        const auto found = files.find(name);
        const bool whole = found != files.end() && found->second == ripped(plan, i);
        EXPECT_EQ(ended.err.find(name) == std::string::npos, whole) << name << ended.all();
    }
    EXPECT_EQ(box.strays(), "");
}

TEST(BadDisc, dataTracksAreNotRipped)
{
    const Sandbox box;
    DiscPlan plan = plainDisc(3, 20);
    plan.tracks[2] = {.sectors = 160, .audio = false};
    const fs::path disc = makeDisc(box.discs(), plan);
    expectRefusal(box, box.rip(disc, {"--tracks", "2-3"}), 2, "track 3");
    expectRefusal(box, box.rip(disc, {"--tracks", "4"}), 2, "track 4");
}

TEST(BadDisc, aHundredTitlesInASheet)
{
    const Sandbox box;
    const DiscPlan plan = plainDisc(99, 2);
    const fs::path disc = makeDisc(box.discs(), plan);
    const std::string good = textOf(disc);
    writeFile(disc, good + "  TRACK 100 AUDIO\r\n    TITLE \"Song 100\"\r\n    INDEX 01 00:02:48\r\n");
    expectRefusal(box, box.rip(disc), 3, "album.cue");
    writeFile(disc, good + "    TITLE \"Another for the last\"\r\n");
    const Ended ended = box.rip(disc, {"--tracks", "98-"});
    if (ended.status == 0) {
        EXPECT_EQ(treeOf(box.out()).size(), 2u);
    } else {
        expectRefusal(box, ended, 3, "album.cue");
    }
}

}
