#include "host/discs/nrg_image.h"

#include "base/red_book.h"
#include "host/discs/cd_text.h"
#include "host/discs/nrg_chunks.h"

#include "base/text.h"

#include <algorithm>
#include <array>
#include <map>

namespace tonquay::host {

namespace {

using base::Status;

constexpr std::int64_t firstPregap = 150;
constexpr std::int64_t maxOffset = std::int64_t{1} << 50;

struct StoredMode {
    unsigned code;
    bool audio;
    int sectorBytes;
};

constexpr std::array storedModes{
    StoredMode{0x00, false, 2048}, StoredMode{0x02, false, 2048}, StoredMode{0x03, false, 2336},
    StoredMode{0x05, false, 2352}, StoredMode{0x06, false, 2352}, StoredMode{0x07, true, 2352},
    StoredMode{0x0F, false, 2448}, StoredMode{0x10, true, 2448},  StoredMode{0x11, false, 2448},
};

/// A track as a disc-at-once or track-at-once chunk has it.
struct StoredTrack {
    int number = 0;
    StoredMode mode{};
    std::int64_t pregap = 0; ///< offsets in the file
    std::int64_t start = 0;
    std::int64_t end = 0;
    std::optional<std::int64_t> sector; ///< of index 1, where a chunk tells it
    bool mayFollowGap = false;          ///< first of a session, or written track at once
};

class NrgParser {
public:
    NrgParser(const NrgChain& chain, const std::string& path) : chain_(chain) { sheet_.path = path; }

    base::Result<Sheet> parse(std::span<const std::byte> chunks);

private:
    Status chunk(const NrgChunk& chunk);
    Status discAtOnce(std::span<const std::byte> body);
    Status trackAtOnce(std::span<const std::byte> body);
    void cueTable(std::span<const std::byte> body);
    Status keep(StoredTrack track);
    Status place(const StoredTrack& track);

    int nextNumber() const { return tracks_.empty() ? 1 : tracks_.back().number + 1; }
    Status refuse(std::string text) const { return sheetFailure(sheet_.path, 0, std::move(text)); }

    NrgChain chain_;
    Sheet sheet_;
    std::vector<StoredTrack> tracks_;
    std::map<int, std::int64_t> starts_; ///< sector of index 1 by track, from the cue tables
    std::span<const std::byte> cdText_;
    std::int64_t end_ = 0; ///< sector behind the tracks placed so far
};

const StoredMode* findMode(std::uint64_t code)
{
    const auto* const mode = std::ranges::find(storedModes, static_cast<unsigned>(code), &StoredMode::code);
    return mode == storedModes.end() ? nullptr : mode;
}

int fromBcd(std::uint64_t byte)
{
    return static_cast<int>((byte >> 4) * 10 + (byte & 0x0F));
}

base::Result<Sheet> NrgParser::parse(std::span<const std::byte> chunks)
{
    const std::size_t slash = sheet_.path.rfind('/');
    const std::string name = slash == std::string::npos ? sheet_.path : sheet_.path.substr(slash + 1);
    sheet_.files.push_back({base::fromHostBytes(name), SheetFile::Kind::raw, false, 0});

    BigEndian rest(chunks);
    for (;;) {
        const auto next = takeChunk(rest);
        if (!next)
            return refuse("the chain of chunks is cut off").failure();
        if (next->name == "END!")
            break;
        if (Status status = chunk(*next); !status)
            return status.failure();
    }
    if (tracks_.empty())
        return refuse("there is no track in this image").failure();
    for (const StoredTrack& track : tracks_)
        if (Status status = place(track); !status)
            return status.failure();
    sheet_.names = parseCdText(cdText_, sheet_.tracks.front().number);
    return std::move(sheet_);
}

Status NrgParser::chunk(const NrgChunk& chunk)
{
    if (chunk.name == (chain_.second ? "DAOX" : "DAOI"))
        return discAtOnce(chunk.body);
    if (chunk.name == (chain_.second ? "ETN2" : "ETNF"))
        return trackAtOnce(chunk.body);
    if (chunk.name == "CUEX" || chunk.name == "CUES")
        cueTable(chunk.body);
    else if (chunk.name == "CDTX")
        cdText_ = chunk.body;
    // SINF, MTYP, DINF, TOCT, RELO and others say nothing that a reader of sound needs.
    return {};
}

Status NrgParser::discAtOnce(std::span<const std::byte> body)
{
    BigEndian rest(body);
    rest.run(4 + 14 + 2); // length once more, catalogue number, kind of disc
    const auto first = static_cast<int>(rest.take(1));
    const auto last = static_cast<int>(rest.take(1));
    if (rest.isShort() || first < 1 || last < first || last > 99)
        return refuse("tracks " + std::to_string(first) + " to " + std::to_string(last) + " are no tracks of a disc");
    if (!tracks_.empty() && first != nextNumber())
        return refuse("track " + std::to_string(first) + " follows track " + std::to_string(tracks_.back().number));
    const std::size_t offsetBytes = chain_.second ? 8 : 4;
    for (int number = first; number <= last; ++number) {
        rest.run(12); // ISRC
        const auto sectorBytes = rest.take(2);
        const auto* const mode = findMode(rest.take(2) >> 8);
        rest.run(2);
        StoredTrack track;
        track.number = number;
        track.pregap = static_cast<std::int64_t>(std::min<std::uint64_t>(rest.take(offsetBytes), maxOffset));
        track.start = static_cast<std::int64_t>(std::min<std::uint64_t>(rest.take(offsetBytes), maxOffset));
        track.end = static_cast<std::int64_t>(std::min<std::uint64_t>(rest.take(offsetBytes), maxOffset));
        if (rest.isShort())
            return refuse("the table of tracks is cut off");
        if (mode == nullptr || sectorBytes != static_cast<std::uint64_t>(mode->sectorBytes))
            return refuse("track " + std::to_string(number) + " is of no known kind");
        track.mode = *mode;
        track.mayFollowGap = number == first;
        if (Status status = keep(track); !status)
            return status;
    }
    return {};
}

Status NrgParser::trackAtOnce(std::span<const std::byte> body)
{
    const std::size_t offsetBytes = chain_.second ? 8 : 4;
    const std::size_t entryBytes = chain_.second ? 32 : 20;
    for (; body.size() >= entryBytes; body = body.subspan(entryBytes)) {
        BigEndian entry(body);
        StoredTrack track;
        track.number = nextNumber();
        track.start = static_cast<std::int64_t>(std::min<std::uint64_t>(entry.take(offsetBytes), maxOffset));
        track.pregap = track.start;
        track.end =
            track.start + static_cast<std::int64_t>(std::min<std::uint64_t>(entry.take(offsetBytes), maxOffset));
        const auto* const mode = findMode(entry.take(4));
        track.sector = static_cast<std::int64_t>(entry.take(4));
        if (mode == nullptr)
            return refuse("track " + std::to_string(track.number) + " is of no known kind");
        track.mode = *mode;
        track.mayFollowGap = true;
        if (Status status = keep(track); !status)
            return status;
    }
    return body.empty() ? Status() : refuse("the table of tracks is cut off");
}

/// Places of index 1 by track: 8 bytes an entry. The second version counts sectors from sector 0, the first has
/// minutes, seconds and frames from the start of the first pregap.
void NrgParser::cueTable(std::span<const std::byte> body)
{
    constexpr std::size_t entryBytes = 8;
    for (; body.size() >= entryBytes; body = body.subspan(entryBytes)) {
        BigEndian entry(body);
        entry.run(1);
        const auto number = entry.take(1);
        const auto index = entry.take(1);
        entry.run(1);
        std::int64_t sector = 0;
        if (chain_.second) {
            sector = static_cast<std::int32_t>(static_cast<std::uint32_t>(entry.take(4)));
        } else {
            entry.run(1);
            const auto minutes = static_cast<std::int64_t>(entry.take(1));
            const auto seconds = static_cast<std::int64_t>(entry.take(1));
            sector = base::red_book::sectorAt(minutes, seconds, static_cast<std::int64_t>(entry.take(1))) - firstPregap;
        }
        constexpr std::uint64_t leadOut = 0xAA;
        if (index == 1 && number != leadOut)
            starts_[fromBcd(number)] = sector;
    }
}

Status NrgParser::keep(StoredTrack track)
{
    const std::string name = "track " + std::to_string(track.number);
    if (track.number > 99)
        return refuse("more than 99 tracks");
    if (track.pregap > track.start || track.start >= track.end || track.end > chain_.offset)
        return refuse(name + " lies outside of the image");
    if ((track.start - track.pregap) % track.mode.sectorBytes != 0 ||
        (track.end - track.start) % track.mode.sectorBytes != 0)
        return refuse(name + " is not made of whole sectors");
    if (!tracks_.empty() && track.pregap < tracks_.back().end)
        return refuse(name + " begins inside the track before it");
    tracks_.push_back(track);
    return {};
}

Status NrgParser::place(const StoredTrack& track)
{
    const bool first = sheet_.tracks.empty();
    std::int64_t pregap = (track.start - track.pregap) / track.mode.sectorBytes;
    std::int64_t sector = first ? std::max<std::int64_t>(pregap - firstPregap, 0) : end_ + pregap;
    const auto told = starts_.find(track.number);
    if (track.sector || told != starts_.end()) {
        const std::int64_t there = track.sector ? *track.sector : told->second;
        const bool fits = first ? there >= 0 : there == sector || (track.mayFollowGap && there > sector);
        if (!fits || there > maxDiscSectors)
            return refuse("track " + std::to_string(track.number) + " is told to begin at sector " +
                          std::to_string(there) + ", but its data is at sector " + std::to_string(sector));
        sector = there;
    }

    SheetTrack placed;
    placed.number = track.number;
    placed.audio = track.mode.audio;
    placed.sectorBytes = track.mode.sectorBytes;
    std::int64_t offset = track.pregap;
    if (pregap > sector - end_) {
        // What of the first pregap is before sector 0.
        offset += (pregap - (sector - end_)) * track.mode.sectorBytes;
        pregap = sector - end_;
    }
    placed.emptyBefore = sector - end_ - pregap;
    SheetPiece piece;
    piece.file = 0;
    piece.offset = offset;
    piece.bytes = track.end - offset;
    placed.startOffset = pregap * track.mode.sectorBytes;
    placed.pieces.push_back(piece);
    sheet_.tracks.push_back(std::move(placed));
    end_ = sector + (track.end - track.start) / track.mode.sectorBytes;
    return {};
}

}

base::Result<NrgChain> nrgChain(std::span<const std::byte> footer, std::int64_t fileBytes, const std::string& path)
{
    if (footer.size() != nrgFooterBytes || fileBytes < static_cast<std::int64_t>(nrgFooterBytes))
        return sheetFailure(path, 0, "this is no Nero image: it is too short");
    const auto name = [&](std::size_t at) {
        std::string letters;
        for (const std::byte byte : footer.subspan(at, 4))
            letters.push_back(static_cast<char>(byte));
        return letters;
    };
    NrgChain chain;
    chain.second = name(0) == "NER5";
    if (!chain.second && name(4) != "NERO")
        return sheetFailure(path, 0, "this is no Nero image: its footer is missing");
    const std::int64_t footerBytes = chain.second ? 12 : 8;
    const std::uint64_t offset = BigEndian(footer.last(chain.second ? 8 : 4)).take(chain.second ? 8 : 4);
    const std::int64_t end = fileBytes - footerBytes;
    if (offset >= static_cast<std::uint64_t>(end))
        return sheetFailure(path, 0, "the chunks of this image lie behind its end");
    chain.offset = static_cast<std::int64_t>(offset);
    chain.bytes = end - chain.offset;
    if (chain.bytes > static_cast<std::int64_t>(maxSheetBytes))
        return sheetFailure(path, 0, "the chunks of this image are larger than they ever are");
    return chain;
}

base::Result<Sheet> parseNrg(std::span<const std::byte> chunks, const NrgChain& chain, const std::string& path)
{
    return NrgParser(chain, path).parse(chunks);
}

}
