#include "tags/tagger_options.h"

#include "support/fake_settings_store.h"

#include <gtest/gtest.h>

namespace {

using namespace tonquay;

constexpr std::wstring_view section = L"ID3Tagger/Options";

TEST(TaggerOptions, anEmptyStoreGivesTheDefaults)
{
    for (const wchar_t* folder : {L"C:\\CDTONQUAY", L"C:\\CDTONQUAY\\"}) {
        test::FakeSettingsStore store;
        tags::COptions options(store, folder);
        options.readOptions();
        EXPECT_EQ(options.genListName(), L"C:\\CDTONQUAY\\genre.gls");
        EXPECT_EQ(options.startDir(), folder);
        EXPECT_EQ(options.defaultGenre(), 0);
        EXPECT_EQ(options.FillUp(), L"");
        EXPECT_EQ(options.TrackNo(), 2);
        EXPECT_TRUE(options.AskReadOnly() && options.NextConvert() && options.FillOnlyEmpty() && options.Lowercase());
        EXPECT_TRUE(options.ConvertUnderscore() && options.RecognizeRoundPar() && options.RecognizeIntelligent());
        EXPECT_TRUE(options.ConvertToRoundPar());
        EXPECT_FALSE(options.ShowMp3Error());
    }
}

TEST(TaggerOptions, areReadFromTheStore)
{
    test::FakeSettingsStore store;
    store.set(section, L"Recognize", L"35");
    store.set(section, L"ConvertTo", L"4");
    store.set(section, L"AskReadOnly", L"true");
    store.set(section, L"ShowMp3Error", L"True");
    store.set(section, L"ConvertUnderscore", L"yes");
    store.set(L"Options", L"FillUp", L"of somebody else");
    tags::COptions options(store, L"C:\\CDTONQUAY");
    options.readOptions();
    EXPECT_FALSE(options.RecognizeRoundPar() || options.RecognizeSquarePar() || options.RecognizeSquareSpace());
    EXPECT_TRUE(options.RecognizeSpace() && options.RecognizeIntelligent());
    EXPECT_TRUE(options.ConvertToSquareSpace());
    EXPECT_FALSE(options.ConvertToRoundPar());
    EXPECT_FALSE(options.AskReadOnly()) << "only True is true";
    EXPECT_TRUE(options.ShowMp3Error());
    EXPECT_FALSE(options.ConvertUnderscore());
    EXPECT_EQ(options.FillUp(), L"");
}

TEST(TaggerOptions, whatIsNoNumberOrDoesNotFitLeavesTheFormerValue)
{
    const struct {
        const wchar_t* stored;
        int genre;
    } cases[] = {
        {L"80", 80},    {L" 17 ", 17}, {L"+17", 17}, {L"17.5", 18},   {L"0", 0},         {L"255", 255},
        {L"256", 99},   {L"-1", 99},   {L"", 99},    {L"Rock", 99},   {L"17 Rock", 99},  {L"nan", 99},
        {L"1e400", 99}, {L"+", 99},    {L"+-1", 99}, {L"\x0661", 99}, {L"infinity", 99},
    };
    for (const auto& c : cases) {
        test::FakeSettingsStore store;
        store.set(section, L"DefaultGenre", c.stored);
        store.set(section, L"FillUp", L"read on");
        tags::COptions options(store, L"C:\\CDTONQUAY");
        options.defaultGenre(99);
        options.readOptions();
        EXPECT_EQ(options.defaultGenre(), c.genre) << ::testing::PrintToString(c.stored);
        EXPECT_EQ(options.FillUp(), L"read on");
    }
}

TEST(TaggerOptions, goRoundThroughTheStore)
{
    test::FakeSettingsStore store;
    tags::COptions written(store, L"C:\\CDTONQUAY");
    written.genListName(L"C:\\my.gls");
    written.defaultGenre(80);
    written.startDir(L"C:\\Müsik");
    written.FillUp(L"...");
    written.AskReadOnly(false);
    written.NextConvert(false);
    written.ShowMp3Error(true);
    written.RecognizeString(L"24");
    written.ConvertTo(3);
    written.ConvertUnderscore(false);
    written.mp3Player(L"C:\\player.exe");
    written.InfoInclude(L"info");
    written.FillOnlyEmpty(false);
    written.TrackNo(3);
    written.Lowercase(false);
    written.writeOptions();
    EXPECT_EQ(store.entries.size(), 16u);
    EXPECT_EQ(store.entries.front().key, L"genreListName");
    tags::COptions read(store, L"C:\\CDTONQUAY");
    read.readOptions();
    EXPECT_EQ(read.genListName(), L"C:\\my.gls");
    EXPECT_EQ(read.defaultGenre(), 80);
    EXPECT_EQ(read.startDir(), L"C:\\Müsik");
    EXPECT_EQ(read.FillUp(), L"...");
    EXPECT_FALSE(read.AskReadOnly() || read.NextConvert() || read.FillOnlyEmpty() || read.Lowercase());
    EXPECT_TRUE(read.ShowMp3Error() && read.RecognizeSquarePar() && read.RecognizeSquareSpace());
    EXPECT_FALSE(read.RecognizeRoundPar() || read.RecognizeSpace() || read.ConvertUnderscore());
    EXPECT_TRUE(read.ConvertToSpace());
    EXPECT_EQ(read.mp3Player(), L"C:\\player.exe");
    EXPECT_EQ(read.InfoInclude(), L"info");
    EXPECT_EQ(read.TrackNo(), 3);
    EXPECT_EQ(store.get(section, L"ConvertTrackNo", L""), L"True") << "an option without a member of its own";
}

}
