#include "host/discs/layout.h"

#include "host/discs/disc.h"

#include "base/text.h"

#include <algorithm>
#include <utility>

namespace tonquay::host {

namespace {

using base::Status;

constexpr std::int64_t sectorBytes = Disc::sectorBytes;
constexpr std::int64_t frameBytes = 4;
constexpr std::int64_t maxBytes = maxDiscSectors * sectorBytes;

class Builder {
public:
    Builder(const Sheet& sheet, std::span<const std::int64_t> lengths) : sheet_(sheet), lengths_(lengths) {}

    base::Result<Layout> build();

private:
    Status add(const SheetTrack& track);
    base::Result<std::int64_t> storedBytes(const SheetTrack& track, const SheetPiece& piece) const;
    Status place(const SheetTrack& track, const SheetPiece& piece, std::int64_t stored);
    Status append(Stretch stretch, int line);
    Status fillSector(const SheetTrack& track);
    Status setCounts();

    Status refuse(int line, std::string text) const { return sheetFailure(sheet_.path, line, std::move(text)); }
    std::string quoted(int file) const
    {
        return "\"" + shown(sheet_.files[static_cast<std::size_t>(file)].name) + "\"";
    }

    const Sheet& sheet_;
    std::span<const std::int64_t> lengths_;
    Layout layout_;
    std::int64_t end_ = 0;                ///< of the program area so far, in sound bytes
    std::vector<std::int64_t> trackEnds_; ///< of each track's own pieces, in sectors
};

/// How many bytes of its file one piece takes.
base::Result<std::int64_t> Builder::storedBytes(const SheetTrack& track, const SheetPiece& piece) const
{
    if (piece.file == SheetPiece::silence)
        return piece.bytes;
    const std::int64_t length = lengths_[static_cast<std::size_t>(piece.file)];
    const std::int64_t there = length - piece.offset;
    if (there < 0 || piece.bytes > there)
        return refuse(piece.line, quoted(piece.file) + " ends before this: it has " + std::to_string(length) +
                                      " bytes of sound or data, needed are " +
                                      std::to_string(piece.offset + std::max<std::int64_t>(piece.bytes, 1)))
            .failure();
    if (piece.bytes != SheetPiece::toEnd)
        return piece.bytes;
    if (piece.rest == SheetPiece::Rest::drop)
        return there - there % track.sectorBytes;
    return track.audio ? there - there % frameBytes : there;
}

/// Bytes as stored are counted in the track's own sectors; the program area counts them in sectors of sound.
Status Builder::place(const SheetTrack& track, const SheetPiece& piece, std::int64_t stored)
{
    const bool plain = track.sectorBytes == sectorBytes;
    Stretch stretch;
    stretch.first = end_;
    // Bounded before it is multiplied: what a sheet claims may be any number.
    if (stored > maxBytes)
        return append({.bytes = stored}, piece.line);
    stretch.bytes = plain ? stored : (stored + track.sectorBytes - 1) / track.sectorBytes * sectorBytes;
    stretch.sectorBytes = track.sectorBytes;
    if (!track.audio) {
        stretch.from = Stretch::From::nowhere;
    } else if (piece.file != SheetPiece::silence) {
        stretch.from = Stretch::From::file;
        stretch.file = piece.file;
        stretch.offset = piece.offset;
    }
    if (Status status = append(stretch, piece.line); !status || piece.rest != SheetPiece::Rest::pad)
        return status;
    return fillSector(track);
}

Status Builder::append(Stretch stretch, int line)
{
    if (stretch.bytes > maxBytes - end_)
        return refuse(line, "this is more than a disc can hold");
    if (stretch.bytes == 0)
        return {};
    end_ += stretch.bytes;
    if (!layout_.stretches.empty()) {
        Stretch& last = layout_.stretches.back();
        const std::int64_t stored =
            last.sectorBytes == sectorBytes ? last.bytes : last.bytes / sectorBytes * last.sectorBytes;
        const bool inFile = last.file == stretch.file && last.sectorBytes == stretch.sectorBytes &&
                            last.offset + stored == stretch.offset;
        if (last.from == stretch.from && (inFile || stretch.from != Stretch::From::file)) {
            last.bytes += stretch.bytes;
            return {};
        }
    }
    layout_.stretches.push_back(stretch);
    return {};
}

/// Every track ends with a whole sector.
Status Builder::fillSector(const SheetTrack& track)
{
    const std::int64_t rest = end_ % sectorBytes;
    if (rest == 0)
        return {};
    Stretch fill;
    fill.first = end_;
    fill.bytes = sectorBytes - rest;
    fill.from = track.audio ? Stretch::From::silence : Stretch::From::nowhere;
    return append(fill, track.line);
}

Status Builder::add(const SheetTrack& track)
{
    if (track.emptyBefore < 0 || track.emptyBefore > maxDiscSectors)
        return refuse(track.line, "this is more than a disc can hold");
    Stretch gap;
    gap.first = end_;
    gap.bytes = track.emptyBefore * sectorBytes;
    gap.from = Stretch::From::nowhere;
    if (Status status = append(gap, track.line); !status)
        return status;

    const std::int64_t begin = end_;
    std::int64_t start = begin;
    for (std::size_t i = 0; i < track.pieces.size(); ++i) {
        if (i == track.startPiece)
            start = end_;
        const SheetPiece& piece = track.pieces[i];
        const auto stored = storedBytes(track, piece);
        if (!stored)
            return stored.failure();
        if (Status status = place(track, piece, *stored); !status)
            return status;
    }
    if (track.startPiece >= track.pieces.size())
        start = end_;
    if (Status status = fillSector(track); !status)
        return status;

    const std::string name = "track " + std::to_string(track.number);
    if (track.startOffset < 0 || track.startOffset > maxBytes)
        return refuse(track.line, name + " starts behind its end");
    const std::int64_t offset = (track.startOffset + track.sectorBytes - 1) / track.sectorBytes * track.sectorBytes;
    start += track.sectorBytes == sectorBytes ? track.startOffset : offset / track.sectorBytes * sectorBytes;
    const std::int64_t first = (start + sectorBytes - 1) / sectorBytes;
    if (first * sectorBytes >= end_)
        return refuse(track.line, name + " is empty");
    layout_.tracks.push_back({track.number, static_cast<int>(first), 0, track.audio});
    trackEnds_.push_back(end_ / sectorBytes);
    return {};
}

Status Builder::setCounts()
{
    for (std::size_t i = 0; i < layout_.tracks.size(); ++i) {
        platform::DiscTrack& track = layout_.tracks[i];
        std::int64_t end = trackEnds_[i];
        if (i + 1 < layout_.tracks.size()) {
            const bool ownEnd = track.audio && !layout_.tracks[i + 1].audio;
            if (!ownEnd && sheet_.tracks[i + 1].emptyBefore == 0)
                end = layout_.tracks[i + 1].firstSector;
        }
        track.sectorCount = static_cast<int>(end) - track.firstSector;
    }
    layout_.sectors = static_cast<int>(end_ / sectorBytes);
    return {};
}

base::Result<Layout> Builder::build()
{
    constexpr std::size_t maxTracks = 99;
    if (sheet_.tracks.empty())
        return sheetFailure(sheet_.path, 0, "there is no track in this image");
    if (sheet_.tracks.size() > maxTracks)
        return sheetFailure(sheet_.path, sheet_.tracks[maxTracks].line, "more than 99 tracks");
    for (const SheetTrack& track : sheet_.tracks)
        if (Status status = add(track); !status)
            return status.failure();
    if (Status status = setCounts(); !status)
        return status.failure();
    return std::move(layout_);
}

}

base::Result<Layout> layOut(const Sheet& sheet, std::span<const std::int64_t> lengths)
{
    return Builder(sheet, lengths).build();
}

}
