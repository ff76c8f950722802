#include "end_to_end/mp3_rip.h"
#include "end_to_end/sandbox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <unistd.h>

namespace tonquay::test {

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;

constexpr const char* album = "Ann Lee/First Light/";

/// Encodes Song 3 when those of Song 1 and 2 are over, as slow as they may be; `others` is what these do.
std::string thirdAfterTheOthers(const Sandbox& box, const std::string& others)
{
    const fs::path list = box.root() / "run" / "processes";
    writeFile(list, std::string());
    return fakeEncoder("list='" + list.string() + "'\ncase $mp3 in *'Song 3.mp3') ;; *) echo $$ >> \"$list\"; " +
                       others + R"sh(; exit ;; esac
until [ "$(wc -l < "$list")" -eq 2 ]; do sleep 0.01; done
for process in $(cat "$list"); do
    while kill -0 "$process" 2> /dev/null; do sleep 0.01; done
done
exec "$lame" "$@"
)sh");
}

std::string fileOf(const DiscPlan& plan, std::size_t track, const char* ending)
{
    return album + plan.tracks[track].title + ending;
}

/// As long as the text, and then of a pattern up to so many bytes.
std::string older(const std::string& text, std::size_t bytes)
{
    std::string result = text;
    while (result.size() < bytes)
        result += static_cast<char>('a' + result.size() % 23);
    return result;
}

/// What may stand where the MP3 is to be made.
struct Older {
    const char* what;
    std::function<void(const fs::path&)> make;
    bool inTheWay;
};

std::vector<Older> olderThings()
{
    const auto file = [](const std::string& text, std::size_t bytes) {
        return [=](const fs::path& path) { writeFile(path, older(text, bytes)); };
    };
    return {
        {"no bytes", file("", 0), false},
        {"one byte", file("", 1), false},
        {"126 bytes", file("TA", 126), false},
        {"127 bytes", file("AG", 127), false},
        {"128 bytes, a tag", file("TAGOther song", 128), false},
        {"128 bytes", file("", 128), false},
        {"a longer file", file("ID3", 100000), false},
        {"a folder", [](const fs::path& path) { fs::create_directory(path); }, true},
        {"a full folder",
         [](const fs::path& path) {
             fs::create_directory(path);
             writeFile(path / "mine", std::string("mine"));
         },
         true},
        {"nothing", [](const fs::path&) {}, false},
    };
}

}

TEST(EncoderPlaces, whatStoodUnderTheNameIsReplacedOrNamed)
{
    const std::vector<Older> things = olderThings();
    for (const char* schedule : {"single", "turbo"}) {
        SCOPED_TRACE(schedule);
        const Sandbox box;
        const DiscPlan plan = plainDisc(static_cast<int>(things.size()), 50);
        fs::create_directories(box.out() / album);
        for (std::size_t i = 0; i < things.size(); ++i)
            things[i].make(box.out() / fileOf(plan, i, ".mp3"));
        const Ended ended = startMp3Rip(box, makeDisc(box.discs(), plan), {"--schedule", schedule})->wait();
        EXPECT_EQ(ended.status, 1) << ended.all();
        EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
        EXPECT_EQ(std::ranges::count(ended.err, '\n'),
                  std::ranges::count_if(things, [](const Older& thing) { return thing.inTheWay; }))
            << ended.err;
        Tree files = treeOf(box.out());
        for (std::size_t i = 0; i < things.size(); ++i) {
            SCOPED_TRACE(things[i].what);
            const std::string name = fileOf(plan, i, ".mp3");
            if (things[i].inTheWay) {
                EXPECT_THAT(ended.err,
                            HasSubstr("track " + std::to_string(i + 1) + ": " + (box.out() / name).string()));
            } else {
                EXPECT_EQ(whyNoMp3(box, files[name], plan, i), "");
            }
        }
        EXPECT_TRUE(files.contains(fileOf(plan, 7, ".mp3/"))) << "it is empty still";
        EXPECT_EQ(files[fileOf(plan, 8, ".mp3/mine")].size(), 4u);
        EXPECT_EQ(box.strays(), "");
    }
}

TEST(EncoderPlaces, anOlderFileIsNotTakenForTheEncodersWork)
{
    // Right in all but one thing: nobody has written it in this run.
    for (const char* schedule : {"single", "turbo"}) {
        SCOPED_TRACE(schedule);
        const Sandbox box;
        const DiscPlan plan = plainDisc(3, 75);
        const fs::path disc = makeDisc(box.discs(), plan);
        EXPECT_EQ(startMp3Rip(box, disc)->wait().status, 0);
        const fs::path lame = box.root() / "run" / "bin" / "lame";
        writeScript(lame, thirdAfterTheOthers(box, ":"));
        const Ended ended = startMp3Rip(box, disc, {"--schedule", schedule, "--encoder", lame.string()})->wait();
        EXPECT_EQ(ended.status, 1) << ended.all();
        EXPECT_THAT(ended.err, AllOf(HasSubstr("Song 1.mp3: an older file"), HasSubstr("Song 2.mp3: an older file")));
        EXPECT_EQ(std::ranges::count(ended.err, '\n'), 2) << ended.err;
        EXPECT_THAT(ended.out, HasSubstr("1 file whole, 2 not"));
    }
}

TEST(EncoderPlaces, aReadOnlyFileCostsItsTrackOnly)
{
    const Sandbox box;
    const DiscPlan plan = plainDisc(3, 50);
    const fs::path disc = makeDisc(box.discs(), plan);
    const fs::path mine = box.out() / fileOf(plan, 1, ".mp3");
    fs::create_directories(mine.parent_path());
    writeFile(mine, older("", 500));
    fs::permissions(mine, fs::perms::owner_read);

    // The superuser may write everything; so the encoder is one without that right.
    const fs::path lame = box.root() / "run" / "bin" / "lame";
    writeScript(
        lame, fakeEncoder("exec '" + machineProgram("setpriv") + "' --bounding-set=-dac_override \"$lame\" \"$@\"\n"));
    const bool root = ::geteuid() == 0;
    const Ended ended = startMp3Rip(box, disc, root ? Arguments{"--encoder", lame.string()} : Arguments{})->wait();
    EXPECT_EQ(ended.status, 1) << ended.all();
    EXPECT_THAT(ended.err, AllOf(HasSubstr("track 2: " + mine.string() + ": the encoder ended with status 255")));
    EXPECT_EQ(std::ranges::count(ended.err, '\n'), 1) << ended.err;
    Tree files = treeOf(box.out());
    for (const std::size_t track : {0u, 2u})
        EXPECT_EQ(whyNoMp3(box, files[fileOf(plan, track, ".mp3")], plan, track), "");
    std::vector<std::byte>& left = files[fileOf(plan, 1, ".mp3")];
    ASSERT_GE(left.size(), 500u);
    left.resize(500);
    writeFile(box.root() / "run" / "wanted", older("", 500));
    EXPECT_EQ(left, readFile(box.root() / "run" / "wanted")) << "at most a tag was written behind it";
}

TEST(EncoderPlaces, namesOfFoldersChangeNothing)
{
    struct Case {
        const char* what;
        const char* folder;
        bool remark; ///< when the encoder lies there
    };
    const std::vector<Case> cases{
        {"blanks, umlauts and quotes", " Müßig  'n Töne $(x) `y` ", false},
        {"letters of other scripts", "Музика 音楽", false},
        {"another encoder", "BLADE", true},
        {"another format", "my Ogg files", true},
        {"the same encoder", "lame-3.100", false},
        {"all of them", "Blade oggenc LAME mp3enc plugger xingmp", true},
    };
    const DiscPlan plan = plainDisc(2, 50);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const Sandbox box;
        const fs::path odd = box.root() / "run" / c.folder;
        fs::create_directories(odd / "tmp");
        fs::create_symlink(machineProgram("lame"), odd / "lame");
        const std::string home = odd.string();
        const Ended ended = startMp3Rip(box, makeDisc(box.discs(), plan),
                                        {"--output", (odd / "out").string(), "--encoder", (odd / "lame").string()},
                                        {{"HOME", home},
                                         {"XDG_DATA_HOME", home + "/data"},
                                         {"XDG_CONFIG_HOME", home + "/config"},
                                         {"XDG_STATE_HOME", home + "/state"},
                                         {"TMPDIR", home + "/tmp"}})
                                ->wait();
        EXPECT_EQ(ended.status, 0) << ended.all();
        if (c.remark) {
            EXPECT_THAT(ended.err, AllOf(HasSubstr("looks like another encoder"), HasSubstr((odd / "lame").string()),
                                         EndsWith(", lame\n")));
        }
        EXPECT_EQ(std::ranges::count(ended.err, '\n'), c.remark ? 1 : 0) << ended.err;
        Tree files = treeOf(odd / "out");
        ASSERT_EQ(files.size(), 2u) << difference(files, {});
        for (std::size_t i = 0; i < 2; ++i)
            EXPECT_EQ(whyNoMp3(box, files[fileOf(plan, i, ".mp3")], plan, i), "");
        EXPECT_TRUE(fs::is_empty(odd / "tmp"));
        EXPECT_TRUE(fs::exists(odd / "state/cd-tonquay/log"));
        EXPECT_EQ(box.strays(), "");
    }
}

TEST(EncoderPlaces, aWavOfTheSameNameElsewhereSurvives)
{
    const Sandbox box;
    const DiscPlan plan = plainDisc(3, 75);
    const fs::path disc = makeDisc(box.discs(), plan);
    Tree mine;
    for (const fs::path& folder : {box.root(), box.home()})
        for (const PlannedTrack& track : plan.tracks)
            writeFile(folder / (track.title + ".wav"), std::string("mine"));
    const auto check = [&] {
        for (const fs::path& folder : {box.root(), box.home()})
            for (const PlannedTrack& track : plan.tracks)
                EXPECT_EQ(readFile(folder / (track.title + ".wav")).size(), 4u) << folder << track.title;
    };

    const fs::path lame = box.root() / "run" / "bin" / "lame";
    writeScript(lame, thirdAfterTheOthers(box, R"("$lame" "$@")"));
    const Ended good = startMp3Rip(box, disc, {"--schedule", "turbo", "--encoder", lame.string()})->wait();
    EXPECT_EQ(good.status, 0) << good.all();
    EXPECT_EQ(treeOf(box.out()).size(), 3u) << "and those of the run are gone";
    check();

    // The folder goes away under the run, so it cannot be entered when the WAV files are to be deleted.
    writeScript(lame, fakeEncoder("exec mv \"${mp3%/*}\" '" + (box.root() / "run" / "moved").string() + "'\n"));
    const Ended lost = startMp3Rip(box, disc, {"--schedule", "turbo", "--encoder", lame.string()})->wait();
    EXPECT_EQ(lost.status, 1) << lost.all();
    EXPECT_TRUE(isProblemLines(lost.err)) << lost.err;
    for (const PlannedTrack& track : plan.tracks)
        EXPECT_THAT(lost.err, HasSubstr(track.title + ".mp3: "));
    check();
}

}
