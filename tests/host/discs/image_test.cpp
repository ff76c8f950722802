#include "host/discs/disc.h"

#include "base/text.h"
#include "support/disc_maker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace tonquay::host {

// For EXPECT_EQ and its messages.
static bool operator==(const Disc::Read& left, const Disc::Read& right)
{
    return left.sectors == right.sectors && left.end == right.end;
}

static std::ostream& operator<<(std::ostream& out, const Disc::Read& read)
{
    return out << read.sectors << " sectors, end " << static_cast<int>(read.end);
}

namespace {

using test::DiscFolder;
using test::DiscFormat;
using test::DiscPlan;
using test::PlannedTrack;
using ReadEnd = Disc::ReadEnd;

std::unique_ptr<Disc> openOrFail(const std::filesystem::path& path, const std::string& label)
{
    auto disc = openImage(path);
    if (!disc) {
        ADD_FAILURE() << label << ": " << base::describe(disc.failure());
        return nullptr;
    }
    return std::move(*disc);
}

std::vector<std::byte> readTrack(Disc& disc, const platform::DiscTrack& track, int runSectors)
{
    std::vector<std::byte> sound;
    std::vector<std::byte> run(static_cast<std::size_t>(runSectors) * Disc::sectorBytes);
    for (int done = 0; done < track.sectorCount;) {
        const int wanted = std::min(runSectors, track.sectorCount - done);
        const auto part = std::span(run).first(static_cast<std::size_t>(wanted) * Disc::sectorBytes);
        const Disc::Read read = disc.read(track.firstSector + done, part);
        if (read.sectors == 0)
            break;
        sound.insert(sound.end(), run.begin(),
                     run.begin() + static_cast<std::ptrdiff_t>(read.sectors * Disc::sectorBytes));
        done += static_cast<int>(read.sectors);
    }
    return sound;
}

void expectDisc(Disc& disc, const DiscPlan& plan, const std::string& label)
{
    const auto expected = test::expectedTable(plan);
    const auto& tracks = disc.tracks();
    ASSERT_EQ(tracks.size(), expected.size()) << label;
    for (std::size_t i = 0; i < tracks.size(); ++i) {
        const std::string where = label + ", track " + std::to_string(i);
        EXPECT_EQ(tracks[i].number, expected[i].number) << where;
        EXPECT_EQ(tracks[i].firstSector, expected[i].firstSector) << where;
        EXPECT_EQ(tracks[i].audio, expected[i].audio) << where;
        std::vector<std::byte> sector(Disc::sectorBytes);
        if (!tracks[i].audio) {
            EXPECT_EQ(disc.read(tracks[i].firstSector, sector), (Disc::Read{0, ReadEnd::unreadable})) << where;
            continue;
        }
        EXPECT_EQ(tracks[i].sectorCount, expected[i].sectorCount) << where;
        for (const int run : {75, 7, 1000})
            EXPECT_TRUE(readTrack(disc, tracks[i], run) == test::expectedSound(plan, i))
                << where << ", runs of " << run;
    }
}

const std::vector<PlannedTrack> plainTracks{{.sectors = 160}, {.sectors = 1}, {.sectors = 90}};
const std::vector<PlannedTrack> gapTracks{
    {.sectors = 40, .pregap = 33},
    {.sectors = 50, .silentPregap = 150, .silentPostgap = 10},
    {.sectors = 30, .pregap = 20, .silentPregap = 5},
    {.sectors = 8, .silentPostgap = 7},
};

TEST(Image, everySampleIsReadAsItIsOnTheDisc)
{
    struct Case {
        const char* what;
        DiscFormat format;
        bool gaps = true;
    };
    const Case cases[] = {
        {"bin", DiscFormat::cueBin},
        {"swapped", DiscFormat::cueSwapped},
        {"a bin for each track", DiscFormat::cueBinPerTrack},
        {"one wave", DiscFormat::cueWave},
        {"a wave for each track", DiscFormat::cueWavePerTrack},
        {"aiff", DiscFormat::cueAiff},
        {"one flac", DiscFormat::cueFlac},
        {"a flac for each track", DiscFormat::cueFlacPerTrack},
        {"toc and bin", DiscFormat::tocBin},
        {"toc and waves", DiscFormat::tocWavePerTrack},
        {"nero, first version", DiscFormat::nrgFirst},
        {"nero, second version", DiscFormat::nrgSecond},
        {"nero by track, first version", DiscFormat::nrgFirstByTrack, false},
        {"nero by track, second version", DiscFormat::nrgSecondByTrack, false},
    };
    for (const Case& c : cases) {
        for (const bool gaps : {false, true}) {
            if (gaps && !c.gaps)
                continue;
            const DiscFolder folder;
            const DiscPlan plan{.tracks = gaps ? gapTracks : plainTracks, .format = c.format};
            if (const auto disc = openOrFail(test::makeDisc(folder.path(), plan), c.what))
                expectDisc(*disc, plan, std::string(c.what) + (gaps ? ", with gaps" : ""));
        }
    }
}

TEST(Image, dataTracksKeepTheirPlaceAndGiveNoSound)
{
    struct Case {
        const char* what;
        std::vector<PlannedTrack> tracks;
    };
    const PlannedTrack cooked{.sectors = 60, .audio = false, .dataSectorBytes = 2048};
    const PlannedTrack raw{.sectors = 60, .audio = false, .pregap = 12};
    const PlannedTrack modeTwo{.sectors = 60, .audio = false, .dataSectorBytes = 2336};
    const PlannedTrack gapped{.sectors = 60, .audio = false, .silentPregap = 150, .dataSectorBytes = 2048};
    const PlannedTrack sound{.sectors = 44};
    const PlannedTrack lateSound{.sectors = 44, .pregap = 9, .silentPregap = 150};
    const Case cases[] = {
        {"data first", {cooked, lateSound, sound}},        {"audio, then data", {sound, lateSound, raw}},
        {"data between", {sound, gapped, sound}},          {"data only", {cooked}},
        {"audio, then a gap, then data", {sound, gapped}},
    };
    for (const Case& c : cases) {
        for (const DiscFormat format :
             {DiscFormat::cueBin, DiscFormat::cueBinPerTrack, DiscFormat::tocBin, DiscFormat::nrgSecond}) {
            const DiscFolder folder;
            const DiscPlan plan{.tracks = c.tracks, .format = format};
            if (const auto disc = openOrFail(test::makeDisc(folder.path(), plan), c.what))
                expectDisc(*disc, plan, c.what + std::string(", format ") + std::to_string(static_cast<int>(format)));
        }
    }
    const DiscFolder folder;
    const DiscPlan plan{.tracks = {modeTwo, sound}};
    if (const auto disc = openOrFail(test::makeDisc(folder.path(), plan), "mode 2"))
        expectDisc(*disc, plan, "mode 2");
}

TEST(Image, ninetyNineTracksAndNumbersThatBeginLate)
{
    for (const DiscFormat format : {DiscFormat::cueBin, DiscFormat::cueBinPerTrack, DiscFormat::tocBin,
                                    DiscFormat::nrgFirst, DiscFormat::nrgSecondByTrack}) {
        const DiscFolder folder;
        DiscPlan plan{.tracks = std::vector<PlannedTrack>(99, PlannedTrack{.sectors = 3}), .format = format};
        if (const auto disc = openOrFail(test::makeDisc(folder.path(), plan), "99 tracks"))
            expectDisc(*disc, plan, "99 tracks");
        if (format == DiscFormat::nrgSecondByTrack)
            continue;
        plan.tracks = {{.sectors = 10}, {.sectors = 11}};
        plan.firstNumber = 12;
        if (const auto disc = openOrFail(test::makeDisc(folder.path(), plan), "from 12 on"))
            expectDisc(*disc, plan, "from 12 on");
    }
}

TEST(Image, namesComeFromTheSheetOrTheDisc)
{
    struct Case {
        const char* what;
        DiscFormat format;
        bool remarks; ///< year and comment are kept
        bool genre;
    };
    const Case cases[] = {
        {"cue", DiscFormat::cueBin, true, true},
        {"toc", DiscFormat::tocBin, false, false},
        {"nero", DiscFormat::nrgSecond, false, true},
    };
    for (const Case& c : cases) {
        const DiscFolder folder;
        DiscPlan plan{.tracks = {{.sectors = 5, .title = "Första"},
                                 {.sectors = 5},
                                 {.sectors = 5, .title = "A title that is longer than one pack of text"}},
                      .format = c.format,
                      .artist = "Mötley",
                      .album = "Ночь",
                      .genre = "Rock",
                      .year = "1999",
                      .comment = "live"};
        const auto disc = openOrFail(test::makeDisc(folder.path(), plan), c.what);
        if (!disc)
            continue;
        const platform::DiscNames& names = disc->names();
        EXPECT_EQ(names.artist, L"M\u00F6tley") << c.what;
        EXPECT_EQ(names.album, L"\u041D\u043E\u0447\u044C") << c.what;
        EXPECT_EQ(names.genre, c.genre ? L"Rock" : L"") << c.what;
        EXPECT_EQ(names.year, c.remarks ? L"1999" : L"") << c.what;
        EXPECT_EQ(names.comment, c.remarks ? L"live" : L"") << c.what;
        ASSERT_EQ(names.titles.size(), 3u) << c.what;
        EXPECT_EQ(names.titles[0], L"F\u00F6rsta") << c.what;
        EXPECT_EQ(names.titles[1], L"") << c.what;
        EXPECT_EQ(names.titles[2], L"A title that is longer than one pack of text") << c.what;
    }
}

TEST(Image, readingStopsAtTheLeadOut)
{
    const DiscFolder folder;
    const DiscPlan plan{.tracks = {{.sectors = 20}, {.sectors = 10}}};
    const auto disc = openOrFail(test::makeDisc(folder.path(), plan), "bin");
    ASSERT_TRUE(disc);
    std::vector<std::byte> run(8 * Disc::sectorBytes, std::byte{0x77});
    EXPECT_EQ(disc->read(22, run), (Disc::Read{8, ReadEnd::full}));
    EXPECT_EQ(disc->read(30, run), (Disc::Read{0, ReadEnd::endOfDisc}));
    EXPECT_EQ(disc->read(-1, run), (Disc::Read{0, ReadEnd::endOfDisc}));
    std::ranges::fill(run, std::byte{0x77});
    EXPECT_EQ(disc->read(27, run), (Disc::Read{3, ReadEnd::endOfDisc}));
    EXPECT_TRUE(
        std::all_of(run.begin() + 3 * Disc::sectorBytes, run.end(), [](std::byte b) { return b == std::byte{0x77}; }));
}

TEST(Image, aFileThatShrinksStopsAtTheMissingSector)
{
    for (const DiscFormat format :
         {DiscFormat::cueBin, DiscFormat::cueWave, DiscFormat::cueFlac, DiscFormat::nrgSecond}) {
        const DiscFolder folder;
        const DiscPlan plan{.tracks = {{.sectors = 200}}, .format = format};
        const auto path = test::makeDisc(folder.path(), plan);
        const auto disc = openOrFail(path, "shrinking");
        ASSERT_TRUE(disc);
        const char* const ending = format == DiscFormat::cueBin    ? ".bin"
                                   : format == DiscFormat::cueWave ? ".wav"
                                   : format == DiscFormat::cueFlac ? ".flac"
                                                                   : ".nrg";
        const auto data = folder.path() / (std::string("album") + ending);
        std::vector<std::byte> run(150 * Disc::sectorBytes);
        EXPECT_EQ(disc->read(0, std::span(run).first(Disc::sectorBytes)), (Disc::Read{1, ReadEnd::full}));
        const std::uintmax_t pregap = format == DiscFormat::nrgSecond ? 150 : 0;
        std::filesystem::resize_file(data, (pregap + 120) * Disc::sectorBytes + 1000);
        std::ranges::fill(run, std::byte{0x77});
        const Disc::Read read = disc->read(60, run);
        EXPECT_EQ(read.end, ReadEnd::unreadable);
        EXPECT_LE(read.sectors, 60u);
        EXPECT_GE(read.sectors, format == DiscFormat::cueFlac ? 50u : 59u);
        const auto rest = std::span(run).subspan(read.sectors * Disc::sectorBytes);
        EXPECT_TRUE(std::ranges::all_of(rest, [](std::byte b) { return b == std::byte{0x77}; }));
        // Asked again at the same place it tries again, and what is before it can still be read.
        EXPECT_EQ(disc->read(60 + static_cast<int>(read.sectors), run), (Disc::Read{0, ReadEnd::unreadable}));
        EXPECT_EQ(disc->read(10, std::span(run).first(2 * Disc::sectorBytes)), (Disc::Read{2, ReadEnd::full}));
        EXPECT_TRUE(std::equal(run.begin(), run.begin() + Disc::sectorBytes, test::patternSector(10).begin()));
    }
}

TEST(Image, aFileThatGoesIsADiscTakenOut)
{
    struct Case {
        const char* what;
        const char* file;
        bool rename;
    };
    const Case cases[] = {
        {"data deleted", "album.bin", false},
        {"data renamed", "album.bin", true},
        {"sheet deleted", "album.cue", false},
    };
    for (const Case& c : cases) {
        const DiscFolder folder;
        const DiscPlan plan{.tracks = {{.sectors = 20}}};
        const auto disc = openOrFail(test::makeDisc(folder.path(), plan), c.what);
        ASSERT_TRUE(disc) << c.what;
        const auto file = folder.path() / c.file;
        if (c.rename)
            std::filesystem::rename(file, folder.path() / "elsewhere.bin");
        else
            std::filesystem::remove(file);
        std::vector<std::byte> run(20 * Disc::sectorBytes);
        EXPECT_EQ(disc->read(0, run), (Disc::Read{0, ReadEnd::gone})) << c.what;
    }
}

}

}
