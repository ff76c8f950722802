#include "console/rip_checks.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include <stdlib.h>
#include <unistd.h>

namespace tonquay::console {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(RipChecks, twoTracksInOneFileAreFoundWhateverTheCase)
{
    EXPECT_THAT(sameFileProblems({{1, L"C:\\m\\One.wav"}, {2, L"C:\\m\\Two.wav"}}), ElementsAre());
    EXPECT_THAT(
        sameFileProblems(
            {{1, L"C:\\m\\Äther.wav"}, {2, L"C:\\m\\b.wav"}, {3, L"C:\\M\\äTHER.WAV"}, {7, L"C:\\m\\äther.wav"}}),
        ElementsAre(HasSubstr("track 3: ends in the same file as track 1"),
                    HasSubstr("track 7: ends in the same file as track 1")));
}

TEST(RipChecks, fileNamesThatNoFileSystemTakes)
{
    EXPECT_THAT(longNameProblems({{1, L"C:\\" + std::wstring(300, L'd') + L"\\" + std::wstring(251, L'a') + L".wav"},
                                  {2, L"/x/" + std::wstring(251, L'a') + L"é.wav"},
                                  {3, L"C:\\m\\" + std::wstring(90, L'千') + L".wav"}}),
                ElementsAre(HasSubstr("track 2: its file name has 257 bytes"), HasSubstr("track 3")));
}

TEST(RipChecks, spaceIsCountedWithoutWhatIsWrittenOver)
{
    EXPECT_EQ(bytesToCome({{1, L"a", 1000, 0}, {2, L"b", 1000, 400}, {3, L"c", 1000, 5000}}), 1600);
    constexpr std::int64_t megabyte = 1 << 20;
    const struct {
        const char* what;
        std::int64_t bytes;
        std::int64_t free;
        bool problem;
    } cases[] = {
        {"plenty", megabyte, 10 * megabyte, false},
        {"exactly as much", megabyte, megabyte, true},
        {"all is written over on a full disk", 0, 0, false},
        {"a byte on a full disk", 1, 0, true},
        {"none free", megabyte, -1, true},
    };
    for (const auto& c : cases)
        EXPECT_EQ(spaceProblem("/out", c.bytes, c.free).has_value(), c.problem) << c.what;
    EXPECT_THAT(*spaceProblem("/o\x1b", 30 * megabyte, 2 * megabyte), HasSubstr("31 MB are needed and 2 MB are free"));
}

TEST(RipChecks, theOutputFolderIsMadeAndTried)
{
    std::string name = (fs::temp_directory_path() / "tonquay-checks-XXXXXX").string();
    ASSERT_NE(::mkdtemp(name.data()), nullptr);
    const fs::path folder = name;
    std::ofstream(folder / "file") << "x";

    const base::Result<std::int64_t> free = freeBytes(folder / "not" / "yet" / "there");
    ASSERT_TRUE(free);
    EXPECT_GT(*free, 0);
    EXPECT_TRUE(prepareFolder(folder / "not" / "yet"));
    EXPECT_TRUE(fs::is_empty(folder / "not" / "yet"));
    EXPECT_TRUE(prepareFolder(folder / "not" / "yet"));
    for (const char* bad : {"file", "file/below"}) {
        const base::Status status = prepareFolder(folder / bad);
        ASSERT_FALSE(status) << bad;
        EXPECT_THAT(status.failure().text, HasSubstr("the output folder cannot be made")) << bad;
    }
    EXPECT_FALSE(prepareFolder("/proc/none/such"));
    EXPECT_FALSE(prepareFolder("/proc"));
    fs::remove_all(folder);
}

}
}
