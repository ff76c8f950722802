#include "host/discs/cue_sheet.h"

#include "base/red_book.h"
#include "base/text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tonquay::host {

namespace {

using base::Status;

constexpr std::wstring_view blanks = L" \t";

std::wstring_view withoutBlanks(std::wstring_view text)
{
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::wstring_view::npos ? std::wstring_view()
                                            : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// Takes the first word off a line.
std::wstring_view takeWord(std::wstring_view& line)
{
    const std::size_t end = std::min(line.find_first_of(blanks), line.size());
    const std::wstring_view word = line.substr(0, end);
    line = withoutBlanks(line.substr(end));
    return word;
}

/// The text between the first quote and the last one; quotes inside a title have no escape. Bare text as it is.
std::wstring_view unquoted(std::wstring_view text)
{
    if (!text.starts_with(L'"'))
        return text;
    const std::size_t close = text.rfind(L'"');
    return close == 0 ? text.substr(1) : text.substr(1, close - 1);
}

struct TrackMode {
    std::wstring_view name;
    bool audio;
    int sectorBytes;
};

constexpr std::array trackModes{
    TrackMode{L"AUDIO", true, 2352},       TrackMode{L"CDG", true, 2448},         TrackMode{L"MODE1/2048", false, 2048},
    TrackMode{L"MODE1/2352", false, 2352}, TrackMode{L"MODE2/2048", false, 2048}, TrackMode{L"MODE2/2324", false, 2324},
    TrackMode{L"MODE2/2336", false, 2336}, TrackMode{L"MODE2/2352", false, 2352}, TrackMode{L"CDI/2336", false, 2336},
    TrackMode{L"CDI/2352", false, 2352},
};

/// Commands that say nothing about where the sound is or what the names are.
constexpr std::array<std::wstring_view, 13> passedOver{
    L"CATALOG", L"CDTEXTFILE", L"FLAGS",   L"ISRC",     L"SONGWRITER", L"COMPOSER",  L"ARRANGER",
    L"MESSAGE", L"DISC_ID",    L"UPC_EAN", L"TOC_INFO", L"TOC_INFO2",  L"SIZE_INFO",
};

class CueParser {
public:
    explicit CueParser(const std::string& path) { sheet_.path = path; }

    base::Result<Sheet> parse(std::wstring_view text);

private:
    Status command(std::wstring_view line);
    Status file(std::wstring_view rest);
    Status track(std::wstring_view rest);
    Status index(std::wstring_view line);
    Status closePieceAt(int time, const std::string& written);
    Status gap(std::wstring_view rest, bool before);
    void title(std::wstring_view text);
    void remark(std::wstring_view rest);
    Status closeFile();
    Status closeTrack();
    Status finish();

    bool inTrack() const { return !sheet_.tracks.empty(); }
    Status refuse(std::string text) const { return refuse(line_, std::move(text)); }
    Status refuse(int line, std::string text) const { return sheetFailure(sheet_.path, line, std::move(text)); }
    static void fill(std::wstring& field, std::wstring_view text);

    Sheet sheet_;
    int line_ = 0;

    // The file in force: where the last index in it stands, and the track and piece that run from there.
    static constexpr int noIndex = -1;
    int time_ = noIndex;
    std::int64_t offset_ = 0;
    std::size_t openTrack_ = 0;
    std::size_t openPiece_ = 0;

    // The track in force.
    int lastIndex_ = noIndex;
    bool pregap_ = false;
    bool postgap_ = false;
};

void CueParser::fill(std::wstring& field, std::wstring_view text)
{
    if (field.empty())
        field = titleText(unquoted(text));
}

base::Result<Sheet> CueParser::parse(std::wstring_view text)
{
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(L"\r\n"), text.size());
        ++line_;
        if (Status status = command(withoutBlanks(text.substr(0, end))); !status)
            return status.failure();
        const bool two = text.substr(end).starts_with(L"\r\n");
        text.remove_prefix(std::min(end + (two ? 2 : 1), text.size()));
    }
    if (Status status = finish(); !status)
        return status.failure();
    return std::move(sheet_);
}

Status CueParser::command(std::wstring_view line)
{
    if (line.empty())
        return {};
    const std::wstring_view written = takeWord(line);
    const std::wstring word = base::upper(written);
    if (word == L"FILE")
        return file(line);
    if (word == L"TRACK")
        return track(line);
    if (word == L"INDEX")
        return index(line);
    if (word == L"PREGAP" || word == L"POSTGAP")
        return gap(line, word == L"PREGAP");
    if (word == L"TITLE")
        title(line);
    else if (word == L"PERFORMER" && !inTrack())
        fill(sheet_.names.artist, line);
    else if (word == L"GENRE" && !inTrack())
        fill(sheet_.names.genre, line);
    else if (word == L"REM")
        remark(line);
    else if (word != L"PERFORMER" && word != L"GENRE" && std::ranges::find(passedOver, word) == passedOver.end())
        return refuse("\"" + shown(written) + "\" is no command of a cue sheet");
    return {};
}

void CueParser::title(std::wstring_view text)
{
    if (!inTrack())
        return fill(sheet_.names.album, text);
    sheet_.names.titles.resize(sheet_.tracks.size());
    fill(sheet_.names.titles.back(), text);
}

void CueParser::remark(std::wstring_view rest)
{
    if (inTrack())
        return;
    const std::wstring word = base::upper(takeWord(rest));
    if (word == L"GENRE")
        fill(sheet_.names.genre, rest);
    else if (word == L"COMMENT")
        fill(sheet_.names.comment, rest);
    else if (word == L"DATE" && sheet_.names.year.empty())
        sheet_.names.year = yearOf(titleText(unquoted(rest)));
}

Status CueParser::file(std::wstring_view rest)
{
    if (Status closed = closeFile(); !closed)
        return closed;
    if (sheet_.files.size() == maxSheetFiles)
        return refuse("more than " + std::to_string(maxSheetFiles) + " files");
    const std::size_t quote = rest.starts_with(L'"') ? rest.rfind(L'"') : 0;
    const std::size_t split = quote > 0 ? quote + 1 : std::min(rest.find_last_of(blanks), rest.size());
    const std::wstring_view name = unquoted(withoutBlanks(rest.substr(0, split)));
    const std::wstring type = base::upper(withoutBlanks(rest.substr(split)));
    if (name.empty() || name.size() > maxTextLength)
        return refuse("FILE without a name and a type");

    SheetFile entry{std::wstring(name), SheetFile::Kind::sound, false, line_};
    if (type == L"BINARY" || type == L"MOTOROLA") {
        // Some tools write BINARY whatever the file is; a header is no sound.
        entry.kind = hasSoundEnding(name) ? SheetFile::Kind::sound : SheetFile::Kind::raw;
        entry.swapped = type == L"MOTOROLA" && entry.kind == SheetFile::Kind::raw;
    } else if (type != L"WAVE" && type != L"AIFF" && type != L"FLAC") {
        return refuse("the file type \"" + shown(type) + "\" is none of BINARY, MOTOROLA, WAVE, AIFF and FLAC");
    }
    sheet_.files.push_back(std::move(entry));
    time_ = noIndex;
    offset_ = 0;
    return {};
}

Status CueParser::track(std::wstring_view rest)
{
    if (sheet_.files.empty())
        return refuse("TRACK before the first FILE");
    if (Status closed = closeTrack(); !closed)
        return closed;
    const std::wstring_view written = takeWord(rest);
    const auto number = wholeNumber(base::utf8(written), 99);
    if (!number || *number == 0)
        return refuse("\"" + shown(written) + "\" is no track number from 1 to 99");
    if (inTrack() && *number != sheet_.tracks.back().number + 1)
        return refuse("track " + std::to_string(*number) + " follows track " +
                      std::to_string(sheet_.tracks.back().number));
    const std::wstring name = base::upper(rest);
    const auto* const mode = std::ranges::find(trackModes, std::wstring_view(name), &TrackMode::name);
    if (mode == trackModes.end())
        return refuse("\"" + shown(rest) + "\" is no kind of track");

    SheetTrack track;
    track.number = static_cast<int>(*number);
    track.audio = mode->audio;
    track.sectorBytes = mode->sectorBytes;
    track.line = line_;
    sheet_.tracks.push_back(std::move(track));
    lastIndex_ = noIndex;
    pregap_ = postgap_ = false;
    return {};
}

Status CueParser::index(std::wstring_view line)
{
    if (!inTrack())
        return refuse("INDEX before the first TRACK");
    SheetTrack& track = sheet_.tracks.back();
    const std::wstring_view written = takeWord(line);
    const auto number = wholeNumber(base::utf8(written), 99);
    if (!number)
        return refuse("\"" + shown(written) + "\" is no index number from 0 to 99");
    const bool follows = lastIndex_ == noIndex ? *number <= 1 : *number == lastIndex_ + 1;
    if (!follows)
        return refuse(
            "index " + std::to_string(*number) +
            (lastIndex_ == noIndex ? " is the first of its track" : " follows index " + std::to_string(lastIndex_)));
    if (postgap_)
        return refuse("INDEX behind the POSTGAP of its track");
    const auto time = sectorsOfTime(base::utf8(line));
    if (!time)
        return refuse("time " + shown(line) + " is no time");
    const bool sound = sheet_.files.back().kind == SheetFile::Kind::sound;
    if (sound && track.sectorBytes != base::red_book::bytesPerSector)
        return refuse("a sound file holds audio tracks only");

    if (Status closed = closePieceAt(*time, shown(line)); !closed)
        return closed;
    const int fileIndex = static_cast<int>(sheet_.files.size()) - 1;
    if (*number == 1)
        track.startPiece = track.pieces.size();
    time_ = *time;
    lastIndex_ = static_cast<int>(*number);
    openTrack_ = sheet_.tracks.size() - 1;
    openPiece_ = track.pieces.size();
    // A sound file is cut by samples and a disc made from it ends with silence; a raw one holds sectors or nothing.
    const auto rest = sound ? SheetPiece::Rest::pad : SheetPiece::Rest::drop;
    track.pieces.push_back({fileIndex, offset_, SheetPiece::toEnd, rest, line_});
    return {};
}

/// Ends the piece in hand where the next one begins; `written` is that time as the sheet has it.
Status CueParser::closePieceAt(int time, const std::string& written)
{
    SheetTrack& track = sheet_.tracks.back();
    if (time_ == noIndex) {
        // What stands in a file before its first index is on the disc all the same.
        offset_ = static_cast<std::int64_t>(time) * track.sectorBytes;
        if (time > 0)
            track.pieces.push_back(
                {static_cast<int>(sheet_.files.size()) - 1, 0, offset_, SheetPiece::Rest::keep, line_});
        return {};
    }
    if (time < time_)
        return refuse("time " + written + " is before that of the index above it");
    SheetTrack& owner = sheet_.tracks[openTrack_];
    SheetPiece& open = owner.pieces[openPiece_];
    open.bytes = static_cast<std::int64_t>(time - time_) * owner.sectorBytes;
    offset_ += open.bytes;
    return {};
}

Status CueParser::gap(std::wstring_view rest, bool before)
{
    const std::string name = before ? "PREGAP" : "POSTGAP";
    if (!inTrack())
        return refuse(name + " before the first TRACK");
    const auto time = sectorsOfTime(base::utf8(rest));
    if (!time)
        return refuse("time " + shown(rest) + " is no time");
    if (before ? lastIndex_ != noIndex : lastIndex_ < 1)
        return refuse(before ? "PREGAP behind an INDEX" : "POSTGAP before INDEX 01");
    bool& seen = before ? pregap_ : postgap_;
    if (std::exchange(seen, true))
        return refuse("a second " + name + " in one track");
    SheetTrack& track = sheet_.tracks.back();
    track.pieces.push_back(
        {SheetPiece::silence, 0, static_cast<std::int64_t>(*time) * track.sectorBytes, SheetPiece::Rest::keep, line_});
    return {};
}

Status CueParser::closeFile()
{
    if (!sheet_.files.empty() && time_ == noIndex)
        return refuse(sheet_.files.back().line, "no INDEX belongs to this FILE");
    return {};
}

Status CueParser::closeTrack()
{
    if (inTrack() && lastIndex_ < 1)
        return refuse(sheet_.tracks.back().line,
                      "track " + std::to_string(sheet_.tracks.back().number) + " has no INDEX 01");
    return {};
}

Status CueParser::finish()
{
    if (!inTrack())
        return refuse(0, "there is no track in this sheet");
    if (Status closed = closeTrack(); !closed)
        return closed;
    return closeFile();
}

}

base::Result<Sheet> parseCueSheet(std::string_view bytes, const std::string& path)
{
    if (bytes.size() > maxSheetBytes)
        return sheetFailure(path, 0, "a sheet is never as large as this");
    if (bytes.find('\0') != std::string_view::npos)
        return sheetFailure(path, 0, "this is no text, so it is no cue sheet");
    return CueParser(path).parse(base::fromFileBytes(bytes));
}

}
