#include "host/system/command_text.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace tonquay::host;

TEST(CommandText, splitsByQuotesBackslashesAndBlanks)
{
    const struct {
        const char* what;
        const wchar_t* text;
        std::wstring program;
        std::vector<std::wstring> arguments;
    } cases[] = {
        {"switches and quoted paths",
         L"C:\\LAME.EXE -h -b 128 \"C:\\my out\\a.wav\" \"b.mp3\"",
         L"C:\\LAME.EXE",
         {L"-h", L"-b", L"128", L"C:\\my out\\a.wav", L"b.mp3"}},
        {"a quoted value behind its switch", L"enc -a\"The Artist\" -c=\"x y\"", L"enc", {L"-aThe Artist", L"-c=x y"}},
        {"quotes in the middle and empty ones", L"enc a\"b c\"d \"\" e", L"enc", {L"ab cd", L"", L"e"}},
        {"an escaped quote", L"enc \"say \\\"hi\\\" now\"", L"enc", {L"say \"hi\" now"}},
        {"backslashes before a quote", L"enc \"a\\\\\" \"b\\\\\\\"c\" d\\\\e", L"enc", {L"a\\", L"b\\\"c", L"d\\\\e"}},
        {"a drive root in quotes takes the rest in", L"enc \"C:\\\" x", L"enc", {L"C:\" x"}},
        {"an open quote", L"enc \"a b", L"enc", {L"a b"}},
        {"blanks all over", L" \t enc \t a\t\tb  ", L"enc", {L"a", L"b"}},
        {"a line end is text", L"enc \"a\nb\"", L"enc", {L"a\nb"}},
        {"no arguments", L"enc", L"enc", {}},
        {"a quoted program", L"\"C:\\Program Files\\x.exe\" y", L"C:\\Program Files\\x.exe", {L"y"}},
        {"a quoted program ends with a backslash", L"\"C:\\\"y", L"C:\\", {L"y"}},
        {"a quote right behind the program", L"enc\"a b\"", L"enc", {L"a b"}},
        {"an open quote before the program", L"\"enc x", L"enc x", {}},
    };
    for (const auto& c : cases) {
        const auto split = splitCommand(c.text, [](std::wstring_view) { return false; });
        ASSERT_TRUE(split) << c.what;
        EXPECT_EQ(split->program, c.program) << c.what;
        std::vector<std::wstring> arguments;
        for (const CommandWord& word : split->arguments)
            arguments.push_back(word.text);
        EXPECT_EQ(arguments, c.arguments) << c.what;
    }
    for (const wchar_t* empty : {L"", L"  \t", L"\"\"", L"\"\" x"})
        EXPECT_FALSE(splitCommand(empty, [](std::wstring_view) { return true; }));
}

TEST(CommandText, anUnquotedProgramIsTheShortestPrefixThatIsOne)
{
    const std::vector<std::wstring> programs{L"C:\\a b", L"C:\\a b c.exe", L"C:\\x  y"};
    const auto isProgram = [&](std::wstring_view path) { return std::ranges::count(programs, path) > 0; };
    const struct {
        const wchar_t* text;
        const wchar_t* program;
        std::size_t arguments;
    } cases[] = {
        {L"C:\\a b c.exe d", L"C:\\a b", 2},
        {L"C:\\x  y z", L"C:\\x  y", 1},
        {L"C:\\none b c.exe d", L"C:\\none", 3},
        {L"C:\\x  \"y\"", L"C:\\x", 1},
    };
    for (const auto& c : cases) {
        const auto split = splitCommand(c.text, isProgram);
        EXPECT_EQ(split->program, c.program);
        EXPECT_EQ(split->arguments.size(), c.arguments) << ::testing::PrintToString(c.text);
    }
}

TEST(CommandText, onlyWildcardsOutsideOfQuotesCount)
{
    const auto split =
        splitCommand(L"enc *.wav \"*.wav\" a\"?\"b a\"b\"? \\*", [](std::wstring_view) { return false; });
    std::vector<bool> wild;
    for (const CommandWord& word : split->arguments)
        wild.push_back(word.wildcard);
    EXPECT_EQ(wild, (std::vector<bool>{true, false, false, true, true}));
}

TEST(CommandText, aWordIsQuotedWhenItsFirstCharacterIs)
{
    const auto split =
        splitCommand(L"enc \"-a\" -b -c\"d\" \\\"-e\\\" \"-f\"g \"", [](std::wstring_view) { return false; });
    std::vector<bool> quoted;
    for (const CommandWord& word : split->arguments)
        quoted.push_back(word.quoted);
    EXPECT_EQ(quoted, (std::vector<bool>{true, false, false, false, true, true}));
}

}
