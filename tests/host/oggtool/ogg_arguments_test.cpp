#include "host/oggtool/ogg_arguments.h"

#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using namespace tonquay;
using host::Arguments;

TEST(OggArguments, theCallsNameSaysWhichProgramIsMeant)
{
    const struct {
        const char* calledAs;
        const char* program;
    } cases[] = {
        {"/x/oggtools/oggenc.exe", "oggenc"},
        {"OGGENCP4.EXE", "oggenc"},
        {"/x/VorbisComment.exe", "vorbiscomment"},
        {"vorbiscomment", "vorbiscomment"},
        {"/oggenc.exe/tonquay-oggtool", ""},
        {"oggenc.exe.bak", ""},
        {"", ""},
        {"/", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(host::machineProgramFor(c.calledAs), c.program) << c.calledAs;
}

TEST(OggArguments, onlyACommentWithoutANameGetsOne)
{
    const Arguments given{"-q5", "-aA -c=b", "-c=", "-c=x=y", "-c", "=z", "--comment=k=v", "", "--", "-c=file.wav"};
    const Arguments wanted{"-q5", "-aA -c=b",      "-c", "COMMENT=", "-c",         "COMMENT=x=y", "-c",
                           "=z",  "--comment=k=v", "",   "--",       "-c=file.wav"};
    EXPECT_EQ(host::encoderArguments(given), wanted);
    EXPECT_EQ(host::encoderArguments({}), Arguments{});
}

TEST(OggArguments, aCommentsFileIsReplacedByACopyWithLineFeeds)
{
    const test::TempFolder folder;
    const std::string file = folder / "comments.txt";
    test::writeHostFile(file, "title=a\r\n\r\nartist=b\rc\r\r\nx\r");
    const std::string other = folder / "other.txt";
    test::writeHostFile(other, "other");
    const struct {
        const char* what;
        Arguments given;
        std::optional<std::size_t> replaced; ///< which argument
        const char* before = "";             ///< what stands before the path there
    } cases[] = {
        {"apart", {"-w", "-c", file, "x.ogg"}, 2},
        {"joined", {"-w", "-c" + file, "x.ogg"}, 1, "-c"},
        {"behind other switches", {"-wc", file, "x.ogg"}, 1},
        {"long", {"--commentfile", file}, 1},
        {"long with a sign", {"--commentfile=" + file}, 0, "--commentfile="},
        {"the last one counts", {"-c", other, "-c", file}, 3},
        {"a tag that looks like it", {"-t", "-c", file}, {}},
        {"no value", {"-w", "-c"}, {}},
        {"behind the end of switches", {"--", "-c", file}, {}},
        {"another long one", {"--commentfiles", file}, {}},
        {"not there", {"-c", folder / "none"}, {}},
        {"a folder", {"-c", folder.path()}, {}},
        {"standard input", {"-c", "-"}, {}},
        {"nothing", {}, {}},
    };
    for (const auto& c : cases) {
        const auto made = host::commentArguments(c.given);
        ASSERT_TRUE(made) << c.what;
        EXPECT_EQ(static_cast<bool>(made->copy), c.replaced.has_value()) << c.what;
        Arguments wanted = c.given;
        if (c.replaced) {
            const std::string copy = "/proc/self/fd/" + std::to_string(made->copy.get());
            EXPECT_EQ(test::readHostFile(copy), "title=a\n\nartist=b\rc\r\nx\r") << c.what;
            wanted[*c.replaced] = c.before + copy;
        }
        EXPECT_EQ(made->arguments, wanted) << c.what;
    }
}

TEST(OggArguments, aCommentsFileHasALimit)
{
    const test::TempFolder folder;
    test::writeHostFile(folder / "large", "");
    std::filesystem::resize_file(folder / "large", 17u << 20);
    const auto made = host::commentArguments({"-c", folder / "large"});
    ASSERT_FALSE(made);
    EXPECT_EQ(made.failure().where, folder / "large");
}

}
