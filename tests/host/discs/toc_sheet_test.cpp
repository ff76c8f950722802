#include "host/discs/layout.h"
#include "host/discs/toc_sheet.h"

#include <gtest/gtest.h>

namespace tonquay::host {

namespace {

std::string outcomeOfToc(const std::string& text)
{
    const auto sheet = parseTocSheet(text, "a.toc");
    if (!sheet)
        return base::describe(sheet.failure());
    const std::vector<std::int64_t> lengths(sheet->files.size(), 235200);
    const auto layout = layOut(*sheet, lengths);
    if (!layout)
        return base::describe(layout.failure());
    std::string table;
    for (const platform::DiscTrack& track : layout->tracks)
        table += (table.empty() ? "" : " ") + std::to_string(track.number) + (track.audio ? ":" : "d:") +
                 std::to_string(track.firstSector) + "+" + std::to_string(track.sectorCount);
    return table;
}

TEST(TocSheet, whatDoesNotAddUpIsRefusedAtItsLine)
{
    const std::string track = "CD_DA\nTRACK AUDIO\n";
    std::string hundred = "CD_DA\n";
    for (int i = 0; i < 100; ++i)
        hundred += "TRACK AUDIO SILENCE 0:4:0\n";
    struct Case {
        const char* what;
        std::string sheet;
        std::string message;
    };
    const Case cases[] = {
        {"empty", "", "a.toc: there is no track in this table of contents"},
        {"header only", "CD_DA\n// TRACK AUDIO\n", "a.toc: there is no track in this table of contents"},
        {"binary", std::string("CD_DA\0", 6), "a.toc: this is no text, so it is no table of contents"},
        {"rubbish", "CD_DA\nfoo", "a.toc:2: \"foo\" is no statement that can stand here"},
        {"file before track", "CD_DA\nFILE \"a.wav\" 0\n", "a.toc:2: \"FILE\" is no statement that can stand here"},
        {"header behind track", track + "CD_ROM\n", "a.toc:3: \"CD_ROM\" is no statement that can stand here"},
        {"kind of track", "TRACK VIDEO\n", "a.toc:1: \"VIDEO\" is no kind of track"},
        {"sub-channels", "TRACK AUDIO RW_RAW\n", "a.toc:1: sub-channel data in a table of contents is not read"},
        {"track without data", track + "TRACK AUDIO\n", "a.toc:2: track 1 has no data"},
        {"last track without data", track, "a.toc:2: track 1 has no data"},
        {"100 tracks", hundred, "a.toc:101: more than 99 tracks"},
        {"numbers past 99", "FIRST_TRACK_NO 99 TRACK AUDIO SILENCE 1:0:0\nTRACK AUDIO", "a.toc:2: more than 99 tracks"},
        {"first number 0", "FIRST_TRACK_NO 0\n", "a.toc:1: the first track number is none from 1 to 99"},
        {"file name without quotes", track + "FILE a.wav 0\n", "a.toc:3: a file without its name in quotes"},
        {"name without end", track + "FILE \"a.wav 0\n", "a.toc:4: \"\" is no time and no length"},
        {"title without end", track + "SILENCE 1:0:0 ISRC \"abc\n", "a.toc:4: a text without a closing quote"},
        {"file without start", track + "FILE \"a.wav\"\nSTART", "a.toc:4: \"START\" is no time and no length"},
        {"no time", track + "SILENCE 00:99:00\n", "a.toc:3: \"00:99:00\" is no time and no length"},
        {"number too large", track + "SILENCE 99999999999999\n",
         "a.toc:3: \"99999999999999\" is no time and no length"},
        {"offset", track + "FILE \"a.wav\" #x 0\n", "a.toc:3: no number behind #"},
        {"standard input", track + "FILE \"-\" 0\n", "a.toc:3: standard input is no image"},
        {"fifo", track + "FIFO \"a\" 1\n", "a.toc:3: a FIFO is no image"},
        {"data in a wave", "TRACK MODE1 DATAFILE \"a.wav\"\n", "a.toc:1: a sound file holds audio tracks only"},
        {"start twice", track + "PREGAP 0:2:0\nSTART\n", "a.toc:4: a second start of one track"},
        {"pregap behind data", track + "SILENCE 1:0:0\nPREGAP 0:2:0\n", "a.toc:4: PREGAP behind the data of its track"},
        {"start behind the end", track + "SILENCE 0:1:0\nSTART 0:2:0\n", "a.toc:2: track 1 is empty"},
        {"start at the end", track + "SILENCE 0:1:0\nSTART\n", "a.toc:2: track 1 is empty"},
        {"indices backwards", track + "SILENCE 1:0:0\nINDEX 0:2:0\nINDEX 0:1:0\n",
         "a.toc:5: INDEX is not behind the one before it"},
        {"index that is none", track + "SILENCE 1:0:0\nINDEX 5\n", "a.toc:4: time 5 is no time"},
        {"no without flag", track + "NO SILENCE\n", "a.toc:3: NO without COPY or PRE_EMPHASIS"},
        {"file shorter than asked", track + "FILE \"a.bin\" 0 0:2:0\n",
         "a.toc:3: \"a.bin\" ends before this: it has 235200 bytes of sound or data, needed are 352800"},
        {"offset behind the end", track + "FILE \"a.bin\" #300000 0\n",
         "a.toc:3: \"a.bin\" ends before this: it has 235200 bytes of sound or data, needed are 300001"},
        {"longer than a disc", track + "SILENCE 900000000000\n", "a.toc:3: this is more than a disc can hold"},
        {"text without brace", "CD_TEXT LANGUAGE\n", "a.toc:1: no { behind CD_TEXT"},
        {"text without end", "CD_TEXT {\nLANGUAGE 0 {\nTITLE \"x\"\n", "a.toc:4: \"\" is no item of CD_TEXT"},
        {"text with a stranger", "CD_TEXT { 12 }\n", "a.toc:1: \"12\" is no part of CD_TEXT"},
        {"language 8", "CD_TEXT { LANGUAGE 8 { } }\n", "a.toc:1: \"8\" is no language from 0 to 7"},
        {"byte 256", "CD_TEXT { LANGUAGE 0 { GENRE { 1, 256 } } }\n",
         "a.toc:1: binary data holds numbers from 0 to 255 only"},
        {"larger than a sheet", std::string(maxSheetBytes + 1, '\n'), "a.toc: a sheet is never as large as this"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(outcomeOfToc(c.sheet), c.message) << c.what;
}

TEST(TocSheet, tracksArePutTogetherFromTheirStatements)
{
    struct Case {
        const char* what;
        std::string sheet;
        std::string table;
    };
    const Case cases[] = {
        {"whole file", "CD_DA TRACK AUDIO FILE \"a.wav\" 0", "1:0+100"},
        {"length 0 is to the end", "CD_DA TRACK AUDIO FILE \"a.wav\" 0:1:0 0", "1:0+25"},
        {"pregap of silence", "CD_DA TRACK AUDIO PREGAP 0:2:0 FILE \"a.wav\" 0", "1:150+100"},
        {"start behind a whole file", "CD_DA TRACK AUDIO FILE \"a.wav\" 0 START FILE \"b.wav\" 0", "1:100+100"},
        {"start within", "TRACK AUDIO FILE \"a.wav\" 0 START 0:0:30 TRACK AUDIO FILE \"a.wav\" 0 START 0:0:40",
         "1:30+110 2:140+60"},
        {"samples are filled up to sectors", "TRACK AUDIO FILE \"a.wav\" 1 588 FILE \"a.wav\" 0 1", "1:0+2"},
        {"a start between sectors is moved on", "TRACK AUDIO FILE \"a.wav\" 0 600 START FILE \"a.wav\" 0 5880",
         "1:2+10"},
        {"data, gap, sound",
         "CD_ROM TRACK MODE1 DATAFILE \"a.bin\" 0:0:20 ZERO MODE1 0:0:5 TRACK AUDIO SILENCE 0:2:0 START FILE \"a.bin\" "
         "#40960 0 0:0:10",
         "1d:0+175 2:175+10"},
        {"sound before data", "TRACK AUDIO FILE \"a.wav\" 0 TRACK MODE2_RAW ZERO 0:2:0 START DATAFILE \"a.bin\"",
         "1:0+100 2d:250+100"},
        {"any case, comments", "cd_da // x\ntrack audio\n// file\nfile \"a.wav\"// name\n0", "1:0+100"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(outcomeOfToc(c.sheet), c.table) << c.what;
}

TEST(TocSheet, textsAreReadInTheFirstLanguage)
{
    const auto sheet =
        parseTocSheet("CD_DA CD_TEXT { LANGUAGE_MAP { 0 : EN 1:9 }\n"
                      "LANGUAGE 1 { TITLE \"second\" }\n"
                      "LANGUAGE 0 { TITLE \"The \\\"Best\\\"\" PERFORMER \"Bj\\366rk\" MESSAGE \"live\"\n"
                      "GENRE { 0, 23, 82, 111, 99, 107, 0 } SIZE_INFO { 0, 1 } DISC_ID \"x\" } }\n"
                      "TRACK AUDIO CD_TEXT { LANGUAGE 1 { TITLE \"only here\" } } SILENCE 1:0:0\n"
                      "TRACK AUDIO SILENCE 1:0:0\n"
                      "TRACK AUDIO CD_TEXT { LANGUAGE 0 { TITLE \"\xC3\x84rger\" ISRC \"\" } } SILENCE 1:0:0\n",
                      "a.toc");
    ASSERT_TRUE(sheet) << base::describe(sheet.failure());
    EXPECT_EQ(sheet->names.album, L"The \"Best\"");
    EXPECT_EQ(sheet->names.artist, L"Bj\u00F6rk");
    EXPECT_EQ(sheet->names.genre, L"Rock");
    EXPECT_EQ(sheet->names.comment, L"live");
    EXPECT_EQ(sheet->names.titles, (std::vector<std::wstring>{L"only here", L"", L"\u00C4rger"}));
}

}

}
