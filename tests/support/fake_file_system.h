#pragma once

#include "platform/file_system.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tonquay::test {

/// Files in memory. It starts with the folders C:\CDTONQUAY (current), C:\WINDOWS and C:\WINDOWS\SYSTEM, and D: as a
/// drive without a disc. Whole texts are compared without regard to case, names keep the case that they were made with.
class FakeFileSystem : public platform::FileSystem {
public:
    enum class Operation {
        readAll,
        writeWhole,
        openBinary,
        openForReading,
        read,
        write,
        seek,
        close,
        clearAttributes,
        remove,
        rename,
        copy,
        replace,
        createFolder,
        list,
        changeDrive,
        changeFolder,
    };

    FakeFileSystem();

    base::Result<std::string> readAll(std::wstring_view path, std::size_t limit = 16u << 20) override;
    base::Status writeWhole(std::wstring_view path, std::string_view bytes) override;
    base::Result<std::unique_ptr<platform::BinaryFile>> openBinary(std::wstring_view path) override;
    base::Result<std::unique_ptr<platform::BinaryFile>> openForReading(std::wstring_view path) override;
    bool fileExists(std::wstring_view path) override;
    bool folderExists(std::wstring_view path) override;
    std::int64_t length(std::wstring_view path) override;
    base::Result<std::chrono::local_seconds> lastChange(std::wstring_view path) override;
    bool isReadOnly(std::wstring_view path) override;
    base::Status clearAttributes(std::wstring_view path) override;
    base::Status remove(std::wstring_view path) override;
    base::Status rename(std::wstring_view from, std::wstring_view to) override;
    base::Status copy(std::wstring_view from, std::wstring_view to) override;
    base::Status replace(std::wstring_view from, std::wstring_view to) override;
    base::Status createFolder(std::wstring_view path) override;
    base::Result<std::vector<std::wstring>> list(std::wstring_view folder, std::wstring_view pattern) override;
    base::Status changeDrive(std::wstring_view path) override;
    base::Status changeFolder(std::wstring_view path) override;
    std::wstring currentFolder() override;
    std::string hostPath(std::wstring_view path) override;
    std::wstring programPath(std::string_view hostPath) override;

    /// Makes a file with all folders above it, whatever stands against it.
    void put(std::wstring_view path, std::string_view bytes);
    void putFolder(std::wstring_view path);
    void setReadOnly(std::wstring_view path, bool readOnly = true);

    /// What a file holds; nothing when there is none.
    std::optional<std::string> contents(std::wstring_view path) const;
    /// Full paths of all files, each in the case it was made with, sorted.
    std::vector<std::wstring> allFiles() const;

    /// Has an operation on a path fail from now on, after it has worked `after` times; for rename and copy either path
    /// counts. An empty path stands for every one.
    void fail(Operation operation, std::wstring_view path, base::Failure::Kind kind = base::Failure::Kind::refused,
              int after = 0);
    void heal(Operation operation, std::wstring_view path);
    /// Has every operation fail after so many of whatever sort have worked, as at a power cut.
    void failEverything(int after = 0) { untilCut_ = after; }
    void endFailing() { untilCut_.reset(); }

    /// As a living child does with its output: the file cannot be opened for writing until it is released as often.
    void hold(std::wstring_view path) { ++held_[keyOf(path)]; }
    void release(std::wstring_view path) { --held_[keyOf(path)]; }
    /// As a living child does with a file that it was started with and has not opened yet.
    void keepFromRemoval(std::wstring_view path) { kept_[keyOf(path)] = false; }
    void allowRemoval(std::wstring_view path);

    std::map<wchar_t, int> discTracks{{L'D', 0}}; ///< by letter: how many trackNN.cda names are seen there
    std::chrono::local_seconds changed{std::chrono::seconds{1'000'047'900}}; ///< every file, 9 September 2001, 15:05
    std::int64_t capacity = INT64_MAX; ///< of all files together; a write past it finds the disk full

private:
    class Binary;
    struct Entry {
        std::wstring name; ///< full path in its own case
        bool folder = false;
        bool readOnly = false;
        std::string bytes;
    };

    std::wstring absolute(std::wstring_view path) const;
    std::wstring keyOf(std::wstring_view path) const;
    Entry* find(std::wstring_view path);
    const Entry* find(std::wstring_view path) const;
    std::optional<base::Failure> trouble(Operation operation, std::wstring_view path);
    std::optional<base::Failure> cannotPlace(std::wstring_view path) const;
    Entry& make(const std::wstring& full);
    bool isHeld(const std::wstring& key) const;
    std::int64_t used() const;
    int tracksOn(std::wstring_view path) const;
    bool isDiscName(std::wstring_view full) const;

    std::map<std::wstring, Entry> entries_; ///< by full path in upper case
    std::map<std::pair<Operation, std::wstring>, std::pair<base::Failure::Kind, int>> troubles_;
    std::optional<int> untilCut_;
    std::map<std::wstring, int> held_;
    std::map<std::wstring, bool> kept_; ///< true: deleted meanwhile, and gone when it is let go
    std::set<std::wstring> cleared_;
    std::map<wchar_t, std::wstring> folders_; ///< each drive's current folder
    wchar_t drive_ = L'C';
};

}
