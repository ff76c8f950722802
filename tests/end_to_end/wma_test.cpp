#include "end_to_end/foreign_readers.h"
#include "end_to_end/simulated_disc.h"
#include "support/run_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <csignal>

namespace tonquay::test {

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

const std::string album = "Ann Lee/First Light/";

std::vector<std::string> namesIn(const fs::path& folder)
{
    std::vector<std::string> names;
    for (const auto& [name, bytes] : treeOf(folder))
        names.push_back(name);
    return names;
}

/// What ffmpeg decodes, as bytes of the disc's own form; but for a file that is cut off it has nothing to complain of.
std::vector<std::byte> decoded(const fs::path& file, const Sandbox& box, bool cutOff = false)
{
    const fs::path raw = box.discs() / "decoded.raw";
    const ProgramEnd end =
        runProgram({"ffmpeg", "-v", "error", "-y", "-i", file.string(), "-f", "s16le", raw.string()});
    EXPECT_TRUE(cutOff || end.out.empty()) << file << end.out;
    return readFile(raw);
}

/// How far the left sides of two sounds go together: 1 is equal.
double likeness(const std::vector<std::byte>& one, const std::vector<std::byte>& other, std::size_t bytes)
{
    const auto sample = [](const std::vector<std::byte>& sound, std::size_t offset) {
        const auto bits = std::to_integer<unsigned>(sound[offset]) | std::to_integer<unsigned>(sound[offset + 1]) << 8;
        return static_cast<double>(static_cast<std::int16_t>(bits));
    };
    double both = 0;
    double ones = 0;
    double others = 0;
    for (std::size_t i = 0; i + 4 <= bytes; i += 4) {
        both += sample(one, i) * sample(other, i);
        ones += sample(one, i) * sample(one, i);
        others += sample(other, i) * sample(other, i);
    }
    return ones > 0 && others > 0 ? both / std::sqrt(ones * others) : 0;
}

}

TEST(Wma, aDiscBecomesTaggedFilesOfTheRateThatWasAskedFor)
{
    const Sandbox box;
    DiscPlan plan = plainDisc(2, 375);
    plan.genre = "Rock";
    plan.year = "1999";
    plan.comment = "Live at home";
    plan.tracks[1].title = "Łódź 東京 😀";
    const fs::path disc = makeDisc(box.discs(), plan);
    for (const std::string rate : {"32", "64", "128", "320"}) {
        SCOPED_TRACE(rate);
        fs::remove_all(box.out());
        const Ended ended = box.rip(disc, {"-f", "wma", "-b", rate});
        EXPECT_EQ(ended.status, 0) << ended.all();
        EXPECT_EQ(ended.err, "");
        EXPECT_THAT(namesIn(box.out()), ElementsAre(album + "Song 1.WMA", album + "Łódź 東京 😀.WMA"));
        for (std::size_t i = 0; i < 2; ++i) {
            const fs::path file = box.out() / (album + plan.tracks[i].title + ".WMA");
            SoundFacts facts = soundFacts(file);
            EXPECT_EQ(facts["codec"], "wmav2");
            EXPECT_EQ(std::stod("0" + facts["seconds"]), 5.0);
            EXPECT_NEAR(std::stod("0" + facts["kbps"]) / std::stod(rate), 1, 0.05);
            EXPECT_EQ(facts["title"], plan.tracks[i].title);
            EXPECT_EQ(facts["artist"], "Ann Lee");
            EXPECT_EQ(facts["album"], "First Light");
            EXPECT_EQ(facts["genre"], "Rock");
            EXPECT_EQ(facts["comment"], "Live at home");
            EXPECT_EQ(facts["wm/year"], "1999");
            const auto wanted = expectedSound(plan, i);
            const auto back = decoded(file, box);
            ASSERT_GE(back.size(), wanted.size());
            EXPECT_LE(back.size() - wanted.size(), 2u * 2048 * 4);
            if (rate == "320") {
                EXPECT_GT(likeness(wanted, back, wanted.size()), 0.8) << "noise, which the format takes hard";
            }
        }
        EXPECT_EQ(box.strays(), "");
    }
}

TEST(Wma, aDiscThatGoesInTheMiddleLeavesWhatWasReadAndIsNamed)
{
    const Sandbox box;
    const DiscPlan plan = plainDisc(2, 1500);
    const SimulatedDisc disc(box, plan, "slow_read 20000\n");
    const auto rip = box.startRip(disc.device(), {"--json", "-f", "wma", "-b", "320", "-n", "number", "-d", "none"},
                                  disc.variables());
    const fs::path file = box.out() / "Track1.WMA";
    ASSERT_TRUE(waitFor([&] { return fs::exists(file) && fs::file_size(file) > 60000; }));
    disc.turnPage("slow_read 20000\nremove_after 3\n");
    const Ended ended = rip->wait();
    EXPECT_EQ(ended.status, 1) << ended.all();
    EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
    EXPECT_THAT(ended.err, AllOf(HasSubstr("track 1"), HasSubstr("the disc was taken out"), HasSubstr("track 2")));
    const auto wanted = expectedSound(plan, 0);
    const auto back = decoded(file, box);
    EXPECT_GT(back.size(), 44100u * 4);
    EXPECT_LT(back.size(), wanted.size());
    EXPECT_GT(likeness(wanted, back, 44100u * 4), 0.8);
    EXPECT_THAT(disc.state(), HasSubstr("lock off"));
    EXPECT_EQ(box.strays(), "");
}

TEST(Wma, aFileThatCannotBeMadeCostsItsTrackOnly)
{
    const Sandbox box;
    const DiscPlan plan = plainDisc(3, 150);
    const fs::path disc = makeDisc(box.discs(), plan);
    fs::create_directories(box.out() / (album + "Song 2.WMA"));
    const Ended ended = box.rip(disc, {"-f", "wma"});
    EXPECT_EQ(ended.status, 1) << ended.all();
    EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
    EXPECT_THAT(ended.err, AllOf(HasSubstr("track 2"), HasSubstr("is a folder"), Not(HasSubstr("track 3"))));
    EXPECT_THAT(ended.out, HasSubstr("2 files whole, 1 not"));
    EXPECT_GE(decoded(box.out() / (album + "Song 3.WMA"), box).size(), expectedSound(plan, 2).size());
}

TEST(Wma, aDiskThatTakesNoMoreIsSaidAndWhatIsThereOfTheFilePlays)
{
    const Sandbox box;
    const DiscPlan plan = plainDisc(2, 1500);
    const fs::path disc = makeDisc(box.discs(), plan);
    const ProgramEnd end =
        runProgram({"sh", "-c", "ulimit -f 600; exec \"$@\"", "sh", TONQUAY_PROGRAM, "rip", "-q", "-f", "wma", "-b",
                    "320", "-n", "number", "-d", "none", "-o", box.out().string(), disc.string()},
                   {{"HOME", box.home().string()}, {"TMPDIR", (box.root() / "tmp").string()}});
    EXPECT_EQ(end.status, 1) << end.out;
    EXPECT_THAT(end.out, AllOf(HasSubstr("track 1"), HasSubstr("track 2"), HasSubstr("too large")));
    const auto back = decoded(box.out() / "Track1.WMA", box, true);
    EXPECT_GT(back.size(), 44100u * 4 * 3);
    EXPECT_GT(likeness(expectedSound(plan, 0), back, 44100u * 4), 0.8);
}

TEST(Wma, aRunThatIsKilledLeavesAFileThatPlays)
{
    const Sandbox box;
    const DiscPlan plan = plainDisc(1, 3000);
    const SimulatedDisc disc(box, plan, "slow_read 20000\n");
    const auto rip =
        box.startRip(disc.device(), {"-f", "wma", "-b", "320", "-n", "number", "-d", "none"}, disc.variables());
    const fs::path file = box.out() / "Track1.WMA";
    ASSERT_TRUE(waitFor([&] { return fs::exists(file) && fs::file_size(file) > 90000; }));
    rip->send(SIGKILL);
    rip->wait();
    const auto back = decoded(file, box);
    EXPECT_GT(back.size(), 44100u * 4 * 2);
    EXPECT_GT(likeness(expectedSound(plan, 0), back, 44100u * 4), 0.8);
}

TEST(Wma, whatHasNoPlaceInSuchARunIsRefused)
{
    const Sandbox box;
    const fs::path disc = makeDisc(box.discs(), plainDisc(1, 10));
    for (const Arguments& more : {Arguments{"--method", "burst"}, {"--keep-wav"}, {"-s", "turbo"}, {"-b", "7"}}) {
        Arguments words{"-f", "wma"};
        words.insert(words.end(), more.begin(), more.end());
        const Ended ended = box.rip(disc, words);
        EXPECT_EQ(ended.status, 2) << more.front();
        EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
        EXPECT_FALSE(fs::exists(box.out()));
    }
}

}
