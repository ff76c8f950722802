#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace tonquay::host {

/// What a path leads to, whatever it is called.
struct FileIdentity {
    dev_t device = 0;
    ino_t inode = 0;
    bool known = false;
    bool operator==(const FileIdentity& other) const
    {
        return known && other.known && device == other.device && inode == other.inode;
    }
};

/// The files that living child processes work on. On this system nothing keeps a file from being written or deleted
/// under a program that uses it, so whoever writes or deletes asks here first. What a child has started in turn counts
/// as the child.
class HeldFiles {
public:
    /// `paths` are the host paths that a child's command names, whether or not they are there and in whatever case.
    void childStarted(pid_t child, std::vector<std::string> paths);
    void childEnded(pid_t child);

    /// True when a living child's command names the file, or the child has it open: writing into it would mix two
    /// writers' bytes.
    bool inUse(const std::string& path);

    /// True when a living child's command names the file and the child has not opened it yet: deleting it now would
    /// take it from the child. Once it was opened the child keeps its contents.
    bool awaited(const std::string& path);

    /// For an awaited file: has it deleted when the child that awaits it has ended, unless another file stands under
    /// its name by then. False, and nothing is done, for any other file.
    bool removeAtEnd(const std::string& path);

private:
    struct Named {
        std::string path;
        bool opened = false;
        FileIdentity goesAtEnd{}; ///< known: what is to be deleted
    };
    struct Child {
        pid_t process = 0;
        std::vector<Named> files;
    };

    Named* find(const std::string& path, const FileIdentity& file);
    void forgetEnded();
    static void removeWhatIsLeft(const Child& child);

    std::vector<Child> children_;
};

}
