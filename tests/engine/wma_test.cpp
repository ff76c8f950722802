#include "engine/engine_form.h"
#include "support/fake_host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tonquay::engine {
namespace {

using platform::Dialogs;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using namespace std::chrono_literals;

constexpr std::int32_t second = 176400;

struct ToWma : testing::Test {
    test::FakeHost host;
    platform::Platform platform = host.platform();
    state::AppState state;
    state::Forms forms;
    EngineForm engine{state, forms, platform};

    state::Cdrip1Controls& load(const std::vector<std::int32_t>& trackBytes = {2 * second, second, second})
    {
        host.engine.insertDisc(0, trackBytes);
        return forms.cdrip1();
    }

    test::FakeWmaEncoder::File extract(std::int32_t track, std::int32_t bitrate = 128000)
    {
        state.run.ripTargetPath = L"C:\\CDTONQUAY\\out.wav";
        engine.ExtractAudioTrackToWMA(track, bitrate);
        const auto made = host.wma.files.find(L"C:\\CDTONQUAY\\out.WMA");
        return made == host.wma.files.end() ? test::FakeWmaEncoder::File{} : made->second;
    }

    bool isAsBefore()
    {
        return !host.engine.drives[0].locked && forms.cdrip1().form.enabled &&
               host.dialogs.pointer == Dialogs::Pointer::normal && host.engine.streamCount() == 0 &&
               host.wma.openCount() == 0;
    }
};

TEST_F(ToWma, ratesOfTheEncoderBecomeRows)
{
    host.wma.rates = {32000, 128000, 1411499, 400};
    const controls::ComboBox& list = load().cmbWMAEncodingBitrate;
    ASSERT_EQ(list.rowCount(), 4);
    EXPECT_EQ(list.row(1).text, L"128 Kbps");
    EXPECT_EQ(list.row(1).itemData, 128000);
    EXPECT_EQ(list.row(2).text, L"1,411 Kbps");
    EXPECT_EQ(list.row(3).text, L"0 Kbps");
    EXPECT_EQ(list.index(), 0);
}

TEST_F(ToWma, withoutAnEncoderTheListIsEmptyAndOnlyTheLogKnows)
{
    host.wma.rates.clear();
    EXPECT_EQ(load().cmbWMAEncodingBitrate.rowCount(), 0);
    EXPECT_THAT(host.dialogs.boxes, IsEmpty());
    EXPECT_EQ(host.log.lines.size(), 1U);
}

TEST_F(ToWma, everyByteGoesToTheEncoderInBlocks)
{
    load({20000 * 588, 2352 * 101, 2352});
    const auto whole = extract(0);
    EXPECT_EQ(whole.bitrate, 128000U);
    EXPECT_TRUE(whole.closed);
    EXPECT_TRUE(whole.sound == test::FakeAudioEngine::pattern(0, 20000 * 588));
    EXPECT_EQ(whole.blocks.size(), 588U);

    const auto odd = extract(1);
    EXPECT_TRUE(odd.sound == test::FakeAudioEngine::pattern(1, 2352 * 101));
    EXPECT_EQ(odd.blocks.back(), 2352U * 101 % 20000) << "its true size";
    EXPECT_THAT(extract(2).blocks, ElementsAre(2352U));
    EXPECT_TRUE(isAsBefore());
}

TEST_F(ToWma, boxesThatAreNotEmptyBecomeTags)
{
    state::Cdrip1Controls& form = load();
    EXPECT_THAT(extract(0).tags, IsEmpty());
    EXPECT_TRUE(extract(0).tagsComplete);

    const std::array texts{L"Regen", L"Анна", L"  ", L"", L"4", L"Ann", L"Rock", L"1999"};
    for (std::size_t i = 0; i < texts.size(); ++i)
        form.txtWMATags[i].text = texts[i];
    EXPECT_THAT(extract(0).tags,
                ElementsAre(Pair(L"Title", L"Regen"), Pair(L"Author", L"Анна"), Pair(L"WM/AlbumTitle", L"  "),
                            Pair(L"Rating", L"4"), Pair(L"Copyright", L"Ann"), Pair(L"WM/Genre", L"Rock"),
                            Pair(L"WM/Year", L"1999")));
    form.chkWMAFileTags.setValue(0);
    EXPECT_THAT(extract(0).tags, IsEmpty());
    EXPECT_TRUE(extract(0).tagsComplete);
}

TEST_F(ToWma, theLastThreeCharactersOfThePathGiveWay)
{
    struct Case {
        const wchar_t* wav;
        const wchar_t* wma;
    };
    load();
    for (const Case& c :
         {Case{L"C:\\a.wav", L"C:\\a.WMA"}, {L"C:\\b.flac", L"C:\\b.fWMA"}, {L"C:\\c", L"CWMA"}, {L"ab", L"WMA"}}) {
        host.wma.files.clear();
        state.run.ripTargetPath = c.wav;
        engine.ExtractAudioTrackToWMA(1, 32000);
        EXPECT_THAT(host.wma.files, ElementsAre(Pair(c.wma, testing::_)));
    }
}

TEST_F(ToWma, aRateThatIsNotOfferedLeavesAllAsItIsAndTheNextTrackPutsItRight)
{
    state::Cdrip1Controls& form = load();
    extract(0, 33000);
    EXPECT_THAT(host.wma.files, IsEmpty());
    EXPECT_TRUE(host.engine.drives[0].locked);
    EXPECT_FALSE(form.form.enabled);
    EXPECT_EQ(host.dialogs.pointer, Dialogs::Pointer::busy);
    EXPECT_EQ(host.engine.streamCount(), 1U);
    EXPECT_THAT(host.dialogs.boxes, IsEmpty());

    EXPECT_TRUE(extract(1).closed);
    EXPECT_TRUE(isAsBefore());

    extract(0, 33000);
    form.form.unload();
    EXPECT_FALSE(host.engine.drives[0].locked);
}

TEST_F(ToWma, withoutATrackThereIsNoFileAndNothingStaysLocked)
{
    load();
    for (const std::int32_t track : {-1, 3}) {
        extract(track);
        EXPECT_THAT(host.wma.files, IsEmpty());
        EXPECT_TRUE(isAsBefore());
    }
}

TEST_F(ToWma, whatFailsInTheMiddleEndsTheFileWithWhatItHas)
{
    load();
    host.engine.drives[0].tracks[0].unreadableFrom = 50000;
    const auto cut = extract(0);
    EXPECT_TRUE(cut.sound == test::FakeAudioEngine::pattern(0, 50000));
    EXPECT_TRUE(cut.closed);
    EXPECT_TRUE(isAsBefore());
    EXPECT_EQ(host.log.lines.size(), 1U);

    host.wma.mostBlocks = 3;
    const auto full = extract(1);
    EXPECT_EQ(full.blocks.size(), 3U);
    EXPECT_TRUE(full.closed);
    EXPECT_TRUE(isAsBefore());
}

TEST_F(ToWma, theLoopIsPassedWithTheDoorLockedAndTheFormDisabled)
{
    state::Cdrip1Controls& form = load();
    int turns = 0;
    bool lockedInside = false;
    bool enabledInside = true;
    host.loop.onTurn = [&] {
        ++turns;
        lockedInside = host.engine.drives[0].locked;
        enabledInside = form.form.enabled;
        engine.ExtractAudioTrackToWMA(1, 128000);
        engine.ExtractAudioTrackToWav(1);
        engine.playback().PlayTrack(1);
    };
    EXPECT_TRUE(extract(0).sound == test::FakeAudioEngine::pattern(0, 2 * second)) << "nothing comes between";
    EXPECT_EQ(turns, 18);
    EXPECT_TRUE(lockedInside);
    EXPECT_FALSE(enabledInside);
}

TEST_F(ToWma, theExtractKeyGoesByTheChosenOptionAndRate)
{
    state::Cdrip1Controls& form = load();
    EXPECT_TRUE(form.optExtractMode[1].value()) << "WMA from the start";
    EXPECT_TRUE(form.picWMAExtractOptionsVisible);
    form.lstTracks.setIndex(1);
    form.cmbWMAEncodingBitrate.setIndex(2);
    state.run.ripTargetPath = L"C:\\CDTONQUAY\\key.wav";
    form.cmdButton[state::engineExtract].press();
    EXPECT_EQ(host.wma.files[L"C:\\CDTONQUAY\\key.WMA"].bitrate, 320000U);
    EXPECT_EQ(host.wma.files[L"C:\\CDTONQUAY\\key.WMA"].sound.size(), static_cast<std::size_t>(second));

    form.optExtractMode[0].setValue(true);
    EXPECT_FALSE(form.picWMAExtractOptionsVisible);
    form.cmdButton[state::engineExtract].press();
    EXPECT_TRUE(host.files.contents(L"C:\\CDTONQUAY\\key.wav"));
}

}
}
