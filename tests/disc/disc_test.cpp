#include "disc/disc_table.h"
#include "disc/handover_file.h"
#include "disc/row_builder.h"
#include "support/fake_host.h"

#include <gtest/gtest.h>

namespace tonquay::disc {
namespace {

TEST(RowBuilder, showsTimeAndSizeInTheirFixedForms)
{
    struct Case {
        int number;
        int seconds;
        const wchar_t* row;
    };
    const Case cases[] = {
        {1, 0, L"Track 01\t0:00\t      .0\t           Dawn"},
        {2, 59, L"Track 02\t0:59\t      9.9\t           Dawn"},
        {10, 60, L"Track 10\t1:00\t      10.1\t           Dawn"},
        {100, 605, L"Track 100\t10:05\t      101.9\t           Dawn"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(trackRow(c.number, c.seconds, L"Dawn"), c.row) << c.seconds;
}

TEST(Handover, mappingIsUndoneInEveryNameField)
{
    std::wstring text = L"\" O`Hara~ Ann \",\"al`bum\",2,\"o`ne\",\"two~\"";
    for (int i = 3; i <= 100; ++i)
        text += L",\"\"";
    text += L",\"com`ment\",\"Ro~ck\",\"20`01\",\" E \"";
    state::DiscInfo disc;
    parseHandover(text, disc);
    EXPECT_EQ(disc.discArtist, L"O'Hara, Ann");
    EXPECT_EQ(disc.discAlbum, L"al'bum");
    EXPECT_EQ(disc.trackCount, 2);
    EXPECT_EQ(disc.trackTitles(1), L"o'ne");
    EXPECT_EQ(disc.trackTitles(2), L"two,");
    EXPECT_EQ(disc.discComment, L"com'ment");
    EXPECT_EQ(disc.discGenre, L"Ro,ck");
    EXPECT_EQ(disc.discYear, L"20'01");
    EXPECT_EQ(disc.handoverDriveLetter, L"E");
}

TEST(Handover, shortFileLeavesTheRest)
{
    state::DiscInfo disc;
    disc.discGenre = L"kept";
    parseHandover(L"\"Ann\",\"Light\",3,\"Dawn\"", disc);
    EXPECT_EQ(disc.trackTitles(1), L"Dawn");
    EXPECT_EQ(disc.trackTitles(2), L"");
    EXPECT_EQ(disc.discGenre, L"kept");
}

TEST(UnknownDisc, isOneWhoseFirstAndLastTitleAreUnknown)
{
    const auto made = [](std::int16_t count, std::vector<std::pair<int, std::wstring>> titles) {
        state::DiscInfo disc;
        disc.discArtist = L"Ann";
        disc.trackCount = count;
        for (const auto& [number, title] : titles)
            disc.trackTitles.set(number, title);
        applyUnknownDiscNames(disc);
        return disc;
    };
    EXPECT_EQ(made(3, {{1, L"Dawn"}}).discArtist, L"Ann");
    EXPECT_EQ(made(3, {{3, L"Dusk"}}).trackTitles(1), L"");
    const state::DiscInfo unknown = made(3, {{2, L"Noon"}});
    EXPECT_EQ(unknown.discArtist, L"Unknown Artist");
    EXPECT_EQ(unknown.discAlbum, L"Unknown Title");
    EXPECT_EQ(unknown.trackTitles(2), L"Track 02") << "the middle titles go too";
    EXPECT_EQ(unknown.trackTitles(4), L"");
    EXPECT_EQ(made(0, {}).discArtist, L"Unknown Artist");
    EXPECT_EQ(made(32767, {}).trackTitles(100), L"Track 100") << "no more titles than the table holds";
}

struct Table : testing::Test {
    test::FakeHost host;
    state::AppState state;
    state::Forms forms;
    DiscTable table{state, forms, host.acd, host.loop};

    controls::MultiSelectList& list() { return forms.ripdeck().list1; }
};

TEST_F(Table, controlFindsItsDriveElseTakesTheFirst)
{
    host.acd.drives = {{L"D", {61999}}, {L"E", {5000, 6999}}};
    state.settings.driveLetter = L" e ";
    table.buildFromControl();
    EXPECT_EQ(host.acd.selected, 2) << "lengths are those of the drive that was found";
    EXPECT_EQ(list().rowCount(), 2);
    EXPECT_EQ(state.disc.trackSeconds(2), 6) << "cut, not rounded";

    state.settings.driveLetter = L"F";
    table.buildFromControl();
    EXPECT_EQ(state.settings.driveLetter, L"D");
    EXPECT_EQ(list().rowCount(), 1);

    state.disc.trackCount = 3;
    table.buildFromControl();
    EXPECT_EQ(list().rowCount(), 3) << "the hand-over file's count wins over the disc's";
}

TEST_F(Table, controlWithoutDriveLeavesTheListAlone)
{
    host.acd.drives.clear();
    state.settings.driveLetter = L"D";
    list().add(L"old");
    table.buildFromControl();
    EXPECT_EQ(state.settings.driveLetter, L"");
    EXPECT_EQ(list().rowCount(), 1);
}

TEST_F(Table, engineTakesTheDriveOfTheHandOver)
{
    auto& engine = forms.controlsOf<state::Cdrip1Controls>();
    int clicks = 0;
    engine.form.onLoad = [&] {
        engine.cmbCDDrives.add(L"D: A", 0);
        engine.cmbCDDrives.add(L"E: B", 1);
    };
    engine.cmbCDDrives.click = [&] { ++clicks; };
    state.settings.driveLetter = L"D";
    state.disc.discArtist = L"Ann";
    state.disc.discGenre = L"Rock";
    state.disc.trackCount = 2;
    state.disc.handoverDriveLetter = L"e";
    state.disc.trackSeconds.set(2, 61);
    table.buildFromEngine();
    EXPECT_EQ(state.engine.selectedDriveIndex, 1);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(state.settings.driveLetter, L"e");
    EXPECT_EQ(engine.txtCDArtist.text.get(), L"Ann");
    EXPECT_EQ(engine.txtWMATags[state::wmaGenre].text.get(), L"Rock");
    EXPECT_EQ(list().rowCount(), 2);
    EXPECT_NE(list().row(1).find(L"1:01"), std::wstring::npos);
}

TEST_F(Table, engineWithoutHandOverTakesTheFirstDriveAndListsNothing)
{
    auto& engine = forms.controlsOf<state::Cdrip1Controls>();
    engine.form.onLoad = [&] { engine.cmbCDDrives.add(L"D: A", 0); };
    state.settings.driveLetter = L"E";
    table.buildFromEngine();
    EXPECT_EQ(state.settings.driveLetter, L"D: A");
    EXPECT_EQ(list().rowCount(), 0);
}

TEST_F(Table, selectDriveSwitchesToThePendingDriveOrTheChosenOne)
{
    host.acd.drives = {{L"D", {1000}}, {L"E", {2000, 3000}}};
    auto& setup = forms.cdriptab();
    setup.List2.add(L"D");
    setup.List2.add(L"E");
    state.engine.pendingDriveLetter = L"E";
    table.select_drive();
    EXPECT_EQ(host.acd.selected, 1) << "nothing with the audio engine";

    state.path.ripEngineMode = 1;
    table.select_drive();
    EXPECT_EQ(host.acd.selected, 2);
    EXPECT_EQ(state.engine.pendingDriveLetter, L"");
    EXPECT_EQ(list().rowCount(), 2);
    EXPECT_EQ(setup.List3.row(0).text, L"E");

    setup.List2.setIndex(0);
    table.select_drive();
    EXPECT_EQ(state.settings.driveLetter, L"D");
    EXPECT_EQ(list().rowCount(), 1);
}

}
}
