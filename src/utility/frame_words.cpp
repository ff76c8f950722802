#include "utility/frame_words.h"

#include "base/numbers.h"
#include "base/text.h"
#include "utility/fields.h"

#include <algorithm>
#include <array>

namespace tonquay::utility {

namespace {

struct FrameWord {
    std::string_view identifier, older; ///< `older`: in version 2.2
    std::wstring_view name;
};

// The first twelve are the fields, in their order.
constexpr std::array frameWords = std::to_array<FrameWord>({
    {"TRCK", "TRK", L"Track number"},
    {"TIT2", "TT2", L"Title"},
    {"TPE1", "TP1", L"Artist"},
    {"TALB", "TAL", L"Album"},
    {"TYER", "TYE", L"Year"},
    {"TCON", "TCO", L"Genre"},
    {"COMM", "COM", L"Comment"},
    {"TCOM", "TCM", L"Composer"},
    {"TOPE", "TOA", L"Original artist"},
    {"TCOP", "TCR", L"Copyright"},
    {"WXXX", "WXX", L"User web link"},
    {"TENC", "TEN", L"Encoded by"},
    {"AENC", "CRA", L"Audio encryption"},
    {"APIC", "PIC", L"Picture"},
    {"CHAP", "", L"Chapter"},
    {"COMR", "", L"Offer"},
    {"CTOC", "", L"Table of chapters"},
    {"ENCR", "", L"Encryption method"},
    {"EQU2", "", L"Equaliser"},
    {"EQUA", "EQU", L"Equaliser"},
    {"ETCO", "ETC", L"Event times"},
    {"GEOB", "GEO", L"Attached file"},
    {"GRID", "", L"Group"},
    {"IPLS", "IPL", L"Involved people"},
    {"LINK", "LNK", L"Linked information"},
    {"MCDI", "MCI", L"Disc identifier"},
    {"MLLT", "MLL", L"Table of positions"},
    {"OWNE", "", L"Ownership"},
    {"PCNT", "CNT", L"Play counter"},
    {"POPM", "POP", L"Rating"},
    {"POSS", "", L"Position"},
    {"PRIV", "", L"Private data"},
    {"RBUF", "BUF", L"Buffer size"},
    {"RVA2", "", L"Volume adjustment"},
    {"RVAD", "RVA", L"Volume adjustment"},
    {"RVRB", "REV", L"Reverb"},
    {"SYLT", "SLT", L"Lyrics with times"},
    {"SYTC", "STC", L"Tempo"},
    {"TBPM", "TBP", L"Beats per minute"},
    {"TCMP", "TCP", L"Part of a compilation"},
    {"TDAT", "TDA", L"Date"},
    {"TDEN", "", L"Time of encoding"},
    {"TDLY", "TDY", L"Playlist delay"},
    {"TDOR", "", L"Time of first release"},
    {"TDRC", "", L"Recording time"},
    {"TDRL", "", L"Time of release"},
    {"TDTG", "", L"Time of tagging"},
    {"TEXT", "TXT", L"Lyricist"},
    {"TFLT", "TFT", L"File type"},
    {"TIME", "TIM", L"Time"},
    {"TIPL", "", L"Involved people"},
    {"TIT1", "TT1", L"Content group"},
    {"TIT3", "TT3", L"Subtitle"},
    {"TKEY", "TKE", L"Musical key"},
    {"TLAN", "TLA", L"Language"},
    {"TLEN", "TLE", L"Length"},
    {"TMCL", "", L"Musicians"},
    {"TMED", "TMT", L"Medium"},
    {"TMOO", "", L"Mood"},
    {"TOAL", "TOT", L"Original album"},
    {"TOFN", "TOF", L"Original file name"},
    {"TOLY", "TOL", L"Original lyricist"},
    {"TORY", "TOR", L"Original year"},
    {"TOWN", "", L"Owner"},
    {"TPE2", "TP2", L"Album artist"},
    {"TPE3", "TP3", L"Conductor"},
    {"TPE4", "TP4", L"Remixed by"},
    {"TPOS", "TPA", L"Disc number"},
    {"TPUB", "TPB", L"Publisher"},
    {"TRDA", "TRD", L"Recording dates"},
    {"TRSN", "", L"Radio station"},
    {"TRSO", "", L"Owner of the station"},
    {"TSIZ", "TSI", L"Size"},
    {"TSOA", "TSA", L"Album for sorting"},
    {"TSOP", "TSP", L"Artist for sorting"},
    {"TSOT", "TST", L"Title for sorting"},
    {"TSRC", "TRC", L"ISRC"},
    {"TSSE", "TSS", L"Encoder settings"},
    {"TXXX", "TXX", L"User text"},
    {"UFID", "UFI", L"File identifier"},
    {"USER", "", L"Terms of use"},
    {"USLT", "ULT", L"Lyrics"},
    {"WCOM", "WCM", L"Web link to a shop"},
    {"WCOP", "WCP", L"Web link to the copyright"},
    {"WOAF", "WAF", L"Web link to the file"},
    {"WOAR", "WAR", L"Web link to the artist"},
    {"WOAS", "WAS", L"Web link to the source"},
    {"WORS", "", L"Web link to the station"},
    {"WPAY", "", L"Web link for payment"},
    {"WPUB", "WPB", L"Web link to the publisher"},
});

constexpr std::array<std::wstring_view, 21> pictureTypes{L"other",
                                                         L"icon of 32 pixels",
                                                         L"icon",
                                                         L"front cover",
                                                         L"back cover",
                                                         L"leaflet page",
                                                         L"medium",
                                                         L"lead artist",
                                                         L"artist",
                                                         L"conductor",
                                                         L"band",
                                                         L"composer",
                                                         L"lyricist",
                                                         L"recording place",
                                                         L"during recording",
                                                         L"during performance",
                                                         L"from a film",
                                                         L"a bright coloured fish",
                                                         L"illustration",
                                                         L"logo of the artist",
                                                         L"logo of the publisher"};

const FrameWord* find(std::string_view identifier)
{
    const auto* const found = std::ranges::find_if(frameWords, [&](const FrameWord& word) {
        return word.identifier == identifier || (!word.older.empty() && word.older == identifier);
    });
    return found == frameWords.end() ? nullptr : found;
}

std::wstring pictureText(const platform::Id3v2Contents::Frame& frame)
{
    const auto type = static_cast<std::size_t>(frame.pictureType);
    std::wstring line(type < pictureTypes.size() ? pictureTypes[type] : pictureTypes[0]);
    if (!frame.mime.empty())
        line += L", " + tidy(base::fromWindows1252(frame.mime));
    return line + L", " + sizeText(frame.dataBytes);
}

void addNote(std::wstring& notes, const std::wstring& note)
{
    if (!note.empty())
        notes += (notes.empty() ? L"" : L", ") + note;
}

}

std::wstring frameName(std::string_view identifier)
{
    const FrameWord* const word = find(identifier);
    return word == nullptr ? L"\"" + tidy(base::fromWindows1252(identifier)) + L"\"" : std::wstring(word->name);
}

std::optional<std::size_t> fieldOf(std::string_view identifier)
{
    const FrameWord* const word = find(identifier);
    if (word == nullptr || word - frameWords.data() >= static_cast<std::ptrdiff_t>(fieldCount))
        return std::nullopt;
    return static_cast<std::size_t>(word - frameWords.data());
}

std::wstring frameLine(const platform::Id3v2Contents::Frame& frame)
{
    std::wstring notes;
    addNote(notes, tidy(base::fromWindows1252(frame.language)));
    addNote(notes, tidy(frame.description));
    std::wstring line = frameName(frame.identifier);
    if (!notes.empty())
        line += L" (" + notes + L")";
    line += L": ";
    if (frame.pictureType >= 0)
        return line + pictureText(frame);
    const std::wstring text = tidy(frame.text);
    return line + (text.empty() ? sizeText(frame.bytes) : text);
}

std::wstring tidy(std::wstring_view text)
{
    constexpr std::size_t longest = 60;
    constexpr std::wstring_view end = L"...";
    std::wstring line;
    for (const wchar_t character : text) {
        const bool seen = character >= L' ' && (character < 0x7F || character > 0x9F) &&
                          (character < 0x200B || character > 0x200F) && (character < 0x2028 || character > 0x202E);
        const bool blank = !seen || character == L' ';
        if (blank && (line.empty() || line.back() == L' '))
            continue;
        if (line.size() >= longest) {
            line.resize(longest - end.size());
            return line.append(end);
        }
        line.push_back(blank ? L' ' : character);
    }
    return std::wstring(base::trim(line));
}

std::wstring sizeText(std::size_t bytes)
{
    constexpr std::size_t kilobyte = 1024;
    if (bytes < kilobyte)
        return base::digits(static_cast<std::int64_t>(bytes)) + (bytes == 1 ? L" byte" : L" bytes");
    return base::digits(static_cast<std::int64_t>((bytes + kilobyte - 1) / kilobyte)) + L" KB";
}

}
