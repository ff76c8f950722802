#include "end_to_end/sandbox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace tonquay::test {

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

std::set<std::string> filesOf(const Sandbox& box)
{
    std::set<std::string> names;
    for (const auto& [name, bytes] : treeOf(box.out()))
        names.insert(name);
    return names;
}

}

TEST(Names, everyFormOfNamesInEveryFormOfFolders)
{
    struct Form {
        const char* names;
        const char* first;
        const char* second;
    };
    const std::vector<Form> forms{
        {"name", "Dawn", "Rain"},
        {"number", "Track1", "Track2"},
        {"artist", "Ann Lee 1", "Ann Lee 2"},
        {"album", "First Light 1", "First Light 2"},
        {"artist-album", "Ann Lee - First Light 1", "Ann Lee - First Light 2"},
        {"artist-name", "Ann Lee - Dawn", "Ann Lee - Rain"},
        {"number-name", "01 - Dawn", "02 - Rain"},
    };
    const std::vector<std::pair<const char*, std::string>> folders{
        {"none", ""}, {"artist", "Ann Lee/"}, {"album", "Ann Lee/First Light/"}};
    const Sandbox box;
    DiscPlan plan = plainDisc(2, 9);
    plan.tracks[0].title = "Dawn";
    plan.tracks[1].title = "Rain";
    const fs::path disc = makeDisc(box.discs(), plan);
    for (const Form& form : forms) {
        for (const auto& [folderForm, folder] : folders) {
            const Ended ended = box.rip(disc, {"--names", form.names, "--folders", folderForm});
            EXPECT_EQ(ended.status, 0) << form.names << ended.all();
            EXPECT_EQ(difference(treeOf(box.out()), {{folder + form.first + ".wav", ripped(plan, 0)},
                                                     {folder + form.second + ".wav", ripped(plan, 1)}}),
                      "")
                << form.names << ' ' << folderForm;
            fs::remove_all(box.out());
        }
    }
}

TEST(Names, givenOnesTakeTheDiscsPlace)
{
    struct Given {
        const char* what;
        Arguments options;
        std::set<std::string> files;
    };
    const std::vector<Given> cases{
        {"artist", {"--artist", "Bo Tan"}, {"Bo Tan/First Light/Song 1.wav", "Bo Tan/First Light/Song 2.wav"}},
        {"album", {"--album", "Dusk"}, {"Ann Lee/Dusk/Song 1.wav", "Ann Lee/Dusk/Song 2.wav"}},
        {"titles",
         {"--title", "2=Rain", "--title", "1=a=b"},
         {"Ann Lee/First Light/a=b.wav", "Ann Lee/First Light/Rain.wav"}},
        {"what names no file",
         {"--year", "1999", "--genre", "Rock", "--comment", "live, \"raw\""},
         {"Ann Lee/First Light/Song 1.wav", "Ann Lee/First Light/Song 2.wav"}},
        {"an empty artist",
         {"--artist", ""},
         {"Unknown Artist/First Light/Song 1.wav", "Unknown Artist/First Light/Song 2.wav"}},
        {"not UTF-8", {"--artist", "B\xF6"}, {"B/First Light/Song 1.wav", "B/First Light/Song 2.wav"}},
    };
    const Sandbox box;
    const fs::path disc = makeDisc(box.discs(), plainDisc(2, 3));
    for (const Given& c : cases) {
        const Ended ended = box.rip(disc, c.options);
        EXPECT_EQ(ended.status, 0) << c.what << ended.all();
        EXPECT_EQ(filesOf(box), c.files) << c.what;
        fs::remove_all(box.out());
    }
}

TEST(Names, whateverTheyHoldStaysInTheOutputFolder)
{
    const auto times = [](int count, const std::string& text) {
        std::string result;
        for (int i = 0; i < count; ++i)
            result += text;
        return result;
    };
    struct Odd {
        const char* what;
        std::string name;
        std::string file; ///< what becomes of it as artist, album and title; empty: only that it is in the folder
    };
    const std::vector<Odd> cases{
        {"slashes", "a/b\\c", "abc"},
        {"a way out", "../../evil", "....evil"},
        {"a path", "/etc/passwd", "etcpasswd"},
        {"dots only", "..", {}},
        {"one dot", ".", {}},
        {"dots and slashes", "../..", {}},
        {"what file names of old could not hold", "a?b:c*d>e<f|g", "abcdefg"},
        {"apostrophes, commas, backquote", "It's, well, `so`", "It's, well, 'so'"},
        {"control characters", "a\x01\x1b[31mb\x7f", "a[31mb"},
        {"a dollar, an ampersand, a semicolon", "$(touch x) & y; z", "$(touch x) & y; z"},
        {"a percent sign", "100% %s %n", "100% %s %n"},
        {"Cyrillic", "Рассвет", "Рассвет"},
        {"Japanese", "夜明け", "夜明け"},
        {"emoji", "🌅👩‍🎤", "🌅👩‍🎤"},
        {"Windows-1252", "Caf\xE9", "Café"},
        {"broken UTF-8", "a\xC3(\xFF z", {}},
        {"300 characters", times(300, "x"), {}},
        {"300 wide characters", times(300, "夜"), {}},
        {"blanks", "  a  b  ", "a  b"},
        {"a dash first", "-rf", "-rf"},
        {"a device of old", "CON", "CON"},
    };
    for (const Odd& c : cases) {
        SCOPED_TRACE(c.what);
        const Sandbox box;
        const DiscPlan plan{.tracks = {{.sectors = 4, .title = c.name}}, .artist = c.name, .album = c.name};
        const Ended ended = box.rip(makeDisc(box.discs(), plan));
        EXPECT_EQ(ended.status, 0) << ended.all();
        EXPECT_EQ(box.strays(), "");
        const Tree files = treeOf(box.out());
        ASSERT_EQ(files.size(), 1u) << ended.all();
        EXPECT_EQ(files.begin()->second, ripped(plan, 0));
        if (!c.file.empty()) {
            EXPECT_EQ(files.begin()->first, c.file + "/" + c.file + "/" + c.file + ".wav");
        }
        EXPECT_EQ(ended.out.find('\x1b'), std::string::npos);
    }
}

TEST(Names, quotesOfASheetInItsOwnWay)
{
    const Sandbox box;
    const DiscPlan plan = {.tracks = {{4}}, .artist = "Ann Lee", .album = "First Light"};
    const fs::path disc = makeDisc(box.discs(), plan);
    const Ended ended = box.rip(disc, {"--title", "1=Say \"Yes\"", "--artist", "\"A\""});
    EXPECT_EQ(ended.status, 0) << ended.all();
    EXPECT_EQ(filesOf(box), (std::set<std::string>{"'A'/First Light/Say 'Yes'.wav"}));
}

TEST(Names, twoTracksOfOneNameAreRefusedBeforeTheRun)
{
    struct Same {
        const char* what;
        Arguments options;
    };
    const std::vector<Same> cases{
        {"equal", {"--title", "2=Song 1"}},
        {"but for the case", {"--title", "2=sONG 1"}},
        {"but for what no file name holds", {"--title", "2=Song? 1"}},
    };
    const Sandbox box;
    const fs::path disc = makeDisc(box.discs(), plainDisc(3, 4));
    for (const Same& c : cases) {
        const Ended ended = box.rip(disc, c.options);
        EXPECT_EQ(ended.status, 2) << c.what << ended.all();
        EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
        EXPECT_THAT(ended.err, HasSubstr("track 2")) << c.what;
        EXPECT_FALSE(fs::exists(box.out())) << c.what;
        EXPECT_EQ(ended.out, "");
    }
    const Ended apart = box.rip(disc, {"--title", "2=Song 1", "--tracks", "2-3"});
    EXPECT_EQ(apart.status, 0) << "the other one is not selected: " << apart.all();
}

TEST(Names, outputFoldersOfEveryKind)
{
    struct Folder {
        const char* what;
        std::string option; ///< relative to the sandbox
        std::string folder;
    };
    const std::vector<Folder> cases{
        {"relative", "here", "here"},
        {"relative in depth", "./a/b/../c", "a/c"},
        {"a trailing slash", "here/", "here"},
        {"two slashes", "a//b//", "a/b"},
        {"blanks", "a b  c", "a b  c"},
        {"a single quote", "it's", "it's"},
        {"letters of elsewhere", "音楽/Пісні", "音楽/Пісні"},
        {"a backslash and a colon", "a\\b:c", "a\\b:c"},
        {"a blank first", " a", " a"},
        {"a comma", "a,b", "a,b"},
        {"a percent sign", "50%", "50%"},
    };
    const DiscPlan plan = plainDisc(1, 4);
    for (const Folder& c : cases) {
        SCOPED_TRACE(c.what);
        const Sandbox box;
        const fs::path disc = makeDisc(box.discs(), plan);
        const Ended ended = box.rip(disc, {"--output", c.option});
        EXPECT_EQ(ended.status, 0) << ended.all();
        EXPECT_EQ(difference(treeOf(box.root() / c.folder), {{"Ann Lee/First Light/Song 1.wav", ripped(plan, 0)}}), "");
    }
}

TEST(Names, anOutputFolderThatTheSettingsCannotHoldIsRefused)
{
    for (const char* folder : {"say \"yes\"", "caf\xE9", "two\nlines", "blank "}) {
        const Sandbox box;
        const Ended ended = box.rip(makeDisc(box.discs(), plainDisc(1, 4)), {"--output", folder});
        EXPECT_EQ(ended.status, 2) << folder << ended.all();
        EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
        EXPECT_EQ(box.strays(), "") << folder;
    }
}

}
