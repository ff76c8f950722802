#include "base/text.h"

#include <gtest/gtest.h>

#include <clocale>

namespace {

using namespace tonquay::base;

TEST(Text, upperCaseGoesByTheOwnTableInEveryLocale)
{
    const struct {
        const char* what;
        const wchar_t* text;
        const wchar_t* upper;
    } cases[] = {
        {"ASCII", L"azAZ09-_", L"AZAZ09-_"},
        {"Latin 1", L"àáâãäåæçþö", L"ÀÁÂÃÄÅÆÇÞÖ"},
        {"the division sign among the letters", L"÷×", L"÷×"},
        {"y with dots lives in another block", L"ÿ", L"Ÿ"},
        {"sharp s has no single partner", L"ß", L"ß"},
        {"Latin Extended pairs", L"āąćđęğışšžœł", L"ĀĄĆĐĘĞIŞŠŽŒŁ"},
        {"Greek with accents and the final sigma", L"αβγωάέήίόύώσς", L"ΑΒΓΩΆΈΉΊΌΎΏΣΣ"},
        {"Cyrillic", L"абвгяёђџѕі", L"АБВГЯЁЂЏЅІ"},
        {"Armenian", L"ա", L"Ա"},
        {"Vietnamese", L"ạệ", L"ẠỆ"},
        {"full width", L"ａｚ", L"ＡＺ"},
        {"outside the first plane", L"\U00010428\U0001E922", L"\U00010400\U0001E900"},
        {"no case at all", L"日本語א♫", L"日本語א♫"},
        {"raw bytes", L"\xDC80\xDCFF", L"\xDC80\xDCFF"},
    };
    for (const char* locale : {"C", "C.UTF-8"}) {
        std::setlocale(LC_ALL, locale);
        for (const auto& c : cases)
            EXPECT_EQ(upper(c.text), c.upper) << c.what << " in " << locale;
    }
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(upper(wchar_t{-1}), wchar_t{-1});
    EXPECT_EQ(upper(wchar_t{0x7FFFFFFF}), wchar_t{0x7FFFFFFF});
}

TEST(Text, upperCaseOfUpperCaseStays)
{
    for (wchar_t c = 0; c < 0x1F000; ++c)
        ASSERT_EQ(upper(upper(c)), upper(c)) << static_cast<int>(c);
}

TEST(Text, onlyBlanksAreTrimmed)
{
    EXPECT_EQ(trim(L"  a b \t "), L"a b \t");
    EXPECT_EQ(trim(L"\u00A0a\n"), L"\u00A0a\n");
    EXPECT_EQ(trim(L"   "), L"");
    EXPECT_TRUE(isBlank(L"  "));
    EXPECT_FALSE(isBlank(L"\t"));
    EXPECT_TRUE(sameText(L"Ärger жУК", L"äRGER ЖУк"));
    EXPECT_FALSE(sameText(L"a", L"ab"));
    EXPECT_FALSE(sameText(L"ss", L"ß"));
}

TEST(Text, hostBytesGoRoundWhateverTheyAre)
{
    const struct {
        const char* what;
        std::string bytes;
        std::wstring text;
        bool wellFormed;
    } cases[] = {
        {"empty", "", L"", true},
        {"one to four bytes", "a\xC3\xA9\xE2\x99\xAB\xF0\x9F\x8E\xB5", L"aé♫\U0001F3B5", true},
        {"NUL", std::string("a\0b", 3), std::wstring(L"a\0b", 3), true},
        {"largest", "\xF4\x8F\xBF\xBF", L"\U0010FFFF", true},
        {"past the largest", "\xF4\x90\x80\x80", L"\xDCF4\xDC90\xDC80\xDC80", false},
        {"a lone continuation", "a\x80z", L"a\xDC80z", false},
        {"cut short at the end", "a\xE2\x99", L"a\xDCE2\xDC99", false},
        {"cut short before a letter", "\xC3z", L"\xDCC3z", false},
        {"overlong two bytes", "\xC0\xAF", L"\xDCC0\xDCAF", false},
        {"overlong three bytes", "\xE0\x9F\xBF", L"\xDCE0\xDC9F\xDCBF", false},
        {"overlong four bytes", "\xF0\x8F\xBF\xBF", L"\xDCF0\xDC8F\xDCBF\xDCBF", false},
        {"a surrogate", "\xED\xA0\x80", L"\xDCED\xDCA0\xDC80", false},
        {"no lead bytes", "\xFE\xFF", L"\xDCFE\xDCFF", false},
        {"a lead byte before a good character", "\xF0\xC3\xA9", L"\xDCF0é", false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(fromHostBytes(c.bytes), c.text) << c.what;
        EXPECT_EQ(utf8(c.text), c.bytes) << c.what;
        EXPECT_EQ(isUtf8(c.bytes), c.wellFormed) << c.what;
    }
    std::string all;
    for (int i = 0; i < 65536; ++i)
        all += {static_cast<char>(i >> 8), static_cast<char>(i)};
    EXPECT_TRUE(utf8(fromHostBytes(all)) == all);
}

TEST(Text, whatIsNoCharacterBecomesTheReplacement)
{
    EXPECT_EQ(utf8(std::wstring{wchar_t{0xD800}, L'a', wchar_t{0xDC7F}, wchar_t{0x110000}, wchar_t{-5}}),
              "\xEF\xBF\xBD"
              "a"
              "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(Text, aFileIsUtf8WhenAllOfItIs)
{
    EXPECT_EQ(fromFileBytes("\xEF\xBB\xBF"
                            "caf\xC3\xA9"),
              L"café");
    EXPECT_EQ(fromFileBytes("caf\xC3\xA9"), L"café");
    EXPECT_EQ(fromFileBytes("caf\xE9 \xC3\xA9"), L"café Ã©");
    EXPECT_EQ(fromFileBytes("\x80\x99"), L"€™");
    EXPECT_EQ(fromFileBytes(""), L"");
}

TEST(Text, all256BytesOfWindows1252GoRound)
{
    std::string all;
    for (int i = 0; i < 256; ++i)
        all += static_cast<char>(i);
    const std::wstring text = fromWindows1252(all);
    EXPECT_EQ(windows1252(text), all);
    EXPECT_EQ(text.substr(0x80, 4), L"€\u0081‚ƒ");
    EXPECT_EQ(text[0x9F], L'Ÿ');
    EXPECT_EQ(windows1252(L"Жé♫\u0100\xDC80€" + std::wstring{wchar_t{-1}}), "?\xE9???\x80?");
}

}
