#include "end_to_end/simulated_disc.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <csignal>

namespace tonquay::test {

namespace {

using testing::AllOf;
using testing::HasSubstr;

std::string fileOf(int number)
{
    return "Ann Lee/First Light/Song " + std::to_string(number) + ".wav";
}

/// A drive names nothing, so the disc's names are given.
Arguments naming(const DiscPlan& plan, Arguments more = {})
{
    more.insert(more.end(), {"--artist", plan.artist, "--album", plan.album});
    for (std::size_t i = 0; i < plan.tracks.size(); ++i)
        more.insert(more.end(), {"--title", std::to_string(i + 1) + "=" + plan.tracks[i].title});
    return more;
}

}

TEST(Drive, discsAreReadByteForByte)
{
    struct Case {
        const char* what;
        DiscPlan plan;
    };
    std::vector<Case> cases{
        {"audio", plainDisc(3, 120)},
        {"lengths of whole blocks", plainDisc(2, 1250)},
        {"data first", plainDisc(3, 90)},
        {"pregaps", plainDisc(3, 90)},
    };
    cases[2].plan.tracks[0].audio = false;
    cases[3].plan.tracks[1].pregap = 30;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const Sandbox box;
        const SimulatedDisc disc(box, c.plan);
        const Ended ended = box.rip(disc.device(), naming(c.plan), disc.variables());
        EXPECT_EQ(ended.status, 0) << ended.all();
        EXPECT_EQ(ended.err, "");
        Tree wanted;
        for (std::size_t i = 0; i < c.plan.tracks.size(); ++i)
            if (c.plan.tracks[i].audio)
                wanted[fileOf(static_cast<int>(i) + 1)] = ripped(c.plan, i);
        EXPECT_EQ(difference(treeOf(box.out()), wanted), "");
        EXPECT_EQ(box.strays(), "");
    }
}

TEST(Drive, isListedWithWhatIsInIt)
{
    const Sandbox box;
    const SimulatedDisc disc(box, plainDisc(2, 75), "vendor ACME\nproduct READER\n");
    const Ended ended = box.run({"list", "--json", disc.device().string()}, disc.variables());
    ASSERT_EQ(ended.status, 0) << ended.all();
    const auto json = nlohmann::json::parse(ended.out);
    ASSERT_EQ(json.at("tracks").size(), 2u);
    EXPECT_EQ(json.at("tracks").at(1).at("first_sector"), 75);
    EXPECT_EQ(json.at("tracks").at(1).at("sectors"), 75);
}

TEST(Drive, aBadSectorCostsItsTrackOnly)
{
    const Sandbox box;
    const DiscPlan plan = plainDisc(3, 100);
    const SimulatedDisc disc(box, plan, "bad 150\n");
    const Ended ended = box.rip(disc.device(), naming(plan), disc.variables());
    EXPECT_EQ(ended.status, 1) << ended.all();
    EXPECT_THAT(ended.err, AllOf(HasSubstr("track 2"), HasSubstr("sector 150 cannot be read")));
    EXPECT_TRUE(isProblemLines(ended.err));
    EXPECT_THAT(ended.out, HasSubstr("2 files whole, 1 not"));
    Tree files = treeOf(box.out());
    if (const auto broken = files.find(fileOf(2)); broken != files.end()) {
        EXPECT_NE(broken->second, ripped(plan, 1));
        files.erase(broken);
    }
    EXPECT_EQ(difference(files, {{fileOf(1), ripped(plan, 0)}, {fileOf(3), ripped(plan, 2)}}), "");
}

TEST(Drive, theDiscTornOutIsSaidAndTheRestIsNamed)
{
    const Sandbox box;
    const DiscPlan plan = plainDisc(3, 300);
    const SimulatedDisc disc(box, plan, "slow_read 20000\n");
    const auto rip = box.startRip(disc.device(), naming(plan, {"--json"}), disc.variables());
    ASSERT_TRUE(rip->said("\"event\":\"track\"", 2));
    disc.turnPage("slow_read 20000\nremove_after 3\n");
    const Ended ended = rip->wait();
    EXPECT_EQ(ended.status, 1) << ended.all();
    EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
    EXPECT_THAT(ended.err, AllOf(HasSubstr("track 2"), HasSubstr("the disc was taken out"), HasSubstr("track 3")));
    Tree files = treeOf(box.out());
    EXPECT_EQ(files[fileOf(1)], ripped(plan, 0));
    EXPECT_NE(files[fileOf(2)], ripped(plan, 1));
    EXPECT_FALSE(files.contains(fileOf(3)) && files[fileOf(3)].size() > 44);
    EXPECT_EQ(box.strays(), "");
}

TEST(Drive, theDoorIsLockedWhileTracksAreReadAndOpensAfterwards)
{
    const std::vector<std::pair<const char*, int>> ends{{"the run's own end", 0}, {"Stop", 1}, {"broken off", 2}};
    for (const auto& [what, signals] : ends) {
        SCOPED_TRACE(what);
        const Sandbox box;
        const DiscPlan plan = plainDisc(2, 200);
        const SimulatedDisc disc(box, plan, "slow_read 30000\n");
        const auto rip = box.startRip(disc.device(), naming(plan, {"--json"}), disc.variables());
        ASSERT_TRUE(rip->said("\"event\":\"progress\""));
        EXPECT_THAT(disc.state(), HasSubstr("lock on"));
        for (int i = 0; i < signals; ++i)
            rip->send(SIGINT);
        EXPECT_EQ(rip->wait().status, signals == 0 ? 0 : 1);
        EXPECT_THAT(disc.state(), HasSubstr("lock off"));
    }
}

TEST(Drive, withoutADiscToReadTellsWhatToDo)
{
    struct Case {
        const char* what;
        const char* lines;
        const char* says;
    };
    const std::vector<Case> cases{
        {"no disc", "medium out\n", "No disc is in"},
        {"door open", "door open\n", "The door is open"},
        {"another program", "fault busy\n", "Another program holds"},
        {"no right", "fault denied\n", "No permission"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const Sandbox box;
        const DiscPlan plan = plainDisc(1, 10);
        const SimulatedDisc disc(box, plan, c.lines);
        const Ended ended = box.rip(disc.device(), {}, disc.variables());
        EXPECT_EQ(ended.status, 3) << ended.all();
        EXPECT_TRUE(isProblemLines(ended.err));
        EXPECT_THAT(ended.err, HasSubstr(c.says));
        EXPECT_FALSE(std::filesystem::exists(box.out()));
    }
    const Sandbox box;
    DiscPlan plan = plainDisc(1, 10);
    plan.tracks[0].audio = false;
    const SimulatedDisc disc(box, plan);
    const Ended ended = box.rip(disc.device(), {}, disc.variables());
    EXPECT_EQ(ended.status, 3) << ended.all();
    EXPECT_THAT(ended.err, HasSubstr("holds data only"));
}

TEST(Drive, theListTellsWhatADriveCanDoAndWhyItGivesNoDisc)
{
    struct Case {
        const char* lines;
        const char* problem; ///< its first words; empty: an audio disc is in
    };
    const std::vector<Case> cases{
        {"", ""},
        {"fault denied\n", "no-permission: No permission to read /dev/sr0, which the group"},
        {"fault busy\n", "busy: Another program holds /dev/sr0"},
        {"door open\n", "tray-open: The door is open"},
        {"medium out\n", "no-disc: No disc is in"},
    };
    const auto listed = [](const Sandbox& box, const SimulatedDisc& disc) {
        const Ended ended = box.run({"drives", "--json"}, disc.variables());
        EXPECT_EQ(ended.status, 0) << ended.all();
        return nlohmann::json::parse(ended.out).at(0);
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.problem);
        const Sandbox box;
        const SimulatedDisc disc(box, plainDisc(1, 10), std::string("device /dev/sr0\nvendor ACME\n") + c.lines);
        const auto drive = listed(box, disc);
        EXPECT_EQ(drive.at("disc"), *c.problem == '\0');
        EXPECT_EQ(drive.at("problem").is_null(), *c.problem == '\0');
        if (*c.problem != '\0') {
            EXPECT_THAT(drive.at("problem").get<std::string>(), testing::StartsWith(c.problem));
        }
        if (std::string(c.lines).find("fault") == std::string::npos) {
            EXPECT_EQ(drive.at("vendor"), "ACME");
            EXPECT_EQ(drive.at("max_speed_kbps"), 8467);
            EXPECT_EQ(drive.at("cache_kb"), 2048);
            for (const auto& [ability, has] : drive.at("capabilities").items())
                EXPECT_TRUE(has.get<bool>()) << ability;
        }
    }
    const Sandbox box;
    DiscPlan data = plainDisc(1, 10);
    data.tracks[0].audio = false;
    const SimulatedDisc disc(box, data, "device /dev/sr0\n");
    EXPECT_THAT(listed(box, disc).at("problem").get<std::string>(), testing::StartsWith("data-disc: "));
}

TEST(Stop, finishesTheTrackInHandAndLeavesOutTheRest)
{
    const Sandbox box;
    const DiscPlan plan = plainDisc(3, 300);
    const SimulatedDisc disc(box, plan, "slow_read 30000\n");
    const auto rip = box.startRip(disc.device(), naming(plan, {"--json"}), disc.variables());
    ASSERT_TRUE(rip->said("\"event\":\"progress\""));
    rip->send(SIGINT);
    const Ended ended = rip->wait();
    EXPECT_EQ(ended.status, 1) << ended.all();
    EXPECT_EQ(difference(treeOf(box.out()), {{fileOf(1), ripped(plan, 0)}}), "");
    EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
    EXPECT_THAT(ended.err, AllOf(HasSubstr("track 2"), HasSubstr(fileOf(2)), HasSubstr("track 3"),
                                 testing::Not(HasSubstr("track 1"))));
    EXPECT_THAT(ended.out, HasSubstr("\"whole\":1,\"broken\":0,\"left\":2"));
    EXPECT_EQ(box.strays(), "");
}

TEST(Stop, theSecondOneEndsAtOnceAndNamesWhatIsUnfinished)
{
    const Sandbox box;
    const DiscPlan plan = plainDisc(3, 500);
    const SimulatedDisc disc(box, plan, "slow_read 100000\n");
    const auto rip = box.startRip(disc.device(), naming(plan, {"--json"}), disc.variables());
    ASSERT_TRUE(rip->said("\"event\":\"progress\""));
    rip->send(SIGINT);
    rip->send(SIGTERM);
    const Ended ended = rip->wait();
    EXPECT_EQ(ended.status, 1) << ended.all();
    EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
    EXPECT_THAT(ended.err, AllOf(HasSubstr(fileOf(1)), HasSubstr("unfinished")));
    const Tree files = treeOf(box.out());
    for (const auto& [name, bytes] : files)
        EXPECT_NE(bytes, ripped(plan, 0)) << name;
    EXPECT_LE(files.size(), 1u);
    EXPECT_EQ(box.strays(), "") << "the private folder is gone";
}

}
