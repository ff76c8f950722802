#include "end_to_end/sandbox.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <numeric>
#include <set>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace tonquay::test {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds timeLimit{20};
constexpr std::chrono::milliseconds lookEvery{1};

std::string textOf(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::vector<std::byte> bytesOf(const fs::path& path)
{
    std::vector<std::byte> bytes(static_cast<std::size_t>(fs::file_size(path)));
    std::ifstream file(path, std::ios::binary);
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    EXPECT_TRUE(file.good()) << path;
    return bytes;
}

int countOf(std::string_view text, std::string_view wanted)
{
    int count = 0;
    for (auto at = text.find(wanted); at != std::string_view::npos; at = text.find(wanted, at + wanted.size()))
        ++count;
    return count;
}

std::vector<std::string> merged(Environment more)
{
    std::vector<std::string> result;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string text = *entry;
        const std::string name = text.substr(0, text.find('='));
        if (name.starts_with("XDG_") || name.starts_with("TONQUAY_"))
            continue;
        if (!more.contains(name))
            result.push_back(text);
    }
    for (const auto& [name, value] : more)
        if (!value.empty())
            result.push_back(name + "=" + value);
    return result;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

}

std::string Ended::all() const
{
    return "status " + std::to_string(status) + (signal != 0 ? ", signal " + std::to_string(signal) : "") +
           "\n--- out\n" + out + "--- err\n" + err;
}

Child::Child(const Arguments& command, const Environment& environment, const fs::path& folder, fs::path out,
             fs::path err)
    : out_(std::move(out)),
      err_(std::move(err))
{
    Arguments words = command;
    std::vector<std::string> variables = merged(environment);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, out_.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, err_.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    const int error = posix_spawn(&id_, words.front().c_str(), &actions, nullptr, pointersTo(words).data(),
                                  pointersTo(variables).data());
    posix_spawn_file_actions_destroy(&actions);
    EXPECT_EQ(error, 0) << words.front();
    over_ = error != 0;
}

Child::~Child()
{
    if (over())
        return;
    ::kill(id_, SIGKILL);
    ::waitpid(id_, nullptr, 0);
}

bool Child::over()
{
    if (!over_)
        over_ = ::waitpid(id_, &status_, WNOHANG) == id_;
    return over_;
}

bool Child::said(std::string_view text, int times)
{
    for (const auto end = Clock::now() + timeLimit; Clock::now() < end;) {
        if (countOf(textOf(out_), text) >= times)
            return true;
        if (over())
            return false;
        std::this_thread::sleep_for(lookEvery);
    }
    return false;
}

std::string Child::output() const
{
    return textOf(out_);
}

void Child::send(int signal) const
{
    if (!over_)
        ::kill(id_, signal);
}

Ended Child::wait()
{
    for (const auto end = Clock::now() + timeLimit; !over();) {
        if (Clock::now() > end) {
            ADD_FAILURE() << "the program does not end\n" << textOf(out_) << textOf(err_);
            ::kill(id_, SIGKILL);
            ::waitpid(id_, &status_, 0);
            over_ = true;
        }
        std::this_thread::sleep_for(lookEvery);
    }
    return ended();
}

Ended Child::ended() const
{
    Ended result{.out = textOf(out_), .err = textOf(err_)};
    if (WIFEXITED(status_))
        result.status = WEXITSTATUS(status_);
    else
        result.signal = WTERMSIG(status_);
    return result;
}

Tree treeOf(const fs::path& folder)
{
    Tree tree;
    if (!fs::exists(folder))
        return tree;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        const std::string name = entry.path().lexically_relative(folder).string();
        if (entry.is_directory() && fs::is_empty(entry.path()))
            tree[name + "/"] = {};
        else if (entry.is_symlink() || !entry.is_directory())
            tree[name] = entry.is_symlink() ? std::vector<std::byte>{} : bytesOf(entry.path());
    }
    return tree;
}

std::string difference(const Tree& is, const Tree& wanted)
{
    std::string text;
    for (const auto& [name, bytes] : wanted) {
        const auto found = is.find(name);
        if (found == is.end())
            text += "missing: " + name + "\n";
        else if (found->second != bytes)
            text += "different: " + name + ", " + std::to_string(found->second.size()) + " bytes instead of " +
                    std::to_string(bytes.size()) + "\n";
    }
    for (const auto& [name, bytes] : is)
        if (!wanted.contains(name))
            text += "not expected: " + name + ", " + std::to_string(bytes.size()) + " bytes\n";
    return text;
}

Sandbox::Sandbox()
{
    for (const char* name : {"home", "discs", "tmp", "run"})
        fs::create_directory(root() / name);
}

std::unique_ptr<Child> Sandbox::start(const Arguments& arguments, const Environment& more) const
{
    Environment environment{{"HOME", home().string()},
                            {"XDG_DATA_HOME", (home() / "data").string()},
                            {"XDG_CONFIG_HOME", (home() / "config").string()},
                            {"XDG_STATE_HOME", (home() / "state").string()},
                            {"TMPDIR", (root() / "tmp").string()},
                            {"SDL_AUDIODRIVER", "dummy"},
                            {"LC_ALL", "C"}};
    for (const auto& [name, value] : more)
        environment[name] = value;
    Arguments command{TONQUAY_PROGRAM};
    command.insert(command.end(), arguments.begin(), arguments.end());
    const std::string number = std::to_string(++runs_);
    return std::make_unique<Child>(command, environment, root(), root() / "run" / ("out" + number),
                                   root() / "run" / ("err" + number));
}

Ended Sandbox::run(const Arguments& arguments, const Environment& more) const
{
    return start(arguments, more)->wait();
}

std::unique_ptr<Child> Sandbox::startRip(const fs::path& disc, const Arguments& more,
                                         const Environment& environment) const
{
    Arguments arguments{"rip"};
    if (std::ranges::find(more, "-f") == more.end())
        arguments.insert(arguments.end(), {"--format", "wav"});
    if (std::ranges::find(more, "--output") == more.end())
        arguments.insert(arguments.end(), {"--output", out().string()});
    arguments.insert(arguments.end(), more.begin(), more.end());
    if (!disc.empty())
        arguments.push_back(disc.string());
    return start(arguments, environment);
}

std::unique_ptr<Child> Sandbox::stoppedInFirstTrack(const fs::path& disc, const std::string& folder) const
{
    // A signal that comes before the disc is opened, or when a fast disk is through, proves nothing: once more, then.
    const fs::path first = out() / folder / "Song 1.wav";
    const fs::path second = out() / folder / "Song 2.wav";
    for (int tries = 0; tries < 20; ++tries) {
        auto child = startRip(disc, {"--json"});
        std::error_code missing;
        while (!child->over() && (!fs::exists(first) || fs::file_size(first, missing) == 0))
            std::this_thread::yield();
        child->send(SIGSTOP);
        if (!child->over() && !fs::exists(second))
            return child;
        child.reset();
        for (const fs::directory_entry& entry : fs::directory_iterator(out()))
            fs::remove_all(entry.path());
        for (const fs::directory_entry& entry : fs::directory_iterator(root() / "tmp"))
            fs::remove_all(entry.path());
    }
    ADD_FAILURE() << "the run could not be stopped in its first track";
    return start({"--version"});
}

Ended Sandbox::rip(const fs::path& disc, const Arguments& more, const Environment& environment) const
{
    return startRip(disc, more, environment)->wait();
}

std::string Sandbox::strays() const
{
    constexpr std::array<std::string_view, 4> known{"out", "discs", "run", "home/state/cd-tonquay/log"};
    std::set<std::string> names;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root())) {
        const std::string name = entry.path().lexically_relative(root()).string();
        if (!entry.is_directory() && std::ranges::none_of(known, [&](auto start) { return name.starts_with(start); }))
            names.insert(name + "\n");
    }
    for (const fs::directory_entry& entry : fs::directory_iterator(root() / "tmp"))
        names.insert(entry.path().filename().string() + "\n");
    return std::accumulate(names.begin(), names.end(), std::string());
}

bool isProblemLines(const std::string& text)
{
    std::istringstream lines(text);
    bool any = false;
    for (std::string line; std::getline(lines, line); any = true)
        if (!line.starts_with("tonquay: ") || line.size() > 2000)
            return false;
    return any && text.ends_with('\n');
}

DiscPlan plainDisc(int tracks, int sectors, DiscFormat format)
{
    DiscPlan plan{.tracks = {}, .format = format, .artist = "Ann Lee", .album = "First Light"};
    for (int number = 1; number <= tracks; ++number)
        plan.tracks.push_back({.sectors = sectors, .title = "Song " + std::to_string(number)});
    return plan;
}

std::vector<std::byte> ripped(const DiscPlan& plan, std::size_t track)
{
    return waveFile(expectedSound(plan, track));
}

bool waitFor(const std::function<bool()>& holds)
{
    for (const auto end = Clock::now() + timeLimit; Clock::now() < end; std::this_thread::sleep_for(lookEvery))
        if (holds())
            return true;
    return holds();
}

std::string machineProgram(const std::string& name)
{
    std::istringstream folders(std::getenv("PATH"));
    for (std::string folder; std::getline(folders, folder, ':');)
        if (fs::path path = fs::path(folder) / name; ::access(path.c_str(), X_OK) == 0)
            return path.string();
    ADD_FAILURE() << name << " is not on PATH";
    return {};
}

void writeScript(const fs::path& path, const std::string& body)
{
    fs::create_directories(path.parent_path());
    writeFile(path, "#!/bin/sh\n" + body);
    fs::permissions(path, fs::perms::owner_all);
}

}
