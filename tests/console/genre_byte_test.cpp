#include "console/genre_byte.h"

#include "base/text.h"
#include "support/fake_host.h"

#include <gmock/gmock.h>

namespace tonquay::console {
namespace {

using testing::HasSubstr;

TEST(GenreByte, namesOfTheTableAreFoundInEitherSpellingAndAnyCase)
{
    const struct {
        const wchar_t* genre;
        int number; // 255: none
    } cases[] = {
        {L"Blues", 0},       {L"rock", 17},           {L" Rock ", 17},      {L"R&B", 14},        {L"Celtic", 88},
        {L"Revival", 87},    {L"Fast-Fusion", 84},    {L"Fast Fusion", 84}, {L"Blue Grass", 89}, {L"Bluegrass", 89},
        {L"SYNTH POP", 147}, {L"Rock and Roll", 255}, {L"", 255},           {L"Krautrock", 255},
    };
    for (const auto& c : cases)
        EXPECT_EQ(genreNumber(c.genre).value_or(255), c.number) << base::utf8(c.genre);
}

TEST(GenreByte, whatTagsCannotCarryIsSaid)
{
    EXPECT_FALSE(genreRemark(L"Blues"));
    EXPECT_FALSE(genreRemark(L"  "));
    EXPECT_THAT(*genreRemark(L"Krautrock"), AllOf(HasSubstr("\"Krautrock\""), HasSubstr("say \"Blues\"")));
    EXPECT_THAT(*genreRemark(L"Jazz from Oslo"), HasSubstr("say \"Jazz\""));
}

TEST(GenreByte, onlyThatByteOfATagIsChanged)
{
    test::FakeHost host;
    std::string bytes = std::string(300, 'x') + "TAG" + std::string(124, 'y') + '\x05';
    host.files.put(L"C:\\a.mp3", bytes);
    host.files.put(L"C:\\bare.mp3", "sound");
    EXPECT_TRUE(setGenreByte(host.files, L"C:\\a.mp3", 17));
    bytes.back() = '\x11';
    EXPECT_EQ(*host.files.readAll(L"C:\\a.mp3"), bytes);
    EXPECT_FALSE(setGenreByte(host.files, L"C:\\bare.mp3", 17));
    EXPECT_EQ(*host.files.readAll(L"C:\\bare.mp3"), "sound");
    EXPECT_FALSE(setGenreByte(host.files, L"C:\\none.mp3", 17));
    EXPECT_FALSE(host.files.fileExists(L"C:\\none.mp3"));
}

}
}
