#include "run_harness.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tonquay::rip {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(Run, makesOneExactFilePerSelectedTrack)
{
    state.settings.dirMode = 1;
    main.list1.select(1, false);
    driver.recstart();
    EXPECT_TRUE(isWhole(L"C:\\Music\\ACDC\\Dawn.wav", 0, 2));
    EXPECT_TRUE(isWhole(L"C:\\Music\\ACDC\\Dusk.wav", 2, 3));
    EXPECT_EQ(host.files.allFiles().size(), 2U);
    EXPECT_EQ(state.disc.trackTitles(2), L"Noon") << "titles of rows that are not selected are cleaned too";
    EXPECT_EQ(main.list1.selectedCount(), 0);
    EXPECT_EQ(state.flags.ripBusy, 0);
}

TEST_F(Run, saysSoWithoutSelectionAndNothingWhileARunIsOn)
{
    main.Label6[state::statusLabel].caption = L"Encoding";
    driver.recstart();
    main.Label6[state::statusLabel].caption = L"Recording ";
    state.flags.ripBusy = 1;
    driver.recstart();
    EXPECT_THAT(host.dialogs.boxes, IsEmpty());
    state.flags.ripBusy = 0;
    main.list1.deselectAll();
    driver.recstart();
    ASSERT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_EQ(host.dialogs.boxes[0].text, L"No track(s) selected!");
    EXPECT_THAT(host.files.allFiles(), IsEmpty());
}

TEST_F(Run, showsTheRunningLookOnlyWhileItRuns)
{
    bool barsInside = false;
    bool listInside = true;
    std::wstring numberInside;
    std::int16_t busyInside = 0;
    host.loop.onTurn = [&] {
        barsInside = main.Trackprogress.visible && main.Label6[state::totalPercentText].visible;
        listInside = main.list1.enabled;
        numberInside = main.Label8.caption;
        busyInside = state.flags.ripBusy;
        driver.recstart();
    };
    driver.recstart();
    EXPECT_TRUE(barsInside);
    EXPECT_FALSE(listInside);
    EXPECT_EQ(numberInside, L"3");
    EXPECT_EQ(busyInside, 1);
    EXPECT_FALSE(main.Trackprogress.visible);
    EXPECT_TRUE(main.list1.enabled);
    EXPECT_EQ(main.Label8.caption.get(), L"0");
    EXPECT_EQ(main.lblTrackTime.caption.get(), L"0:00");
    EXPECT_EQ(main.Label6[state::statusLabel].caption.get(), L"Recording");
}

TEST_F(Run, stopFinishesTheTrackInHandAndLeavesTheRest)
{
    host.loop.onTurn = [&] {
        state.flags.stopRequested = 1;
        main.list1.deselectAll();
    };
    state.settings.createProgram = 1;
    driver.recstart();
    EXPECT_TRUE(isWhole(L"C:\\Music\\Dawn.wav", 0, 2));
    EXPECT_EQ(host.files.allFiles().size(), 1U) << "a stopped run writes no program file";
    EXPECT_EQ(state.flags.stopRequested, 0) << "taken by the run";
}

TEST_F(Run, failedTrackNeverCostsTheOthers)
{
    host.engine.drives[0].tracks[1].unreadableFrom = 0;
    host.files.fail(test::FakeFileSystem::Operation::openBinary, L"C:\\Music\\Dawn.wav");
    driver.recstart();
    EXPECT_EQ(file(L"C:\\Music\\Dawn.wav"), "no file");
    EXPECT_TRUE(isWhole(L"C:\\Music\\Dusk.wav", 2, 3));
    EXPECT_THAT(host.dialogs.boxes, IsEmpty());
}

TEST_F(Run, encodeOnlyExtractsNothing)
{
    state.flags.encodeOnly = 1;
    driver.recstart();
    EXPECT_THAT(host.files.allFiles(), IsEmpty());
    EXPECT_EQ(state.run.rippedCount, 0);
    EXPECT_EQ(state.flags.ripBusy, 0);
}

TEST_F(Run, sweepDeletesTheWavsOfSelectedTracksByFullPath)
{
    state.settings.turboMode = 1;
    state.settings.encodeWanted = 1;
    state.settings.encoderPath = L"c:\\x\\lame.exe";
    host.files.put(L"C:\\Music\\Other.wav", "keep");
    host.files.put(L"C:\\CDTONQUAY\\Dawn.wav", "keep");
    host.files.fail(test::FakeFileSystem::Operation::changeFolder, L"C:\\Music");
    bool tagged = false;
    forms.controlsOf<state::Id3autoControls>().form.onLoad = [&] { tagged = state.flags.autoTagMode == 2; };
    driver.recstart();
    EXPECT_THAT(host.files.allFiles(), ElementsAre(L"C:\\CDTONQUAY\\Dawn.wav", L"C:\\Music\\Other.wav"));
    EXPECT_TRUE(tagged) << "the sweep leads on to the tagger";
}

TEST_F(Run, oggEncoderIsAlwaysWantedAndNeverTaggedAfterwards)
{
    state.settings.encoderPath = L"c:\\x\\oggenc.exe";
    state.settings.encodeSingle = 1;
    bool tagged = false;
    forms.controlsOf<state::Id3autoControls>().form.onLoad = [&] { tagged = true; };
    driver.recstart();
    EXPECT_EQ(state.settings.encodeWanted, 1);
    EXPECT_EQ(state.settings.encoderPath, L"C:\\X\\OGGENC.EXE");
    EXPECT_FALSE(tagged);
}

TEST_F(Run, batchEncoderThatReadsByWildcardIsCopiedToTheOutputDrive)
{
    host.files.put(L"C:\\enc\\bladeenc.exe", "program");
    host.files.putFolder(L"D:\\");
    state.settings.encoderPath = L"C:\\enc\\bladeenc.exe";
    state.settings.outputFolder = L"E:\\m";
    driver.recstart();
    EXPECT_EQ(state.settings.encoderPath, L"E:\\m\\bladeenc.exe");
    EXPECT_TRUE(host.log.says("Copy the encoder"));
}

TEST_F(Run, controlPathReportsATrackItCannotRead)
{
    state.path.ripEngineMode = 1;
    state.settings.ripMethod = 2;
    state.partial.partialLengthMs.set(2, 1500.9);
    state.partial.partialStartMs.set(2, 250.9);
    host.acd.ripAnswer = 1;
    driver.recstart();
    EXPECT_THAT(host.acd.calls, ElementsAre("SetRipMode(2)", "RipTrack(1, \"C:\\Music\\Dawn.wav\")",
                                            "RipPartial(2, \"C:\\Music\\Noon.wav\", 250, 1500)",
                                            "RipTrack(3, \"C:\\Music\\Dusk.wav\")"));
    ASSERT_EQ(host.dialogs.boxes.size(), 3U);
    EXPECT_EQ(host.dialogs.boxes[1].text, L"Unable to Read Track: 2  Noon");
}

TEST_F(Run, autoCloseEndsWithThePowerControl)
{
    state.settings.autoClose = 1;
    std::vector<std::string> power;
    main.Label28.mouseDown = [&](controls::MouseButton) { power.emplace_back("down"); };
    main.Label28.mouseUp = [&](controls::MouseButton) { power.emplace_back("up"); };
    driver.recstart();
    EXPECT_THAT(power, ElementsAre("down", "up"));
}

}
}
