#include "end_to_end/simulated_disc.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <csignal>
#include <optional>
#include <sstream>

namespace tonquay::test {

namespace {

using testing::HasSubstr;

constexpr std::array methods{"normal", "synchronous", "burst"};

/// The lines of a run with --json that tell of one event.
std::vector<nlohmann::json> events(const std::string& out, const std::string& event)
{
    std::vector<nlohmann::json> found;
    std::istringstream lines(out);
    for (std::string line; std::getline(lines, line);)
        if (auto json = nlohmann::json::parse(line); json.at("event") == event)
            found.push_back(std::move(json));
    return found;
}

}

TEST(Methods, everyOneReadsImagesAndDrivesByteForByte)
{
    DiscPlan plan = plainDisc(3, 300);
    plan.tracks[1].pregap = 20;
    for (const char* method : methods)
        for (const bool drive : {false, true}) {
            SCOPED_TRACE(std::string(method) + (drive ? ", drive" : ", image"));
            const Sandbox box;
            std::optional<SimulatedDisc> simulated;
            Arguments options{"--method", method, "--names", "number", "--folders", "none"};
            Ended ended;
            if (drive) {
                simulated.emplace(box, plan);
                ended = box.rip(simulated->device(), options, simulated->variables());
            } else {
                ended = box.rip(makeDisc(box.discs(), plan), options);
            }
            EXPECT_EQ(ended.status, 0) << ended.all();
            EXPECT_EQ(ended.err, "");
            Tree wanted;
            for (std::size_t i = 0; i < plan.tracks.size(); ++i)
                wanted["Track" + std::to_string(i + 1) + ".wav"] = ripped(plan, i);
            EXPECT_EQ(difference(treeOf(box.out()), wanted), "");
            EXPECT_EQ(box.strays(), "");
        }
}

TEST(Methods, aPartIsCutAtItsSamples)
{
    struct Case {
        Arguments part;
        std::int64_t firstByte, endByte;
    };
    constexpr std::int64_t second = 176400;
    constexpr std::int64_t all = 1000 * 2352;
    const Case cases[] = {
        {{"--from", "0:03", "--to", "0:07"}, 3 * second, 7 * second},
        {{"--from", "0:11"}, 11 * second, all},
        {{"--to", "0:01"}, 0, second},
        {{"--from", "0:00", "--to", "9:59"}, 0, all},
    };
    const DiscPlan plan = plainDisc(3, 1000);
    for (const char* method : methods)
        for (const Case& c : cases) {
            SCOPED_TRACE(std::string(method) + " " + c.part[0] + " " + c.part[1]);
            const Sandbox box;
            Arguments options{"--method", method, "-t", "2", "--names", "number", "--folders", "none"};
            options.insert(options.end(), c.part.begin(), c.part.end());
            const Ended ended = box.rip(makeDisc(box.discs(), plan), options);
            EXPECT_EQ(ended.status, 0) << ended.all();
            const auto sound = expectedSound(plan, 1);
            const Tree wanted{{"Track2.wav", waveFile({sound.begin() + c.firstByte, sound.begin() + c.endByte})}};
            EXPECT_EQ(difference(treeOf(box.out()), wanted), "");
        }
}

TEST(Methods, whatCannotBeReadIsNamedAndCostsItsTrackOnly)
{
    const DiscPlan plan = plainDisc(3, 450);
    for (const char* method : methods) {
        SCOPED_TRACE(method);
        const Sandbox box;
        const SimulatedDisc disc(box, plan, "bad 600\n");
        const Ended ended = box.rip(
            disc.device(), {"--json", "--method", method, "--names", "number", "--folders", "none"}, disc.variables());
        EXPECT_EQ(ended.status, 1) << ended.all();
        EXPECT_THAT(ended.err, HasSubstr("given up at 0:02"));
        EXPECT_TRUE(isProblemLines(ended.err));
        const auto verdicts = events(ended.out, "verdict");
        ASSERT_EQ(verdicts.size(), 3U);
        EXPECT_EQ(verdicts[0].at("whole"), true);
        EXPECT_EQ(verdicts[1].at("whole"), false);
        EXPECT_EQ(verdicts[2].at("whole"), true);
        const Tree files = treeOf(box.out());
        EXPECT_TRUE(files.at("Track1.wav") == ripped(plan, 0));
        EXPECT_TRUE(files.at("Track3.wav") == ripped(plan, 2));
        EXPECT_EQ(files.at("Track2.wav").size(), ripped(plan, 1).size());
    }
}

TEST(Methods, jitterIsRepairedByNormalAndTold)
{
    const DiscPlan plan = plainDisc(2, 450);
    const Sandbox box;
    const SimulatedDisc disc(box, plan, "jitter 3 200\n");
    const Arguments options{"--json", "--names", "number", "--folders", "none", "--method"};
    const auto rip = [&](const char* method) {
        Arguments all = options;
        all.emplace_back(method);
        return box.rip(disc.device(), all, disc.variables());
    };
    const Tree wanted{{"Track1.wav", ripped(plan, 0)}, {"Track2.wav", ripped(plan, 1)}};
    EXPECT_EQ(rip("burst").status, 0);
    EXPECT_NE(difference(treeOf(box.out()), wanted), "") << "the drive does miss its place";
    const Ended normal = rip("normal");
    EXPECT_EQ(normal.status, 0) << normal.all();
    EXPECT_EQ(difference(treeOf(box.out()), wanted), "");
    bool repaired = false;
    for (const auto& verdict : events(normal.out, "verdict"))
        repaired = repaired || !verdict.at("repaired").empty();
    EXPECT_TRUE(repaired);
}

TEST(Methods, aStopBreaksTheTrackInHandOffAndNamesIt)
{
    const DiscPlan plan = plainDisc(2, 3000);
    const Sandbox box;
    const SimulatedDisc disc(box, plan, "slow_read 50000\n");
    const auto child = box.startRip(
        disc.device(), {"--json", "--method", "burst", "--names", "number", "--folders", "none"}, disc.variables());
    ASSERT_TRUE(child->said("\"track\""));
    child->send(SIGINT);
    const Ended ended = child->wait();
    EXPECT_EQ(ended.status, 1) << ended.all();
    EXPECT_THAT(ended.err, HasSubstr("track 1: "));
    EXPECT_THAT(ended.err, HasSubstr("stopped before its end"));
    EXPECT_THAT(ended.err, HasSubstr("track 2: "));
}

TEST(Analog, recordsEachTrackAsItIsHeardAndJudgesItsLength)
{
    DiscPlan plan = plainDisc(3, 100);
    const Sandbox box;
    const Ended ended =
        box.rip(makeDisc(box.discs(), plan), {"--json", "--method", "analog", "--names", "number", "--folders", "none"},
                {{"SDL_AUDIODRIVER", "dummy"}});
    EXPECT_EQ(ended.status, 0) << ended.all();
    const Tree files = treeOf(box.out());
    ASSERT_EQ(files.size(), 3U);
    constexpr std::ptrdiff_t header = 44;
    constexpr std::ptrdiff_t mostLonger = 17640; // 100 ms
    const std::vector<std::byte> disc = [&] {
        std::vector<std::byte> all;
        for (std::size_t i = 0; i < plan.tracks.size(); ++i) {
            const auto sound = expectedSound(plan, i);
            all.insert(all.end(), sound.begin(), sound.end());
        }
        return all;
    }();
    for (std::ptrdiff_t i = 0; i < 3; ++i) {
        SCOPED_TRACE("track " + std::to_string(i + 1));
        const auto& file = files.at("Track" + std::to_string(i + 1) + ".wav");
        const std::ptrdiff_t begin = i * 100 * 2352;
        const std::ptrdiff_t recorded = std::ssize(file) - header;
        EXPECT_GE(recorded, 100 * 2352 - 706); // the millisecond that the place is told in, and the sample
        EXPECT_LE(recorded, 100 * 2352 + mostLonger);
        const std::vector<std::byte> heard(disc.begin() + begin,
                                           disc.begin() + std::min(begin + recorded, std::ssize(disc)));
        EXPECT_TRUE(file == waveFile(heard)) << "what was played, from the track's first sample on";
    }
    for (const auto& verdict : events(ended.out, "verdict")) {
        EXPECT_EQ(verdict.at("whole"), true);
        EXPECT_THAT(verdict.dump(), HasSubstr("recorded what was played"));
    }
    EXPECT_EQ(box.strays(), "");
}

TEST(Analog, aStopKeepsWhatWasRecordedAndSaysHowLittleThatIs)
{
    const Sandbox box;
    const auto child = box.startRip(makeDisc(box.discs(), plainDisc(2, 3000)),
                                    {"--json", "--method", "analog", "--names", "number", "--folders", "none"},
                                    {{"SDL_AUDIODRIVER", "dummy"}});
    ASSERT_TRUE(child->said("\"progress\"", 6));
    child->send(SIGINT);
    const Ended ended = child->wait();
    EXPECT_EQ(ended.status, 1) << ended.all();
    EXPECT_THAT(ended.err, HasSubstr("seconds were recorded, the track has 40.0"));
    EXPECT_THAT(ended.err, HasSubstr("track 2: "));
    const Tree files = treeOf(box.out());
    ASSERT_EQ(files.size(), 1U);
    EXPECT_GT(files.at("Track1.wav").size(), 20'000U);
    EXPECT_EQ(box.strays(), "");
}

}
