#include "console/track_part.h"
#include "console/track_record.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tonquay::console {
namespace {

using testing::HasSubstr;

constexpr std::int64_t bytesPerSecond = 176400;

RipOptions cut(std::optional<int> from, std::optional<int> to, Method method = Method::burst)
{
    RipOptions options;
    options.method = method;
    options.fromSeconds = from;
    options.toSeconds = to;
    return options;
}

/// A track of 20.04 seconds behind another one.
const std::vector<platform::DiscTrack> tracks{{.number = 1, .firstSector = 0, .sectorCount = 750, .audio = true},
                                              {.number = 2, .firstSector = 750, .sectorCount = 1503, .audio = true}};

TEST(TrackPart, isWhatFromAndToName)
{
    struct Case {
        std::optional<int> from, to;
        std::int32_t startMs, lengthMs;
        std::int64_t bytes;
    };
    const Case cases[] = {
        {5, 15, 5000, 10000, 10 * bytesPerSecond},
        {std::nullopt, 1, 0, 1000, bytesPerSecond},
        {20, std::nullopt, 20000, 1000, 3 * 2352},
        {0, 1000, 0, 21000, 1503 * 2352},
    };
    for (const Case& c : cases) {
        const auto part = partOf(cut(c.from, c.to), {1}, tracks);
        ASSERT_TRUE(part && *part);
        EXPECT_EQ((*part)->startMs, c.startMs);
        EXPECT_EQ((*part)->lengthMs, c.lengthMs);
        EXPECT_EQ((*part)->bytes, c.bytes);
    }
    const auto none = partOf(cut(std::nullopt, std::nullopt, Method::digital2), {0, 1}, tracks);
    EXPECT_TRUE(none && !*none);

    state::PartialTracks wanted;
    want(**partOf(cut(5, 15), {1}, tracks), 1, wanted);
    EXPECT_EQ(wanted.partialStartMs(2), 5000);
    EXPECT_EQ(wanted.partialLengthMs(2), 10000);
}

TEST(TrackPart, whatIsNoPartOfOneTrackIsRefused)
{
    struct Case {
        RipOptions options;
        std::vector<std::size_t> rows;
        const char* names;
    };
    const Case cases[] = {
        {cut(5, 15, Method::digital2), {1}, "--method"},
        {cut(5, 15), {0, 1}, "--tracks"},
        {cut(21, 30), {1}, "--from"},
        {cut(5, 5), {1}, "--to"},
        {cut(std::nullopt, 0), {1}, "--to"},
    };
    for (const Case& c : cases) {
        const auto part = partOf(c.options, c.rows, tracks);
        ASSERT_FALSE(part) << c.names;
        EXPECT_THAT(base::describe(part.failure()), HasSubstr(c.names));
    }
}

TEST(ReadTroubles, areTimesOfTheTrackAndOnlyGivenUpOnesBreakIt)
{
    TrackRecord record;
    record.report = platform::DecodeReport{.track = 3};
    record.report->troubles = {.reread = {12}, .repaired = {65, 66, 67, 70}, .givenUp = {}};
    EXPECT_EQ(troublesText(record.report->troubles), "read again at 0:12; repaired at 1:05-1:07, 1:10");
    EXPECT_EQ(whyNotRead(record, 3), "");
    record.report->troubles.givenUp = {3};
    EXPECT_THAT(whyNotRead(record, 3), HasSubstr("given up at 0:03"));
    record.report->end = platform::DecodeReport::End::unwritten;
    record.report->problem = "disk full";
    EXPECT_EQ(whyNotRead(record, 3), "disk full");
}

}
}
