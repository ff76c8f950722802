#include "host/discs/toc_sheet.h"

#include "host/discs/toc_text.h"
#include "host/discs/toc_words.h"

#include "base/text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tonquay::host {

namespace {

using base::Status;

constexpr std::int64_t frameBytes = 4;
constexpr std::int64_t maxNumber = 1'000'000'000'000;

struct TrackMode {
    std::string_view name;
    bool audio;
    int sectorBytes;
};

constexpr std::array trackModes{
    TrackMode{"AUDIO", true, 2352},           TrackMode{"MODE0", false, 2336},
    TrackMode{"MODE1", false, 2048},          TrackMode{"MODE1_RAW", false, 2352},
    TrackMode{"MODE2", false, 2336},          TrackMode{"MODE2_RAW", false, 2352},
    TrackMode{"MODE2_FORM1", false, 2048},    TrackMode{"MODE2_FORM2", false, 2324},
    TrackMode{"MODE2_FORM_MIX", false, 2336},
};

const TrackMode* findMode(const std::string& name)
{
    const auto* const mode = std::ranges::find(trackModes, std::string_view(name), &TrackMode::name);
    return mode == trackModes.end() ? nullptr : mode;
}

class TocParser {
public:
    TocParser(std::string_view bytes, const std::string& path) : words_(bytes) { sheet_.path = path; }

    base::Result<Sheet> parse();

private:
    enum class Found { yes, no };

    Status statement();
    base::Result<Found> discStatement(const std::string& word);
    base::Result<Found> flag(const std::string& word);
    base::Result<Found> pieceStatement(const std::string& word);
    Status track();
    Status file(bool audioUnits);
    Status silence(bool zero);
    Status start();
    Status pregap();
    Status index();
    Status text();
    Status addFile(const TocWord& name, bool swapped, SheetPiece piece);
    Status startHere(std::size_t piece, std::int64_t offset);
    Status finishTrack();

    bool inTrack() const { return !sheet_.tracks.empty(); }
    bool nextIsLength() const;
    base::Result<std::int64_t> length(std::int64_t unit);
    base::Result<int> time();
    Status refuse(std::string text) const { return sheetFailure(sheet_.path, line_, std::move(text)); }
    Status refuse(int line, std::string text) const { return sheetFailure(sheet_.path, line, std::move(text)); }

    TocWords words_;
    Sheet sheet_;
    int line_ = 0; ///< of the statement in hand
    int firstNumber_ = 1;
    bool started_ = false; ///< the track in force has a START or PREGAP
    int lastIndex_ = 0;
};

std::string keyword(const TocWord& word)
{
    return word.kind == TocWord::Kind::word ? base::utf8(base::upper(base::fromHostBytes(word.text))) : std::string();
}

base::Result<Sheet> TocParser::parse()
{
    while (words_.peek().kind != TocWord::Kind::end)
        if (Status status = statement(); !status)
            return status.failure();
    if (words_.broken())
        return refuse(words_.peek().line, "a text without a closing quote").failure();
    if (!inTrack())
        return sheetFailure(sheet_.path, 0, "there is no track in this table of contents");
    if (Status status = finishTrack(); !status)
        return status.failure();
    return std::move(sheet_);
}

Status TocParser::statement()
{
    const TocWord first = words_.take();
    line_ = first.line;
    const std::string word = keyword(first);
    if (word == "TRACK")
        return track();
    if (word == "CD_TEXT")
        return text();
    for (const auto step : {&TocParser::discStatement, &TocParser::flag, &TocParser::pieceStatement}) {
        const auto found = (this->*step)(word);
        if (!found)
            return found.failure();
        if (*found == Found::yes)
            return {};
    }
    return refuse("\"" + shown(first.text) + "\" is no statement that can stand here");
}

base::Result<TocParser::Found> TocParser::discStatement(const std::string& word)
{
    if (word == "CD_DA" || word == "CD_ROM" || word == "CD_ROM_XA" || word == "CD_I")
        return inTrack() ? Found::no : Found::yes;
    if (word == "CATALOG" || word == "ISRC") {
        if (words_.take().kind != TocWord::Kind::string)
            return refuse(word + " without its text").failure();
        return Found::yes;
    }
    if (word == "FIRST_TRACK_NO" && !inTrack()) {
        const auto number = wholeNumber(words_.take().text, 99);
        if (!number || *number == 0)
            return refuse("the first track number is none from 1 to 99").failure();
        firstNumber_ = static_cast<int>(*number);
        return Found::yes;
    }
    return Found::no;
}

base::Result<TocParser::Found> TocParser::flag(const std::string& word)
{
    if (!inTrack())
        return Found::no;
    if (word == "NO") {
        const std::string flag = keyword(words_.take());
        if (flag != "COPY" && flag != "PRE_EMPHASIS")
            return refuse("NO without COPY or PRE_EMPHASIS").failure();
        return Found::yes;
    }
    const bool known =
        word == "COPY" || word == "PRE_EMPHASIS" || word == "TWO_CHANNEL_AUDIO" || word == "FOUR_CHANNEL_AUDIO";
    return known ? Found::yes : Found::no;
}

base::Result<TocParser::Found> TocParser::pieceStatement(const std::string& word)
{
    if (!inTrack())
        return Found::no;
    Status status;
    if (word == "FILE" || word == "AUDIOFILE")
        status = file(true);
    else if (word == "DATAFILE")
        status = file(false);
    else if (word == "SILENCE" || word == "ZERO")
        status = silence(word == "ZERO");
    else if (word == "START")
        status = start();
    else if (word == "PREGAP")
        status = pregap();
    else if (word == "INDEX")
        status = index();
    else if (word == "FIFO")
        status = refuse("a FIFO is no image");
    else
        return Found::no;
    if (!status)
        return status.failure();
    return Found::yes;
}

Status TocParser::track()
{
    if (inTrack())
        if (Status status = finishTrack(); !status)
            return status;
    const TocWord name = words_.take();
    const TrackMode* const mode = findMode(keyword(name));
    if (mode == nullptr)
        return refuse("\"" + shown(name.text) + "\" is no kind of track");
    const std::string channel = keyword(words_.peek());
    if (channel == "RW" || channel == "RW_RAW")
        return refuse("sub-channel data in a table of contents is not read");
    SheetTrack track;
    track.number = firstNumber_ + static_cast<int>(sheet_.tracks.size());
    if (track.number > 99)
        return refuse("more than 99 tracks");
    track.audio = mode->audio;
    track.sectorBytes = mode->sectorBytes;
    track.line = line_;
    sheet_.tracks.push_back(std::move(track));
    started_ = false;
    lastIndex_ = 0;
    return {};
}

Status TocParser::finishTrack()
{
    const SheetTrack& track = sheet_.tracks.back();
    if (track.pieces.empty())
        return refuse(track.line, "track " + std::to_string(track.number) + " has no data");
    return {};
}

bool TocParser::nextIsLength() const
{
    const TocWord& next = words_.peek();
    return next.kind == TocWord::Kind::word && next.text[0] >= '0' && next.text[0] <= '9';
}

/// A length in stored bytes: a time in sectors of the track, or a number of `unit` bytes each.
base::Result<std::int64_t> TocParser::length(std::int64_t unit)
{
    const TocWord word = words_.take();
    if (const auto number = wholeNumber(word.text, maxNumber); number && word.kind == TocWord::Kind::word)
        return *number * unit;
    const auto sectors = sectorsOfTime(word.text);
    if (!sectors)
        return refuse(word.line, "\"" + shown(word.text) + "\" is no time and no length").failure();
    return static_cast<std::int64_t>(*sectors) * sheet_.tracks.back().sectorBytes;
}

base::Result<int> TocParser::time()
{
    const TocWord word = words_.take();
    const auto sectors = sectorsOfTime(word.text);
    if (!sectors)
        return refuse(word.line, "time " + shown(word.text) + " is no time").failure();
    return *sectors;
}

/// FILE "name" [SWAP] [#offset] start [length], DATAFILE "name" [#offset] [length].
Status TocParser::file(bool audioUnits)
{
    const SheetTrack& track = sheet_.tracks.back();
    const TocWord name = words_.take();
    if (name.kind != TocWord::Kind::string || name.text.empty() || name.text.size() > maxTextLength)
        return refuse("a file without its name in quotes");
    if (name.text == "-")
        return refuse("standard input is no image");
    const bool swap = keyword(words_.peek()) == "SWAP";
    if (swap)
        words_.take();
    SheetPiece piece;
    piece.line = line_;
    if (words_.peek().isSign('#')) {
        words_.take();
        const auto offset = wholeNumber(words_.take().text, maxNumber);
        if (!offset)
            return refuse("no number behind #");
        piece.offset = *offset;
    }
    const std::int64_t unit = track.audio ? frameBytes : 1;
    if (audioUnits) {
        const auto start = length(unit);
        if (!start)
            return start.failure();
        piece.offset += *start;
    }
    piece.bytes = SheetPiece::toEnd;
    if (nextIsLength()) {
        const auto bytes = length(unit);
        if (!bytes)
            return bytes.failure();
        piece.bytes = *bytes > 0 ? *bytes : SheetPiece::toEnd;
    }
    return addFile(name, swap, piece);
}

Status TocParser::addFile(const TocWord& name, bool swap, SheetPiece piece)
{
    SheetFile entry;
    entry.name = base::fromFileBytes(name.text);
    entry.line = line_;
    const bool sound = hasSoundEnding(entry.name);
    entry.kind = sound ? SheetFile::Kind::sound : SheetFile::Kind::raw;
    // Raw samples have the high byte first, those of sound files the low one; SWAP turns either round.
    entry.swapped = sound == swap;
    if (sound && !sheet_.tracks.back().audio)
        return refuse("a sound file holds audio tracks only");
    const auto same = std::ranges::find_if(sheet_.files, [&](const SheetFile& known) {
        return known.name == entry.name && known.swapped == entry.swapped;
    });
    piece.file = static_cast<int>(same - sheet_.files.begin());
    if (same == sheet_.files.end()) {
        if (sheet_.files.size() == maxSheetFiles)
            return refuse("more than " + std::to_string(maxSheetFiles) + " files");
        sheet_.files.push_back(std::move(entry));
    }
    sheet_.tracks.back().pieces.push_back(piece);
    return {};
}

/// SILENCE length, ZERO [mode] length.
Status TocParser::silence(bool zero)
{
    SheetTrack& track = sheet_.tracks.back();
    if (zero && findMode(keyword(words_.peek())) != nullptr)
        words_.take();
    const std::string channel = keyword(words_.peek());
    if (zero && (channel == "RW" || channel == "RW_RAW"))
        words_.take();
    const auto bytes = length(track.audio ? frameBytes : 1);
    if (!bytes)
        return bytes.failure();
    SheetPiece piece;
    piece.bytes = *bytes;
    piece.line = line_;
    track.pieces.push_back(piece);
    return {};
}

Status TocParser::startHere(std::size_t piece, std::int64_t offset)
{
    if (std::exchange(started_, true))
        return refuse("a second start of one track");
    sheet_.tracks.back().startPiece = piece;
    sheet_.tracks.back().startOffset = offset;
    return {};
}

Status TocParser::start()
{
    const SheetTrack& track = sheet_.tracks.back();
    if (!nextIsLength())
        return startHere(track.pieces.size(), 0);
    const auto at = time();
    if (!at)
        return at.failure();
    return startHere(0, static_cast<std::int64_t>(*at) * track.sectorBytes);
}

Status TocParser::pregap()
{
    SheetTrack& track = sheet_.tracks.back();
    const auto length = time();
    if (!length)
        return length.failure();
    if (!track.pieces.empty())
        return refuse("PREGAP behind the data of its track");
    SheetPiece piece;
    piece.bytes = static_cast<std::int64_t>(*length) * track.sectorBytes;
    piece.line = line_;
    track.pieces.push_back(piece);
    return startHere(1, 0);
}

Status TocParser::index()
{
    const auto at = time();
    if (!at)
        return at.failure();
    if (*at <= lastIndex_)
        return refuse("INDEX is not behind the one before it");
    lastIndex_ = *at;
    return {};
}

Status TocParser::text()
{
    if (inTrack())
        sheet_.names.titles.resize(sheet_.tracks.size());
    std::wstring artist;
    std::wstring& title = inTrack() ? sheet_.names.titles.back() : sheet_.names.album;
    std::wstring& performer = inTrack() ? artist : sheet_.names.artist;
    TocText found;
    if (const auto problem = readTocText(words_, found))
        return refuse(problem->line, problem->text);
    title = titleText(found.title);
    performer = titleText(found.performer);
    if (!inTrack()) {
        sheet_.names.genre = titleText(found.genre);
        sheet_.names.comment = titleText(found.message);
    }
    return {};
}

}

base::Result<Sheet> parseTocSheet(std::string_view bytes, const std::string& path)
{
    if (bytes.size() > maxSheetBytes)
        return sheetFailure(path, 0, "a sheet is never as large as this");
    if (bytes.find('\0') != std::string_view::npos)
        return sheetFailure(path, 0, "this is no text, so it is no table of contents");
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (bytes.starts_with(mark))
        bytes.remove_prefix(mark.size());
    return TocParser(bytes, path).parse();
}

}
