#include "end_to_end/sandbox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <sstream>

namespace tonquay::test {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;
using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;

std::vector<std::string> linesOf(const std::string& text)
{
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

std::vector<std::string> eventsOf(const std::string& text)
{
    std::vector<std::string> events;
    for (const std::string& line : linesOf(text)) {
        const Json json = Json::parse(line, nullptr, false);
        events.push_back(json.is_discarded() ? "no JSON: " + line : json.value("event", "no event"));
    }
    return events;
}

}

TEST(Report, aLineForEachTrackAndOneForAll)
{
    const Sandbox box;
    const Ended ended = box.rip(makeDisc(box.discs(), plainDisc(2, 75)));
    EXPECT_EQ(ended.err, "");
    const auto lines = linesOf(ended.out);
    ASSERT_EQ(lines.size(), 3u) << ended.all();
    for (int number = 1; number <= 2; ++number)
        EXPECT_THAT(lines[static_cast<std::size_t>(number) - 1],
                    MatchesRegex(" " + std::to_string(number) + "  .*/out/Ann Lee/First Light/Song " +
                                 std::to_string(number) + ".wav  1.0 s  .*x  [0-9A-F]{8}  whole"));
    EXPECT_THAT(lines[2], MatchesRegex("2 files whole; 0:02 of sound in [0-9.]+ s, .*x"));
}

TEST(Report, quietLeavesTheSummary)
{
    const Sandbox box;
    const Ended ended = box.rip(makeDisc(box.discs(), plainDisc(2, 5)), {"--quiet"});
    EXPECT_EQ(linesOf(ended.out).size(), 1u) << ended.all();
    EXPECT_THAT(ended.out, HasSubstr("2 files whole"));
    EXPECT_EQ(ended.err, "");
}

TEST(Report, verboseAddsEveryDiagnosticLine)
{
    const Sandbox box;
    DiscPlan plan = plainDisc(1, 5);
    plan.tracks[0].title = "a~b";
    const fs::path disc = makeDisc(box.discs(), plan);
    const Ended silent = box.rip(disc);
    const Ended verbose = box.rip(disc, {"--verbose"});
    EXPECT_EQ(silent.err, "");
    EXPECT_THAT(verbose.err, HasSubstr("names: title 1 \"a~b\" is handed over as \"a-b\""));
    EXPECT_EQ(linesOf(silent.out).size(), linesOf(verbose.out).size());
}

TEST(Report, jsonTellsTheRunLineByLine)
{
    const Sandbox box;
    const DiscPlan plan = plainDisc(2, 2000);
    const fs::path disc = makeDisc(box.discs(), plan);
    const Ended ended = box.rip(disc, {"--json"});
    EXPECT_EQ(ended.status, 0) << ended.all();
    std::vector<std::string> events = eventsOf(ended.out);
    std::erase(events, "progress");
    EXPECT_THAT(events, testing::ElementsAre("run", "track", "verdict", "track", "verdict", "end"));

    const auto lines = linesOf(ended.out);
    const Json run = Json::parse(lines.front());
    EXPECT_EQ(run.at("tracks"), 2);
    EXPECT_EQ(run.at("format"), "wav");
    EXPECT_EQ(run.at("folder"), (box.out() / "Ann Lee/First Light").string());
    const Json track = Json::parse(lines[1]);
    EXPECT_EQ(track.at("number"), 1);
    EXPECT_EQ(track.at("title"), "Song 1");
    EXPECT_EQ(track.at("path"), (box.out() / "Ann Lee/First Light/Song 1.wav").string());
    const Json end = Json::parse(lines.back());
    EXPECT_EQ(end.at("whole"), 2);
    EXPECT_EQ(end.at("broken"), 0);
    EXPECT_EQ(end.at("left"), 0);

    // Of a longer run, or of one that is quiet, the progress lines are all that differs.
    const Ended quiet = box.rip(disc, {"--json", "--quiet"});
    EXPECT_THAT(eventsOf(quiet.out), testing::ElementsAre("run", "track", "verdict", "track", "verdict", "end"));
}

TEST(Report, listShowsTheTable)
{
    const Sandbox box;
    DiscPlan plan = plainDisc(2, 150);
    plan.genre = "Rock";
    plan.year = "1999";
    plan.comment = "live";
    plan.tracks[1].title = "Пісня 2";
    plan.tracks.push_back({.sectors = 200, .audio = false});
    const fs::path disc = makeDisc(box.discs(), plan);

    const Ended text = box.run({"list", disc.string()});
    EXPECT_EQ(text.status, 0) << text.all();
    for (const char* part : {"Ann Lee", "First Light", "0:02", "Song 1", "Пісня 2"})
        EXPECT_THAT(text.out, HasSubstr(part));

    const Ended json = box.run({"list", "--json", disc.string()});
    ASSERT_EQ(json.status, 0) << json.all();
    const auto table = expectedTable(plan);
    const Json expected{
        {"artist", "Ann Lee"},
        {"album", "First Light"},
        {"year", "1999"},
        {"genre", "Rock"},
        {"comment", "live"},
        {"tracks",
         {{{"number", 1}, {"seconds", 2}, {"title", "Song 1"}, {"audio", true}, {"first_sector", 0}, {"sectors", 150}},
          {{"number", 2},
           {"seconds", 2},
           {"title", "Пісня 2"},
           {"audio", true},
           {"first_sector", 150},
           {"sectors", table[1].sectorCount}},
          {{"number", 3}, {"seconds", 3}, {"title", ""}, {"audio", false}, {"first_sector", 300}, {"sectors", 200}}}},
    };
    EXPECT_EQ(Json::parse(json.out), expected);
    EXPECT_EQ(treeOf(box.out()).size(), 0u);
}

TEST(Report, openedImagesAreDrivesByLetter)
{
    const Sandbox box;
    DiscPlan first = plainDisc(1, 4);
    DiscPlan second = plainDisc(2, 4);
    second.name = "second";
    second.album = "Dusk";
    const fs::path one = makeDisc(box.discs(), first);
    const fs::path two = makeDisc(box.discs(), second);
    const Environment opened{{"TONQUAY_DISCS", one.string() + ":" + two.string()}};

    const Ended drives = box.run({"drives", "--json"}, opened);
    EXPECT_EQ(drives.status, 0) << drives.all();
    const Json json = Json::parse(drives.out);
    ASSERT_GE(json.size(), 2u);
    EXPECT_EQ(json[0].at("letter"), "D");
    EXPECT_EQ(json[1].at("letter"), "E");
    EXPECT_EQ(json[1].at("path"), two.string());
    EXPECT_EQ(json[1].at("image"), true);
    EXPECT_EQ(json[1].at("disc"), true);
    EXPECT_TRUE(json[1].at("problem").is_null());
    for (const char* key : {"vendor", "product", "revision", "capabilities", "max_speed_kbps", "cache_kb"})
        EXPECT_TRUE(json[0].contains(key)) << key;
    EXPECT_THAT(box.run({"drives"}, opened).out, HasSubstr(two.string()));

    struct Choice {
        const char* disc;
        const char* folder;
        const DiscPlan& plan;
    };
    for (const Choice& c :
         {Choice{"", "First Light", first}, Choice{"d", "First Light", first}, Choice{"E:", "Dusk", second}}) {
        const Ended ended = box.rip(c.disc, {}, opened);
        EXPECT_EQ(ended.status, 0) << c.disc << ended.all();
        Tree wanted;
        for (std::size_t i = 0; i < c.plan.tracks.size(); ++i)
            wanted["Ann Lee/" + (c.folder + ("/" + c.plan.tracks[i].title)) + ".wav"] = ripped(c.plan, i);
        EXPECT_EQ(difference(treeOf(box.out()), wanted), "") << c.disc;
        fs::remove_all(box.out());
    }
    const Ended none = box.rip("Q", {}, opened);
    EXPECT_EQ(none.status, 3) << none.all();
    EXPECT_TRUE(isProblemLines(none.err));
}

TEST(Report, aFirstOpenedImageThatIsBrokenDoesNotHideTheNext)
{
    const Sandbox box;
    const fs::path disc = makeDisc(box.discs(), plainDisc(1, 4));
    const Environment opened{{"TONQUAY_DISCS", (box.discs() / "none.cue").string() + ":" + disc.string()}};
    EXPECT_EQ(box.rip("", {}, opened).status, 0);
    const Json drives = Json::parse(box.run({"drives", "--json"}, opened).out);
    EXPECT_EQ(drives.at(0).at("disc"), false);
    EXPECT_THAT(drives.at(0).at("problem").get<std::string>(), HasSubstr("none.cue"));
}

TEST(Report, wrongCommandLinesAreOneLineAndStatusTwo)
{
    const Sandbox box;
    const std::string disc = makeDisc(box.discs(), plainDisc(3, 4)).string();
    const std::vector<Arguments> cases{
        {},
        {"burn"},
        {"rip", "--bogus", disc},
        {"rip", "--format", "flac", disc},
        {"rip", "--names", "title", disc},
        {"rip", "--format", "wav", "--tracks", "0", disc},
        {"rip", "--format", "wav", "--tracks", "4", disc},
        {"rip", "--format", "wav", "--tracks", "100", disc},
        {"rip", "--format", "wav", "--tracks", "99999999999999999999", disc},
        {"rip", "--format", "wav", "--tracks", "2-1", disc},
        {"rip", "--format", "wav", "--tracks", "", disc},
        {"rip", "--format", "wav", "--tracks", "1,", disc},
        {"rip", "--format", "wav", "--tracks", "-1", disc},
        {"rip", "--format", "wav", "--tracks", "2-9", disc},
        {"rip", "--format", "wav", "--title", "4=No", disc},
        {"rip", "--format", "wav", "--title", "No", disc},
        {"rip", "--format", "wav", "--output", "", disc},
        {"rip", "--format", "wav", disc, disc},
    };
    for (const Arguments& arguments : cases) {
        const Ended ended = box.run(arguments);
        const std::string what = testing::PrintToString(arguments);
        EXPECT_EQ(ended.status, 2) << what << ended.all();
        EXPECT_EQ(ended.out, "") << what;
        EXPECT_TRUE(isProblemLines(ended.err)) << what << ended.all();
        EXPECT_EQ(linesOf(ended.err).size(), 1u) << what << ended.err;
        EXPECT_EQ(box.strays(), "") << what;
        EXPECT_FALSE(fs::exists(box.out())) << what;
    }
    EXPECT_THAT(box.run({"--version"}).out, MatchesRegex("tonquay [0-9.]+\n"));
    EXPECT_THAT(box.run({"rip", "--help"}).out, HasSubstr("--tracks"));
}

TEST(Report, aReaderThatEndsEarlyCostsNoTrack)
{
    const Sandbox box;
    const DiscPlan plan = plainDisc(3, 40);
    const std::string disc = makeDisc(box.discs(), plan).string();
    // The pipe's reader is gone before the program starts.
    Child shell(
        {"/bin/bash", "-c", "exec > >(true); sleep 0.2; exec \"$@\"", "bash", TONQUAY_PROGRAM, "rip", "--format", "wav",
         "--json", "-o", "out", disc},
        {{"HOME", box.home().string()}, {"TMPDIR", (box.root() / "tmp").string()}, {"SDL_AUDIODRIVER", "dummy"}},
        box.root(), "/dev/null", box.root() / "run" / "err");
    const Ended ended = shell.wait();
    EXPECT_EQ(ended.status, 1) << ended.all();
    EXPECT_EQ(ended.err, "tonquay: standard output: not everything could be written\n");
    Tree wanted;
    for (std::size_t i = 0; i < 3; ++i)
        wanted["Ann Lee/First Light/" + plan.tracks[i].title + ".wav"] = ripped(plan, i);
    EXPECT_EQ(difference(treeOf(box.out()), wanted), "");
}

}
