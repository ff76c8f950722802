#include "run_harness.h"

#include "disc/disc_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tonquay::rip {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto stopIcon = platform::Dialogs::Icon::stop;
constexpr auto informationIcon = platform::Dialogs::Icon::information;

/// The capture form in the fake host, over a disc of four tracks: 2, 1, 3 and 1.5 seconds and some milliseconds.
struct Capture : testing::Test, DiscToRip {
    state::CdrecaltControls& form = forms.controlsOf<state::CdrecaltControls>();

    Capture()
    {
        host.mci.trackMs = {2013, 1000, 3026, 1500};
        state.settings.ripMethod = state::analogMethod;
        state.path.ripEngineMode = 1;
        state.run.analogTempPath = L"C:\\WINDOWS\\Some_Song.wav";
        state.run.ripProgressTotal = 1;
        state.run.ripProgressNumber = 1;
    }

    /// Opens it by hand: it reads the disc and finds nothing to do.
    void openByHand()
    {
        state.run.analogTrack = 0;
        form.form.show();
        untilIdle();
        host.mci.commands.clear();
    }

    void put(std::initializer_list<int> rows)
    {
        for (const int track : rows) {
            for (std::int32_t i = 0; i < form.lstTracks.rowCount(); ++i)
                if (form.lstTracks.row(i).itemData == track)
                    form.lstTracks.setIndex(i);
            form.cmdTo.press();
        }
    }

    void untilIdle()
    {
        platform::waitUntil(host.loop, [this] { return !form.tmrRecord.enabled(); });
    }

    void after(int milliseconds, std::function<void()> act)
    {
        host.loop.after(std::chrono::milliseconds{milliseconds}, std::move(act));
    }

    std::string recorded() { return file(L"C:\\WINDOWS\\Some_Song.wav"); }
    static std::vector<std::wstring> rows(const controls::ChoiceList& list)
    {
        std::vector<std::wstring> texts;
        for (std::int32_t i = 0; i < list.rowCount(); ++i)
            texts.push_back(list.row(i).text);
        return texts;
    }
};

TEST_F(Capture, readsTheDiscIntoASortedListWithTheMarkerFirst)
{
    host.mci.trackMs.assign(12, 61500);
    host.mci.trackMs[9] = 3599999;
    openByHand();
    EXPECT_EQ(form.lblCDID.caption.get(), L"a disc");
    EXPECT_EQ(form.lblNumTracks.caption.get(), L"12");
    EXPECT_EQ(form.txtFile.text.get(), L"C:\\WINDOWS\\Some_Song.wav");
    ASSERT_EQ(form.lstTracks.rowCount(), 13);
    EXPECT_EQ(form.lstTracks.row(0).text, L"--- Group ---");
    EXPECT_EQ(form.lstTracks.row(1).text, L"Track  1 - 00:01:01");
    EXPECT_EQ(form.lstTracks.row(10).text, L"Track 10 - 00:59:59");
    for (std::int32_t n = 0; n <= 12; ++n)
        EXPECT_EQ(form.lstTracks.row(n).itemData, n);
    EXPECT_EQ(state.analogTrackSeconds(1), 62) << "61.5 goes to the even second";
    EXPECT_EQ(state.analogTrackSeconds(10), 3600);
    EXPECT_THAT(host.mci.open, IsEmpty());
}

TEST_F(Capture, aRunsTrackIsPlayedFromItsStartAndSavedAtItsEnd)
{
    struct Case {
        std::int16_t track;
        const wchar_t* play;
        std::string from;
        int to;
    };
    const Case cases[] = {
        {1, L"play cd", "0-", 2013},
        {3, L"play cd from 3013", "3013-", 6039},
        {4, L"play cd from 6039", "6039-", 7539},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.track);
        host.mci.commands.clear();
        state.run.analogTrack = c.track;
        state.flags.analogBusy = 1;
        form.form.show();
        EXPECT_EQ(form.lblStatus.caption.get(), L"Track " + std::to_wstring(c.track));
        EXPECT_TRUE(form.lblStatus.visible);
        EXPECT_TRUE(form.cmdCancel.enabled);
        for (const bool enabled : {form.cmdStart.enabled.get(), form.cmdRefresh.enabled.get(), form.cmdTo.enabled.get(),
                                   form.cmdFrom.enabled.get(), form.lstTracks.enabled.get(),
                                   form.lstRecord.enabled.get(), form.txtFile.enabled.get()})
            EXPECT_FALSE(enabled);
        platform::waitUntil(host.loop, [this] { return state.flags.analogBusy != 1; });
        EXPECT_FALSE(form.lblStatus.visible);
        EXPECT_FALSE(form.cmdCancel.enabled);
        EXPECT_TRUE(form.cmdStart.enabled);
        EXPECT_TRUE(form.lstRecord.enabled);
        form.form.unload();
        const std::vector<std::wstring> all = host.mci.commands;
        const std::vector<std::wstring> recording(std::find(all.begin(), all.end(), L"close cd") + 1, all.end());
        EXPECT_THAT(
            recording,
            ElementsAre(L"open new type waveaudio alias capture",
                        L"set capture samplespersec 44100 channels 2 bitspersample 16 alignment 4 bytespersec 176400",
                        L"open cdaudio alias cd", L"set cd time format milliseconds", L"record capture overwrite",
                        c.play, L"stop capture", L"stop cd", L"save capture C:\\WINDOWS\\Some_Song.wav",
                        L"close capture", L"close cd"));
        ASSERT_TRUE(recorded().starts_with(c.from)) << recorded();
        const int end = std::stoi(recorded().substr(c.from.size()));
        EXPECT_GE(end, c.to);
        EXPECT_LE(end, std::min(c.to + 10, 7539));
        EXPECT_THAT(host.mci.open, IsEmpty());
    }
    EXPECT_THAT(host.dialogs.boxes, IsEmpty());
}

TEST_F(Capture, theBarsFollowThePlaceOnTheDisc)
{
    state.run.analogTrack = 3;
    state.run.ripProgressTotal = 4;
    state.run.ripProgressNumber = 2;
    form.form.show();
    host.loop.runFor(std::chrono::milliseconds{1505}); // 1500 of 3026: 49.6
    EXPECT_EQ(main.Trackprogress.value.get(), 49);
    EXPECT_EQ(main.Label6[state::trackPercentText].caption.get(), L"49%");
    EXPECT_EQ(main.Totalprogress.value.get(), 37); // (100 + 49) / 4
    EXPECT_EQ(main.Label6[state::totalPercentText].caption.get(), L"37%");
    main.Totalprogress.value = std::int16_t{0};
    host.loop.runFor(std::chrono::milliseconds{10});
    EXPECT_EQ(main.Totalprogress.value.get(), 0) << "the text has not changed";
    untilIdle();
    EXPECT_EQ(main.Trackprogress.value.get(), 100);
    EXPECT_EQ(main.Totalprogress.value.get(), 50);
}

TEST_F(Capture, theTotalIsNotFullBeforeItsLastTrackIs)
{
    state.run.analogTrack = 4;
    state.run.ripProgressTotal = 1;
    state.run.ripProgressNumber = 2; // more than there are: 100 from the start
    form.form.show();
    host.loop.runFor(std::chrono::milliseconds{100});
    EXPECT_EQ(main.Trackprogress.value.get(), 6);
    EXPECT_EQ(main.Totalprogress.value.get(), 0);
    untilIdle();
    EXPECT_EQ(main.Totalprogress.value.get(), 100);
    form.form.unload();
    state.run.ripProgressTotal = 0;
    form.form.show();
    host.loop.runFor(std::chrono::milliseconds{100});
    EXPECT_EQ(main.Totalprogress.value.get(), 0) << "no track, no part of it";
}

TEST_F(Capture, rowsMoveThereAndBack)
{
    openByHand();
    form.lstTracks.setIndex(0);
    form.cmdTo.press();
    ASSERT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_EQ(host.dialogs.boxes[0], (test::FakeDialogs::Box{L"CD-Tonquay", L"You must first add some tracks.",
                                                             informationIcon, platform::Dialogs::Buttons::ok}));
    put({3, 1, 0});
    form.cmdTo.press();
    ASSERT_EQ(host.dialogs.boxes.size(), 2U);
    EXPECT_EQ(host.dialogs.boxes[1].text, L"You must first add some more tracks.");
    form.lstTracks.setIndex(2);
    form.lstTracks.doubleClick();
    EXPECT_THAT(rows(form.lstRecord),
                ElementsAre(L"Track  3 - 00:00:03", L"Track  1 - 00:00:02", L"--- Group ---", L"Track  4 - 00:00:01"));
    EXPECT_THAT(rows(form.lstTracks), ElementsAre(L"--- Group ---", L"Track  2 - 00:00:01"));
    form.lstRecord.setIndex(2);
    form.cmdFrom.press();
    form.lstRecord.setIndex(0);
    form.lstRecord.doubleClick();
    EXPECT_THAT(rows(form.lstTracks), ElementsAre(L"--- Group ---", L"Track  2 - 00:00:01", L"Track  3 - 00:00:03"))
        << "a marker comes from the list that always has one";
    EXPECT_THAT(rows(form.lstRecord), ElementsAre(L"Track  1 - 00:00:02", L"Track  4 - 00:00:01"));
    form.cmdRefresh.press();
    EXPECT_EQ(form.lstTracks.rowCount(), 5);
    EXPECT_EQ(form.lstRecord.rowCount(), 0);
}

TEST_F(Capture, groupsAreOneRecordingAndMustBeInSequence)
{
    struct Case {
        const char* what;
        std::initializer_list<int> rows;
        std::vector<std::string> stretches; ///< none: refused
    };
    const Case cases[] = {
        {"two tracks and their marker", {2, 3, 0}, {"2013-6039"}},
        {"a marker between counts as no track", {2, 3, 0, 4}, {}},
        {"nothing but the first track may follow one", {2, 3, 0, 1}, {"2013-6039", "0-2013"}},
        {"out of sequence", {3, 2, 0}, {}},
        {"any order without a marker", {3, 1}, {"3013-6039", "0-2013"}},
        {"one track and its marker", {4, 0}, {"6039-7539"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        openByHand();
        host.dialogs.boxes.clear();
        put(c.rows);
        std::vector<std::string> saved;
        host.mci.before = [&](std::wstring_view command) {
            if (command == L"close capture" && host.files.fileExists(L"C:\\WINDOWS\\Some_Song.wav"))
                saved.push_back(recorded());
        };
        form.cmdStart.press();
        untilIdle();
        host.mci.before = {};
        ASSERT_EQ(saved.size(), c.stretches.size());
        for (std::size_t i = 0; i < saved.size(); ++i) {
            const std::string& wanted = c.stretches[i];
            const std::size_t dash = wanted.find('-') + 1;
            EXPECT_EQ(saved[i].substr(0, dash), wanted.substr(0, dash));
            EXPECT_NEAR(std::stoi(saved[i].substr(dash)), std::stoi(wanted.substr(dash)), 10);
        }
        if (c.stretches.empty()) {
            ASSERT_EQ(host.dialogs.boxes.size(), 1U);
            EXPECT_EQ(host.dialogs.boxes[0].text, L"Tracks grouped together must be in sequence.");
            EXPECT_EQ(host.dialogs.boxes[0].icon, stopIcon);
            EXPECT_TRUE(form.cmdStart.enabled);
        }
        form.form.unload();
    }
}

TEST_F(Capture, everyFailureIsToldAndEndsTheWholeWork)
{
    struct Case {
        std::wstring command;
        std::wstring message;
        bool records; ///< something is there to be saved
    };
    const Case cases[] = {
        {L"open new type waveaudio", L"Error opening waveaudio", false},
        {L"set capture", L"Error setting capture recording paramaters", false},
        {L"open cdaudio", L"Error opening cd!", false},
        {L"play cd", L"Error playing cd!", true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.message.begin(), c.message.end()));
        openByHand();
        put({1, 3});
        static_cast<void>(host.files.remove(L"C:\\WINDOWS\\Some_Song.wav"));
        host.dialogs.boxes.clear();
        host.mci.failing = {c.command};
        form.cmdStart.press();
        EXPECT_EQ(form.lstRecord.index(), 1) << "the last row";
        untilIdle();
        ASSERT_EQ(host.dialogs.boxes.size(), 1U) << "nothing is tried for the other track";
        EXPECT_EQ(host.dialogs.boxes[0].text, c.message);
        EXPECT_EQ(host.dialogs.boxes[0].icon, stopIcon);
        EXPECT_THAT(host.mci.open, IsEmpty());
        EXPECT_EQ(host.files.fileExists(L"C:\\WINDOWS\\Some_Song.wav"), c.records);
        EXPECT_EQ(state.flags.analogBusy, 0);
        EXPECT_TRUE(form.cmdStart.enabled);
        host.mci.failing.clear();
        form.form.unload();
    }
}

TEST_F(Capture, whatIsNotTestedIsPassedOver)
{
    for (const wchar_t* command : {L"record capture", L"set cd time format milliseconds", L"status cd current track",
                                   L"stop capture", L"stop cd", L"save capture", L"info cd"}) {
        SCOPED_TRACE(std::string(command, command + std::wcslen(command)));
        state.run.analogTrack = 2;
        host.mci.failing = {command};
        form.form.show();
        untilIdle();
        form.form.unload();
        host.mci.failing.clear();
        EXPECT_THAT(host.mci.open, IsEmpty());
        EXPECT_THAT(host.dialogs.boxes, IsEmpty());
    }
}

TEST_F(Capture, cancelSavesWhatWasRecordedAndStartsNoOtherTrack)
{
    openByHand();
    put({3, 1, 2});
    form.cmdStart.press();
    after(700, [this] { form.cmdCancel.press(); });
    untilIdle();
    EXPECT_TRUE(recorded().starts_with("3013-37")) << recorded();
    EXPECT_THAT(host.mci.open, IsEmpty());
    EXPECT_FALSE(form.cmdCancel.enabled);
}

TEST_F(Capture, aPlaceThatIsNotToldEndsNothingAndCancelDoes)
{
    state.run.analogTrack = 2;
    host.mci.failing = {L"status cd position"};
    form.form.show();
    host.loop.runFor(std::chrono::seconds{60});
    EXPECT_TRUE(form.tmrRecord.enabled());
    EXPECT_EQ(main.Trackprogress.value.get(), 0);
    form.cmdCancel.press();
    host.loop.runFor(std::chrono::milliseconds{10});
    EXPECT_FALSE(form.tmrRecord.enabled());
    EXPECT_TRUE(recorded().starts_with("2013-")) << recorded();
}

TEST_F(Capture, closingTheFormCancelsFirst)
{
    state.run.analogTrack = 3;
    form.form.show();
    after(500, [this] { form.form.unload(); });
    host.loop.runFor(std::chrono::milliseconds{520});
    EXPECT_FALSE(form.form.isLoaded());
    EXPECT_EQ(state.flags.analogBusy, 0);
    EXPECT_TRUE(recorded().starts_with("3013-35")) << recorded();
    EXPECT_THAT(host.mci.open, IsEmpty());
}

TEST_F(Capture, withoutADiscItEndsAtOnceAndSilently)
{
    host.mci.trackMs = {2013, 1000};
    openByHand();
    form.form.unload();
    host.mci.trackMs.clear();
    host.mci.commands.clear();
    state.run.analogTrack = 2;
    form.form.show();
    host.loop.runFor(std::chrono::milliseconds{10});
    EXPECT_EQ(state.flags.analogBusy, 0);
    EXPECT_EQ(form.lstTracks.rowCount(), 0);
    EXPECT_FALSE(host.files.fileExists(L"C:\\WINDOWS\\Some_Song.wav"));
    EXPECT_EQ(std::ranges::count(host.mci.commands, L"record capture overwrite"), 0);
    EXPECT_THAT(host.dialogs.boxes, IsEmpty());
}

TEST_F(Capture, aRunMakesEachSelectedTracksFile)
{
    host.mci.trackMs = {2013, 1000, 3026};
    main.list1.select(1, false);
    state.disc.trackTitles.set(1, L"Early Dawn");
    std::vector<std::wstring> saved;
    host.mci.before = [&](std::wstring_view command) {
        if (command.starts_with(L"save "))
            saved.emplace_back(command);
    };
    driver.recstart();
    EXPECT_THAT(saved, ElementsAre(L"save capture C:\\WINDOWS\\Early_Dawn.wav", L"save capture C:\\WINDOWS\\Dusk.wav"));
    EXPECT_TRUE(file(L"C:\\Music\\Early Dawn.wav").starts_with("0-20"));
    EXPECT_TRUE(file(L"C:\\Music\\Dusk.wav").starts_with("3013-60"));
    EXPECT_EQ(host.files.allFiles().size(), 2U);
    EXPECT_FALSE(forms.loaded<state::CdrecaltControls>());
    EXPECT_EQ(state.flags.ripBusy, 0);
}

TEST_F(Capture, aFailedSaveIsSilentAndCostsItsTrackOnly)
{
    host.mci.failing = {L"save capture C:\\WINDOWS\\Dawn"};
    main.list1.select(1, false);
    driver.recstart();
    EXPECT_THAT(host.dialogs.boxes, IsEmpty());
    EXPECT_FALSE(host.files.fileExists(L"C:\\Music\\Dawn.wav"));
    EXPECT_TRUE(host.files.fileExists(L"C:\\Music\\Dusk.wav"));
    EXPECT_TRUE(host.log.says("Rename the captured file"));
}

TEST_F(Capture, theTableIsMadeFromTheLengthsThatTheFormReads)
{
    disc::DiscTable table(state, forms, host.acd, host.loop);
    host.mci.trackMs = {125499, 500, 605500};
    state.run.analogTrack = 2; // of an earlier run
    bool shown = false;
    host.loop.onTurn = [&] { shown = shown || form.form.state() == controls::Form::State::shown; };
    table.analogtrks();
    EXPECT_TRUE(shown);
    EXPECT_FALSE(form.form.isLoaded());
    ASSERT_EQ(main.list1.rowCount(), 3);
    EXPECT_EQ(main.list1.row(0), L"Track 01\t2:05\t      21.0\t           Dawn");
    EXPECT_EQ(main.list1.row(1), L"Track 02\t0:00\t      .0\t           No?on");
    EXPECT_EQ(main.list1.row(2), L"Track 03\t10:06\t      102.0\t           Dusk");
    EXPECT_EQ(std::ranges::count(host.mci.commands, L"record capture overwrite"), 0);
    EXPECT_THAT(host.dialogs.boxes, IsEmpty());

    state.flags.ripBusy = 1;
    main.list1.select(0, true);
    table.analogtrks();
    EXPECT_TRUE(main.list1.isSelected(0)) << "a run's selection is left alone";
}

}
}
