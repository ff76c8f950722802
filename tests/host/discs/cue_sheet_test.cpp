#include "host/discs/cue_sheet.h"
#include "host/discs/layout.h"

#include <gtest/gtest.h>

namespace tonquay::host {

namespace {

constexpr std::int64_t sectorBytes = 2352;

/// What a sheet comes to when each of its files has `sectors` sectors: the failure as a line, or the table.
std::string outcome(const base::Result<Sheet>& sheet, std::int64_t sectors)
{
    if (!sheet)
        return base::describe(sheet.failure());
    const std::vector<std::int64_t> lengths(sheet->files.size(), sectors * sectorBytes);
    const auto layout = layOut(*sheet, lengths);
    if (!layout)
        return base::describe(layout.failure());
    std::string table;
    for (const platform::DiscTrack& track : layout->tracks)
        table += (table.empty() ? "" : " ") + std::to_string(track.number) + (track.audio ? ":" : "d:") +
                 std::to_string(track.firstSector) + "+" + std::to_string(track.sectorCount);
    return table;
}

std::string outcomeOfCue(const std::string& text, std::int64_t sectors)
{
    return outcome(parseCueSheet(text, "a.cue"), sectors);
}

TEST(CueSheet, whatDoesNotAddUpIsRefusedAtItsLine)
{
    const std::string file = "FILE \"a.bin\" BINARY\n";
    const std::string track = file + "TRACK 01 AUDIO\n";
    const std::string whole = track + "INDEX 01 00:00:00\n";
    std::string hundred = file;
    for (int i = 1; i <= 100; ++i)
        hundred += "TRACK " + std::to_string(i) + " AUDIO\nINDEX 01 00:" + std::to_string(i / 60) + ":" +
                   std::to_string(i % 60) + "\n";
    struct Case {
        const char* what;
        std::string sheet;
        std::string message;
    };
    const Case cases[] = {
        {"empty", "", "a.cue: there is no track in this sheet"},
        {"blank lines only", "\n\n  \r\n", "a.cue: there is no track in this sheet"},
        {"a file, no track", file, "a.cue: there is no track in this sheet"},
        {"binary", std::string("FILE\0x", 6), "a.cue: this is no text, so it is no cue sheet"},
        {"rubbish", "qwe rty\n", "a.cue:1: \"qwe\" is no command of a cue sheet"},
        {"rubbish with control characters", "\x01\x02\x1b[31m\n", "a.cue:1: \"???[31m\" is no command of a cue sheet"},
        {"a web page", "<html>\n", "a.cue:1: \"<html>\" is no command of a cue sheet"},
        {"track before file", "TRACK 01 AUDIO\n", "a.cue:1: TRACK before the first FILE"},
        {"index before track", file + "INDEX 01 00:00:00\n", "a.cue:2: INDEX before the first TRACK"},
        {"pregap before track", file + "PREGAP 00:02:00\n", "a.cue:2: PREGAP before the first TRACK"},
        {"file without name", "FILE\n", "a.cue:1: FILE without a name and a type"},
        {"file without type", "FILE \"a.bin\"\n",
         "a.cue:1: the file type \"\" is none of BINARY, MOTOROLA, WAVE, AIFF and FLAC"},
        {"mp3", "FILE \"a.mp3\" MP3\n",
         "a.cue:1: the file type \"MP3\" is none of BINARY, MOTOROLA, WAVE, AIFF and FLAC"},
        {"time past 59 seconds", track + "INDEX 01 99:99:99\n", "a.cue:3: time 99:99:99 is no time"},
        {"time past 74 frames", track + "INDEX 01 00:00:75\n", "a.cue:3: time 00:00:75 is no time"},
        {"time of two fields", track + "INDEX 01 00:00\n", "a.cue:3: time 00:00 is no time"},
        {"time of four fields", track + "INDEX 01 00:00:00:00\n", "a.cue:3: time 00:00:00:00 is no time"},
        {"negative time", track + "INDEX 01 -1:00:00\n", "a.cue:3: time -1:00:00 is no time"},
        {"no time", track + "INDEX 01\n", "a.cue:3: time  is no time"},
        {"index without number", track + "INDEX\n", "a.cue:3: \"\" is no index number from 0 to 99"},
        {"index 100", track + "INDEX 100 00:00:00\n", "a.cue:3: \"100\" is no index number from 0 to 99"},
        {"first index is 2", track + "INDEX 02 00:00:00\n", "a.cue:3: index 2 is the first of its track"},
        {"index twice", whole + "INDEX 01 00:00:01\n", "a.cue:4: index 1 follows index 1"},
        {"times backwards", track + "INDEX 00 00:01:00\nINDEX 01 00:00:10\n",
         "a.cue:4: time 00:00:10 is before that of the index above it"},
        {"tracks backwards", whole + "TRACK 02 AUDIO\nINDEX 01 00:00:50\nTRACK 03 AUDIO\nINDEX 01 00:00:49\n",
         "a.cue:7: time 00:00:49 is before that of the index above it"},
        {"track 0", file + "TRACK 00 AUDIO\n", "a.cue:2: \"00\" is no track number from 1 to 99"},
        {"track number that is none", file + "TRACK x AUDIO\n", "a.cue:2: \"x\" is no track number from 1 to 99"},
        {"track number too large", file + "TRACK 99999999999999999999 AUDIO\n",
         "a.cue:2: \"99999999999999999999\" is no track number from 1 to 99"},
        {"track twice", whole + "TRACK 01 AUDIO\n", "a.cue:4: track 1 follows track 1"},
        {"track left out", whole + "TRACK 03 AUDIO\n", "a.cue:4: track 3 follows track 1"},
        {"track 100", hundred, "a.cue:200: \"100\" is no track number from 1 to 99"},
        {"kind of track", file + "TRACK 01 VIDEO\n", "a.cue:2: \"VIDEO\" is no kind of track"},
        {"no index 1", track + "INDEX 00 00:00:00\nTRACK 02 AUDIO\n", "a.cue:2: track 1 has no INDEX 01"},
        {"no index 1 in the last track", whole + "TRACK 02 AUDIO\n", "a.cue:4: track 2 has no INDEX 01"},
        {"file without index", whole + "FILE \"b.bin\" BINARY\nFILE \"c.bin\" BINARY\n",
         "a.cue:4: no INDEX belongs to this FILE"},
        {"last file without index", whole + "FILE \"b.bin\" BINARY\n", "a.cue:4: no INDEX belongs to this FILE"},
        {"pregap behind index", whole + "PREGAP 00:02:00\n", "a.cue:4: PREGAP behind an INDEX"},
        {"pregap twice", track + "PREGAP 00:02:00\nPREGAP 00:02:00\n", "a.cue:4: a second PREGAP in one track"},
        {"postgap before index", track + "POSTGAP 00:02:00\n", "a.cue:3: POSTGAP before INDEX 01"},
        {"index behind postgap", whole + "POSTGAP 00:02:00\nINDEX 02 00:00:09\n",
         "a.cue:5: INDEX behind the POSTGAP of its track"},
        {"bad gap", track + "PREGAP 2\n", "a.cue:3: time 2 is no time"},
        {"data in a wave", "FILE a.wav WAVE\nTRACK 01 MODE1/2048\nINDEX 01 00:00:00\n",
         "a.cue:3: a sound file holds audio tracks only"},
        {"file shorter than its index", whole + "TRACK 02 AUDIO\nINDEX 01 00:02:00\n",
         "a.cue:3: \"a.bin\" ends before this: it has 235200 bytes of sound or data, needed are 352800"},
        {"file ends where a track begins", whole + "TRACK 02 AUDIO\nINDEX 01 00:01:25\n", "a.cue:4: track 2 is empty"},
        {"track without length", whole + "TRACK 02 AUDIO\nINDEX 01 00:00:00\n", "a.cue:2: track 1 is empty"},
        {"longer than a disc", track + "PREGAP 99:59:70\nINDEX 01 00:00:00\n",
         "a.cue:4: this is more than a disc can hold"},
        {"larger than a sheet", std::string(maxSheetBytes + 1, '\n'), "a.cue: a sheet is never as large as this"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(outcomeOfCue(c.sheet, 100), c.message) << c.what;
}

TEST(CueSheet, everyWayOfWritingOneIsRead)
{
    struct Case {
        const char* what;
        std::string sheet;
        std::string table;
    };
    const Case cases[] = {
        {"plain", "FILE \"a.bin\" BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n", "1:0+100"},
        {"no line end", "FILE a.bin BINARY\nTRACK 1 AUDIO\nINDEX 1 0:0:0", "1:0+100"},
        {"byte-order mark",
         "\xEF\xBB\xBF"
         "FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n",
         "1:0+100"},
        {"lines of an old Mac", "FILE a.bin BINARY\rTRACK 01 AUDIO\rINDEX 01 00:00:00\r", "1:0+100"},
        {"tabs and any case", "\tfile\ta.bin\tbinary\r\n\tTrack\t01\taudio\r\n\tindex\t01\t00:00:00\r\n", "1:0+100"},
        {"a hidden first track", "FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 00 00:00:00\nINDEX 01 00:00:40\n",
         "1:40+60"},
        {"no index 0 before it", "FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:40\n", "1:40+60"},
        {"pregap at the end of the file before",
         "FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nTRACK 02 AUDIO\nINDEX 00 00:01:15\n"
         "FILE b.bin BINARY\nINDEX 01 00:00:00\n",
         "1:0+100 2:100+100"},
        {"the same, before data",
         "FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nTRACK 02 MODE1/2352\nINDEX 00 00:01:15\n"
         "FILE b.bin BINARY\nINDEX 01 00:00:00\n",
         "1:0+90 2d:100+100"},
        {"many indices", "FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nINDEX 02 00:00:10\nINDEX 03 00:00:11\n",
         "1:0+100"},
        {"sector sizes change within a file",
         "FILE a.bin BINARY\nTRACK 01 MODE1/2048\nINDEX 01 00:00:00\nTRACK 02 AUDIO\nINDEX 01 00:00:49\n",
         "1d:0+49 2:49+57"},
        {"data in a second session",
         "FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nREM SESSION 02\n"
         "TRACK 02 MODE2/2352\nINDEX 01 00:00:50\n",
         "1:0+50 2d:50+50"},
        {"commands that are passed over",
         "CATALOG 1\nCDTEXTFILE \"a.cdt\"\nFILE a.bin BINARY\nTRACK 01 AUDIO\nFLAGS DCP\nISRC X\nSONGWRITER Y\n"
         "INDEX 01 00:00:00\n",
         "1:0+100"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(outcomeOfCue(c.sheet, 100), c.table) << c.what;
}

TEST(CueSheet, anIncompleteSectorAtTheEndIsLeftOutOfRawFilesAndFilledUpInSoundFiles)
{
    struct Case {
        const char* what;
        std::string type;
        std::int64_t bytes;
        std::string outcome;
    };
    const Case cases[] = {
        {"raw", "a.bin BINARY", 10 * sectorBytes + 100, "1:0+10"},
        {"raw, nothing but a part", "a.bin BINARY", 100, "a.cue:2: track 1 is empty"},
        {"sound", "a.wav WAVE", 10 * sectorBytes + 100, "1:0+11"},
    };
    for (const Case& c : cases) {
        const auto sheet = parseCueSheet("FILE " + c.type + "\nTRACK 01 AUDIO\nINDEX 01 00:00:00\n", "a.cue");
        ASSERT_TRUE(sheet) << c.what;
        const std::int64_t lengths[] = {c.bytes};
        const auto layout = layOut(*sheet, lengths);
        EXPECT_EQ(layout ? "1:0+" + std::to_string(layout->tracks[0].sectorCount) : base::describe(layout.failure()),
                  c.outcome)
            << c.what;
    }
}

TEST(CueSheet, namesAreReadAsTheyAreWritten)
{
    const std::string sheet = "REM DATE \"2001-05-01\"\nREM GENRE Hip Hop\nREM COMMENT \"\"\nREM COMMENT second\n"
                              "PERFORMER  Somebody \nTITLE \"The \"Best\" of it\"\nTITLE \"later\"\nFILE a.bin BINARY\n"
                              "TRACK 01 AUDIO\nPERFORMER \"Another\"\nREM COMMENT of the track\nINDEX 01 00:00:00\n"
                              "TRACK 02 AUDIO\nTITLE \"\xC4rger\nINDEX 01 00:00:20\n";
    const auto parsed = parseCueSheet(sheet, "a.cue");
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->names.year, L"2001");
    EXPECT_EQ(parsed->names.genre, L"Hip Hop");
    EXPECT_EQ(parsed->names.comment, L"second");
    EXPECT_EQ(parsed->names.artist, L"Somebody");
    EXPECT_EQ(parsed->names.album, L"The \"Best\" of it");
    EXPECT_EQ(parsed->names.titles, (std::vector<std::wstring>{L"", L"\u00C4rger"}));

    const auto longTitle = parseCueSheet("TITLE \"" + std::string(100'000, 'x') +
                                             "\"\nFILE a.bin BINARY\n"
                                             "TRACK 01 AUDIO\nINDEX 01 00:00:00\n",
                                         "a.cue");
    ASSERT_TRUE(longTitle);
    EXPECT_EQ(longTitle->names.album, std::wstring(maxTextLength, L'x'));
}

}

}
