#pragma once

#include "host/system/held_files.h"
#include "host/system/path_map.h"
#include "platform/file_system.h"

#include <memory>
#include <set>
#include <string>
#include <sys/stat.h>

namespace tonquay::host {

/// The files of this system under the program's names, and the only place that turns the one into the other.
///
/// A file is read-only when its owner's write bit is off; that is looked at here, so it holds for root too. Clearing
/// attributes touches nothing yet: the write bit is set when the file is then written or deleted. Patterns follow
/// the habit of the program's names: "*.*" stands for every name, a dot in it or not.
class HostFileSystem final : public platform::FileSystem {
public:
    /// Starts on C:, in the program folder when it is there. `held` outlives this.
    HostFileSystem(PathMap::Drives drives, HeldFiles& held);

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

    /// For a place that is no file of this system (a disc's names, a path that is none) the program's form stays.
    std::string hostPath(std::wstring_view path) override;

    /// A relative host path starts where the process was started. Empty for a path that C: does not reach.
    std::wstring programPath(std::string_view hostPath) override;

private:
    struct FoundFile {
        std::string host{};
        struct stat status {};
    };

    base::Result<FoundFile> findFile(std::wstring_view path) const;
    base::Result<std::string> locate(std::wstring_view path) const;
    base::Result<std::string> locateFile(std::wstring_view path) const;
    base::Status mayBeWritten(const std::string& host);
    base::Status makeWritable(const std::string& host);
    std::vector<std::wstring> discNames(wchar_t drive) const;

    PathMap map_;
    HeldFiles& held_;
    std::set<std::string> cleared_; ///< host paths whose attributes were cleared and that were not written yet
};

}
