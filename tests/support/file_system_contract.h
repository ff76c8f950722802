#pragma once

#include "platform/file_system.h"

#include <gtest/gtest.h>

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What every FileSystem must do, run on the fake one and on the real one, so that the fake does not drift.
///
/// A `World` is default-constructible and has
///     platform::FileSystem& files();            with C:\CDTONQUAY there and current
///     void makeReadOnly(std::wstring_view path);
///     void insertDisc(wchar_t letter, int tracks);    D: and E: are drives, without discs at first
namespace tonquay::test {

template <class World>
class FileSystemContract : public ::testing::Test {
protected:
    platform::FileSystem& files() { return world_.files(); }

    void put(std::wstring_view path, std::string_view bytes) { ASSERT_TRUE(files().writeWhole(path, bytes)); }

    std::string contents(std::wstring_view path)
    {
        const auto bytes = files().readAll(path);
        return bytes ? *bytes : "(none)";
    }

    /// What a read of `count` bytes gives.
    static std::string readFrom(platform::BinaryFile& file, std::size_t count)
    {
        std::vector<std::byte> bytes(count);
        const auto read = file.read(bytes);
        if (!read)
            return "(failed)";
        std::string text;
        for (const std::byte byte : std::span(bytes).first(*read))
            text.push_back(static_cast<char>(byte));
        return text;
    }

    static std::span<const std::byte> bytesOf(std::string_view text) { return std::as_bytes(std::span(text)); }

    World world_;
};

TYPED_TEST_SUITE_P(FileSystemContract);

TYPED_TEST_P(FileSystemContract, namesMatchWithoutRegardToCaseAndKeepTheCaseTheyWereMadeWith)
{
    auto& files = this->files();
    ASSERT_TRUE(files.createFolder(L"C:\\Müsik"));
    this->put(L"C:\\Müsik\\Ärger Жук.wav", "one");
    EXPECT_TRUE(files.fileExists(L"c:\\MÜSIK\\äRGER жУК.WAV"));
    EXPECT_TRUE(files.folderExists(L"C:/mÜsik/"));
    EXPECT_FALSE(files.fileExists(L"C:\\Müsik"));
    EXPECT_FALSE(files.folderExists(L"C:\\Müsik\\Ärger Жук.wav"));
    this->put(L"C:\\MÜSIK\\ÄRGER ЖУК.WAV", "two");
    EXPECT_EQ(*files.list(L"C:\\müsik", L"*"), std::vector<std::wstring>{L"Ärger Жук.wav"});
    EXPECT_EQ(this->contents(L"C:\\Müsik\\Ärger Жук.wav"), "two");
}

TYPED_TEST_P(FileSystemContract, relativeNamesStartAtTheCurrentFolderOfTheirDrive)
{
    auto& files = this->files();
    EXPECT_EQ(files.currentFolder(), L"C:\\CDTONQUAY");
    this->put(L"a.txt", "here");
    EXPECT_EQ(this->contents(L"C:\\cdtonquay\\A.TXT"), "here");
    ASSERT_TRUE(files.createFolder(L"C:\\Out"));
    ASSERT_TRUE(files.createFolder(L"C:\\Out\\Deep"));
    ASSERT_TRUE(files.changeFolder(L"c:\\OUT\\deep"));
    EXPECT_EQ(files.currentFolder(), L"C:\\Out\\Deep");
    this->put(L"b.txt", "deep");
    const struct {
        const char* what;
        const wchar_t* path;
        const char* bytes;
    } cases[] = {
        {"bare", L"b.txt", "deep"},
        {"with the drive", L"C:b.txt", "deep"},
        {"dots", L".\\..\\deep\\.\\b.txt", "deep"},
        {"up past the root", L"..\\..\\..\\..\\Out\\Deep\\b.txt", "deep"},
        {"from the root", L"\\Out\\Deep\\b.txt", "deep"},
        {"elsewhere", L"a.txt", "(none)"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(this->contents(c.path), c.bytes) << c.what;
    ASSERT_TRUE(files.changeFolder(L"C:\\"));
    EXPECT_EQ(files.currentFolder(), L"C:\\");
}

TYPED_TEST_P(FileSystemContract, aFailedChangeOfFolderOrDriveLeavesBothAsTheyWere)
{
    auto& files = this->files();
    this->put(L"file", "");
    EXPECT_FALSE(files.changeFolder(L"C:\\nowhere"));
    EXPECT_FALSE(files.changeFolder(L"file"));
    EXPECT_FALSE(files.changeFolder(L""));
    EXPECT_FALSE(files.changeDrive(L"Q:\\"));
    EXPECT_FALSE(files.changeDrive(L""));
    EXPECT_EQ(files.currentFolder(), L"C:\\CDTONQUAY");
    ASSERT_TRUE(files.changeDrive(L"d:\\any\\thing"));
    EXPECT_EQ(files.currentFolder(), L"D:\\");
    ASSERT_TRUE(files.createFolder(L"C:\\Other"));
    ASSERT_TRUE(files.changeFolder(L"C:\\Other"));
    EXPECT_EQ(files.currentFolder(), L"D:\\") << "a folder of another drive";
    ASSERT_TRUE(files.changeDrive(L"C"));
    EXPECT_EQ(files.currentFolder(), L"C:\\Other");
}

TYPED_TEST_P(FileSystemContract, aDiscShowsItsTracksAndNothingBehindThem)
{
    auto& files = this->files();
    EXPECT_FALSE(files.fileExists(L"D:\\track01.cda"));
    EXPECT_FALSE(files.folderExists(L"D:\\"));
    this->world_.insertDisc(L'D', 11);
    EXPECT_TRUE(files.fileExists(L"d:\\TRACK01.cda"));
    EXPECT_TRUE(files.fileExists(L"D:\\track11.cda"));
    EXPECT_FALSE(files.fileExists(L"D:\\track12.cda"));
    EXPECT_FALSE(files.fileExists(L"D:\\track1.cda"));
    EXPECT_FALSE(files.fileExists(L"E:\\track01.cda"));
    EXPECT_TRUE(files.folderExists(L"D:\\"));
    EXPECT_EQ(files.list(L"D:\\", L"*.cda")->size(), 11u);
    EXPECT_EQ(files.length(L"D:\\track01.cda"), 0);
    EXPECT_FALSE(files.readAll(L"D:\\track01.cda"));
    EXPECT_FALSE(files.writeWhole(L"D:\\new.txt", "x"));
    EXPECT_FALSE(files.openBinary(L"D:\\track01.cda"));
    EXPECT_FALSE(files.openForReading(L"D:\\track01.cda"));
    this->world_.insertDisc(L'D', 0);
    EXPECT_FALSE(files.fileExists(L"D:\\track01.cda"));
}

TYPED_TEST_P(FileSystemContract, whatIsNoPathIsNeverThere)
{
    auto& files = this->files();
    const std::wstring longName(300, L'x');
    const std::wstring withNul(L"a\0b", 3);
    this->put(L"a", "cut at the NUL");
    const struct {
        const char* what;
        std::wstring path;
    } cases[] = {
        {"empty", L""},
        {"missing folder", L"C:\\no\\such\\file"},
        {"below a file", L"a\\b"},
        {"drive that is none", L"Q:\\a"},
        {"drive letter that is none", L"1:\\a"},
        {"a NUL inside", withNul},
        {"too long a name", longName},
        {"a folder", L"C:\\CDTONQUAY"},
    };
    for (const auto& c : cases) {
        EXPECT_FALSE(files.fileExists(c.path)) << c.what;
        EXPECT_FALSE(files.readAll(c.path)) << c.what;
        EXPECT_FALSE(files.openForReading(c.path)) << c.what;
        EXPECT_FALSE(files.remove(c.path)) << c.what;
        EXPECT_FALSE(files.rename(c.path, L"b")) << c.what;
        EXPECT_FALSE(files.copy(c.path, L"b")) << c.what;
        EXPECT_FALSE(files.clearAttributes(c.path)) << c.what;
        EXPECT_EQ(files.length(c.path), 0) << c.what;
        if (c.path.size() != 300) {
            EXPECT_FALSE(files.writeWhole(c.path, "x")) << c.what;
            EXPECT_FALSE(files.openBinary(c.path)) << c.what;
        }
    }
    EXPECT_EQ(files.readAll(L"none").failure().kind, base::Failure::Kind::notFound);
}

TYPED_TEST_P(FileSystemContract, readAllTakesNoMoreThanItsLimit)
{
    this->put(L"f", "12345");
    EXPECT_EQ(*this->files().readAll(L"f", 5), "12345");
    EXPECT_FALSE(this->files().readAll(L"f", 4));
    this->put(L"empty", "");
    EXPECT_EQ(*this->files().readAll(L"empty", 0), "");
}

TYPED_TEST_P(FileSystemContract, aBinaryFileWritesInPlaceAndCutsNothingOff)
{
    auto& files = this->files();
    this->put(L"f.wav", "0123456789");
    {
        auto file = files.openBinary(L"F.WAV");
        ASSERT_TRUE(file);
        EXPECT_TRUE((*file)->write(this->bytesOf("abc")));
        EXPECT_TRUE((*file)->seek(5));
        EXPECT_EQ(this->contents(L"f.wav"), "abc3456789") << "a seek brings what was written before to the file";
        EXPECT_TRUE((*file)->write(this->bytesOf("XY")));
        EXPECT_TRUE((*file)->write(this->bytesOf("Z")));
        EXPECT_FALSE((*file)->seek(-1));
        EXPECT_TRUE((*file)->seek(12));
        EXPECT_TRUE((*file)->write(this->bytesOf("!")));
        EXPECT_TRUE((*file)->close());
    }
    EXPECT_EQ(this->contents(L"f.wav"), std::string("abc34XYZ89\0\0!", 13));
    {
        auto file = files.openBinary(L"new.wav");
        ASSERT_TRUE(file);
        EXPECT_TRUE(files.fileExists(L"new.wav")) << "made at once";
        EXPECT_TRUE((*file)->write(this->bytesOf("left open")));
    }
    EXPECT_EQ(this->contents(L"new.wav"), "left open") << "destroying it closes it";
}

TYPED_TEST_P(FileSystemContract, aBinaryFileReadsAtTheSamePlaceThatItWritesTo)
{
    auto& files = this->files();
    this->put(L"f", "0123456789");
    auto file = files.openBinary(L"f");
    ASSERT_TRUE(file);
    EXPECT_EQ(this->readFrom(**file, 3), "012");
    EXPECT_TRUE((*file)->write(this->bytesOf("ABC")));
    EXPECT_EQ(this->readFrom(**file, 2), "67");
    EXPECT_EQ(this->contents(L"f"), "012ABC6789");
    EXPECT_TRUE((*file)->seek(2));
    EXPECT_EQ(this->readFrom(**file, 100), "2ABC6789") << "up to the end";
    EXPECT_EQ(this->readFrom(**file, 1), "") << "at the end";
    EXPECT_TRUE((*file)->write(this->bytesOf("!")));
    EXPECT_TRUE((*file)->seek(10));
    EXPECT_EQ(this->readFrom(**file, 1), "!");
    EXPECT_TRUE((*file)->seek(1000));
    EXPECT_EQ(this->readFrom(**file, 1), "") << "behind the end";
    EXPECT_TRUE((*file)->seek(0));
    EXPECT_EQ(this->readFrom(**file, 0), "");
    EXPECT_EQ(this->readFrom(**file, 1), "0");
    EXPECT_TRUE((*file)->close());
    EXPECT_EQ(this->contents(L"f"), "012ABC6789!");
}

TYPED_TEST_P(FileSystemContract, aBinaryFileCanBeMadeToEndWhereItIs)
{
    this->put(L"f.bin", "0123456789");
    auto file = this->files().openBinary(L"f.bin");
    ASSERT_TRUE(file);
    EXPECT_TRUE((*file)->seek(3));
    EXPECT_TRUE((*file)->write(this->bytesOf("ab")));
    EXPECT_TRUE((*file)->endHere());
    EXPECT_EQ(this->contents(L"f.bin"), "012ab");
    EXPECT_TRUE((*file)->seek(7));
    EXPECT_TRUE((*file)->endHere());
    EXPECT_TRUE((*file)->close());
    EXPECT_EQ(this->contents(L"f.bin"), std::string("012ab\0\0", 7));
    const auto seen = this->files().openForReading(L"f.bin");
    ASSERT_TRUE(seen);
    EXPECT_FALSE((*seen)->endHere());
}

TYPED_TEST_P(FileSystemContract, aFileOpenForReadingCannotBeChanged)
{
    auto& files = this->files();
    this->put(L"f", "old");
    this->world_.makeReadOnly(L"f");
    auto file = files.openForReading(L"F");
    ASSERT_TRUE(file);
    EXPECT_EQ(this->readFrom(**file, 2), "ol");
    const bool written = static_cast<bool>((*file)->write(this->bytesOf("x")));
    const bool closed = static_cast<bool>((*file)->close());
    EXPECT_FALSE(written && closed) << "said by the call itself or by the next one";
    EXPECT_EQ(this->contents(L"f"), "old");
    EXPECT_FALSE(files.writeWhole(L"f", "new")) << "it is still read-only";
    EXPECT_EQ(files.openForReading(L"none").failure().kind, base::Failure::Kind::notFound);
    EXPECT_FALSE(files.fileExists(L"none"));
}

TYPED_TEST_P(FileSystemContract, readOnlyFilesChangeOnlyAfterTheirAttributesWereCleared)
{
    auto& files = this->files();
    for (const wchar_t* name : {L"a", L"b", L"c", L"d"}) {
        this->put(name, "old");
        this->world_.makeReadOnly(name);
        EXPECT_FALSE(files.writeWhole(name, "new"));
        EXPECT_FALSE(files.openBinary(name));
        EXPECT_FALSE(files.remove(name));
        EXPECT_EQ(this->contents(name), "old");
        EXPECT_TRUE(files.clearAttributes(name));
    }
    this->put(L"e", "other");
    this->world_.makeReadOnly(L"e");
    EXPECT_FALSE(files.copy(L"a", L"e"));
    EXPECT_FALSE(files.rename(L"a", L"e"));

    EXPECT_TRUE(files.writeWhole(L"a", "new"));
    EXPECT_TRUE(files.writeWhole(L"a", "newer")) << "it stays writable";
    {
        auto file = files.openBinary(L"b");
        ASSERT_TRUE(file);
        EXPECT_EQ(this->readFrom(**file, 3), "old");
        EXPECT_TRUE((*file)->write(this->bytesOf("er")));
        EXPECT_TRUE((*file)->close());
        EXPECT_EQ(this->contents(L"b"), "older");
    }
    EXPECT_TRUE(files.writeWhole(L"b", "new")) << "it stays writable";
    EXPECT_TRUE(files.remove(L"c"));
    EXPECT_TRUE(files.rename(L"d", L"moved")) << "a read-only file can be renamed";
    EXPECT_FALSE(files.writeWhole(L"moved", "new")) << "and keeps its attribute";
}

TYPED_TEST_P(FileSystemContract, renameReplacesAndFollowsTheCaseOfANewName)
{
    auto& files = this->files();
    this->put(L"one", "1");
    this->put(L"Two", "2");
    EXPECT_TRUE(files.rename(L"ONE", L"tWO"));
    EXPECT_FALSE(files.fileExists(L"one"));
    EXPECT_EQ(this->contents(L"two"), "1");
    EXPECT_EQ(*files.list(L".", L"*"), std::vector<std::wstring>{L"Two"}) << "an existing target keeps its name";
    EXPECT_TRUE(files.rename(L"two", L"TWO"));
    EXPECT_EQ(*files.list(L".", L"*"), std::vector<std::wstring>{L"TWO"}) << "only the case changes";
    EXPECT_FALSE(files.rename(L"TWO", L"C:\\nowhere\\x"));
    EXPECT_FALSE(files.rename(L"TWO", L"C:\\CDTONQUAY"));
    EXPECT_EQ(this->contents(L"TWO"), "1");
}

TYPED_TEST_P(FileSystemContract, copyReplacesAndLeavesTheSource)
{
    auto& files = this->files();
    this->put(L"one", "1");
    this->put(L"two", "22");
    EXPECT_TRUE(files.copy(L"one", L"TWO"));
    EXPECT_EQ(this->contents(L"one") + this->contents(L"two"), "11");
    EXPECT_FALSE(files.copy(L"one", L"ONE"));
    EXPECT_EQ(this->contents(L"one"), "1");
    EXPECT_FALSE(files.copy(L"one", L"C:\\nowhere\\one"));
}

TYPED_TEST_P(FileSystemContract, aReplacedFileHasTheNewBytesUnderItsOldName)
{
    auto& files = this->files();
    const auto names = [&] { return *files.list(L".", L"*"); };
    this->put(L"Song.mp3", "old");
    this->put(L"new", "new bytes");
    EXPECT_TRUE(files.replace(L"NEW", L"SONG.mp3"));
    EXPECT_EQ(this->contents(L"song.mp3"), "new bytes");
    EXPECT_EQ(names(), std::vector<std::wstring>{L"Song.mp3"});

    this->put(L"draft", "draft");
    this->put(L"other", "other");
    this->world_.makeReadOnly(L"other");
    const struct {
        const char* what;
        const wchar_t* from;
        const wchar_t* to;
    } cases[] = {
        {"no source", L"none", L"Song.mp3"},
        {"no target", L"draft", L"none"},
        {"no folder", L"draft", L"C:\\nowhere\\x"},
        {"a folder as source", L"C:\\CDTONQUAY", L"Song.mp3"},
        {"a folder as target", L"draft", L"C:\\CDTONQUAY"},
        {"itself", L"draft", L"DRAFT"},
        {"read-only", L"draft", L"other"},
    };
    for (const auto& c : cases)
        EXPECT_FALSE(files.replace(c.from, c.to)) << c.what;
    EXPECT_EQ(names(), (std::vector<std::wstring>{L"draft", L"other", L"Song.mp3"}));
    EXPECT_EQ(this->contents(L"draft") + this->contents(L"other") + this->contents(L"song.mp3"), "draftothernew bytes");

    EXPECT_TRUE(files.isReadOnly(L"OTHER"));
    ASSERT_TRUE(files.clearAttributes(L"other"));
    EXPECT_FALSE(files.isReadOnly(L"other"));
    EXPECT_TRUE(files.replace(L"draft", L"other"));
    EXPECT_EQ(this->contents(L"other"), "draft");
    EXPECT_FALSE(files.isReadOnly(L"other"));
    EXPECT_TRUE(files.writeWhole(L"other", "x")) << "it is writable";
    EXPECT_FALSE(files.isReadOnly(L"none"));
    EXPECT_FALSE(files.isReadOnly(L"C:\\CDTONQUAY"));
}

TYPED_TEST_P(FileSystemContract, foldersAreMadeOneAtATime)
{
    auto& files = this->files();
    EXPECT_FALSE(files.createFolder(L"C:\\a\\b"));
    EXPECT_TRUE(files.createFolder(L"C:\\a"));
    EXPECT_TRUE(files.createFolder(L"C:\\a\\b"));
    EXPECT_FALSE(files.createFolder(L"C:\\A\\B")) << "it is there";
    this->put(L"C:\\f", "");
    EXPECT_FALSE(files.createFolder(L"C:\\F")) << "a file has the name";
    EXPECT_FALSE(files.createFolder(L""));
}

TYPED_TEST_P(FileSystemContract, listsFilesByPatternSortedByName)
{
    auto& files = this->files();
    for (const wchar_t* name : {L"b.mp3", L"A.MP3", L"c.wav", L"none", L"d.mp3.bak", L"é.mp3"})
        this->put(name, "");
    ASSERT_TRUE(files.createFolder(L"folder.mp3"));
    using Names = std::vector<std::wstring>;
    const struct {
        const wchar_t* pattern;
        Names names;
    } cases[] = {
        {L"*.mp3", {L"A.MP3", L"b.mp3", L"é.mp3"}},
        {L"?.MP3", {L"A.MP3", L"b.mp3", L"é.mp3"}},
        {L"*.*", {L"A.MP3", L"b.mp3", L"c.wav", L"d.mp3.bak", L"none", L"é.mp3"}},
        {L"*", {L"A.MP3", L"b.mp3", L"c.wav", L"d.mp3.bak", L"none", L"é.mp3"}},
        {L"n?ne", {L"none"}},
        {L"*a*", {L"A.MP3", L"c.wav", L"d.mp3.bak"}},
        {L"*mp3*k", {L"d.mp3.bak"}},
        {L"", {}},
        {L"É.*", {L"é.mp3"}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(*files.list(L"C:\\CDTONQUAY", c.pattern), c.names) << ::testing::PrintToString(c.pattern);
    EXPECT_FALSE(files.list(L"C:\\nowhere", L"*"));
    EXPECT_FALSE(files.list(L"none", L"*"));
}

REGISTER_TYPED_TEST_SUITE_P(FileSystemContract, namesMatchWithoutRegardToCaseAndKeepTheCaseTheyWereMadeWith,
                            relativeNamesStartAtTheCurrentFolderOfTheirDrive,
                            aFailedChangeOfFolderOrDriveLeavesBothAsTheyWere, aDiscShowsItsTracksAndNothingBehindThem,
                            whatIsNoPathIsNeverThere, readAllTakesNoMoreThanItsLimit,
                            aBinaryFileWritesInPlaceAndCutsNothingOff, aBinaryFileReadsAtTheSamePlaceThatItWritesTo,
                            aBinaryFileCanBeMadeToEndWhereItIs, aFileOpenForReadingCannotBeChanged,
                            readOnlyFilesChangeOnlyAfterTheirAttributesWereCleared,
                            renameReplacesAndFollowsTheCaseOfANewName, copyReplacesAndLeavesTheSource,
                            aReplacedFileHasTheNewBytesUnderItsOldName, foldersAreMadeOneAtATime,
                            listsFilesByPatternSortedByName);

}
