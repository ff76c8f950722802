#include "host/discs/cd_text.h"
#include "host/discs/layout.h"
#include "host/discs/nrg_image.h"

#include "support/disc_nrg.h"

#include <gtest/gtest.h>

#include <functional>

namespace tonquay::host {

namespace {

using test::NrgDisc;
using Bytes = std::vector<std::byte>;

constexpr std::size_t sectorBytes = 2352;

NrgDisc twoTracks(bool second, bool byTrack)
{
    NrgDisc disc{.second = second, .byTrack = byTrack};
    disc.tracks.push_back({.number = 1, .sector = 0, .stored = Bytes(4 * sectorBytes)});
    disc.tracks.push_back({.number = 2, .sector = byTrack ? 4 + 152 : 4, .stored = Bytes(3 * sectorBytes)});
    return disc;
}

std::string outcome(const Bytes& image)
{
    const std::size_t footer = std::min(image.size(), nrgFooterBytes);
    const std::span<const std::byte> bytes(image);
    const auto chain = nrgChain(bytes.last(footer), static_cast<std::int64_t>(image.size()), "a.nrg");
    if (!chain)
        return base::describe(chain.failure());
    const auto sheet =
        parseNrg(bytes.subspan(static_cast<std::size_t>(chain->offset), static_cast<std::size_t>(chain->bytes)), *chain,
                 "a.nrg");
    if (!sheet)
        return base::describe(sheet.failure());
    const std::int64_t lengths[] = {static_cast<std::int64_t>(image.size())};
    const auto layout = layOut(*sheet, lengths);
    if (!layout)
        return base::describe(layout.failure());
    std::string table;
    for (const platform::DiscTrack& track : layout->tracks)
        table += (table.empty() ? "" : " ") + std::to_string(track.number) + (track.audio ? ":" : "d:") +
                 std::to_string(track.firstSector) + "+" + std::to_string(track.sectorCount);
    return table;
}

/// Where a chunk's body begins.
std::size_t bodyOf(const Bytes& image, const std::string& name)
{
    const std::string text(reinterpret_cast<const char*>(image.data()), image.size());
    const std::size_t at = text.rfind(name);
    EXPECT_NE(at, std::string::npos) << name;
    return at + 8;
}

TEST(NrgImage, whatDoesNotAddUpIsRefused)
{
    constexpr std::size_t daoHead = 22;
    struct Case {
        const char* what;
        std::function<void(Bytes&)> spoil;
        std::string message;
    };
    const auto set = [](const std::string& chunk, std::size_t offset, unsigned value) {
        return [=](Bytes& image) { image[bodyOf(image, chunk) + offset] = static_cast<std::byte>(value); };
    };
    const Case cases[] = {
        {"unspoilt", [](Bytes&) {}, "1:0+4 2:4+3"},
        {"empty", [](Bytes& image) { image.clear(); }, "a.nrg: this is no Nero image: it is too short"},
        {"no footer", [](Bytes& image) { image.pop_back(); }, "a.nrg: this is no Nero image: its footer is missing"},
        {"chain behind the end", [](Bytes& image) { image[image.size() - 8] = std::byte{1}; },
         "a.nrg: the chunks of this image lie behind its end"},
        {"chain with the top bit", [](Bytes& image) { image[image.size() - 8] = std::byte{0x80}; },
         "a.nrg: the chunks of this image lie behind its end"},
        {"chain too large",
         [](Bytes& image) {
             image.insert(image.begin() + static_cast<std::ptrdiff_t>(bodyOf(image, "END!") - 8), 2u << 20,
                          std::byte{0});
         },
         "a.nrg: the chunks of this image are larger than they ever are"},
        {"no end", [](Bytes& image) { image[bodyOf(image, "END!") - 8] = std::byte{'X'}; },
         "a.nrg: the chain of chunks is cut off"},
        {"chunk longer than the chain", [](Bytes& image) { image[bodyOf(image, "SINF") - 4] = std::byte{0xFF}; },
         "a.nrg: the chain of chunks is cut off"},
        {"no tracks", [](Bytes& image) { image[bodyOf(image, "DAOX") - 8] = std::byte{'X'}; },
         "a.nrg: there is no track in this image"},
        {"tracks 2 to 1", set("DAOX", 20, 3), "a.nrg: tracks 3 to 2 are no tracks of a disc"},
        {"tracks to 200", set("DAOX", 21, 200), "a.nrg: tracks 1 to 200 are no tracks of a disc"},
        {"more tracks than entries", set("DAOX", 21, 3), "a.nrg: the table of tracks is cut off"},
        {"unknown mode", set("DAOX", daoHead + 14, 9), "a.nrg: track 1 is of no known kind"},
        {"mode and size that differ", set("DAOX", daoHead + 12, 8), "a.nrg: track 1 is of no known kind"},
        {"start behind end", set("DAOX", daoHead + 18 + 8, 1), "a.nrg: track 1 lies outside of the image"},
        {"end behind the image", set("DAOX", daoHead + 18 + 16, 0xFF), "a.nrg: track 1 lies outside of the image"},
        {"not whole sectors", set("DAOX", daoHead + 18 + 23, 1), "a.nrg: track 1 is not made of whole sectors"},
        {"tracks that overlap",
         [](Bytes& image) {
             const std::size_t pregap = bodyOf(image, "DAOX") + daoHead + 42 + 18;
             image[pregap + 5] = std::byte{0x05}; // 153 sectors, one of them the track before's
             image[pregap + 6] = std::byte{0x7D};
             image[pregap + 7] = std::byte{0xB0};
         },
         "a.nrg: track 2 begins inside the track before it"},
        {"told to begin elsewhere", set("CUEX", 8 * 4 + 7, 3),
         "a.nrg: track 2 is told to begin at sector 3, but its data is at sector 4"},
        {"told to begin far away", set("CUEX", 8 * 2 + 4, 0x70),
         "a.nrg: track 1 is told to begin at sector 1879048192, but its data is at sector 0"},
    };
    for (const Case& c : cases) {
        Bytes image = test::nrgImage(twoTracks(true, false));
        c.spoil(image);
        EXPECT_EQ(outcome(image), c.message) << c.what;
    }
}

TEST(NrgImage, sessionsAndTracksMayBeginBehindGaps)
{
    EXPECT_EQ(outcome(test::nrgImage(twoTracks(false, false))), "1:0+4 2:4+3");
    EXPECT_EQ(outcome(test::nrgImage(twoTracks(false, true))), "1:0+4 2:156+3");
    EXPECT_EQ(outcome(test::nrgImage(twoTracks(true, true))), "1:0+4 2:156+3");
    NrgDisc overlapping = twoTracks(true, true);
    overlapping.tracks[1].sector = 2;
    EXPECT_EQ(outcome(test::nrgImage(overlapping)),
              "a.nrg: track 2 is told to begin at sector 2, but its data is at sector 4");
}

TEST(NrgImage, namesAreReadFromCdText)
{
    const auto packs =
        test::cdTextPacks({"Album", "", "A title of more than twelve letters", "\t", "Last"}, "Artist", "Rock");
    const platform::DiscNames names = parseCdText(packs, 1);
    EXPECT_EQ(names.album, L"Album");
    EXPECT_EQ(names.artist, L"Artist");
    EXPECT_EQ(names.genre, L"Rock");
    EXPECT_EQ(names.titles, (std::vector<std::wstring>{L"", L"A title of more than twelve letters",
                                                       L"A title of more than twelve letters", L"Last"}));

    struct Case {
        const char* what;
        std::function<void(Bytes&)> spoil;
        std::wstring album;
    };
    const Case cases[] = {
        {"two-byte characters", [](Bytes& bytes) { bytes[3] |= std::byte{0x80}; }, L""},
        {"another language", [](Bytes& bytes) { bytes[3] |= std::byte{0x10}; }, L""},
        {"cut off", [](Bytes& bytes) { bytes.erase(bytes.begin() + 17, bytes.end()); }, L""},
        {"nothing", [](Bytes& bytes) { bytes.clear(); }, L""},
        {"a track past 99", [](Bytes& bytes) { bytes[1] = std::byte{0x7F}; }, L""},
        {"Windows-1252", [](Bytes& bytes) { bytes[4] = std::byte{0xC4}; }, L"\u00C4lbum"},
    };
    for (const Case& c : cases) {
        Bytes bytes = packs;
        c.spoil(bytes);
        EXPECT_EQ(parseCdText(bytes, 1).album, c.album) << c.what;
    }
}

}

}
