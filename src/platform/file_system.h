#pragma once

#include "base/result.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tonquay::platform {

/// A file open for reading and writing at chosen places; it starts at the first byte. Writes may be gathered; a write
/// that then fails is reported by the next call. Destroying it closes it, without a word about what could not be
/// written any more.
class BinaryFile {
public:
    virtual ~BinaryFile() = default;

    /// Writes all of `bytes` at the present place and moves on behind them. Nothing is cut off behind the new end.
    [[nodiscard]] virtual base::Status write(std::span<const std::byte> bytes) = 0;

    /// Fills `buffer` from the present place and moves on behind what was read. The result is the number of bytes; it
    /// is smaller than the buffer only where the file ends, and 0 at the end and behind it. Everything written before
    /// is seen.
    [[nodiscard]] virtual base::Result<std::size_t> read(std::span<std::byte> buffer) = 0;

    /// Moves to `offset` bytes from the start, 0-based. Everything written before is on its way to the file when it
    /// returns; a gathered write that failed is reported here.
    [[nodiscard]] virtual base::Status seek(std::int64_t offset) = 0;

    struct Facts {
        std::int64_t length = 0;                 ///< bytes
        std::chrono::local_seconds lastChange{}; ///< of its contents, by the user's own time zone
    };

    /// What the system says of the open file as of now; a gathered write may not be seen.
    [[nodiscard]] virtual base::Result<Facts> facts() = 0;

    /// The file ends at the present place from now on: what was behind it is gone. A file that is shorter gets zeros.
    [[nodiscard]] virtual base::Status endHere() = 0;

    /// Writes what is gathered and closes. No call but the destructor may follow.
    [[nodiscard]] virtual base::Status close() = 0;
};

/// Where the program's own folder is, wherever it lies.
inline constexpr std::wstring_view programFolder = L"C:\\CDTONQUAY";

/// Files and folders, named the way this program names them: drive letters and backslashes, joined by text.
///
/// `C:` is the host's root, and the program's own folder is `C:\CDTONQUAY` wherever it lies. `D:` and on are the
/// optical drives; on a drive with an audio disc in it the names `track01.cda` and so on can be seen, with nothing to
/// read behind them. Names match without regard to case, an exact match first, then the first in byte order; a new
/// file keeps the case it was given. Relative names start at the current folder of the current drive. A path may also
/// use forward slashes.
class FileSystem {
public:
    virtual ~FileSystem() = default;

    /// The whole of a file. Fails when there is none, it cannot be read or it is larger than `limit` bytes.
    virtual base::Result<std::string> readAll(std::wstring_view path, std::size_t limit = 16u << 20) = 0;

    /// Replaces a file or makes it, in one step: whoever looks sees the old contents or the new, never a part. A
    /// failure leaves the old file.
    virtual base::Status writeWhole(std::wstring_view path, std::string_view bytes) = 0;

    /// Opens a file for reading and writing. A missing file is made; an existing one keeps its bytes until they are
    /// written over. Fails while a living child process was started with this file as its output.
    virtual base::Result<std::unique_ptr<BinaryFile>> openBinary(std::wstring_view path) = 0;

    /// Opens a file for reading only, in use or read-only as it may be; it does not change, and writing to it fails.
    /// Fails when there is none or it is no ordinary file; never waits for one.
    virtual base::Result<std::unique_ptr<BinaryFile>> openForReading(std::wstring_view path) = 0;

    /// True when a look-up of the name finds a file (not a folder).
    virtual bool fileExists(std::wstring_view path) = 0;
    virtual bool folderExists(std::wstring_view path) = 0;

    /// Bytes; 0 for a missing file.
    virtual std::int64_t length(std::wstring_view path) = 0;

    /// When a file's contents changed last, by the user's own time zone. Fails when there is none.
    virtual base::Result<std::chrono::local_seconds> lastChange(std::wstring_view path) = 0;

    /// True for a file that is there and must not be changed as it is; clearing its attributes makes it false.
    virtual bool isReadOnly(std::wstring_view path) = 0;

    /// Makes a read-only file writable for the write or delete that follows. Looking at a file never changes it.
    virtual base::Status clearAttributes(std::wstring_view path) = 0;

    /// Deletes a file. Fails when there is none. A file that a living child process was started with and has not opened
    /// yet would be lost to it: it goes when the child has ended.
    virtual base::Status remove(std::wstring_view path) = 0;

    /// Across file systems too; an existing target is replaced.
    virtual base::Status rename(std::wstring_view from, std::wstring_view to) = 0;
    virtual base::Status copy(std::wstring_view from, std::wstring_view to) = 0;

    /// Puts a file in the place of another one, which must be there, and takes its old name away: for a new version
    /// that was written beside the old one. In one step, and not before it is on the disk: whoever looks, also after a
    /// power cut, sees the old file or the new one, never a part and never none. The new one has the access rights of
    /// the old one and is writable. A failure leaves both.
    virtual base::Status replace(std::wstring_view from, std::wstring_view to) = 0;

    /// Makes one folder; its parent must exist.
    virtual base::Status createFolder(std::wstring_view path) = 0;

    /// Names of the files (not folders) in `folder` that match `pattern` (* and ?, case-blind), sorted by name.
    virtual base::Result<std::vector<std::wstring>> list(std::wstring_view folder, std::wstring_view pattern) = 0;

    /// Makes the drive of the path's first letter current; its current folder is whatever it was.
    virtual base::Status changeDrive(std::wstring_view path) = 0;

    /// Makes `path` the current folder of its drive, which need not be the current drive.
    virtual base::Status changeFolder(std::wstring_view path) = 0;

    /// Full path of the current folder of the current drive, without a trailing backslash but for a root.
    virtual std::wstring currentFolder() = 0;

    /// The same place in the form that people on this system write ("/home/ann/Music"), and back.
    virtual std::string hostPath(std::wstring_view path) = 0;
    virtual std::wstring programPath(std::string_view hostPath) = 0;
};

}
