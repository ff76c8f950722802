#include "end_to_end/sandbox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <span>

namespace tonquay::test {

namespace {

namespace fs = std::filesystem;

/// acdset.ini with this output folder, form of names and form of folders.
std::string settings(const std::string& folder, int names, int folders)
{
    return "\"D\",\"" + folder + "\",1," + std::to_string(names) +
           ",\"C:\\CDTONQUAY\\lame.exe\",1,1,0,0,1,8,\"\",\"\",4,\"" + std::to_string(folders) + "\",1,0,1,0,1,1,1\r\n";
}

std::string programForm(const fs::path& path)
{
    std::string text = "C:" + path.string();
    std::ranges::replace(text, '/', '\\');
    return text;
}

void save(const Sandbox& box, const std::string& text)
{
    fs::create_directories(box.settingsFile().parent_path());
    writeFile(box.settingsFile(), text);
}

bool hasSaved(const Sandbox& box, const std::string& text)
{
    const Tree files = treeOf(box.settingsFile().parent_path());
    const auto found = files.find("acdset.ini");
    return found != files.end() && std::ranges::equal(found->second, std::as_bytes(std::span(text)));
}

}

TEST(Settings, savedOnesAreTheDefaultsAndStayAsTheyAre)
{
    const Sandbox box;
    const DiscPlan plan = plainDisc(2, 5);
    const fs::path disc = makeDisc(box.discs(), plan);
    const std::string saved = settings(programForm(box.out() / "saved"), 6, 1);
    save(box, saved);
    const auto before = fs::last_write_time(box.settingsFile());

    const Ended ended = box.run({"rip", "--format", "wav", disc.string()});
    EXPECT_EQ(ended.status, 0) << ended.all();
    EXPECT_EQ(difference(treeOf(box.out()), {{"saved/Ann Lee/01 - Song 1.wav", ripped(plan, 0)},
                                             {"saved/Ann Lee/02 - Song 2.wav", ripped(plan, 1)}}),
              "");
    EXPECT_EQ(box.rip(disc, {"--names", "number", "--folders", "none"}).status, 0);
    EXPECT_TRUE(fs::exists(box.out() / "Track1.wav"));
    EXPECT_EQ(box.rip(disc, {"--tracks", "9"}).status, 2);

    EXPECT_TRUE(hasSaved(box, saved));
    EXPECT_EQ(fs::last_write_time(box.settingsFile()), before);
    EXPECT_EQ(box.strays(), "home/data/cd-tonquay/acdset.ini\n");
}

TEST(Settings, withoutSavedOnesTheMusicFolderIsUsed)
{
    const DiscPlan plan = plainDisc(1, 5);
    for (const bool named : {false, true}) {
        const Sandbox box;
        const fs::path disc = makeDisc(box.discs(), plan);
        if (named) {
            fs::create_directories(box.home() / "config");
            writeFile(box.home() / "config/user-dirs.dirs", std::string("XDG_MUSIC_DIR=\"$HOME/Musik\"\n"));
        }
        const Ended ended = box.run({"rip", "--format", "wav", disc.string()});
        EXPECT_EQ(ended.status, 0) << ended.all();
        EXPECT_EQ(difference(treeOf(box.home() / (named ? "Musik" : "Music")),
                             {{"Ann Lee/First Light/Song 1.wav", ripped(plan, 0)}}),
                  "");
    }
}

TEST(Settings, brokenOnesCostNothingButThemselves)
{
    const Sandbox sample;
    const std::string whole = settings("C:\\nowhere", 1, 2);
    std::string binary;
    for (const std::byte byte : patternSector(9))
        binary += static_cast<char>(byte);
    struct Case {
        const char* what;
        std::string text;
    };
    const std::vector<Case> cases{
        {"empty", ""},
        {"cut in a text", whole.substr(0, 9)},
        {"cut before the numbers", whole.substr(0, 18)},
        {"cut in the middle", whole.substr(0, whole.size() / 2)},
        {"binary", binary},
        {"zeros", std::string(3000, '\0')},
        {"huge", whole + std::string(8 << 20, 'x')},
        {"a huge field", "\"D\",\"" + std::string(900000, 'x') + "\",1,0"},
        {"not UTF-8", "\"D\",\"C:\\caf\xE9\",1,0,\"l\xFFme\",1,1,0,0,1,8,\"\",\"\",4,\"2\",1,0,1,0,1,1,1\r\n"},
        {"numbers out of range", settings("C:\\nowhere", 99999999, -5)},
        {"numbers that are words", "\"D\",\"C:\\x\",one,two,\"x\",three,four,,,,,,,,,,,,,,\r\n"},
        {"unknown forms", settings("C:\\nowhere", 77, 77)},
        {"another encoder",
         "\"D\",\"C:\\x\",1,0,\"C:\\ogg\\oggenc.exe\",1,1,0,0,1,8,\"\",\"\",3,\"2\",1,0,1,1,1,1,1\r\n"},
    };
    const DiscPlan plan = plainDisc(1, 5);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const Sandbox box;
        save(box, c.text);
        const Ended ended = box.rip(makeDisc(box.discs(), plan));
        EXPECT_EQ(ended.status, 0) << ended.all();
        const Tree files = treeOf(box.out());
        ASSERT_EQ(files.size(), 1u);
        EXPECT_EQ(files.begin()->second, ripped(plan, 0)) << files.begin()->first;
        EXPECT_TRUE(hasSaved(box, c.text)) << "they are changed";
        EXPECT_EQ(box.strays(), "home/data/cd-tonquay/acdset.ini\n");
    }
}

TEST(Settings, aFolderInTheirPlaceIsNoSettings)
{
    const Sandbox box;
    fs::create_directories(box.settingsFile());
    const Ended ended = box.rip(makeDisc(box.discs(), plainDisc(1, 5)));
    EXPECT_EQ(ended.status, 0) << ended.all();
}

}
