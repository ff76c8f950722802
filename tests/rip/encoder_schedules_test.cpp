#include "encoded_disc.h"

#include <gmock/gmock.h>

namespace tonquay::rip {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;

std::vector<std::wstring> forEachTrack(const std::wstring& pattern)
{
    if (pattern.find(L'%') == std::wstring::npos)
        return {pattern};
    std::vector<std::wstring> texts;
    for (const wchar_t* name : {L"Dawn", L"Noon", L"Dusk"}) {
        const std::wstring number = std::to_wstring(texts.size() + 1);
        std::wstring text;
        for (const wchar_t letter : pattern)
            text += letter == L'%' ? name : letter == L'#' ? number : std::wstring(1, letter);
        texts.push_back(text);
    }
    return texts;
}

/// `deleted` and `kept` tell what is left with deleteWav 1 and 0: after the last track's encoder, but for a batch, and
/// at the end. In the commands % is a track's name and # its number; one without % is started once.
struct Case {
    Encoder encoder;
    Mode mode;
    std::wstring command;
    std::string deleted;
    std::string kept;
    std::wstring keptCommand{}; ///< where it differs
};

const std::wstring oggencCommand = LR"(C:\OGGENC.EXE -q8 -a"ACDC" -N# -t"%" "C:\Music\%.wav")";
const std::wstring pluggerCommand = LR"(C:\PLUGGER.EXE -b 128 "C:\Music\%.wav")";
const std::wstring lameCommand = LR"(C:\LAME.EXE -h -b 128 "C:\Music\%.wav" "C:\Music\%.mp3")";
const std::wstring mp3encCommand = LR"(C:\MP3ENC.EXE -v -br 128000 -qual 9 -if "C:\Music\%.wav" -of "C:\Music\%.mp3")";
const std::wstring mp3encBatch = LR"(C:\MP3ENC.EXE -v -br 128000 -qual 9 -if "C:\Music%.wav" -of "C:\Music\%.mp3")";

const Case cases[] = {
    {ownXing, Mode::single, LR"(C:\XMCODE.EXE -x "C:\Music\%.wav")", "EEEW EEEW", "BBBW BBBW"},
    {ownXing, Mode::turbo, LR"(C:\XMCODE.EXE -x "C:\Music\%.wav")", "BBBW EEEW", "BBBW BBBW"},
    {ownXing, Mode::batch, LR"(C:\XMCODE.EXE -x "%.wav")", "EEEW", "BBBW"},
    {ownBlade, Mode::batch, LR"(C:\BLADEENC.EXE -x "%.wav")", "EEEW", "BBBW"},
    {oggenc, Mode::single, oggencCommand, "EEEW EEEW", "BBBW BBBW"},
    {oggenc, Mode::turbo, oggencCommand, "BBBW EEEW", "BBBW BBBW"},
    {oggenc, Mode::batch, oggencCommand, "EEEW", "BBBW"},
    {plugger, Mode::single, pluggerCommand, "EEEW EEEW", "BBBW BBBW"},
    {plugger, Mode::turbo, pluggerCommand, "BBBW EEEW", "BBBW BBBW"},
    {plugger, Mode::batch, pluggerCommand, "EEEW", "BBBW"},
    {lame, Mode::single, lameCommand, "EEEW EEEW", "BBBW BBBW"},
    {lame, Mode::turbo, lameCommand, "BBEW EEEW", "BBBW BBBW"},
    {lame, Mode::batch, lameCommand, "EEEW", "BBBW"},
    {mp3enc, Mode::single, mp3encCommand, "EEEW EEEW", "BBBW BBBW"},
    {mp3enc, Mode::turbo, mp3encCommand, "BBEW EEEW", "BBBW BBBW"},
    {mp3enc, Mode::batch, mp3encBatch, "---W", "WWWW"},
    {generic, Mode::single, LR"(C:\ENC.EXE "C:\Music\%.wav")", "EEEW EEEW", "BBBW BBBW"},
    {generic, Mode::turbo, LR"(C:\ENC.EXE "C:\Music\%.wav")", "BBEW EEEW", "BBBW BBBW"},
    {generic, Mode::batch, LR"(C:\ENC.EXE "%.wav")", "EEEW", "BBBW"},
    {xing, Mode::single, LR"(C:\XMCODE.EXE)", "---W ---W", "W--W W--W"},
    {xing, Mode::turbo, LR"(C:\XMCODE.EXE)", "W--W W--W", "W--W W--W"},
    {xing, Mode::batch, LR"(C:\XMCODE.EXE)", "WWWW", "WWWW"},
    {blade, Mode::single, LR"(C:\BLADEENC.EXE -delete -quit "C:\Music\%.wav")", "EEEW EEEW", "BBBW BBBW",
     LR"(C:\BLADEENC.EXE -quit "C:\Music\%.wav")"},
    {blade, Mode::turbo, LR"(C:\BLADEENC.EXE -quit "C:\Music\%.wav")", "BBBW EEEW", "BBBW BBBW"},
    {blade, Mode::batch, LR"(C:\BLADEENC.EXE -delete -quit *.wav)", "EEEE", "BBBW",
     LR"(C:\BLADEENC.EXE -quit "Dawn.wav" "Noon.wav" "Dusk.wav")"},
};

void expectRun(const Case& c, std::int16_t deleteWav)
{
    EncodedDisc disc(c.encoder, c.mode, deleteWav);
    disc.host.files.put(L"C:\\Music\\Other.wav", "another disc's");
    disc.driver.recstart();
    const bool keeps = deleteWav == 0;
    EXPECT_EQ(disc.commands(), forEachTrack(keeps && !c.keptCommand.empty() ? c.keptCommand : c.command));
    for (const auto& one : disc.host.processes.started)
        EXPECT_EQ(one.folder, L"C:\\Music");
    EXPECT_EQ((c.mode == Mode::batch ? "" : disc.afterTrack + ' ') + disc.left(), keeps ? c.kept : c.deleted);
    EXPECT_EQ(disc.tagged, c.encoder.tagged);
    EXPECT_EQ(disc.state.flags.ripBusy + disc.state.flags.encodeBusy, 0);
}

TEST(EncoderSchedules, eachEncoderGetsItsCommandsAndWavFilesGoWhenTheirTimeHasCome)
{
    for (const Case& c : cases) {
        for (const std::int16_t deleteWav : {std::int16_t{1}, std::int16_t{0}}) {
            SCOPED_TRACE(testing::Message()
                         << c.encoder.what << ", mode " << static_cast<int>(c.mode) << ", deleteWav " << deleteWav);
            expectRun(c, deleteWav);
        }
    }
}

TEST(EncoderSchedules, turboReadsOnBesideAnyNumberOfEncodersAndWaitsForTheLastOnly)
{
    constexpr int tracks = 20;
    EncodedDisc disc(lame, Mode::turbo, 1);
    disc.host.engine.insertDisc(0, std::vector<std::int32_t>(tracks, EncodedDisc::trackBytes));
    for (int number = 4; number <= tracks; ++number) {
        disc.state.disc.trackTitles.set(number, number == tracks ? L"Last" : L"Song" + std::to_wstring(number));
        disc.main.list1.add(disc.state.disc.trackTitles(number));
        disc.main.list1.select(number - 1, true);
    }
    disc.host.processes.scripts = {{.named = L"Last", .lasts = 1h}, {.named = L"LAME", .endless = true}};
    bool busy = true;
    disc.host.loop.onTurn = [&] {
        if (disc.host.processes.living() > 0)
            busy = busy && disc.state.flags.encodeBusy == 1;
    };
    const auto start = disc.host.clock.elapsed();
    disc.driver.recstart();
    EXPECT_EQ(disc.commands().size(), 20U);
    EXPECT_EQ(disc.host.processes.living(), 19U);
    EXPECT_GT(disc.host.clock.elapsed() - start, 1h);
    EXPECT_TRUE(busy) << "no start in the background clears it";
    EXPECT_THAT(disc.host.files.allFiles(), IsEmpty()) << "what is open already can be swept";
    EXPECT_TRUE(disc.tagged);
}

TEST(EncoderSchedules, turboWaitsForTheLastSelectedTrackWhereverItStands)
{
    const struct {
        const char* what;
        std::vector<std::int32_t> rows;
        const wchar_t* waitedFor;
        std::size_t living;
    } rows[] = {
        {"the only one", {1}, L"Noon", 0},
        {"not the last row", {0, 1}, L"Noon", 1},
        {"a gap before it", {0, 2}, L"Dusk", 1},
    };
    for (const auto& c : rows) {
        EncodedDisc disc(lame, Mode::turbo, 1);
        disc.main.list1.deselectAll();
        for (const std::int32_t row : c.rows)
            disc.main.list1.select(row, true);
        disc.host.processes.scripts = {{.named = c.waitedFor}, {.named = L"LAME", .endless = true}};
        disc.driver.recstart();
        EXPECT_EQ(disc.commands().size(), c.rows.size()) << c.what;
        EXPECT_EQ(disc.host.processes.living(), c.living) << c.what;
    }
}

TEST(EncoderSchedules, sweepTakesWhatABackgroundEncoderHasNotOpenedYetWhenItIsDone)
{
    EncodedDisc disc(lame, Mode::turbo, 1);
    disc.host.processes.scripts = {{.named = L"Noon",
                                    .lasts = 1h,
                                    .input = [](const std::wstring&) { return L"C:\\Music\\Noon.wav"; },
                                    .opensInputAfter = 1h},
                                   {.named = L"LAME"}};
    disc.driver.recstart();
    EXPECT_EQ(disc.left(), "-W--");
    EXPECT_TRUE(disc.tagged);
    disc.host.loop.runFor(2h);
    EXPECT_EQ(disc.left(), "----");
}

TEST(EncoderSchedules, stopDuringAnEncoderLetsItEndAndStartsNoOther)
{
    const struct {
        const char* what;
        Mode mode;
        std::size_t duringStart;
        std::string left;
        bool tagged;
    } stops[] = {
        {"single", Mode::single, 1, "E---", false},
        {"Turbo, in the background", Mode::turbo, 1, "BW--", true},
        {"Turbo, the last one", Mode::turbo, 3, "BBE-", true},
        {"batch", Mode::batch, 1, "BWW-", true},
    };
    for (const auto& c : stops) {
        EncodedDisc disc(lame, c.mode, 1);
        disc.onStart = [&] {
            if (disc.starts == c.duringStart)
                disc.host.loop.after(2ms, [&] { disc.stop(); });
        };
        disc.driver.recstart();
        EXPECT_EQ(disc.starts, c.duringStart) << c.what;
        EXPECT_EQ(disc.left(), c.left) << c.what;
        EXPECT_EQ(disc.tagged, c.tagged) << c.what;
        EXPECT_EQ(disc.state.flags.ripBusy, 0) << c.what;
    }
}

TEST(EncoderSchedules, encoderThatCrashesOrIsMissingCostsTheWavFiles)
{
    for (const Mode mode : everyMode) {
        EncodedDisc crashing(lame, mode, 1);
        crashing.host.processes.scripts = {{.named = L"LAME", .exitCode = 139}};
        EncodedDisc missing(lame, mode, 1);
        missing.host.processes.scripts.clear();
        for (EncodedDisc* disc : {&crashing, &missing}) {
            disc->driver.recstart();
            EXPECT_EQ(disc->commands().size(), 3U);
            EXPECT_EQ(disc->left(), "----");
        }
        EXPECT_EQ(missing.afterTrack, mode == Mode::turbo ? "WW--" : "----");
        EXPECT_TRUE(missing.host.log.says("Start an encoder"));
    }
}

TEST(EncoderSchedules, titleOfOneLetterIsRippedUnderItsNumberAndLookedForUnderItsLetter)
{
    const struct {
        Mode mode;
        std::wstring second;
        std::string left;
    } titles[] = {
        {Mode::single, L"Track2", "E-E- C:\\Music\\Track2.mp3 C:\\Music\\X.wav"},
        {Mode::turbo, L"Track2", "E-E- C:\\Music\\Track2.mp3 C:\\Music\\Track2.wav"},
        {Mode::batch, L"X", "E-E- C:\\Music\\Track2.wav C:\\Music\\X.mp3"},
    };
    for (const auto& c : titles) {
        EncodedDisc disc(generic, c.mode, 1);
        disc.state.disc.trackTitles.set(2, L"X?");
        disc.host.files.put(L"C:\\Music\\X.wav", "another disc's");
        disc.driver.recstart();
        const std::wstring folder = c.mode == Mode::batch ? L"" : L"C:\\Music\\";
        EXPECT_EQ(disc.commands().at(1), L"C:\\ENC.EXE \"" + folder + c.second + L".wav\"");
        EXPECT_EQ(disc.left(), c.left);
    }
}

TEST(EncoderSchedules, folderThatCannotBeEnteredCostsNoOtherFoldersFile)
{
    for (const Encoder& encoder : {lame, generic, blade}) {
        for (const Mode mode : everyMode) {
            EncodedDisc disc(encoder, mode, 1);
            for (const wchar_t* name : {L"Dawn.wav", L"Noon.wav", L"Dusk.wav"})
                disc.host.files.put(std::wstring(L"C:\\CDTONQUAY\\") + name, "another one");
            disc.host.files.fail(test::FakeFileSystem::Operation::changeFolder, L"C:\\Music");
            disc.driver.recstart();
            for (const wchar_t* name : {L"Dawn.wav", L"Noon.wav", L"Dusk.wav"})
                EXPECT_EQ(disc.host.files.contents(std::wstring(L"C:\\CDTONQUAY\\") + name), "another one")
                    << encoder.what << ", mode " << static_cast<int>(mode);
        }
    }
}

TEST(EncoderSchedules, statusReadsEncodingAndTheFirstWaitThatEndsClearsEncodeBusy)
{
    const struct {
        Mode mode;
        const char* course;
    } courses[] = {
        {Mode::single, "Encoding busy Recording Encoding busy Recording Encoding busy Recording "},
        {Mode::turbo, "Encoding busy Recording Encoding busy Recording Encoding busy Recording "},
        {Mode::batch, "Encoding busy idle idle Recording "},
    };
    for (const auto& c : courses) {
        EncodedDisc disc(lame, c.mode, 1);
        disc.driver.recstart();
        EXPECT_EQ(disc.course, c.course);
    }
}

TEST(EncoderSchedules, windowIsMinimisedDuringABatchAndRestoredAfterEveryRun)
{
    using WindowState = controls::Form::WindowState;
    const struct {
        const char* what;
        Encoder encoder;
        Mode mode;
        std::int16_t minimise;
        std::vector<WindowState> course;
    } windows[] = {
        {"batch", lame, Mode::batch, 1, {WindowState::minimised, WindowState::normal}},
        {"batch, not wanted", lame, Mode::batch, 0, {}},
        {"whole folder", blade, Mode::batch, 1, {WindowState::minimised, WindowState::normal}},
        {"own switches", ownXing, Mode::batch, 1, {WindowState::minimised, WindowState::normal}},
        {"a window of its own", xing, Mode::batch, 1, {}},
        {"single", lame, Mode::single, 1, {}},
        {"Turbo", lame, Mode::turbo, 1, {}},
    };
    for (const auto& c : windows) {
        EncodedDisc disc(c.encoder, c.mode, 1);
        disc.state.settings.minimizeWhileEncoding = c.minimise;
        std::vector<WindowState> course;
        auto followed = disc.main.form.windowState.follow([&](const WindowState& state) { course.push_back(state); });
        disc.driver.recstart();
        EXPECT_EQ(course, c.course) << c.what;
    }
    EncodedDisc disc(lame, Mode::single, 1);
    disc.main.form.windowState = WindowState::minimised;
    disc.driver.recstart();
    EXPECT_EQ(disc.main.form.windowState.get(), WindowState::normal) << "also when the user minimised it";
}

TEST(EncoderSchedules, unwantedEncoderIsNeverStarted)
{
    for (const Mode mode : everyMode) {
        EncodedDisc blank(generic, mode, 0);
        blank.state.settings.encoderPath = L"  ";
        EncodedDisc unwanted(generic, mode, 0);
        unwanted.state.settings.encodeWanted = 0;
        for (EncodedDisc* disc : {&blank, &unwanted}) {
            disc->driver.recstart();
            EXPECT_THAT(disc->commands(), IsEmpty());
            EXPECT_EQ(disc->left(), "WWW-");
            EXPECT_FALSE(disc->tagged);
        }
    }
}

TEST(EncoderSchedules, encodeOnlyRunsTheBatchOnAnEarlierRunsFilesAndNoSingleEncoder)
{
    for (const Mode mode : {Mode::single, Mode::batch}) {
        EncodedDisc disc(lame, mode, 1);
        disc.state.flags.encodeOnly = 1;
        disc.host.files.put(L"C:\\Music\\Noon.wav", "sound");
        disc.driver.recstart();
        EXPECT_EQ(disc.left(), mode == Mode::batch ? "-E--" : "-W--");
        EXPECT_TRUE(disc.tagged);
    }
}

}
}
