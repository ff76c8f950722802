#include "setup_harness.h"

#include <gmock/gmock.h>

namespace tonquay::setup {
namespace {

struct ToWav : Setup {
    ToWav()
    {
        settings.outputFolder = L"C:\\Music";
        host.files.putFolder(L"C:\\Music");
    }

    std::vector<std::wstring> names(const controls::MultiSelectList& list)
    {
        std::vector<std::wstring> read(static_cast<std::size_t>(list.rowCount()));
        for (std::size_t row = 0; row < read.size(); ++row)
            read[row] = state::mp3Row(list.row(static_cast<std::int32_t>(row))).name;
        return read;
    }

    /// A decoder that makes of what it is given "decoded " and that.
    void scriptDecoder()
    {
        host.processes.scripts.push_back({.named = L"--decode", .atEnd = [this](const std::wstring&) {
                                              const auto mp3 = host.files.contents(L"C:\\WINDOWS\\temp.mp3");
                                              if (mp3)
                                                  host.files.put(L"C:\\WINDOWS\\temp.wav", "decoded " + *mp3);
                                          }});
    }
};

using testing::ElementsAre;

TEST_F(ToWav, folderListsItsMp3FilesOnly)
{
    host.files.put(L"C:\\Music\\b.mp3", "b");
    host.files.put(L"C:\\Music\\A.MP3", "a");
    host.files.put(L"C:\\Music\\c.wav", "c");
    host.files.put(L"C:\\root.mp3", "r");
    open();
    EXPECT_THAT(names(form.List5), ElementsAre(L"A.MP3", L"b.mp3"));
    EXPECT_EQ(form.List5.row(0), L"A.MP3" + std::wstring(150, L' ') + L"C:\\Music");
    form.Drive3.drive = L"C:";
    form.Drive3.change();
    EXPECT_EQ(form.dir3.path.get(), L"C:\\");
    ASSERT_THAT(names(form.List5), ElementsAre(L"root.mp3"));
    EXPECT_EQ(state::mp3Row(form.List5.row(0)).folder, L"C:") << "so that names can be joined to it";
    form.dir3.open(L"C:\\nowhere");
    EXPECT_EQ(form.List5.rowCount(), 0);
    EXPECT_EQ(host.dialogs.pointer, platform::Dialogs::Pointer::normal);
}

TEST_F(ToWav, queueIsFilledAndEmptied)
{
    for (const wchar_t* name : {L"a.mp3", L"b.mp3", L"c.mp3"})
        host.files.put(std::wstring(L"C:\\Music\\") + name, "x");
    open();
    form.Command14.press();
    EXPECT_EQ(form.List6.rowCount(), 0) << "nothing is selected";
    form.List5.select(0, true);
    form.List5.select(2, true);
    form.Command14.press();
    EXPECT_THAT(names(form.List6), ElementsAre(L"a.mp3", L"c.mp3"));
    EXPECT_EQ(form.List5.selectedCount(), 0);
    EXPECT_TRUE(form.List6.isSelected(1));
    EXPECT_TRUE(form.Command17.enabled);
    EXPECT_TRUE(form.Image1[1].visible);

    form.Command15.press();
    EXPECT_EQ(form.List6.rowCount(), 5) << "twice is as one likes";
    form.List6.select(0, true);
    form.Command10.press();
    EXPECT_THAT(names(form.List6), ElementsAre(L"c.mp3", L"a.mp3", L"b.mp3"));
    EXPECT_EQ(form.List6.selectedCount(), 1);

    form.List5.select(1, true);
    form.List6.dropped();
    EXPECT_EQ(form.List6.rowCount(), 4);
    form.Command16.press();
    EXPECT_FALSE(form.Command17.enabled);
    EXPECT_TRUE(form.Image1[0].visible);
}

TEST_F(ToWav, onlyTheButtonForAllHasALimit)
{
    for (int i = 0; i < 1600; ++i)
        host.files.put(L"C:\\Music\\" + std::to_wstring(i) + L".mp3", "x");
    open();
    form.Command15.press();
    form.Command15.press();
    EXPECT_EQ(form.List6.rowCount(), 3000);
    form.List5.select(0, true);
    form.Command14.press();
    EXPECT_EQ(form.List6.rowCount(), 3001);
}

TEST_F(ToWav, filesAreDecodedBesideThemselves)
{
    host.files.put(L"C:\\Music\\one song.mp3", "one");
    host.files.put(L"C:\\Music\\TWO.MP3", "two");
    host.files.put(L"C:\\Music\\TWO.wav", "an old one");
    host.files.put(L"C:\\Music\\w     ide.mp3", "never reached");
    scriptDecoder();
    open();
    form.Command15.press();
    std::vector<std::int32_t> inHand;
    const auto following = form.converting.follow([&](const state::Mp3InHand& file) {
        inHand.push_back(file.number);
        form.Command17.press();
    });
    form.Command17.press();
    EXPECT_EQ(host.files.contents(L"C:\\Music\\one song.wav"), "decoded one");
    EXPECT_EQ(host.files.contents(L"C:\\Music\\TWO.wav"), "decoded two");
    ASSERT_EQ(host.processes.started.size(), 3U) << "pressed again meanwhile it does nothing";
    EXPECT_EQ(host.processes.started[0].command,
              L"C:\\CDTONQUAY\\lame.exe --decode C:\\WINDOWS\\temp.mp3 C:\\WINDOWS\\temp.wav");
    EXPECT_THAT(inHand, ElementsAre(1, 2, 3, 0));
    EXPECT_EQ(form.List6.rowCount(), 3) << "the queue stays";
    EXPECT_TRUE(form.Command17.enabled);
    EXPECT_FALSE(host.files.fileExists(L"C:\\WINDOWS\\TEMP.MP3"));
    EXPECT_FALSE(host.files.fileExists(L"C:\\WINDOWS\\TEMP.WAV"));
    EXPECT_EQ(told(), L"");
}

TEST_F(ToWav, dialogMayCloseWhileFilesAreDecoded)
{
    host.files.put(L"C:\\Music\\a.mp3", "one");
    host.files.put(L"C:\\Music\\b.mp3", "two");
    scriptDecoder();
    open();
    form.Command15.press();
    host.loop.after(std::chrono::milliseconds(50), [this] { form.cmdCancel.press(); });
    form.Command17.press();
    EXPECT_EQ(host.files.contents(L"C:\\Music\\b.wav"), "decoded two");
    EXPECT_FALSE(form.Command17.enabled);
}

TEST_F(ToWav, decoderIsTheLameThatIsThere)
{
    host.files.put(L"C:\\Music\\a.mp3", "one");
    settings.encoderPath = L"C:\\x\\Lame 3\\enc.exe";
    open();
    EXPECT_EQ(form.Label8.caption.get(), L"LAME Decoder Location:  C:\\x\\Lame 3\\enc.exe");
    form.cmdCancel.press();
    settings.encoderPath = L"C:\\x\\oggenc.exe";
    open();
    EXPECT_EQ(form.Label8.caption.get(), L"LAME Decoder Location:  C:\\CDTONQUAY  (required to decode MP3 to WAV)");
    form.cmdCancel.press();
    takeAway(L"C:\\CDTONQUAY\\lame.exe");
    open();
    EXPECT_EQ(form.Label8.caption.get(), L"LAME not setup as your default encoder or not found in your CDTonquay "
                                         L"directory (required to decode MP3 to WAV)");
    form.Command15.press();
    form.Command17.press();
    EXPECT_EQ(told(), L"CD-Tonquay: LAME not setup as your default encoder or not found in your CDTonquay "
                      L"directory!\n\nThis is required to decode MP3 file(s) to WAV file(s).\n");
    EXPECT_TRUE(host.processes.started.empty());
}

}
}
