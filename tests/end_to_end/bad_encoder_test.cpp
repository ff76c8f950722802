#include "end_to_end/mp3_rip.h"
#include "end_to_end/sandbox.h"
#include "end_to_end/simulated_disc.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace tonquay::test {

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

/// A script called `lame` before all others on PATH: it answers for its version, then does `body`, in which $mp3 is the
/// file to make and "$lame" the real encoder.
Environment withLame(const Sandbox& box, const std::string& body)
{
    const fs::path folder = box.root() / "run" / "bin";
    writeScript(folder / "lame", fakeEncoder(body));
    return {{"PATH", folder.string() + ":" + std::getenv("PATH")}};
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
    const auto nothing = [](Arguments more) { return [=](const fs::path&) { return more; }; };
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
        {R"("$lame" "$@"; truncate -s 8000 "$mp3"; exit 0)", "", true},
        {R"("$lame" "$@"; exit 3)", "the encoder ended with status 3", true},
        {R"(: > "$mp3")", "", true},
        {R"(echo "This is a trial version" > "$mp3")", "", true},
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

}
