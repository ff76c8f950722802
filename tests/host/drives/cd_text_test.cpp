#include "host/drives/host_drives.h"
#include "simulated_disc.h"

#include <array>
#include <cstdint>
#include <fstream>
#include <gtest/gtest.h>

namespace tonquay::host {
namespace {

constexpr std::size_t textBytes = 12;
constexpr std::uint8_t titles = 0x80;
constexpr std::uint8_t performers = 0x81;
constexpr std::uint8_t messages = 0x85;
constexpr std::uint8_t genres = 0x87;
constexpr std::uint8_t sizes = 0x8f;

/// CD-Text as a drive hands it over (packs of 18 bytes, Red Book and MMC), in ISO 8859-1.
class Packs {
public:
    /// Texts of one kind: the disc's, then each track's.
    void add(std::uint8_t kind, const std::vector<std::string>& texts)
    {
        std::string joined;
        std::vector<std::uint8_t> trackOf;
        for (std::size_t track = 0; track < texts.size(); ++track) {
            joined += texts[track] + '\0';
            trackOf.resize(joined.size(), static_cast<std::uint8_t>(track));
        }
        std::size_t begun = 0;
        for (std::size_t at = 0; at < joined.size(); at += textBytes) {
            while (at > 0 && begun < at && trackOf[begun] != trackOf[at])
                ++begun;
            addPack(kind, trackOf[at], static_cast<std::uint8_t>(std::min<std::size_t>(at - begun, 15)),
                    joined.substr(at, textBytes));
        }
    }

    void addSizes(int lastTrack)
    {
        std::string table(36, '\0');
        table[1] = 1;
        table[2] = static_cast<char>(lastTrack);
        for (std::size_t kind = 0; kind < 16; ++kind)
            table[4 + kind] = static_cast<char>(counts_[kind]);
        table[4 + 15] = 3;
        table[20] = static_cast<char>(packs_.size() / 18 + 2);
        table[28] = 9;
        for (std::uint8_t part = 0; part < 3; ++part)
            addPack(sizes, part, 0, table.substr(part * textBytes, textBytes));
    }

    void write(const std::filesystem::path& file) const { std::ofstream(file, std::ios::binary) << packs_; }

private:
    void addPack(std::uint8_t kind, std::uint8_t track, std::uint8_t position, std::string text)
    {
        text.resize(textBytes, '\0');
        std::string pack{static_cast<char>(kind), static_cast<char>(track), static_cast<char>(packs_.size() / 18),
                         static_cast<char>(position)};
        pack += text;
        unsigned sum = 0;
        for (const char c : pack) {
            sum ^= static_cast<unsigned>(static_cast<std::uint8_t>(c)) << 8;
            for (int bit = 0; bit < 8; ++bit)
                sum = (sum & 0x8000) != 0 ? (sum << 1 ^ 0x1021) & 0xffff : sum << 1;
        }
        sum ^= 0xffff;
        pack += static_cast<char>(sum >> 8);
        pack += static_cast<char>(sum & 0xff);
        packs_ += pack;
        ++counts_[kind & 15];
    }

    std::string packs_;
    std::array<int, 16> counts_{};
};

platform::DiscNames namesFrom(const SimulatedDisc& disc)
{
    disc.page("cdtext " + (disc.folder() / "cdtext").string() + "\n");
    const auto drives = driveSet({.devices = {disc.device()}, .machine = false, .opener = nullptr});
    EXPECT_EQ(drives->at(0).tracks().size(), 3u);
    return drives->at(0).names();
}

TEST(CdText, namesTheDiscAndItsTracks)
{
    const SimulatedDisc disc;
    Packs packs;
    packs.add(titles, {"Sch\xf6ne T\xf6ne aus der Ferne", "\xc4rger", "A title longer than one pack", ""});
    packs.add(performers, {"Caf\xe9", "Caf\xe9", "Caf\xe9", "Caf\xe9"});
    packs.add(messages, {"Recorded live", "", "", ""});
    // Two bytes of code, 16 being Jazz, then words.
    packs.add(genres, {std::string("\0\x10", 2) + "Cool Jazz"});
    packs.addSizes(3);
    packs.write(disc.folder() / "cdtext");

    const platform::DiscNames names = namesFrom(disc);
    EXPECT_EQ(names.artist, L"Caf\u00e9");
    EXPECT_EQ(names.album, L"Sch\u00f6ne T\u00f6ne aus der Ferne");
    EXPECT_EQ(names.comment, L"Recorded live");
    EXPECT_EQ(names.genre, L"Cool Jazz");
    EXPECT_EQ(names.year, L"");
    EXPECT_EQ(names.titles, (std::vector<std::wstring>{L"\u00c4rger", L"A title longer than one pack"}));
}

TEST(CdText, thatIsBrokenLeavesTheDiscNameless)
{
    for (const std::size_t bytes :
         {std::size_t{0}, std::size_t{1}, std::size_t{17}, std::size_t{18}, std::size_t{1800}, std::size_t{70000}}) {
        const SimulatedDisc disc;
        std::ofstream(disc.folder() / "cdtext", std::ios::binary) << std::string(bytes, '\x8f');
        EXPECT_EQ(namesFrom(disc).album, L"") << bytes << " bytes";
    }
}

}
}
