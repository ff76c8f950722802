#include "utility/arguments.h"

#include <gtest/gtest.h>

#include <vector>

namespace tonquay::utility {
namespace {

TEST(Arguments, nameAFileOrNone)
{
    using Words = std::vector<std::string_view>;
    using Wish = Arguments::Wish;
    const struct {
        Words words;
        std::string file;
        bool handedOver = false;
        bool wrong = false;
        Wish wish = Wish::window;
    } cases[] = {
        {{}, ""},
        {{"song.mp3"}, "song.mp3"},
        {{"CDR", "/m/song.mp3"}, "/m/song.mp3", true},
        {{"CDR", ""}, "", true},
        {{"CDR"}, "CDR"},
        {{"cdr", "a"}, "", false, true},
        {{"a", "b"}, "", false, true},
        {{"CDR", "a", "b"}, "", true, true},
        {{"--", "-x"}, "-x"},
        {{"-"}, "-"},
        {{"-x"}, "", false, true},
        {{"--help"}, "", false, false, Wish::help},
        {{"a", "-h"}, "a", false, false, Wish::help},
        {{"--version"}, "", false, false, Wish::version},
    };
    for (const auto& c : cases) {
        const Arguments arguments = readArguments(c.words);
        const std::string what = c.words.empty() ? "" : std::string(c.words.front());
        EXPECT_EQ(!arguments.problem.empty(), c.wrong) << what;
        EXPECT_EQ(arguments.wish, c.wish) << what;
        if (c.wrong)
            continue;
        EXPECT_EQ(arguments.file, c.file) << what;
        EXPECT_EQ(arguments.handedOver, c.handedOver) << what;
    }
}

}
}
