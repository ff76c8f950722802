#include "end_to_end/foreign_readers.h"
#include "end_to_end/mp3_rip.h"
#include "end_to_end/sandbox.h"
#include "end_to_end/simulated_disc.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace tonquay::test {

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;

constexpr const char* trackEvent = "\"event\":\"track\"";
constexpr const char* progressEvent = "\"event\":\"progress\"";

/// A script called `lame` before all others on PATH: it answers for its version, then does `body`, in which $mp3 is the
/// file to make and "$lame" the real encoder.
Environment withLame(const Sandbox& box, const std::string& body)
{
    const fs::path folder = box.root() / "run" / "bin";
    writeScript(folder / "lame", fakeEncoder(body));
    return {{"PATH", folder.string() + ":" + std::getenv("PATH")}};
}

/// A hold that scripts wait at: `read x < PATH` does not go on before open() was called.
class Gate {
public:
    explicit Gate(fs::path path) : path_(std::move(path))
    {
        EXPECT_EQ(::mkfifo(path_.c_str(), 0600), 0);
        // Open at both ends, so that neither side waits for the other to come.
        pipe_ = ::open(path_.c_str(), O_RDWR | O_CLOEXEC);
        EXPECT_GE(pipe_, 0);
    }
    ~Gate() { ::close(pipe_); }
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;

    std::string wait() const { return "read x < '" + path_.string() + "'\n"; }
    void open() const { EXPECT_EQ(::write(pipe_, "\n", 1), 1); }

private:
    fs::path path_;
    int pipe_ = -1;
};

/// Processes that scripts wrote into a file, one a word.
std::vector<std::string> processesIn(const fs::path& path)
{
    std::ifstream file(path);
    return {std::istream_iterator<std::string>(file), {}};
}

bool lives(const std::string& process)
{
    std::ifstream file("/proc/" + process + "/stat");
    std::string text;
    std::getline(file, text);
    // Who has ended and is not yet asked for is a zombie.
    const std::size_t name = text.rfind(')');
    return name != std::string::npos && name + 2 < text.size() && text[name + 2] != 'Z' && text[name + 2] != 'X';
}

int countOf(const std::string& text, const std::string& part)
{
    int count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

std::string lineOf(const std::string& text, const std::string& part)
{
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        if (line.find(part) != std::string::npos)
            return line;
    return {};
}

}

TEST(BadEncoder, isAskedForBeforeTheFirstSector)
{
    struct Case {
        const char* what;
        const char* format;
        std::function<Arguments(const fs::path& bin)> make; ///< fills the only folder on PATH; further arguments
        const char* says;
    };
    const auto script = [](const char* name, const char* body) {
        return [=](const fs::path& bin) {
            writeScript(bin / name, body);
            return Arguments{};
        };
    };
    const auto file = [](const char* text, fs::perms rights) {
        return [=](const fs::path& bin) {
            writeFile(bin / "lame", std::string(text));
            fs::permissions(bin / "lame", rights);
            return Arguments{};
        };
    };
    const auto nothing = [](const Arguments& more) { return [=](const fs::path&) { return more; }; };
    const std::vector<Case> cases{
        {"none", "mp3", nothing({}), "install the package lame"},
        {"none", "ogg", nothing({}), "install the package vorbis-tools"},
        {"no right to execute", "mp3", file("#!/bin/sh\n", fs::perms::owner_read), "install the package lame"},
        {"a folder", "mp3",
         [](const fs::path& bin) {
             fs::create_directory(bin / "lame");
             return Arguments{};
         },
         "install the package lame"},
        {"no program", "mp3",
         file("\x7f"
              "ELF of another system",
              fs::perms::owner_all),
         "no program that this system"},
        {"no interpreter", "mp3", file("#!/no/such/shell\n", fs::perms::owner_all), "/no/such/shell"},
        {"a broken library, say", "mp3", script("lame", "exit 127"), "ends with status 127"},
        {"crashes at once", "mp3", script("lame", "ulimit -c 0; kill -SEGV $$"), "ends with status 139"},
        {"named, but not there", "mp3", nothing({"--encoder", "/no/such/lame"}), "there is no such file"},
        {"named, but a folder", "mp3", nothing({"--encoder", "/usr"}), "no program that you may run"},
        {"named, but not on PATH", "mp3", nothing({"--encoder", "toolame"}), "no program of this name is on PATH"},
        {"named, but empty", "mp3", nothing({"--encoder", ""}), "--encoder"},
        {"named, for the other format", "ogg", nothing({"--encoder", machineProgram("lame")}), "--format mp3"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.what) + ", " + c.format);
        const Sandbox box;
        const fs::path bin = box.root() / "run" / "bin";
        fs::create_directory(bin);
        Arguments arguments{"rip", "--format", c.format, "--output", box.out().string()};
        const Arguments more = c.make(bin);
        arguments.insert(arguments.end(), more.begin(), more.end());
        arguments.push_back(makeDisc(box.discs(), plainDisc(1, 10)).string());
        const Ended ended = box.run(arguments, {{"PATH", bin.string()}});
        EXPECT_EQ(ended.status, 2) << ended.all();
        EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
        EXPECT_EQ(std::ranges::count(ended.err, '\n'), 1) << ended.err;
        EXPECT_THAT(ended.err, HasSubstr(c.says));
        EXPECT_EQ(ended.out, "");
        EXPECT_FALSE(fs::exists(box.out()));
        EXPECT_EQ(box.strays(), "");
    }
}

TEST(BadEncoder, costsNoOtherTrack)
{
    struct Fate {
        const char* script; ///< nullptr: as it should be
        const char* says;
        bool leavesFile;
    };
    const std::vector<Fate> fates{
        {nullptr, "", true},
        {"exit 1", "the encoder ended with status 1", false},
        {"ulimit -c 0; kill -SEGV $$", "the encoder was ended by signal 11", false},
        {"exit 0", "the file was not made", false},
        {R"("$lame" "$@"; truncate -s 8000 "$mp3"; exit 0)", "breaks off after 0.5 of 1.0 seconds", true},
        {R"("$lame" "$@"; exit 3)", "the encoder ended with status 3", true},
        {R"(: > "$mp3")", "the file is empty", true},
        {R"(echo "This is a trial version" > "$mp3")", "this is no MP3 file", true},
        {nullptr, "", true},
    };
    std::string body = "case $mp3 in\n";
    for (std::size_t i = 0; i < fates.size(); ++i)
        if (fates[i].script != nullptr)
            body += "*'Song " + std::to_string(i + 1) + ".mp3') " + fates[i].script + "; exit ;;\n";
    body += "esac\nexec \"$lame\" \"$@\"\n";

    for (const char* schedule : {"single", "batch", "turbo"}) {
        SCOPED_TRACE(schedule);
        const Sandbox box;
        const DiscPlan plan = plainDisc(static_cast<int>(fates.size()), 75);
        const fs::path disc = makeDisc(box.discs(), plan);
        const Ended ended = startMp3Rip(box, disc, {"--schedule", schedule}, withLame(box, body))->wait();
        EXPECT_EQ(ended.status, 1) << ended.all();
        EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
        EXPECT_THAT(ended.out, HasSubstr("2 files whole, 7 not"));
        Tree files = treeOf(box.out());
        for (std::size_t i = 0; i < fates.size(); ++i) {
            const std::string name = "Ann Lee/First Light/" + plan.tracks[i].title;
            const std::string line = lineOf(ended.err, "track " + std::to_string(i + 1) + ": ");
            SCOPED_TRACE(name);
            EXPECT_EQ(files.contains(name + ".mp3"), fates[i].leavesFile);
            if (fates[i].script == nullptr) {
                EXPECT_EQ(line, "");
                EXPECT_EQ(whyNoMp3(box, files[name + ".mp3"], plan, i), "");
            } else {
                EXPECT_THAT(line, AllOf(HasSubstr(name + ".mp3: "), HasSubstr(fates[i].says)));
                EXPECT_EQ(files.contains(name + ".wav"), line.find("its WAV file stays") != std::string::npos) << line;
            }
        }
        EXPECT_EQ(box.strays(), "");
    }
}

TEST(BadEncoder, thatHangsIsWaitedForAfterOneStopAndEndedByTheSecond)
{
    struct Case {
        const char* schedule;
        const char* deaf; ///< what the script does about the wish to end
        int begun;        ///< tracks that were read when all encoders that can be at work are
        int encoders;
    };
    const std::vector<Case> cases{{"single", "", 1, 1}, {"batch", "", 3, 1}, {"turbo", "trap '' TERM INT HUP\n", 3, 3}};
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.schedule) + " " + c.deaf);
        const Sandbox box;
        const DiscPlan plan = plainDisc(3, 20);
        const fs::path list = box.root() / "run" / "processes";
        const std::string body = std::string(c.deaf) + "sleep 100 &\necho $$ $! >> '" + list.string() + "'\nwait\n";
        const auto rip =
            startMp3Rip(box, makeDisc(box.discs(), plan), {"--json", "--schedule", c.schedule}, withLame(box, body));
        const auto processes = 2 * static_cast<std::size_t>(c.encoders);
        ASSERT_TRUE(waitFor([&] { return rip->over() || processesIn(list).size() >= processes; }));
        ASSERT_TRUE(rip->said(progressEvent));

        rip->send(SIGINT);
        // What is said later than this was said by a loop that has seen the signal.
        const int before = countOf(rip->output(), progressEvent);
        ASSERT_TRUE(rip->said(progressEvent, before + 2)) << "it goes on";
        for (const std::string& process : processesIn(list))
            EXPECT_TRUE(lives(process)) << "Stop ends no encoder";
        EXPECT_FALSE(rip->over());
        EXPECT_EQ(countOf(rip->output(), "\"event\":\"end\""), 0);

        rip->send(SIGINT);
        const Ended ended = rip->wait();
        EXPECT_EQ(ended.status, 1) << ended.all();
        EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
        for (int number = 1; number <= 3; ++number)
            EXPECT_THAT(lineOf(ended.err, "track " + std::to_string(number) + ": "),
                        HasSubstr(number <= c.begun ? "unfinished" : "left out"))
                << ended.err;
        EXPECT_EQ(countOf(ended.err, "\n"), 3) << ended.err;
        const std::vector<std::string> all = processesIn(list);
        EXPECT_EQ(all.size(), processes) << "no further one was started";
        for (const std::string& process : all)
            EXPECT_TRUE(waitFor([&] { return !lives(process); })) << process;
        EXPECT_EQ(box.strays(), "");
    }
}

TEST(BadEncoder, stopUnderTurboWaitsForTheEncodersInTheBackground)
{
    // A signal that comes when all tracks are read already proves nothing: once more, then.
    for (int tries = 0; tries < 20; ++tries) {
        const Sandbox box;
        const DiscPlan plan = plainDisc(4, 100);
        const Gate gate(box.root() / "run" / "gate");
        Environment variables =
            withLame(box, "case $mp3 in *'Song 1.mp3') " + gate.wait() + ";; esac\nexec \"$lame\" \"$@\"\n");
        const SimulatedDisc disc(box, plan, "slow_read 20000\n");
        variables.merge(disc.variables());
        Arguments more{"--json", "--schedule", "turbo", "--artist", "Ann Lee", "--album", "First Light"};
        for (std::size_t i = 0; i < 4; ++i)
            more.insert(more.end(), {"--title", std::to_string(i + 1) + "=" + plan.tracks[i].title});
        const auto rip = startMp3Rip(box, disc.device(), more, variables);
        ASSERT_TRUE(rip->said(trackEvent, 2)) << rip->output();
        rip->send(SIGINT);
        const std::string folder = "Ann Lee/First Light/";
        ASSERT_TRUE(waitFor([&] {
            const auto inHand = static_cast<std::size_t>(countOf(rip->output(), trackEvent)) - 1;
            std::error_code missing;
            return fs::file_size(box.out() / (folder + plan.tracks[inHand].title + ".wav"), missing) ==
                   ripped(plan, inHand).size();
        }));
        EXPECT_FALSE(rip->over()) << "the first encoder is not done";
        gate.open();
        const Ended ended = rip->wait();
        const int begun = countOf(ended.out, trackEvent);
        if (begun == 4)
            continue;

        EXPECT_EQ(ended.status, 1) << ended.all();
        EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
        Tree files = treeOf(box.out());
        for (int number = 1; number <= 4; ++number) {
            const auto track = static_cast<std::size_t>(number) - 1;
            const std::string name = folder + plan.tracks[track].title;
            const std::string line = lineOf(ended.err, "track " + std::to_string(number) + ": ");
            SCOPED_TRACE(name + "\n" + ended.all());
            if (number > begun) {
                EXPECT_THAT(line, HasSubstr("left out: the run was stopped"));
                EXPECT_FALSE(files.contains(name + ".mp3") || files.contains(name + ".wav"));
            } else if (number == begun && !line.empty()) {
                // It was in hand: it is read to its end, and nothing is started any more.
                EXPECT_THAT(line, AllOf(HasSubstr("not encoded: the run was stopped"), HasSubstr(name + ".wav")));
                EXPECT_EQ(files[name + ".wav"], ripped(plan, track));
            } else {
                EXPECT_EQ(line, "");
                EXPECT_EQ(whyNoMp3(box, files[name + ".mp3"], plan, track), "");
            }
        }
        EXPECT_EQ(box.strays(), "");
        return;
    }
    FAIL() << "the run could not be stopped between its tracks";
}

TEST(BadEncoder, thatIsLateForTheTaggerHasItsFileTaggedAllTheSame)
{
    const Sandbox box;
    const DiscPlan plan = plainDisc(3, 75);
    const fs::path disc = makeDisc(box.discs(), plan);
    // The WAV files go with the sweep, which is followed by the tagger; half a second later that is through.
    const Environment lame =
        withLame(box, "wav=\"${mp3%.mp3}.wav\"\n"
                      "case $wav in *'Song 3'*) exec \"$lame\" \"$@\";; esac\n"
                      "exec 3< \"$wav\"; left=500\n"
                      "while [ -e \"$wav\" ] && [ $left -gt 0 ]; do sleep 0.02; left=$((left - 1)); "
                      "done\n"
                      "sleep 0.5; exec \"$lame\" -h -b 128 - \"$mp3\" <&3");
    const Ended ended = startMp3Rip(box, disc, {"-s", "turbo", "-v"}, lame)->wait();
    EXPECT_EQ(ended.status, 0) << ended.all();
    EXPECT_EQ(countOf(ended.err, "tagged after its encoder has ended"), 2) << ended.err;
    const auto blocks = id3v1Facts(box.out());
    EXPECT_EQ(blocks.size(), 3u);
    for (const auto& [path, facts] : blocks)
        EXPECT_EQ(path, "Ann Lee/First Light/" + facts.title + ".mp3");
}

}
