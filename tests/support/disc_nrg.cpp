#include "support/disc_nrg.h"

#include <cstdint>
#include <string_view>

namespace tonquay::test {

namespace {

class Bytes {
public:
    Bytes& text(std::string_view letters)
    {
        for (const char c : letters)
            bytes_.push_back(static_cast<std::byte>(c));
        return *this;
    }
    Bytes& number(std::uint64_t value, int count)
    {
        for (int i = count - 1; i >= 0; --i)
            bytes_.push_back(static_cast<std::byte>(value >> (8 * i) & 0xFF));
        return *this;
    }
    Bytes& zeros(std::size_t count)
    {
        bytes_.resize(bytes_.size() + count);
        return *this;
    }
    Bytes& add(const std::vector<std::byte>& other)
    {
        bytes_.insert(bytes_.end(), other.begin(), other.end());
        return *this;
    }
    Bytes& chunk(std::string_view name, const Bytes& body)
    {
        return text(name).number(body.bytes_.size(), 4).add(body.bytes_);
    }
    const std::vector<std::byte>& get() const { return bytes_; }

private:
    std::vector<std::byte> bytes_;
};

std::uint64_t bcd(int number)
{
    const auto tens = static_cast<std::uint64_t>(number / 10);
    return tens << 4 | static_cast<std::uint64_t>(number % 10);
}

void cueEntry(Bytes& table, bool second, int number, int index, int sector)
{
    table.number(0x01, 1).number(number < 0 ? 0xAA : bcd(number), 1).number(bcd(index), 1).number(0, 1);
    if (second) {
        table.number(static_cast<std::uint32_t>(sector), 4);
    } else {
        const int absolute = sector + 150;
        table.number(0, 1);
        for (const int field : {absolute / 75 / 60, absolute / 75 % 60, absolute % 75})
            table.number(static_cast<std::uint64_t>(field), 1);
    }
}

}

std::vector<std::byte> cdTextPacks(const std::vector<std::string>& titles, const std::string& artist,
                                   const std::string& genre)
{
    Bytes packs;
    int sequence = 0;
    const auto write = [&](unsigned type, const std::string& text) {
        // The track that each pack begins with is the number of zero bytes before it.
        int track = 0;
        std::size_t textStart = 0;
        for (std::size_t at = 0; at < text.size(); at += 12) {
            std::string part = text.substr(at, 12);
            const std::size_t before = at - textStart;
            packs.number(type, 1).number(static_cast<std::uint64_t>(track), 1);
            packs.number(static_cast<std::uint64_t>(sequence++), 1).number(before < 15 ? before : 15, 1);
            for (std::size_t i = 0; i < part.size(); ++i)
                if (part[i] == '\0') {
                    ++track;
                    textStart = at + i + 1;
                }
            part.resize(12, '\0');
            packs.text(part).zeros(2);
        }
    };
    std::string all;
    for (const std::string& title : titles)
        all += title + '\0';
    write(0x80, all);
    if (!artist.empty())
        write(0x81, artist + '\0');
    if (!genre.empty())
        write(0x87, std::string("\0\x17", 2) + genre + '\0');
    return packs.get();
}

std::vector<std::byte> nrgImage(const NrgDisc& disc)
{
    const int offsetBytes = disc.second ? 8 : 4;
    constexpr int firstPregap = 150;
    Bytes image;
    Bytes cue;
    Bytes dao;
    Bytes etn;
    std::vector<std::string> titles{disc.album};
    cueEntry(cue, disc.second, 0, 0, -150);
    dao.number(0, 4).zeros(14 + 2);
    dao.number(static_cast<std::uint64_t>(disc.tracks.front().number), 1);
    dao.number(static_cast<std::uint64_t>(disc.tracks.back().number), 1);
    for (std::size_t i = 0; i < disc.tracks.size(); ++i) {
        const NrgTrack& track = disc.tracks[i];
        const auto size = static_cast<std::size_t>(track.sectorBytes);
        const std::size_t begin = image.get().size();
        std::size_t pregap = static_cast<std::size_t>(track.pregap) * size;
        if (i == 0 && !disc.byTrack) {
            image.zeros(firstPregap * size);
            pregap += firstPregap * size;
        }
        image.add(track.stored);
        cueEntry(cue, disc.second, track.number, 0, track.sector - track.pregap);
        cueEntry(cue, disc.second, track.number, 1, track.sector);
        const std::uint64_t mode = track.audio ? 7 : track.sectorBytes == 2048 ? 0 : track.sectorBytes == 2336 ? 3 : 5;
        dao.zeros(12).number(size, 2).number(mode << 8, 2).number(1, 2);
        dao.number(begin, offsetBytes).number(begin + pregap, offsetBytes).number(image.get().size(), offsetBytes);
        etn.number(begin, offsetBytes).number(track.stored.size(), offsetBytes).number(mode, 4);
        etn.number(static_cast<std::uint64_t>(track.sector), 4).zeros(disc.second ? 8 : 4);
        titles.push_back(track.title);
    }
    const std::size_t chain = image.get().size();
    if (disc.byTrack)
        image.chunk(disc.second ? "ETN2" : "ETNF", etn);
    else
        image.chunk(disc.second ? "CUEX" : "CUES", cue).chunk(disc.second ? "DAOX" : "DAOI", dao);
    image.chunk("CDTX", Bytes().add(cdTextPacks(titles, disc.artist, disc.genre)));
    image.chunk("SINF", Bytes().number(disc.tracks.size(), 4)).chunk("MTYP", Bytes().number(1, 4)).chunk("END!", {});
    image.text(disc.second ? "NER5" : "NERO").number(chain, offsetBytes);
    return image.get();
}

}
