#include "end_to_end/foreign_readers.h"
#include "end_to_end/sandbox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <set>
#include <thread>

namespace tonquay::test {

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

const std::string album = "Ann Lee/First Light/";

/// A `lame` of our own that is found before the machine's. It answers for its version; else `body` runs, in which
/// $wav and $mp3 are the files and "real" is the machine's encoder with the same arguments.
Environment fakeLame(const Sandbox& box, const std::string& body)
{
    const fs::path folder = box.root() / "run/bin";
    fs::create_directories(folder);
    writeFile(folder / "lame", "#!/bin/bash\n"
                               "[ \"$1\" = --version ] && exit 0\n"
                               "wav=${@: -2:1}; mp3=${@: -1}; args=(\"$@\")\n"
                               "real() { PATH=\"" +
                                   std::string(std::getenv("PATH")) + "\" command lame \"${args[@]}\"; }\n" + body +
                                   "\n");
    fs::permissions(folder / "lame", fs::perms::owner_all);
    return {{"PATH", folder.string() + ":" + std::getenv("PATH")}};
}

std::set<std::string> filesIn(const fs::path& folder)
{
    std::set<std::string> names;
    for (const auto& [name, bytes] : treeOf(folder))
        names.insert(name);
    return names;
}

std::string songs(int number, const char* ending)
{
    return album + "Song " + std::to_string(number) + ending;
}

/// Waits until a file is there.
bool appears(const fs::path& file)
{
    for (const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
         std::chrono::steady_clock::now() < end; std::this_thread::sleep_for(std::chrono::milliseconds(5)))
        if (fs::exists(file))
            return true;
    return false;
}

/// The process whose number stands in the file has gone, or is about to be reaped by whoever has to.
bool isGone(const fs::path& file)
{
    const std::vector<std::byte> bytes = readFile(file);
    std::string number;
    for (const std::byte b : bytes)
        if (b != std::byte{'\n'})
            number += static_cast<char>(b);
    for (const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
         std::chrono::steady_clock::now() < end; std::this_thread::sleep_for(std::chrono::milliseconds(5)))
        if (::kill(std::stoi(number), 0) != 0)
            return true;
    return false;
}

}

TEST(BadEncoder, oneThatIsNotThereIsSaidBeforeAnythingIsRead)
{
    const Sandbox box;
    const fs::path disc = makeDisc(box.discs(), plainDisc(1, 20));
    const struct {
        const char* what;
        const char* format;
        const char* package;
    } cases[] = {{"lame", "mp3", "package lame"}, {"oggenc", "ogg", "package vorbis-tools"}};
    for (const auto& c : cases) {
        const Ended ended = box.rip(disc, {"-f", c.format}, {{"PATH", (box.root() / "run").string()}});
        EXPECT_EQ(ended.status, 2) << c.what;
        EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
        EXPECT_THAT(ended.err, AllOf(HasSubstr(c.what), HasSubstr(c.package)));
        EXPECT_FALSE(fs::exists(box.out())) << c.what;
    }
    writeFile(box.root() / "run/lame", std::string("\x7f"
                                                   "ELF, but no more"));
    fs::permissions(box.root() / "run/lame", fs::perms::owner_all);
    const Ended broken = box.rip(disc, {"-f", "mp3", "--encoder", (box.root() / "run/lame").string()});
    EXPECT_EQ(broken.status, 2);
    EXPECT_THAT(broken.err, HasSubstr("run/lame: the encoder does not start"));
    EXPECT_FALSE(fs::exists(box.out()));
}

TEST(BadEncoder, oneThatFailsCostsItsTrackOnly)
{
    const struct {
        const char* what;
        const char* body; ///< for the second song
        const char* says;
    } cases[] = {
        {"a status", "exit 1", "the encoder ended with status 1"},
        {"a crash", "kill -SEGV $$", "the encoder was ended by signal 11"},
        {"nothing written", "exit 0", "was not made"},
        {"half", "real; truncate -s 5000 \"$mp3\"; exit 0", "Song 2.mp3"},
        {"another kind", "cp \"$wav\" \"$mp3\"", "Song 2.mp3"},
    };
    for (const auto& c : cases)
        for (const char* schedule : {"batch", "turbo"}) {
            SCOPED_TRACE(std::string(c.what) + ' ' + schedule);
            const Sandbox box;
            const fs::path disc = makeDisc(box.discs(), plainDisc(3, 75));
            const Environment lame =
                fakeLame(box, std::string("case $wav in *'Song 2'*) ") + c.body + ";; *) real;; esac");
            const Ended ended = box.rip(disc, {"-f", "mp3", "-s", schedule, "--json"}, lame);
            EXPECT_EQ(ended.status, 1) << ended.all();
            EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
            EXPECT_THAT(ended.err, AllOf(HasSubstr("track 2"), HasSubstr(c.says), Not(HasSubstr("track 1")),
                                         Not(HasSubstr("track 3"))));
            EXPECT_THAT(ended.out, HasSubstr("\"whole\":2,\"broken\":1,\"left\":0"));
            const auto blocks = id3v1Facts(box.out());
            EXPECT_TRUE(blocks.contains(songs(1, ".mp3")) && blocks.contains(songs(3, ".mp3")));
            EXPECT_EQ(box.strays(), "");
        }
}

TEST(BadEncoder, oneThatHangsIsWaitedForUntilTheSecondInterrupt)
{
    const Sandbox box;
    const fs::path disc = makeDisc(box.discs(), plainDisc(3, 75));
    const fs::path pid = box.root() / "run/pid";
    const fs::path inner = box.root() / "run/inner";
    const Environment lame =
        fakeLame(box, "sleep 1000 & echo $! > '" + inner.string() + ".new'; echo $$ > '" + pid.string() + "'; mv '" +
                          inner.string() + ".new' '" + inner.string() + "'; wait");
    const auto rip = box.startRip(disc, {"-f", "mp3", "-s", "single"}, lame);
    ASSERT_TRUE(appears(inner));
    rip->send(SIGINT);
    // What a stopped run says is said at its end only, so all there is to see is that it waits.
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_FALSE(rip->over());
    rip->send(SIGINT);
    const Ended ended = rip->wait();
    EXPECT_EQ(ended.status, 1) << ended.all();
    EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
    EXPECT_THAT(ended.err, AllOf(HasSubstr("track 1"), HasSubstr("unfinished"), HasSubstr("track 2"),
                                 HasSubstr("track 3"), HasSubstr("left out")));
    EXPECT_TRUE(isGone(pid));
    EXPECT_TRUE(isGone(inner));
    EXPECT_EQ(filesIn(box.out()), std::set<std::string>{songs(1, ".wav")});
    EXPECT_EQ(box.strays(), "");
}

TEST(BadEncoder, aStopFinishesAndTagsWhatWasBegun)
{
    const Sandbox box;
    const fs::path disc = makeDisc(box.discs(), plainDisc(3, 75));
    const fs::path started = box.root() / "run/started";
    const fs::path goOn = box.root() / "run/go";
    const Environment lame = fakeLame(box, "touch '" + started.string() + "'; while [ ! -e '" + goOn.string() +
                                               "' ]; do sleep 0.02; done; real");
    const auto rip = box.startRip(disc, {"-f", "mp3", "-s", "single", "--json"}, lame);
    ASSERT_TRUE(appears(started));
    rip->send(SIGINT);
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    writeFile(goOn, std::string());
    const Ended ended = rip->wait();
    EXPECT_EQ(ended.status, 1) << ended.all();
    EXPECT_THAT(ended.err, AllOf(Not(HasSubstr("track 1")), HasSubstr("track 2"), HasSubstr("track 3")));
    EXPECT_THAT(ended.out, HasSubstr("\"whole\":1,\"broken\":0,\"left\":2"));
    const auto blocks = id3v1Facts(box.out());
    ASSERT_EQ(blocks.size(), 1u);
    EXPECT_EQ(blocks.at(songs(1, ".mp3")).title, "Song 1");
    EXPECT_EQ(filesIn(box.out()), std::set<std::string>{songs(1, ".mp3")});
}

TEST(BadEncoder, anEncoderThatIsLateHasItsFileTagged)
{
    const Sandbox box;
    const fs::path disc = makeDisc(box.discs(), plainDisc(3, 75));
    // The first two end after the run has tagged what it could reach: their WAV files go with its sweep.
    const Environment lame =
        fakeLame(box, "case $wav in *'Song 3'*) real;; *) exec 3< \"$wav\"; while [ -e \"$wav\" ]; "
                      "do sleep 0.02; done; sleep 0.5; args[-2]=-; real <&3;; esac");
    const Ended ended = box.rip(disc, {"-f", "mp3", "-s", "turbo", "--json"}, lame);
    EXPECT_EQ(ended.status, 0) << ended.all();
    const auto blocks = id3v1Facts(box.out());
    EXPECT_EQ(blocks.size(), 3u);
    for (const auto& [path, facts] : blocks)
        EXPECT_EQ(path, album + facts.title + ".mp3");
    EXPECT_EQ(filesIn(box.out()), (std::set<std::string>{songs(1, ".mp3"), songs(2, ".mp3"), songs(3, ".mp3")}));
}

TEST(BadEncoder, whatStandsUnderTheNamesAlready)
{
    const Sandbox box;
    const fs::path disc = makeDisc(box.discs(), plainDisc(6, 75));
    fs::create_directories(box.out() / album);
    int number = 0;
    for (const std::size_t bytes :
         {std::size_t{0}, std::size_t{1}, std::size_t{126}, std::size_t{127}, std::size_t{128}})
        writeFile(box.out() / songs(++number, ".mp3"), std::string(bytes, 'T'));
    fs::permissions(box.out() / songs(1, ".mp3"), fs::perms::owner_read);
    fs::create_directory(box.out() / songs(6, ".mp3"));
    writeFile(box.root() / "Song 1.wav", std::string("mine"));

    const Ended ended = box.rip(disc, {"-f", "mp3", "-s", "turbo"});
    EXPECT_EQ(ended.status, 1) << ended.all();
    EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
    EXPECT_THAT(ended.err, AllOf(HasSubstr("track 6"), Not(HasSubstr("track 1:")), Not(HasSubstr("track 5"))));
    EXPECT_EQ(id3v1Facts(box.out()).size(), 5u);
    EXPECT_EQ(fs::file_size(box.root() / "Song 1.wav"), 4u) << "another folder's";
    fs::remove(box.root() / "Song 1.wav");
    EXPECT_EQ(box.strays(), "");
}

TEST(BadEncoder, homesAndEncodersWhoseNamesMislead)
{
    const Sandbox box;
    const fs::path disc = makeDisc(box.discs(), plainDisc(2, 75));
    const fs::path home = box.root() / "run/Ögg BLADE home/LAME & ogg";
    const fs::path tools = box.root() / "run/oggenc tools/xingmp bläde";
    fs::create_directories(home / "tmp");
    fs::create_directories(tools);
    const Environment places{{"HOME", home.string()},
                             {"XDG_DATA_HOME", (home / "data").string()},
                             {"XDG_CONFIG_HOME", (home / "config").string()},
                             {"XDG_STATE_HOME", (home / "state").string()},
                             {"TMPDIR", (home / "tmp").string()}};
    const fs::path output = home / "BladeEnc music";
    for (const char* format : {"mp3", "ogg"}) {
        const std::string name = format == std::string("mp3") ? "lame" : "oggenc";
        fs::create_symlink("/usr/bin/" + name, tools / name);
        for (const bool own : {false, true}) {
            SCOPED_TRACE(std::string(format) + (own ? ", an encoder of the user's own" : ""));
            Arguments more{"-f", format, "-s", "turbo", "--output", output.string()};
            if (own)
                more.insert(more.end(), {"--encoder", (tools / name).string()});
            const Ended ended = box.rip(disc, more, places);
            EXPECT_EQ(ended.status, 0) << ended.all();
            const std::ptrdiff_t lines = std::ranges::count(ended.err, '\n');
            // By its whole path either would be taken for an oggenc.
            EXPECT_EQ(lines, own && name == "lame" ? 1 : 0) << ended.err;
            EXPECT_EQ(filesIn(output), (std::set<std::string>{songs(1, ".") + format, songs(2, ".") + format}));
            fs::remove_all(output);
        }
    }
    EXPECT_TRUE(fs::is_empty(home / "tmp"));
}

}
