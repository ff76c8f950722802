#pragma once

#include "support/disc_maker.h"

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

/// A place to run the built program in: folders of its own, and a look at all that it left in them.
namespace tonquay::test {

using Arguments = std::vector<std::string>;
/// Variables for the program; an empty value takes one away.
using Environment = std::map<std::string, std::string>;

/// How a run ended, and all that it said.
struct Ended {
    int status = -1; ///< of exit; -1 when a signal or the time limit ended it
    int signal = 0;
    std::string out = {};
    std::string err = {};

    std::string all() const; ///< for the message of a failed check
};

/// A program under way. Its output goes to files, so it never waits for us. It is killed when this goes out of scope.
class Child {
public:
    Child(const Arguments& command, const Environment& environment, const std::filesystem::path& folder,
          std::filesystem::path out, std::filesystem::path err);
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    /// Waits until standard output holds `text`, `times` times. False when the program ends or 20 s pass before.
    bool said(std::string_view text, int times = 1);
    std::string output() const; ///< standard output so far
    void send(int signal) const;
    bool over();
    /// Waits for its end; kills it after 20 s.
    Ended wait();

private:
    Ended ended() const;

    std::filesystem::path out_;
    std::filesystem::path err_;
    pid_t id_ = -1;
    bool over_ = false;
    int status_ = 0;
};

/// Files below a folder: path from there, and bytes. A folder without files is an entry that ends in a slash.
using Tree = std::map<std::string, std::vector<std::byte>>;
Tree treeOf(const std::filesystem::path& folder);

/// Names of what is missing, not expected or different, one a line; empty when the trees are equal.
std::string difference(const Tree& is, const Tree& wanted);

/// All folders that the program may know, below one temporary folder: home, temporary files, discs, and "out".
class Sandbox {
public:
    Sandbox();

    std::filesystem::path home() const { return folder_.path() / "home"; }
    std::filesystem::path discs() const { return folder_.path() / "discs"; }
    std::filesystem::path out() const { return folder_.path() / "out"; }
    std::filesystem::path root() const { return folder_.path(); }
    std::filesystem::path settingsFile() const { return home() / "data/cd-tonquay/acdset.ini"; }

    /// Runs `tonquay` with these arguments, in the folder root().
    Ended run(const Arguments& arguments, const Environment& more = {}) const;
    std::unique_ptr<Child> start(const Arguments& arguments, const Environment& more = {}) const;

    /// `tonquay rip --format wav --output OUT MORE DISC`; an -f or --output in `more` takes that one's place.
    Ended rip(const std::filesystem::path& disc, const Arguments& more = {}, const Environment& environment = {}) const;
    std::unique_ptr<Child> startRip(const std::filesystem::path& disc, const Arguments& more = {},
                                    const Environment& environment = {}) const;

    /// A rip with --json of a plainDisc() that SIGSTOP holds while its first track is read and written; `folder`, of
    /// its files, below out().
    std::unique_ptr<Child> stoppedInFirstTrack(const std::filesystem::path& disc, const std::string& folder) const;

    /// What lies where the program has nothing to leave: anywhere but in out(), in its log and among the discs.
    std::string strays() const;

private:
    DiscFolder folder_;
    mutable int runs_ = 0;
};

/// One line of the form "tonquay: ..." for each problem and nothing else.
bool isProblemLines(const std::string& text);

/// A disc of so many audio tracks, with artist "Ann Lee" and album "First Light" and titles "Song 1" and so on.
DiscPlan plainDisc(int tracks, int sectors, DiscFormat format = DiscFormat::cueBin);

/// The WAV file that a track must become.
std::vector<std::byte> ripped(const DiscPlan& plan, std::size_t track);

/// Waits until it holds. False when 20 s pass before.
bool waitFor(const std::function<bool()>& holds);

/// Where a program of the machine lies. Fails the test when it is not on PATH.
std::string machineProgram(const std::string& name);

/// Writes an executable shell script; `body` follows the line that names the shell.
void writeScript(const std::filesystem::path& path, const std::string& body);

}
