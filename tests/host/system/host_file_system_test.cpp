#include "host/system/gathered_file.h"
#include "real_files.h"
#include "support/file_system_contract.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tonquay::test {

INSTANTIATE_TYPED_TEST_SUITE_P(Real, FileSystemContract, RealFiles);

namespace {

namespace fs = std::filesystem;

mode_t modeOf(const std::string& path)
{
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

std::span<const std::byte> bytesOf(std::string_view text)
{
    return std::as_bytes(std::span(text));
}

TEST(HostFileSystem, ofSeveralNamesTheExactOneComesFirstThenTheFirstInByteOrder)
{
    RealFiles real;
    for (const char* name : {"song.wav", "SONG.wav", "Song.WAV"})
        writeHostFile(real.root / name, name);
    EXPECT_EQ(*real.files().readAll(L"C:\\song.wav"), "song.wav");
    EXPECT_EQ(*real.files().readAll(L"C:\\Song.WAV"), "Song.WAV");
    EXPECT_EQ(*real.files().readAll(L"C:\\sOnG.wAv"), "SONG.wav");
    fs::create_directories(real.root / "dir");
    fs::create_directories(real.root / "DIR");
    writeHostFile(real.root / "dir/only here", "");
    EXPECT_TRUE(real.files().fileExists(L"C:\\dir\\only here"));
    EXPECT_FALSE(real.files().fileExists(L"C:\\Dir\\only here")) << "the folder is chosen before its contents";
}

TEST(HostFileSystem, theProgramFolderIsMountedWhereverItLies)
{
    RealFiles real;
    auto& files = real.files();
    ASSERT_TRUE(files.writeWhole(L"c:\\cdtonquay\\set.ini", "x"));
    EXPECT_EQ(readHostFile(real.root / "home/program folder/set.ini"), "x");
    EXPECT_EQ(files.hostPath(L"C:\\CDTONQUAY\\SET.INI"), real.root / "home/program folder/set.ini");
    EXPECT_EQ(files.programPath(real.root / "home/program folder/set.ini"), L"C:\\CDTONQUAY\\set.ini");
    EXPECT_EQ(files.programPath(real.root / "home/program folder"), L"C:\\CDTONQUAY");
    EXPECT_EQ(files.programPath(real.root / "home/program folder2/x"), L"C:\\home\\program folder2\\x");
    EXPECT_EQ(files.programPath(real.root.path() + "/"), L"C:\\");
    EXPECT_EQ(files.programPath(real.root / "home/./x//y/../z"), L"C:\\home\\x\\z");
    EXPECT_EQ(files.programPath("/elsewhere"), L"");
    EXPECT_EQ(files.hostPath(L"D:\\track01.cda"), "D:\\track01.cda");
}

TEST(HostFileSystem, namesThatAreNoPlainUtf8GoRound)
{
    RealFiles real;
    auto& files = real.files();
    const std::string names[] = {"bad \xFF\xC3 byte.wav", "back\\slash.wav", "co:lon.wav", "emoji \xF0\x9F\x8E\xB5.wav",
                                 "line\nbreak.wav"};
    for (const std::string& name : names)
        writeHostFile(real.root / name, name);
    const auto listed = files.list(L"C:\\", L"*.wav");
    ASSERT_TRUE(listed);
    ASSERT_EQ(listed->size(), std::size(names));
    for (const std::wstring& name : *listed) {
        const auto bytes = files.readAll(L"C:\\" + name);
        ASSERT_TRUE(bytes);
        EXPECT_EQ(files.hostPath(L"C:\\" + name), real.root / *bytes);
        EXPECT_EQ(files.programPath(real.root / *bytes), L"C:\\" + name);
        EXPECT_TRUE(files.remove(L"C:\\" + name));
    }
    EXPECT_EQ(files.readAll(L"C:\\back\uF05Cslash.wav").failure().kind, base::Failure::Kind::notFound);
    ASSERT_TRUE(files.writeWhole(L"C:\\a\uF03Ab", "x"));
    EXPECT_EQ(readHostFile(real.root / "a:b"), "x");
}

TEST(HostFileSystem, writeWholeLeavesNothingButTheNewFileAndKeepsItsModeAndLink)
{
    RealFiles real;
    auto& files = real.files();
    writeHostFile(real.root / "real.txt", "old");
    fs::permissions(real.root / "real.txt", fs::perms(0640));
    fs::create_symlink("real.txt", real.root / "link.txt");
    ASSERT_TRUE(files.writeWhole(L"C:\\link.txt", "new"));
    EXPECT_TRUE(fs::is_symlink(real.root / "link.txt"));
    EXPECT_EQ(readHostFile(real.root / "real.txt"), "new");
    EXPECT_EQ(modeOf(real.root / "real.txt"), 0640u);

    fs::create_directories(real.root / "d");
    const std::wstring longest = L"C:\\d\\" + std::wstring(255, L'n');
    EXPECT_TRUE(files.writeWhole(longest, "x")) << "a name as long as names can be";
    EXPECT_EQ(std::distance(fs::directory_iterator(real.root / "d"), fs::directory_iterator()), 1);
}

TEST(HostFileSystem, clearingAttributesChangesNothingByItself)
{
    RealFiles real;
    writeHostFile(real.root / "f", "old");
    real.makeReadOnly(L"C:\\f");
    const mode_t before = modeOf(real.root / "f");
    ASSERT_TRUE(real.files().clearAttributes(L"C:\\f"));
    EXPECT_EQ(modeOf(real.root / "f"), before);
    ASSERT_TRUE(real.files().openBinary(L"C:\\F"));
    EXPECT_EQ(modeOf(real.root / "f"), before | S_IWUSR);
}

TEST(HostFileSystem, whatIsNoOrdinaryFileHoldsNobodyUp)
{
    RealFiles real;
    ASSERT_EQ(mkfifo((real.root / "pipe").c_str(), 0600), 0);
    EXPECT_FALSE(real.files().readAll(L"C:\\pipe"));
    EXPECT_FALSE(real.files().openForReading(L"C:\\pipe"));
    EXPECT_FALSE(real.files().openBinary(L"C:\\pipe"));
    EXPECT_FALSE(real.files().writeWhole(L"C:\\pipe", "x"));
    EXPECT_FALSE(real.files().copy(L"C:\\pipe", L"C:\\other"));
    EXPECT_TRUE(fs::is_fifo(real.root / "pipe"));
}

TEST(HostFileSystem, renameAndCopyKeepModeAndTimeAlsoAcrossFileSystems)
{
    std::error_code error;
    const std::string other = "/dev/shm/tonquay-test-" + std::to_string(getpid());
    if (!fs::create_directory(other, error))
        GTEST_SKIP() << "no second file system at /dev/shm";
    host::HeldFiles held;
    host::HostFileSystem files({"/", "", {}}, held);
    TempFolder folder;
    writeHostFile(folder / "run.sh", "#!/bin/sh\n");
    fs::permissions(folder / "run.sh", fs::perms(0754));
    const auto time = fs::file_time_type::clock::now() - std::chrono::hours(50);
    fs::last_write_time(folder / "run.sh", time);
    writeHostFile(other + "/Moved.sh", "in the way");

    const std::wstring from = files.programPath(folder / "run.sh");
    const std::wstring to = files.programPath(other) + L"\\moved.SH";
    EXPECT_TRUE(files.copy(from, files.programPath(folder / "copy.sh")));
    EXPECT_EQ(modeOf(folder / "copy.sh"), 0754u);
    EXPECT_TRUE(files.rename(from, to));
    EXPECT_FALSE(fs::exists(folder / "run.sh"));
    EXPECT_EQ(readHostFile(other + "/Moved.sh"), "#!/bin/sh\n");
    EXPECT_EQ(modeOf(other + "/Moved.sh"), 0754u);
    EXPECT_EQ(fs::last_write_time(other + "/Moved.sh"), time);
    EXPECT_EQ(std::distance(fs::directory_iterator(other), fs::directory_iterator()), 1);
    fs::remove_all(other, error);
}

TEST(HostFileSystem, aReplacedFileKeepsItsModeAndItsLink)
{
    RealFiles real;
    auto& files = real.files();
    fs::create_directories(real.root / "library");
    writeHostFile(real.root / "library/song.mp3", "old");
    fs::permissions(real.root / "library/song.mp3", fs::perms(0460));
    fs::create_symlink("library/song.mp3", real.root / "song.mp3");
    writeHostFile(real.root / "song.mp3.new", "new");
    ASSERT_TRUE(files.clearAttributes(L"C:\\song.mp3"));
    ASSERT_TRUE(files.replace(L"C:\\song.mp3.new", L"C:\\song.mp3"));
    EXPECT_TRUE(fs::is_symlink(real.root / "song.mp3"));
    EXPECT_EQ(readHostFile(real.root / "library/song.mp3"), "new");
    EXPECT_EQ(modeOf(real.root / "library/song.mp3"), 0660u) << "that of the old file, and writable";
    EXPECT_FALSE(fs::exists(real.root / "song.mp3.new"));

    fs::create_hard_link(real.root / "library/song.mp3", real.root / "second name");
    EXPECT_FALSE(files.replace(L"C:\\second name", L"C:\\song.mp3")) << "they are one file";
    EXPECT_TRUE(fs::exists(real.root / "second name"));
}

TEST(HostFileSystem, aReplacementMayComeFromAnotherFileSystem)
{
    std::error_code error;
    const std::string other = "/dev/shm/tonquay-test-" + std::to_string(getpid());
    if (!fs::create_directory(other, error))
        GTEST_SKIP() << "no second file system at /dev/shm";
    host::HeldFiles held;
    host::HostFileSystem files({"/", "", {}}, held);
    TempFolder folder;
    writeHostFile(folder / "song.mp3", "old");
    fs::permissions(folder / "song.mp3", fs::perms(0640));
    writeHostFile(other + "/draft", "new");
    EXPECT_TRUE(files.replace(files.programPath(other + "/draft"), files.programPath(folder / "song.mp3")));
    EXPECT_EQ(readHostFile(folder / "song.mp3"), "new");
    EXPECT_EQ(modeOf(folder / "song.mp3"), 0640u);
    EXPECT_TRUE(fs::is_empty(other));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()), 1);
    fs::remove_all(other, error);
}

TEST(GatheredFile, largeAndSmallWritesLandInOrder)
{
    RealFiles real;
    std::string expected;
    auto file = real.files().openBinary(L"C:\\big");
    ASSERT_TRUE(file);
    std::size_t size = 1;
    for (int i = 0; i < 16; ++i, size = size * 7 % 1500001 + 1) {
        std::string block(size, static_cast<char>('a' + i % 26));
        ASSERT_TRUE((*file)->write(bytesOf(block)));
        expected += block;
    }
    ASSERT_TRUE((*file)->close());
    EXPECT_TRUE(readHostFile(real.root / "big") == expected);
}

/// /dev/full takes an open and refuses every write, as a full disk does.
TEST(GatheredFile, aFailedGatheredWriteIsReportedByTheNextCallAndLosesOnlyItself)
{
    const auto fullDisk = [] {
        return host::GatheredFile(host::Descriptor(open("/dev/full", O_WRONLY | O_CLOEXEC)), "/dev/full");
    };
    const std::string block(host::GatheredFile::gatheredBytes / 2 + 1, 'x');
    {
        auto file = fullDisk();
        EXPECT_TRUE(file.write(bytesOf(block)));
        const auto second = file.write(bytesOf(block));
        ASSERT_FALSE(second);
        EXPECT_EQ(second.failure().kind, base::Failure::Kind::full);
    }
    {
        auto file = fullDisk();
        EXPECT_TRUE(file.write(bytesOf("x")));
        EXPECT_FALSE(file.seek(0));
        EXPECT_TRUE(file.close()) << "reported once";
    }
    {
        auto file = fullDisk();
        EXPECT_TRUE(file.write(bytesOf("x")));
        std::byte byte{};
        const auto read = file.read({&byte, 1});
        ASSERT_FALSE(read);
        EXPECT_EQ(read.failure().kind, base::Failure::Kind::full) << "not read past what was lost";
    }
    {
        auto file = fullDisk();
        EXPECT_TRUE(file.write(bytesOf("x")));
        EXPECT_FALSE(file.close());
    }
}

}

}
