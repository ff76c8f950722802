#include "host/drives/drive_abilities.h"
#include "host/drives/drive_table.h"

#include <gtest/gtest.h>
#include <string>

namespace tonquay::host {
namespace {

std::string written(const std::optional<std::vector<platform::DiscTrack>>& tracks)
{
    if (!tracks)
        return "refused";
    std::string text;
    for (const platform::DiscTrack& track : *tracks)
        text += std::to_string(track.number) + (track.audio ? "a" : "d") + std::to_string(track.firstSector) + "+" +
                std::to_string(track.sectorCount) + " ";
    return text;
}

TEST(DriveTable, tracksEndWhereTheNextBeginsOrTheirSessionEnds)
{
    struct Case {
        const char* what;
        RawTable table;
        std::string tracks;
    };
    const Case cases[] = {
        {"audio only", {{{1, 0, true}, {2, 500, true}}, 900}, "1a0+500 2a500+400 "},
        {"data first", {{{1, 0, false}, {2, 500, true}}, 900}, "1d0+500 2a500+400 "},
        {"data last in one session", {{{1, 0, true}, {2, 500, false}}, 900}, "1a0+500 2d500+400 "},
        {"data in a second session", {{{1, 0, true}, {2, 12000, false}}, 12900, 12000}, "1a0+600 2d12000+900 "},
        {"audio in a second session", {{{1, 0, true}, {2, 12000, true}}, 12900, 12000}, "1a0+600 2a12000+900 "},
        {"a gap that cannot be", {{{1, 0, true}, {2, 500, false}}, 900, 500}, "1a0+0 2d500+400 "},
        {"numbers from 7 on", {{{7, 32, true}, {8, 500, true}}, 900}, "7a32+468 8a500+400 "},
        {"no track", {{}, 900}, "refused"},
        {"number 0", {{{0, 0, true}}, 900}, "refused"},
        {"number 100", {{{99, 0, true}, {100, 500, true}}, 900}, "refused"},
        {"a number twice", {{{1, 0, true}, {1, 500, true}}, 900}, "refused"},
        {"sectors that fall", {{{1, 500, true}, {2, 500, true}}, 900}, "refused"},
        {"before the disc", {{{1, -45301, true}}, 900}, "refused"},
        {"lead-out inside the last track", {{{1, 0, true}, {2, 500, true}}, 500}, "refused"},
        {"lead-out beyond any disc", {{{1, 0, true}}, 2000000000}, "refused"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(written(tracksOf(c.table)), c.tracks) << c.what;
}

TEST(CapabilitiesPage, takesEachFieldFromItsPlaceAndRefusesLess)
{
    const std::vector<std::uint8_t> page{0xaa, 18, 0x2a, 0xff, 0x5f, 0xfe, 0x0b, 0, 0x21, 0x13, 0, 0, 0x08, 0x01};
    const auto parsed = parseCapabilitiesPage(page);
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->abilities, ability::readsCdRw | ability::readsDvdRom | ability::readsDvdRam |
                                     ability::readsMode2Form1 | ability::readsMultiSession | ability::streamIsAccurate);
    EXPECT_TRUE(parsed->canLock);
    EXPECT_TRUE(parsed->locked);
    EXPECT_TRUE(parsed->canOpen);
    EXPECT_EQ(parsed->maxReadSpeed, 8467u);
    EXPECT_EQ(parsed->bufferKb, 2049u);

    EXPECT_FALSE(parseCapabilitiesPage(std::span(page).first(13)));
    std::vector<std::uint8_t> other = page;
    other[0] = 0x05;
    EXPECT_FALSE(parseCapabilitiesPage(other));
}

}
}
