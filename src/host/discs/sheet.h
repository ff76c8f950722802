#pragma once

#include "base/red_book.h"
#include "base/result.h"
#include "platform/discs.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What a sheet says of a disc, whatever its format, before anybody has looked at the files that it names.
///
/// Each format has a parser that makes a Sheet out of the bytes of a sheet alone; layOut() (layout.h) then puts it
/// together with the lengths of the files. Neither touches the file system.
namespace tonquay::host {

/// One file that holds parts of the disc.
struct SheetFile {
    enum class Kind {
        raw,   ///< sectors as they are, without a header
        sound, ///< a file that the sound library decodes: WAVE, AIFF, FLAC
    };

    std::wstring name; ///< as the sheet writes it
    Kind kind = Kind::raw;
    bool swapped = false; ///< the two bytes of each sample stand the other way round
    int line = 0;
};

/// A run of sectors of one track that comes from one place.
struct SheetPiece {
    static constexpr int silence = -1;        ///< as `file`
    static constexpr std::int64_t toEnd = -1; ///< as `bytes`

    /// What becomes of an incomplete sector at the end of the file.
    enum class Rest {
        drop, ///< it is left out
        keep, ///< the next piece follows at once, whatever sector that is in
        pad,  ///< it is filled up with silence
    };

    int file = silence;      ///< index into Sheet::files
    std::int64_t offset = 0; ///< where it begins in the file; of a sound file: in its decoded sound
    std::int64_t bytes = 0;  ///< as stored: whole sectors of SheetTrack::sectorBytes, but for a last one
    Rest rest = Rest::keep;
    int line = 0;
};

struct SheetTrack {
    int number = 0;
    bool audio = true;
    int sectorBytes = base::red_book::bytesPerSector; ///< as stored; sound with sub-channel data has 2448
    std::int64_t emptyBefore = 0;   ///< sectors of the disc before the first piece that the image does not hold
    std::vector<SheetPiece> pieces; ///< its pregap included
    std::size_t startPiece = 0;     ///< index 1 is at the beginning of this piece,
    std::int64_t startOffset = 0;   ///< and so many stored bytes behind it
    int line = 0;
};

struct Sheet {
    std::string path; ///< of the sheet, for messages
    std::vector<SheetFile> files;
    std::vector<SheetTrack> tracks;
    platform::DiscNames names;
};

/// The most that a sheet may hold. A disc has 99 tracks, each of them at most two files of its own.
constexpr std::size_t maxSheetBytes = 1u << 20;
constexpr std::size_t maxSheetFiles = 250;
constexpr std::size_t maxTextLength = 4096;

/// The program area of a disc ends before 99:59:74, the last time that there is.
constexpr std::int64_t maxDiscSectors = base::red_book::sectorAt(99, 59, 74);

/// "sheet:line: text". Line 0 means the sheet as a whole.
base::Failure sheetFailure(const std::string& path, int line, std::string text);

/// Text of a sheet for a message: shortened, and without control characters.
std::string shown(std::string_view text);
std::string shown(std::wstring_view text);

/// A whole number without sign from 0 to `most`, and nothing else in the text.
std::optional<std::int64_t> wholeNumber(std::string_view text, std::int64_t most);

/// Sectors of a time as "MM:SS:FF": one or two digits each, seconds under 60, frames under 75.
std::optional<int> sectorsOfTime(std::string_view text);

/// True for names with an ending of WAVE, AIFF or FLAC files, in any case.
bool hasSoundEnding(std::wstring_view name);

/// The text of a title as it is kept: without blanks and tabs around it, and bounded.
std::wstring titleText(std::wstring_view text);

/// The year of a date, when the text begins with one; else the text.
std::wstring yearOf(std::wstring_view date);

}
