#include "run_harness.h"

#include <gmock/gmock.h>

namespace tonquay::rip {
namespace {

using Operation = test::FakeFileSystem::Operation;
using platform::Dialogs;

struct ProgramFile : Run {
    ProgramFile()
    {
        host.files.putFolder(L"C:\\Data");
        state.folders.dataFolder = L"C:\\Data";
        state.disc.discArtist = L"Ann Lee";
    }
};

TEST_F(ProgramFile, hasARecordForEachSelectedTrack)
{
    state.settings.dirMode = 2;
    state.settings.nameFormat = 6;
    state.disc.discAlbum = L"First Light";
    state.disc.trackTitles.set(1, L"  The \"Dawn\" ");
    main.list1.select(1, false);
    programFiles.savepgm(1);
    EXPECT_EQ(file(L"C:\\Data\\Ann Lee - First Light.pg1"),
              "\"The 'Dawn'\",\"C:\\Music\\Ann Lee\\First Light\",\"01 - The 'Dawn'.WAV\"\r\n"
              "\"Dusk\",\"C:\\Music\\Ann Lee\\First Light\",\"03 - Dusk.WAV\"\r\n");
    EXPECT_TRUE(host.files.folderExists(L"C:\\Music\\Ann Lee\\First Light"));
    EXPECT_EQ(host.files.currentFolder(), L"C:\\Data");
    EXPECT_THAT(host.dialogs.boxes,
                testing::ElementsAre(test::FakeDialogs::Box{
                    L"CD-Tonquay", L"Media Tonquay program saved as: C:\\Data\\Ann Lee - First Light.pg1",
                    Dialogs::Icon::information}));
}

TEST_F(ProgramFile, isNamedByArtistAndAlbumAndReplaced)
{
    struct Case {
        const wchar_t* artist;
        const wchar_t* album;
        const wchar_t* name;
    };
    const Case cases[] = {{L" Ann ", L" Light ", L"C:\\Data\\Ann - Light.pg1"},
                          {L"Ann", L"  ", L"C:\\Data\\Ann.pg1"},
                          {L"", L"Light", L"C:\\Data\\Light.pg1"},
                          {L" ", L"", L"C:\\Data\\Untitled.pg1"}};
    for (const Case& c : cases) {
        host.files.put(c.name, "an older program, and a longer one: " + std::string(500, '-'));
        host.files.setReadOnly(c.name);
        state.disc.discArtist = c.artist;
        state.disc.discAlbum = c.album;
        state.settings.encodeWanted = 1;
        programFiles.savepgm(0);
        EXPECT_EQ(file(c.name).substr(0, 32), "\"Dawn\",\"C:\\Music\",\"Dawn.MP3\"\r\n\"N") << base::utf8(c.name);
    }
    EXPECT_THAT(host.dialogs.boxes, testing::IsEmpty());
}

TEST_F(ProgramFile, needsASelectionAndPassesOverWhatTheWorldRefuses)
{
    host.files.fail(Operation::writeWhole, L"C:\\Data\\Ann Lee.pg1");
    programFiles.savepgm(1);
    ASSERT_EQ(host.dialogs.boxes.size(), 1U) << "said all the same";
    EXPECT_EQ(host.dialogs.boxes[0].text, L"Media Tonquay program saved as: C:\\Data\\Ann Lee.pg1");
    EXPECT_TRUE(host.log.says("Write the program file"));

    host.dialogs.boxes.clear();
    main.list1.deselectAll();
    programFiles.savepgm(0);
    ASSERT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_EQ(host.dialogs.boxes[0].text, L"No track(s) selected!");
    EXPECT_EQ(host.dialogs.boxes[0].icon, Dialogs::Icon::exclamation);
}

TEST_F(ProgramFile, isWrittenByARunBeforeItsBatch)
{
    state.settings.createProgram = 1;
    state.settings.encodeWanted = 1;
    driver.recstart();
    EXPECT_EQ(file(L"C:\\Data\\Ann Lee.pg1"), "\"Dawn\",\"C:\\Music\",\"Dawn.MP3\"\r\n"
                                              "\"Noon\",\"C:\\Music\",\"Noon.MP3\"\r\n"
                                              "\"Dusk\",\"C:\\Music\",\"Dusk.MP3\"\r\n");
}

}
}
