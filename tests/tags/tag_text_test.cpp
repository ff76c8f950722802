#include "tags/tag_text.h"

#include "support/fake_settings_store.h"
#include "tags/tag_state.h"
#include "tags/tagger_options.h"

#include <gtest/gtest.h>

namespace {

using namespace tonquay;
using namespace std::string_literals;

TEST(TagText, isTrimmedAtItsEndOnly)
{
    EXPECT_EQ(tags::TrimTagText(L" a b \0 \0"s), L" a b");
    EXPECT_EQ(tags::TrimTagText(L"a\0b\0"s), L"a\0b"s);
    EXPECT_EQ(tags::TrimTagText(L" \0 "s), L"");
    EXPECT_EQ(tags::TrimTagText(L""), L"");
}

TEST(TagText, blanksAtTheEndOfAFieldAreStoredAsNuls)
{
    const struct {
        const char* what;
        std::wstring text;
        std::wstring stored;
    } cases[] = {
        {"all blank", L"    ", L"\0\0\0\0"s},
        {"value", L"Ab  ", L"Ab\0\0"s},
        {"one character", L"A   ", L"A\0\0\0"s},
        {"blanks inside and before", L" A b ", L" A b\0"s},
        {"full", L"Abcd", L"Abcd"},
        {"ends in a NUL", L"A \0"s, L"A \0"s},
        {"one blank has no second character", L" ", L" "},
        {"nothing", L"", L""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(tags::BlankToNul(c.text), c.stored) << c.what;
}

TEST(TagText, aCutTextEndsInTheUsersMarker)
{
    const std::wstring text31 = L"abcdefghijklmnopqrstuvwxyz01234";
    const struct {
        const char* what;
        std::wstring fillUp;
        std::wstring text;
        std::wstring fitted;
    } cases[] = {
        {"short enough", L"...", text31.substr(0, 30), text31.substr(0, 30)},
        {"no marker", L"", text31, text31.substr(0, 30)},
        {"marker", L"...", text31, text31.substr(0, 27) + L"..."},
        {"marker of the whole width", std::wstring(30, L'#'), text31, std::wstring(30, L'#')},
        {"marker too long", std::wstring(31, L'#'), text31, L""},
    };
    test::FakeSettingsStore store;
    tags::COptions options(store, L"C:\\CDTONQUAY");
    for (const auto& c : cases) {
        store.set(tags::COptions::section, L"FillUp", c.fillUp);
        EXPECT_EQ(tags::FitTagText(c.text, 30, options), c.fitted) << c.what;
    }
}

TEST(TagState, resetKeepsTheTextsOfTheFileAndTakesTheUsersGenre)
{
    test::FakeSettingsStore store;
    store.set(tags::COptions::section, L"DefaultGenre", L"17");
    tags::COptions options(store, L"C:\\CDTONQUAY");
    tags::TagState state;
    state.TagInfo[tags::slot::title] = L"kept";
    state.id3v1.Title = L"old";
    state.id3v1.Album = L"old";
    state.id3v1.Track = 5;
    state.stream.BitrateKbps = 128;
    tags::ResetTagFields(state, options);
    EXPECT_EQ(state.id3v1.Title, std::wstring(30, L' '));
    EXPECT_EQ(state.id3v1.Album.text(), std::wstring(30, L' '));
    EXPECT_EQ(state.id3v1.Genre, 17);
    EXPECT_EQ(state.id3v1.Track, 5);
    EXPECT_EQ(state.stream.BitrateKbps, -1);
    EXPECT_EQ(state.TagInfo[tags::slot::title], L"kept");
    tags::ClearTagInfo(state);
    EXPECT_EQ(state.id3v1.Title, L"");
    EXPECT_EQ(state.id3v1.Genre, 0);
    EXPECT_EQ(state.id3v1.Track, 0);
    EXPECT_EQ(state.TagInfo[tags::slot::title], L"");
}

}
