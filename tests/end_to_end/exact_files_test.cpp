#include "end_to_end/sandbox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>

namespace tonquay::test {

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr const char* album = "Ann Lee/First Light/";

PlannedTrack data(int sectors, int bytes = 2352)
{
    return {.sectors = sectors, .audio = false, .dataSectorBytes = bytes};
}

DiscPlan named(DiscPlan plan)
{
    plan.artist = "Ann Lee";
    plan.album = "First Light";
    for (std::size_t i = 0; i < plan.tracks.size(); ++i)
        plan.tracks[i].title = "Song " + std::to_string(i + 1);
    return plan;
}

/// All audio tracks under their titles.
Tree wholeAlbum(const DiscPlan& plan)
{
    Tree tree;
    for (std::size_t i = 0; i < plan.tracks.size(); ++i)
        if (plan.tracks[i].audio)
            tree[album + plan.tracks[i].title + ".wav"] = ripped(plan, i);
    return tree;
}

std::string outputOf(const std::string& command)
{
    std::string text;
    FILE* const pipe = ::popen(command.c_str(), "r");
    EXPECT_NE(pipe, nullptr);
    std::array<char, 256> block{};
    while (pipe != nullptr && std::fgets(block.data(), block.size(), pipe) != nullptr)
        text += block.data();
    EXPECT_EQ(::pclose(pipe), 0) << command;
    return text;
}

struct Case {
    const char* what;
    DiscPlan plan;
};

const PlannedTrack gapInData{.sectors = 30, .pregap = 15};
const PlannedTrack gapAsLine{.sectors = 30, .silentPregap = 20};
const PlannedTrack bothGaps{.sectors = 30, .pregap = 10, .silentPregap = 20};
const PlannedTrack gapBehind{.sectors = 30, .silentPostgap = 12};

const std::vector<Case> discs{
    {"one sector each", {.tracks = {{1}, {1}, {1}}}},
    {"lengths that are multiples of the block of 20000 bytes", {.tracks = {{1250}, {1250}, {7}}}},
    {"a track just over and just under a block", {.tracks = {{8}, {9}, {17}}}},
    {"a data track first", {.tracks = {data(160), {.sectors = 40, .pregap = 150}, {30}}}},
    {"data of 2048 bytes first", {.tracks = {data(160, 2048), {.sectors = 40, .silentPregap = 150}, {30}}}},
    {"audio, then data", {.tracks = {{40}, {30}, data(160)}}},
    {"audio, then data of 2336 bytes", {.tracks = {{40}, {30}, data(160, 2336)}}},
    {"pregaps in the data", {.tracks = {{40}, gapInData, gapInData}}},
    {"pregaps as lines", {.tracks = {{40}, gapAsLine, gapAsLine}}},
    {"both kinds of gaps, and one behind", {.tracks = {{40}, bothGaps, gapBehind, bothGaps}}},
    {"a file for each track", {.tracks = {{40}, gapInData, {30}}, .format = DiscFormat::cueBinPerTrack}},
    {"WAVE", {.tracks = {{40}, gapInData, {30}}, .format = DiscFormat::cueWave}},
    {"a WAVE file for each track", {.tracks = {{40}, gapAsLine, {30}}, .format = DiscFormat::cueWavePerTrack}},
    {"AIFF", {.tracks = {{40}, {30}}, .format = DiscFormat::cueAiff}},
    {"FLAC", {.tracks = {{40}, gapInData, {30}}, .format = DiscFormat::cueFlac}},
    {"a FLAC file for each track", {.tracks = {{40}, {30}}, .format = DiscFormat::cueFlacPerTrack}},
    {"high byte first", {.tracks = {{40}, gapInData, {30}}, .format = DiscFormat::cueSwapped}},
    {"numbers from 5 on", {.tracks = {{10}, {10}}, .firstNumber = 5}},
    {"toc", {.tracks = {{40}, gapInData, gapAsLine}, .format = DiscFormat::tocBin}},
    {"toc with audio, then data", {.tracks = {{40}, {30}, data(160)}, .format = DiscFormat::tocBin}},
    {"toc with WAVE files", {.tracks = {{40}, {30}}, .format = DiscFormat::tocWavePerTrack}},
    {"first Nero format", {.tracks = {{40}, gapInData, gapAsLine}, .format = DiscFormat::nrgFirst}},
    {"second Nero format", {.tracks = {{40}, gapInData, data(160)}, .format = DiscFormat::nrgSecond}},
    {"first Nero format, track at once", {.tracks = {{40}, {30}}, .format = DiscFormat::nrgFirstByTrack}},
    {"second Nero format, track at once", {.tracks = {{40}, {30}}, .format = DiscFormat::nrgSecondByTrack}},
    {"a name of the image with blanks and accents", {.tracks = {{10}, {10}}, .name = "Ça et là"}},
};

}

TEST(ExactFiles, everyTrackIsTheDiscsOwnBytes)
{
    for (const Case& c : discs) {
        SCOPED_TRACE(c.what);
        const Sandbox box;
        const DiscPlan plan = named(c.plan);
        const Ended ended = box.rip(makeDisc(box.discs(), plan));
        EXPECT_EQ(ended.status, 0) << ended.all();
        EXPECT_EQ(ended.err, "");
        EXPECT_EQ(difference(treeOf(box.out()), wholeAlbum(plan)), "");
        EXPECT_EQ(box.strays(), "");
    }
}

TEST(ExactFiles, ninetyNineTracks)
{
    const Sandbox box;
    const DiscPlan plan = plainDisc(99, 5);
    const Ended ended = box.rip(makeDisc(box.discs(), plan));
    EXPECT_EQ(ended.status, 0) << ended.all();
    EXPECT_THAT(ended.out, HasSubstr("99 files whole"));
    EXPECT_EQ(difference(treeOf(box.out()), wholeAlbum(plan)), "");
}

TEST(ExactFiles, areWhatOthersTakeForSoundOfADisc)
{
    const Sandbox box;
    ASSERT_EQ(box.rip(makeDisc(box.discs(), plainDisc(1, 150))).status, 0);
    const std::string file = "'" + (box.out() / album / "Song 1.wav").string() + "'";
    EXPECT_EQ(outputOf("ffprobe -v error -show_entries "
                       "stream=codec_name,sample_rate,channels,bits_per_sample,duration -of csv=p=0 " +
                       file),
              "pcm_s16le,44100,2,16,2.000000\n");
    EXPECT_EQ(outputOf("soxi -s " + file), "88200\n");
}

TEST(ExactFiles, onlyListedTracks)
{
    struct List {
        const char* list;
        std::vector<int> tracks;
    };
    const std::vector<List> lists{{"2", {2}},     {"1,3", {1, 3}}, {"2-3", {2, 3}},
                                  {"4-", {4, 5}}, {"5,1", {1, 5}}, {"1-2,2-4", {1, 2, 3, 4}}};
    const Sandbox box;
    const DiscPlan plan = plainDisc(5, 6);
    const fs::path disc = makeDisc(box.discs(), plan);
    for (const List& c : lists) {
        const Ended ended = box.rip(disc, {"--tracks", c.list});
        EXPECT_EQ(ended.status, 0) << c.list << ended.all();
        Tree wanted;
        for (const int number : c.tracks)
            wanted[album + ("Song " + std::to_string(number)) + ".wav"] =
                ripped(plan, static_cast<std::size_t>(number) - 1);
        EXPECT_EQ(difference(treeOf(box.out()), wanted), "") << c.list;
        fs::remove_all(box.out());
    }
}

TEST(ExactFiles, anOlderLongerFileKeepsItsTailAndThatIsSaid)
{
    const Sandbox box;
    const DiscPlan plan = plainDisc(1, 10);
    const fs::path disc = makeDisc(box.discs(), plan);
    fs::create_directories(box.out() / album);
    std::vector<std::byte> older(40000, std::byte{0x77});
    writeFile(box.out() / album / "Song 1.wav", older);

    const Ended ended = box.rip(disc);
    const std::vector<std::byte> fresh = ripped(plan, 0);
    std::copy(fresh.begin(), fresh.end(), older.begin());
    EXPECT_EQ(difference(treeOf(box.out()), {{album + std::string("Song 1.wav"), older}}), "");
    EXPECT_EQ(ended.status, 0) << ended.all();
    EXPECT_THAT(ended.out, HasSubstr("whole: " + std::to_string(older.size() - fresh.size()) +
                                     " bytes of an older, longer file stand behind its samples"));
}

TEST(ExactFiles, twoRunsSideBySide)
{
    const Sandbox box;
    DiscPlan plan = plainDisc(3, 500);
    const fs::path disc = makeDisc(box.discs(), plan);
    const auto left = box.startRip(disc, {"--output", (box.out() / "left").string()});
    const auto right = box.startRip(disc, {"--output", (box.out() / "right").string(), "--names", "number"});
    EXPECT_EQ(left->wait().status, 0);
    EXPECT_EQ(right->wait().status, 0);
    Tree wanted;
    for (std::size_t i = 0; i < 3; ++i) {
        wanted["left/" + (album + plan.tracks[i].title) + ".wav"] = ripped(plan, i);
        wanted["right/" + (album + ("Track" + std::to_string(i + 1))) + ".wav"] = ripped(plan, i);
    }
    EXPECT_EQ(difference(treeOf(box.out()), wanted), "");
    EXPECT_EQ(box.strays(), "");
}

}
