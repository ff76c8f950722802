#include "console/wma_verdict.h"

#include "console/judged_file.h"
#include "support/temp_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

namespace tonquay::console {
namespace {

using platform::WmaFile;
using test::writeHostFile;
using testing::HasSubstr;
using namespace std::chrono_literals;

/// Ten seconds, which are 216 blocks, the last one not full.
WmaFile tenSeconds()
{
    return {.windowsMediaAudio = true,
            .finished = true,
            .toldSeconds = 10,
            .heldSeconds = 216 * 2048.0 / 44100,
            .title = L"Łódź",
            .artist = L"АБВ",
            .album = L"\uFFFD",
            .genre = L"  ",
            .comment = L"c",
            .year = L"1999"};
}

TEST(WmaVerdict, soundHeaderAndTagsAreHeldAgainstTheTrack)
{
    struct Case {
        std::string problem; ///< empty: whole
        std::function<void(WmaFile&)> change;
    };
    const Case cases[] = {
        {"", [](WmaFile&) {}},
        {"", [](WmaFile& f) { f.toldSeconds = 10.001; }},
        {"no Windows Media Audio", [](WmaFile& f) { f.windowsMediaAudio = false; }},
        {"was broken off after 4.6 of 10.0",
         [](WmaFile& f) {
             f.finished = false;
             f.heldSeconds = 4.6;
         }},
        {"tells of 10.002 seconds", [](WmaFile& f) { f.toldSeconds = 10.002; }},
        {"tells of 9.990 seconds", [](WmaFile& f) { f.toldSeconds = 9.99; }},
        {"breaks off after 10.0 of", [](WmaFile& f) { f.heldSeconds = 215 * 2048.0 / 44100; }},
        {"lasts 10.1 seconds", [](WmaFile& f) { f.heldSeconds = 218 * 2048.0 / 44100; }},
        {"another title", [](WmaFile& f) { f.title = L"Lodz"; }},
        {"no artist", [](WmaFile& f) { f.artist.clear(); }},
        {"another genre", [](WmaFile& f) { f.genre = L"Rock"; }},
        {"no year", [](WmaFile& f) { f.year.clear(); }},
    };
    const test::TempFolder folder;
    const auto runBegan = fileTimeNow(folder.path());
    writeHostFile(folder / "a.WMA", "bytes");
    const WmaExpectation expected{.playSeconds = 10,
                                  .runBegan = runBegan,
                                  .title = L"Łódź",
                                  .artist = L"АБВ",
                                  .album = L"\xDCE9",
                                  .genre = L"  ",
                                  .comment = L"c",
                                  .year = L"1999"};
    for (const Case& c : cases) {
        WmaFile found = tenSeconds();
        c.change(found);
        const FileVerdict verdict =
            judgeWma(folder / "a.WMA", expected, [&](const std::string&) -> base::Result<WmaFile> { return found; });
        EXPECT_EQ(verdict.whole, c.problem.empty()) << c.problem << ": " << verdict.text;
        EXPECT_THAT(verdict.text, HasSubstr(c.problem));
    }
}

TEST(WmaVerdict, aFileThatTheRunHasNotMadeIsNotAskedWhatItHolds)
{
    const test::TempFolder folder;
    writeHostFile(folder / "empty.WMA", "");
    writeHostFile(folder / "old.WMA", "bytes");
    const WmaReader read = [](const std::string&) -> base::Result<WmaFile> { return tenSeconds(); };
    const auto later = fileTimeNow(folder.path()) + 10s;
    EXPECT_THAT(judgeWma(folder / "none.WMA", {}, read).text, HasSubstr("not made"));
    EXPECT_THAT(judgeWma(folder / "empty.WMA", {}, read).text, HasSubstr("empty"));
    EXPECT_THAT(judgeWma(folder / "old.WMA", {.playSeconds = 10, .runBegan = later}, read).text, HasSubstr("older"));
}

}
}
