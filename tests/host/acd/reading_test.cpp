#include "faulty_disc.h"

#include "host/acd/sector_reader.h"

#include <gtest/gtest.h>

namespace tonquay::host::test {
namespace {

using Mode = SectorReader::Mode;

constexpr std::array modes{Mode::normal, Mode::synchronous, Mode::burst};

const char* nameOf(Mode mode)
{
    constexpr std::array names{"normal", "synchronous", "burst"};
    return names[static_cast<std::size_t>(mode)];
}

/// A disc of three tracks that is read by a drive with faults.
struct Reading : testing::Test {
    std::shared_ptr<DiscContents> contents = std::make_shared<DiscContents>(std::vector<int>{600, 900, 500});
    std::shared_ptr<Faults> faults = std::make_shared<Faults>();
    std::atomic<bool> stop{false};

    struct Got {
        Bytes sound;
        platform::ReadTroubles troubles;
        bool gone;
    };

    Got read(Mode mode, SectorRun wanted, SectorRun allowed = {0, 2000})
    {
        FaultyDisc disc(contents, faults);
        ReadJournal journal(wanted);
        const auto reader = makeSectorReader(mode, {disc, wanted, allowed, journal, stop});
        Got got{
            .sound = Bytes(static_cast<std::size_t>(wanted.count) * Disc::sectorBytes), .troubles = {}, .gone = false};
        std::size_t done = 0;
        // In pieces of uneven size, since the writing side asks for seconds.
        for (std::size_t piece = 1; done < static_cast<std::size_t>(wanted.count); piece = piece % 75 + 7) {
            const std::size_t left = static_cast<std::size_t>(wanted.count) - done;
            const auto out =
                std::span(got.sound).subspan(done * Disc::sectorBytes, std::min(piece, left) * Disc::sectorBytes);
            const std::size_t sectors = reader->read(out);
            done += sectors;
            if (sectors * Disc::sectorBytes < out.size())
                break;
        }
        got.sound.resize(done * Disc::sectorBytes);
        got.troubles = journal.troubles(static_cast<int>(done), wanted.first);
        got.gone = reader->discIsGone();
        return got;
    }

    Bytes soundOf(SectorRun run) const
    {
        const auto begin = contents->sound.begin() + std::ptrdiff_t{run.first} * std::ptrdiff_t{Disc::sectorBytes};
        return {begin, begin + std::ptrdiff_t{run.count} * std::ptrdiff_t{Disc::sectorBytes}};
    }

    /// Sectors of the result that are not those of the disc.
    static std::vector<int> wrongSectors(const Bytes& got, const Bytes& wanted)
    {
        std::vector<int> wrong;
        for (std::size_t i = 0; i < wanted.size(); i += Disc::sectorBytes)
            if (i >= got.size() || !std::equal(got.begin() + static_cast<std::ptrdiff_t>(i),
                                               got.begin() + static_cast<std::ptrdiff_t>(i + Disc::sectorBytes),
                                               wanted.begin() + static_cast<std::ptrdiff_t>(i)))
                wrong.push_back(static_cast<int>(i / Disc::sectorBytes));
        return wrong;
    }
};

TEST_F(Reading, everyModeIsExactOnACleanDisc)
{
    struct Case {
        const char* what;
        SectorRun wanted;
        SectorRun allowed;
    };
    const Case cases[] = {
        {"the first track", {0, 600}, {0, 1500}},           {"one in the middle", {600, 900}, {0, 2000}},
        {"the last track", {1500, 500}, {600, 1400}},       {"a whole disc of one track", {0, 2000}, {0, 2000}},
        {"between tracks of data", {600, 900}, {600, 900}}, {"one sector", {777, 1}, {600, 900}},
    };
    for (const Case& c : cases)
        for (const Mode mode : modes) {
            SCOPED_TRACE(std::string(c.what) + ", " + nameOf(mode));
            const Got got = read(mode, c.wanted, c.allowed);
            EXPECT_TRUE(got.sound == soundOf(c.wanted));
            EXPECT_EQ(got.troubles, platform::ReadTroubles{});
        }
}

TEST_F(Reading, silenceAndRepeatingSoundAreExactInEveryMode)
{
    // What looks the same in many places is what readings are joined at wrongly.
    const auto second = std::ptrdiff_t{75} * std::ptrdiff_t{Disc::sectorBytes};
    std::fill_n(contents->sound.begin() + 3 * second, 4 * second, std::byte{0});
    for (std::ptrdiff_t i = 0; i < 5 * second; ++i)
        contents->sound[static_cast<std::size_t>(9 * second + i)] = static_cast<std::byte>(i / 4 % 100);
    for (const Mode mode : modes)
        EXPECT_TRUE(read(mode, {0, 2000}).sound == contents->sound) << nameOf(mode);
}

TEST_F(Reading, normalIsExactUnderJitterWhereBurstIsNot)
{
    const SectorRun tracks[] = {{0, 600}, {600, 900}, {1500, 500}};
    for (const SectorRun track : tracks) {
        for (const int every : {2, 3, 5}) {
            for (const int samples : {5, 80, 300}) {
                SCOPED_TRACE("from " + std::to_string(track.first) + ", every " + std::to_string(every) + ", up to " +
                             std::to_string(samples) + " samples");
                faults->jitterEvery = every;
                faults->jitterSamples = samples;
                faults->reads = 0;
                EXPECT_FALSE(read(Mode::burst, track).sound == soundOf(track));
                faults->reads = 0;
                const Got got = read(Mode::normal, track);
                EXPECT_EQ(wrongSectors(got.sound, soundOf(track)), std::vector<int>());
                EXPECT_FALSE(got.troubles.repaired.empty());
                EXPECT_TRUE(got.troubles.givenUp.empty());
            }
        }
    }
}

TEST_F(Reading, normalFillsInWhatReadsHaveDropped)
{
    for (const int every : {3, 7}) {
        faults->dropEvery = every;
        faults->dropSamples = 40;
        faults->reads = 0;
        const Got got = read(Mode::normal, {600, 900});
        EXPECT_EQ(wrongSectors(got.sound, soundOf({600, 900})), std::vector<int>()) << every;
        EXPECT_FALSE(got.troubles.repaired.empty()) << every;
    }
}

TEST_F(Reading, aSectorThatGivesDataLaterIsExactAndTold)
{
    for (const Mode mode : modes) {
        SCOPED_TRACE(nameOf(mode));
        faults->flaky = {{700, 1}, {900, 1}};
        const Got got = read(mode, {600, 900});
        EXPECT_EQ(wrongSectors(got.sound, soundOf({600, 900})), std::vector<int>());
        EXPECT_EQ(got.troubles.reread, (std::vector<std::int32_t>{1, 4}));
        EXPECT_TRUE(got.troubles.givenUp.empty());
    }
}

TEST_F(Reading, whatIsNeverReadIsToldAndTheRestIsExact)
{
    struct Case {
        const char* what;
        std::set<int> bad;
        std::vector<std::int32_t> seconds;
    };
    std::set<int> run;
    for (int sector = 750; sector < 790; ++sector)
        run.insert(sector);
    const Case cases[] = {
        {"one sector", {700}, {1}},
        {"two far apart", {610, 1400}, {0, 10}},
        {"a run over the end of a second", run, {2}},
        {"the first sector", {600}, {0}},
        {"the last sector", {1499}, {11}},
    };
    for (const Case& c : cases)
        for (const Mode mode : modes) {
            SCOPED_TRACE(std::string(c.what) + ", " + nameOf(mode));
            faults->bad = c.bad;
            const Got got = read(mode, {600, 900});
            ASSERT_EQ(got.sound.size(), soundOf({600, 900}).size());
            for (const int sector : wrongSectors(got.sound, soundOf({600, 900}))) {
                const auto second = sector / 75;
                EXPECT_TRUE(std::ranges::count(got.troubles.givenUp, second) > 0)
                    << "sector " << sector << " is wrong and not told";
            }
            for (const std::int32_t second : c.seconds)
                EXPECT_EQ(std::ranges::count(got.troubles.givenUp, second), 1) << second;
            EXPECT_LE(got.troubles.givenUp.size(), c.seconds.size() + 1);
            EXPECT_LE(wrongSectors(got.sound, soundOf({600, 900})).size(), c.bad.size() + 4);
        }
}

TEST_F(Reading, endsWithTheDiscAndWhenItIsStopped)
{
    for (const Mode mode : modes) {
        SCOPED_TRACE(nameOf(mode));
        contents->goneFrom = 1000;
        const Got got = read(mode, {600, 900});
        EXPECT_TRUE(got.gone);
        EXPECT_LE(got.sound.size(), 400 * Disc::sectorBytes);
        EXPECT_TRUE(std::equal(got.sound.begin(), got.sound.end(), soundOf({600, 900}).begin()));
        contents->goneFrom = -1;
        stop = true;
        EXPECT_TRUE(read(mode, {600, 900}).sound.empty());
        stop = false;
    }
}

}
}
