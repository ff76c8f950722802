#pragma once

#include "platform/processes.h"
#include "support/fake_event_loop.h"
#include "support/fake_file_system.h"

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace tonquay::test {

/// Thrown by endProgram(). Not a std::exception, so that logic which catches those lets it through.
struct ProgramEnded {
    int status = 0;
};

/// Starts nothing: a command is recorded, and the first script whose `named` occurs in it, without regard to case,
/// tells what its child does. A command without a script cannot be started, as a missing program.
class FakeProcesses final : public platform::Processes {
public:
    struct Script {
        std::wstring named = {};
        std::chrono::milliseconds lasts{100};
        int exitCode = 0;
        std::function<void(const std::wstring& command)> atStart = {}; ///< e.g. makes the output file
        std::function<void(const std::wstring& command)> atEnd = {};
        /// The file that the child has as its output: it cannot be opened for writing while the child lives.
        std::function<std::wstring(const std::wstring& command)> output = {};
        /// A file that the child has not opened yet when it starts: it cannot be deleted for the first
        /// `opensInputAfter`.
        std::function<std::wstring(const std::wstring& command)> input = {};
        std::chrono::milliseconds opensInputAfter{10};
        bool endless = false; ///< lives until end()
    };
    struct Started {
        std::wstring command;
        WindowStyle style = WindowStyle::normal;
        std::wstring folder; ///< the current folder at its start
        Child child = 0;     ///< 0: could not be started
    };

    FakeProcesses(FakeEventLoop& loop, FakeFileSystem& files) : loop_(loop), files_(files) {}

    base::Result<Child> start(std::wstring_view command, WindowStyle style) override;
    void expectLongWork(Child child) override { longWork.push_back(child); }
    std::optional<int> exitCode(Child child) override;
    [[noreturn]] void endProgram(int status) override { throw ProgramEnded{status}; }

    /// Ends a living child now; its atEnd runs.
    void end(Child child, int exitCode);
    std::size_t living() const;

    std::vector<Script> scripts;
    std::vector<Started> started; ///< every command, also those that could not be started
    std::vector<Child> longWork;  ///< those that expectLongWork() was told of

private:
    struct Running {
        std::optional<int> code;
        std::function<void()> atEnd;
        std::wstring output;
    };

    FakeEventLoop& loop_;
    FakeFileSystem& files_;
    std::map<Child, Running> children_;
    Child last_ = 0;
};

}
