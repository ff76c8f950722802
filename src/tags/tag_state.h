#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tonquay::tags {

class COptions;

/// A text of a fixed number of characters: what is shorter is filled up with blanks, what is longer is cut.
template <std::size_t Width>
class FixedText {
public:
    FixedText() { text_.fill(L' '); }

    FixedText& operator=(std::wstring_view text)
    {
        text_.fill(L' ');
        text.copy(text_.data(), Width);
        return *this;
    }

    /// All of it, blanks included.
    std::wstring_view text() const { return {text_.data(), Width}; }

private:
    std::array<wchar_t, Width> text_;
};

/// What the tag at the end of a file holds, as it is read and written.
struct Id3v1Fields {
    std::wstring Title;
    FixedText<30> Artist;
    FixedText<30> Album;
    FixedText<28> Comment;
    FixedText<4> Year;
    std::uint8_t Genre = 0;
    std::uint8_t Track = 0;
};

/// What is known of the sound in a file; at first nothing is.
struct StreamValues {
    float MpegVersion = -1; ///< 1, 2 or 2.5; 0 for a number that means none
    float SampleRateKHz = -1;
    std::int16_t BitrateKbps = -1;
    std::wstring PlaySeconds = L"-1";
    std::int16_t ChannelCode = -1; ///< 0 mono, 1 stereo, 2 joint stereo, 3 dual channel
    bool IsVbr = false;
};

/// The places of TagInfo. All hold text, the numbers too.
namespace slot {
inline constexpr std::size_t id3v1 = 0;      ///< "id3v1" when the track number came from the tag at the end of the file
inline constexpr std::size_t sampleRate = 1; ///< whole kHz
inline constexpr std::size_t playSeconds = 2;
inline constexpr std::size_t vbr = 3; ///< "Yes" or "No"
inline constexpr std::size_t track = 4;
inline constexpr std::size_t channels = 5;
inline constexpr std::size_t bitrate = 6; ///< kbps
inline constexpr std::size_t artist = 7;
inline constexpr std::size_t title = 8;
inline constexpr std::size_t album = 9;
inline constexpr std::size_t comment = 10;
inline constexpr std::size_t genre = 11; ///< its number
inline constexpr std::size_t year = 12;
inline constexpr std::size_t genreName = 13; ///< from an ID3v2 tag
inline constexpr std::size_t id3v2 = 14;     ///< "2" when there is such a tag
inline constexpr std::size_t composer = 15;
inline constexpr std::size_t originalArtist = 16;
inline constexpr std::size_t copyright = 17;
inline constexpr std::size_t webLink = 18;
inline constexpr std::size_t encodedBy = 19;
}

/// What all tag code reads and writes: the values of one file in plain text, and what lies behind them.
struct TagState {
    std::array<std::wstring, 20> TagInfo; ///< by slot
    Id3v1Fields id3v1;
    StreamValues stream;
};

/// Forgets everything. The title is then empty, the other texts are blanks.
void ClearTagInfo(TagState& state);

/// Makes the fields ready to be filled from a file: texts blank, also the title (30 blanks), the genre the one that
/// the user's options give (they are read here). TagInfo stays, and so does the track.
void ResetTagFields(TagState& state, COptions& options);

}
