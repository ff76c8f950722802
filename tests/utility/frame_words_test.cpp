#include "utility/frame_words.h"

#include <gtest/gtest.h>

namespace tonquay::utility {
namespace {

TEST(FrameWords, aFrameIsOneLineForPeople)
{
    using Frame = platform::Id3v2Contents::Frame;
    const struct {
        Frame frame;
        std::wstring line;
    } cases[] = {
        {{.identifier = "TPE2", .bytes = 5, .text = L"Band"}, L"Album artist: Band"},
        {{.identifier = "TT2", .bytes = 2, .text = L"T"}, L"Title: T"},
        {{.identifier = "APIC", .mime = "image/jpeg", .pictureType = 3, .dataBytes = 34'000},
         L"Picture: front cover, image/jpeg, 34 KB"},
        {{.identifier = "PIC", .description = L"Back", .mime = "PNG", .pictureType = 255, .dataBytes = 1},
         L"Picture (Back): other, PNG, 1 byte"},
        {{.identifier = "USLT", .language = "eng", .description = L"D", .text = L"La\r\n\tla   la\u200B"},
         L"Lyrics (eng, D): La la la"},
        {{.identifier = "COMM", .language = std::string(3, '\0'), .text = L"C"}, L"Comment: C"},
        {{.identifier = "PRIV", .bytes = 1025, .description = L"WM/Provider"}, L"Private data (WM/Provider): 2 KB"},
        {{.identifier = "XYZ1", .bytes = 0}, L"\"XYZ1\": 0 bytes"},
        {{.identifier = "TIT1", .text = std::wstring(61, L'x')}, L"Content group: " + std::wstring(57, L'x') + L"..."},
        {{.identifier = "TIT1", .text = std::wstring(60, L'x')}, L"Content group: " + std::wstring(60, L'x')},
    };
    for (const auto& c : cases)
        EXPECT_EQ(frameLine(c.frame), c.line) << c.frame.identifier;
}

TEST(FrameWords, theTwelveFieldsAreFoundByTheirFrames)
{
    EXPECT_EQ(fieldOf("TRCK"), 0U);
    EXPECT_EQ(fieldOf("TEN"), 11U);
    for (const char* other : {"AENC", "PIC", "", "TIT", "tit2"})
        EXPECT_EQ(fieldOf(other), std::nullopt) << other;
}

}
}
