#include "encode/commands.h"

#include <gtest/gtest.h>

namespace tonquay::encode {
namespace {

using state::RipSettings;

state::RunInHand runIn(const wchar_t* folder)
{
    state::RunInHand run;
    run.destFolder = folder;
    run.currentName = L"B";
    return run;
}

/// The commands of an encoder for a nameless track B. `batch` is empty where it is the text of `single`.
struct Case {
    const char* what;
    const wchar_t* encoder;
    void (*change)(RipSettings&);
    std::wstring single;
    std::wstring batch{};
};

void expectCommands(const Case& c, const wchar_t* folder)
{
    RipSettings settings;
    settings.encoderPath = c.encoder;
    c.change(settings);
    EXPECT_EQ(singleCommand(settings, {}, runIn(folder), 7), c.single) << c.what;
    EXPECT_EQ(batchCommand(settings, {}, runIn(folder), 7), c.batch.empty() ? c.single : c.batch) << c.what;
}

void nothing(RipSettings&) {}

void everything(RipSettings& s)
{
    s.crcCheck = 1;
    s.highPriority = 1;
    s.vbrQuality = 4;
    s.stereo = 0;
    s.bitrateIndex = 0;
    s.encoderFileExt = L"mp2";
}

/// Each flag has a value that is neither of the two it should have.
void oddFlags(RipSettings& s)
{
    s.crcCheck = 2;
    s.highPriority = -1;
    s.stereo = 2;
    s.deleteWav = 2;
    s.bitrateIndex = 14;
    s.encoderCmdLine = L"  ";
    s.encoderFileExt = L"  ";
}

TEST(Commands, haveTheSwitchesOfTheirKindInItsOrder)
{
    const Case cases[] = {
        {"LAME", L"C:\\LAME.EXE", nothing, LR"(C:\LAME.EXE -h -b 128 "D:\A\B.wav" "D:\A\B.mp3")"},
        {"LAME, everything", L"LAME", everything, LR"(LAME -p -V 4 -a -h -b 32 "D:\A\B.wav" "D:\A\B.mp3")"},
        {"LAME, odd flags", L"LAME", oddFlags, LR"(LAME -h "D:\A\B.wav" "D:\A\B.mp3")"},
        {"LAME, best variable rate", L"LAME", [](RipSettings& s) { s.highPriority = 1; },
         LR"(LAME -V 0 -h -b 128 "D:\A\B.wav" "D:\A\B.mp3")"},
        {"PLUGGER", L"PLUGGER", nothing, LR"(PLUGGER -b 128 "D:\A\B.wav")"},
        {"PLUGGER, everything", L"PLUGGER", everything, LR"(PLUGGER -c -z -dm -b 32 "D:\A\B.wav")"},
        {"PLUGGER, odd flags", L"PLUGGER", oddFlags, LR"(PLUGGER "D:\A\B.wav")"},
        {"MP3ENC", L"MP3ENC", nothing, LR"(MP3ENC -v -br 128000 -qual 9 -if "D:\A\B.wav" -of "D:\A\B.mp3")",
         LR"(MP3ENC -v -br 128000 -qual 9 -if "D:\AB.wav" -of "D:\A\B.mp3")"},
        {"MP3ENC, everything", L"MP3ENC", everything,
         LR"(MP3ENC -v -crc -dm -br 32000 -qual 9 -if "D:\A\B.wav" -of "D:\A\B.mp3")",
         LR"(MP3ENC -v -crc -dm -br 32000 -qual 9 -if "D:\AB.wav" -of "D:\A\B.mp3")"},
        {"MP3ENC, odd flags", L"MP3ENC", oddFlags, LR"(MP3ENC -v -qual 9 -if "D:\A\B.wav" -of "D:\A\B.mp3")",
         LR"(MP3ENC -v -qual 9 -if "D:\AB.wav" -of "D:\A\B.mp3")"},
        {"XING", L"C:\\XINGMP3.EXE", nothing, LR"(C:\XINGMP3.EXE)"},
        {"XING, everything", L"C:\\XMCODE.EXE", everything, LR"(C:\XMCODE.EXE)"},
        {"any other", L"C:\\MY TOOLS\\ENC.EXE", nothing, LR"(C:\MY TOOLS\ENC.EXE "D:\A\B.wav")",
         LR"(C:\MY TOOLS\ENC.EXE "B.wav")"},
        {"any other, everything", L"ENC", everything, LR"(ENC "D:\A\B.wav")", LR"(ENC "B.wav")"},
    };
    for (const Case& c : cases)
        expectCommands(c, L"D:\\A");
}

TEST(Commands, ownSwitchesReplaceAllBuiltOnes)
{
    constexpr auto ownSwitches = [](RipSettings& s) {
        everything(s);
        s.encoderCmdLine = L"  -b 192 ";
    };
    const Case cases[] = {
        {"any other", L"C:\\TOOLS\\ENC.EXE", ownSwitches, LR"(C:\TOOLS\ENC.EXE -b 192 "D:\A\B.wav")",
         LR"(C:\TOOLS\ENC.EXE -b 192 "B.wav")"},
        {"LAME", L"LAME", ownSwitches, LR"(LAME -b 192 "D:\A\B.wav" "D:\A\B.mp3")",
         LR"(LAME -b 192 "B.wav" "D:\A\B.mp3")"},
        {"LAME in a folder", L"C:\\FLAME\\OGGENC.EXE", ownSwitches,
         LR"(C:\FLAME\OGGENC.EXE -b 192 "D:\A\B.wav" "D:\A\B.mp3")",
         LR"(C:\FLAME\OGGENC.EXE -b 192 "B.wav" "D:\A\B.mp3")"},
        {"OGGENC", L"OGGENC", ownSwitches, LR"(OGGENC -b 192 "D:\A\B.wav")", LR"(OGGENC -b 192 "B.wav")"},
        {"BLADE", L"BLADE", ownSwitches, LR"(BLADE -b 192 "D:\A\B.wav")", LR"(BLADE -b 192 "B.wav")"},
        {"MP3ENC", L"MP3ENC", ownSwitches, LR"(MP3ENC -b 192 "D:\A\B.wav")", LR"(MP3ENC -b 192 "B.wav")"},
        {"XING", L"XMCODE", ownSwitches, LR"(XMCODE -b 192 "D:\A\B.wav")", LR"(XMCODE -b 192 "B.wav")"},
    };
    for (const Case& c : cases)
        expectCommands(c, L"D:\\A");
}

TEST(Commands, filesAtADriveRootTakeNoSecondBackslash)
{
    const Case cases[] = {
        {"LAME", L"LAME", nothing, LR"(LAME -h -b 128 "D:\B.wav" "D:\B.mp3")"},
        {"PLUGGER", L"PLUGGER", nothing, LR"(PLUGGER -b 128 "D:\B.wav")"},
        {"MP3ENC, but for its output", L"MP3ENC", nothing,
         LR"(MP3ENC -v -br 128000 -qual 9 -if "D:\B.wav" -of "D:\\B.mp3")"},
        {"OGGENC", L"OGGENC", nothing, LR"(OGGENC -q8 -N7 "D:\B.wav")"},
        {"any other", L"ENC", nothing, LR"(ENC "D:\B.wav")", LR"(ENC "B.wav")"},
        {"own switches", L"LAME", [](RipSettings& s) { s.encoderCmdLine = L"-x"; }, LR"(LAME -x "D:\B.wav" "D:\B.mp3")",
         LR"(LAME -x "B.wav" "D:\B.mp3")"},
    };
    for (const Case& c : cases)
        expectCommands(c, L"D:\\");
}

TEST(Commands, bladeTakesTrackByTrackOrTheWholeBatch)
{
    const Case cases[] = {
        {"as installed", L"C:\\BLADE.EXE", nothing, LR"(C:\BLADE.EXE -delete -quit "D:\A\B.wav")",
         LR"(C:\BLADE.EXE -delete -quit *.wav)"},
        {"everything", L"C:\\BLADE.EXE", everything,
         LR"(C:\BLADE.EXE -delete -crc -prio=highest -mono -32 -quit "D:\A\B.wav" *.mp2)",
         LR"(C:\BLADE.EXE -delete -crc -prio=highest -mono -32 -quit *.wav *.mp2)"},
        {"WAV files stay", L"C:\\BLADE.EXE",
         [](RipSettings& s) {
             s.deleteWav = 0;
             s.encoderFileExt = L" mp2 ";
         },
         LR"(C:\BLADE.EXE -quit "D:\A\B.wav" *.mp2)", LR"(C:\BLADE.EXE -quit "B.wav" "C.wav" *.mp2)"},
        {"the sweep of Turbo deletes, not a single command", L"C:\\BLADE.EXE", [](RipSettings& s) { s.turboMode = 1; },
         LR"(C:\BLADE.EXE -quit "D:\A\B.wav")", LR"(C:\BLADE.EXE -delete -quit *.wav)"},
        {"odd flags", L"C:\\BLADE.EXE", oddFlags, LR"(C:\BLADE.EXE -quit "D:\A\B.wav")",
         LR"(C:\BLADE.EXE -quit "B.wav" "C.wav")"},
    };
    for (const Case& c : cases) {
        RipSettings settings;
        settings.encoderPath = c.encoder;
        c.change(settings);
        EXPECT_TRUE(takesWholeBatch(settings)) << c.what;
        EXPECT_EQ(singleCommand(settings, {}, runIn(L"D:\\A"), 7), c.single) << c.what;
        EXPECT_EQ(bladeBatchCommand(settings, LR"( "B.wav" "C.wav")"), c.batch) << c.what;
    }
}

TEST(Commands, oggencIsToldTheNames)
{
    struct OggCase {
        const char* what;
        void (*change)(state::DiscInfo&);
        const wchar_t* single;
        const wchar_t* batch;
    };
    const OggCase cases[] = {
        {"all names, genre before or behind the track's own",
         [](state::DiscInfo& d) {
             d.discArtist = L" Ann Lee ";
             d.discAlbum = L" First Light ";
             d.discYear = L" 1999 ";
             d.discComment = L" Say \"no\" ";
             d.discGenre = L" Folk ";
             d.trackTitles.set(7, L" Dawn ");
             d.trackTitles.set(6, L"Night");
         },
         LR"(C:\OGGENC.EXE -q8 -a"Ann Lee" -l"First Light" -d"1999" -c="Say "no"" -N7 -t"Dawn" -G"Folk" "D:\A\B.wav")",
         LR"(C:\OGGENC.EXE -q8 -a"Ann Lee" -l"First Light" -d"1999" -c="Say "no"" -G"Folk" -N7 -t"Dawn" "D:\A\B.wav")"},
        {"no names", [](state::DiscInfo&) {}, LR"(C:\OGGENC.EXE -q8 -N7 "D:\A\B.wav")",
         LR"(C:\OGGENC.EXE -q8 -N7 "D:\A\B.wav")"},
        {"blank names",
         [](state::DiscInfo& d) {
             d.discArtist = d.discAlbum = d.discYear = d.discComment = d.discGenre = L"  ";
             d.trackTitles.set(7, L" ");
         },
         LR"(C:\OGGENC.EXE -q8 -N7 "D:\A\B.wav")", LR"(C:\OGGENC.EXE -q8 -N7 "D:\A\B.wav")"},
        {"year of 0", [](state::DiscInfo& d) { d.discYear = L"0"; }, LR"(C:\OGGENC.EXE -q8 -N7 "D:\A\B.wav")",
         LR"(C:\OGGENC.EXE -q8 -N7 "D:\A\B.wav")"},
        {"year of letters", [](state::DiscInfo& d) { d.discYear = L"MCMXCIX"; },
         LR"(C:\OGGENC.EXE -q8 -N7 "D:\A\B.wav")", LR"(C:\OGGENC.EXE -q8 -N7 "D:\A\B.wav")"},
        {"year with more behind it", [](state::DiscInfo& d) { d.discYear = L"1999-05"; },
         LR"(C:\OGGENC.EXE -q8 -d"1999-05" -N7 "D:\A\B.wav")", LR"(C:\OGGENC.EXE -q8 -d"1999-05" -N7 "D:\A\B.wav")"},
    };
    for (const OggCase& c : cases) {
        // None of the other settings has a switch here.
        RipSettings settings;
        everything(settings);
        settings.bitrateIndex = 8;
        settings.encoderPath = L"C:\\OGGENC.EXE";
        state::DiscInfo disc;
        c.change(disc);
        EXPECT_EQ(singleCommand(settings, disc, runIn(L"D:\\A"), 7), c.single) << c.what;
        EXPECT_EQ(batchCommand(settings, disc, runIn(L"D:\\A"), 7), c.batch) << c.what;
    }
}

TEST(Commands, bitrateIsSpelledAsTheEncoderWantsIt)
{
    struct RateCase {
        std::int16_t index;
        std::wstring lameAndPlugger;
        std::wstring blade;
        std::wstring mp3enc;
        std::wstring oggenc;
    };
    const RateCase cases[] = {
        {-1, L"", L"", L"", L" -q10"},
        {0, L" -b 32", L" -32", L" -br 32000", L" -q0"},
        {1, L" -b 40", L" -40", L" -br 40000", L" -q1"},
        {2, L" -b 48", L" -48", L" -br 48000", L" -q2"},
        {3, L" -b 56", L" -56", L" -br 56000", L" -q3"},
        {4, L" -b 64", L" -64", L" -br 64000", L" -q4"},
        {5, L" -b 80", L" -80", L" -br 80000", L" -q5"},
        {6, L" -b 96", L" -96", L" -br 96000", L" -q6"},
        {7, L" -b 112", L" -112", L" -br 112000", L" -q7"},
        {8, L" -b 128", L"", L" -br 128000", L" -q8"},
        {9, L" -b 160", L" -160", L" -br 160000", L" -q9"},
        {10, L" -b 192", L" -192", L" -br 192000", L" -q10"},
        {11, L" -b 224", L" -224", L" -br 224000", L" -q10"},
        {12, L" -b 256", L" -256", L" -br 256000", L" -q10"},
        {13, L" -b 320", L" -320", L" -br 320000", L" -q10"},
        {14, L"", L"", L"", L" -q10"},
    };
    for (const RateCase& c : cases) {
        RipSettings settings;
        settings.bitrateIndex = c.index;
        settings.deleteWav = 0;
        const auto command = [&settings](const wchar_t* encoder) {
            settings.encoderPath = encoder;
            return singleCommand(settings, {}, runIn(L"D:\\A"), 7);
        };
        EXPECT_EQ(command(L"LAME"), L"LAME -h" + c.lameAndPlugger + LR"( "D:\A\B.wav" "D:\A\B.mp3")") << c.index;
        EXPECT_EQ(command(L"PLUGGER"), L"PLUGGER" + c.lameAndPlugger + LR"( "D:\A\B.wav")") << c.index;
        EXPECT_EQ(command(L"BLADE"), L"BLADE" + c.blade + LR"( -quit "D:\A\B.wav")") << c.index;
        EXPECT_EQ(command(L"MP3ENC"), L"MP3ENC -v" + c.mp3enc + LR"( -qual 9 -if "D:\A\B.wav" -of "D:\A\B.mp3")")
            << c.index;
        EXPECT_EQ(command(L"OGGENC"), L"OGGENC" + c.oggenc + LR"( -N7 "D:\A\B.wav")") << c.index;
    }
}

TEST(EncodedPath, hasTheEndingThatTheEncoderGivesIt)
{
    struct PathCase {
        const wchar_t* encoder;
        const wchar_t* folder;
        const wchar_t* ownSwitches;
        const wchar_t* ownEnding;
        const wchar_t* path;
    };
    const PathCase cases[] = {
        {L"LAME", L"D:\\A", L"", L"mp2", LR"(D:\A\B.mp3)"},
        {L"LAME", L"D:\\", L"", L"", LR"(D:\B.mp3)"},
        {L"PLUGGER", L"D:\\A", L"", L"", LR"(D:\A\B.mp3)"},
        {L"MP3ENC", L"D:\\A", L"-x", L"", LR"(D:\A\B.mp3)"},
        {L"OGGENC", L"D:\\A", L"", L"mp2", LR"(D:\A\B.ogg)"},
        {L"FLAME\\OGGENC", L"D:\\A", L"-q5", L"", LR"(D:\A\B.ogg)"},
        {L"BLADE", L"D:\\A", L"", L" ", LR"(D:\A\B.mp3)"},
        {L"BLADE", L"D:\\A", L"", L" mp2 ", LR"(D:\A\B.mp2)"},
        {L"BLADE", L"D:\\A", L"-x", L"mp2", LR"(D:\A\B.mp3)"},
        {L"XINGMP", L"D:\\A", L"", L"", L""},
        {L"OTHER", L"D:\\A", L"", L"", L""},
    };
    for (const PathCase& c : cases) {
        RipSettings settings;
        settings.encoderPath = c.encoder;
        settings.encoderCmdLine = c.ownSwitches;
        settings.encoderFileExt = c.ownEnding;
        EXPECT_EQ(encodedPath(settings, runIn(c.folder)), c.path) << c.encoder;
    }
}

}
}
