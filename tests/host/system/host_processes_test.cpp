#include "host/system/host_processes.h"
#include "real_files.h"
#include "support/fake_diagnostics.h"
#include "support/processes_contract.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace tonquay;
using namespace std::chrono_literals;
namespace fs = std::filesystem;
using Style = platform::Processes::WindowStyle;

/// Scripts as encoders, in a temporary C:.
class HostProcesses : public ::testing::Test {
protected:
    HostProcesses()
    {
        script("home/program folder/report.exe", "for a in \"$@\"; do printf '[%s]' \"$a\"; done");
        EXPECT_TRUE(real.files().createFolder(L"C:\\Out"));
        EXPECT_TRUE(real.files().changeFolder(L"C:\\Out"));
    }

    void script(const std::string& name, const std::string& body)
    {
        fs::create_directories(fs::path(real.root / name).parent_path());
        test::writeHostFile(real.root / name, "#!/bin/sh\n" + body + '\n');
        fs::permissions(real.root / name, fs::perms(0755));
    }

    int runToEnd(std::wstring_view command)
    {
        const auto child = processes.start(command, Style::normal);
        if (!child)
            return -1;
        std::optional<int> code;
        for (const auto start = std::chrono::steady_clock::now();
             !(code = processes.exitCode(*child)) && std::chrono::steady_clock::now() - start < 10s;)
            loop.wait(1s);
        return code.value_or(-2);
    }

    std::string output() { return test::readHostFile(real.root / "log"); }

    test::RealFiles real;
    host::HostEventLoop loop;
    test::FakeDiagnostics log;
    host::EndActions endActions;
    host::HostProcesses processes{real.files(), loop,
                                  log,          real.held,
                                  endActions,   {real.root / "log", (real.root / "bin") + ":relative::/usr/bin"}};
};

TEST_F(HostProcesses, argumentsReachTheProgramInItsOwnForm)
{
    for (const char* name : {"b.wav", "A.WAV", "c.txt", "with blank.wav", "-delete"})
        test::writeHostFile((real.root / "Out/") + name, "");
    const std::string root = real.root.path();
    const struct {
        const char* what;
        std::wstring arguments;
        std::string got;
    } cases[] = {
        {"a drive path, looked up", L"\"c:\\OUT\\B.wav\" C:\\out\\new.mp3",
         '[' + root + "/Out/b.wav][" + root + "/Out/new.mp3]"},
        {"the program folder", L"C:\\CDTONQUAY\\x", '[' + root + "/home/program folder/x]"},
        {"a path inside an argument stays", L"-oC:\\Out\\x C:x", "[-oC:\\Out\\x][C:x]"},
        {"wildcards", L"-delete *.wav \"*.wav\"", "[-delete][A.WAV][b.wav][with blank.wav][*.wav]"},
        {"a wildcard for what is made", L"*.wav *.WAV", "[A.WAV][b.wav][with blank.wav][*.WAV]"},
        {"wildcards with a folder", L"C:\\out\\?.WAV", '[' + root + "/Out/A.WAV][" + root + "/Out/b.wav]"},
        {"wildcards without a match", L"*.mp3 no\\*.x", "[*.mp3][no\\*.x]"},
        {"a file like a switch", L"\"-DELETE\" -delete \"-x\" -t\"-delete\" \"-delete\\x\"",
         "[./-delete][-delete][-x][-t-delete][-delete\\x]"},
        {"such a file by a wildcard", L"-d*", "[./-delete]"},
        {"no shell reads it", L"$HOME ;ls `id` | 'a b' > x \"$(id)\"", "[$HOME][;ls][`id`][|]['a][b'][>][x][$(id)]"},
        {"text", L"-t\"Жук é\u266B\"", "[-tЖук é♫]"},
    };
    for (const auto& c : cases) {
        fs::remove(real.root / "log");
        EXPECT_EQ(runToEnd(L"report.exe " + c.arguments), 0) << c.what;
        EXPECT_EQ(output(), c.got) << c.what;
    }
}

TEST_F(HostProcesses, programsAreFoundWithoutRegardToCaseAndInOrder)
{
    script("bin/only path", "echo never");
    script("bin/tool", "echo path");
    script("bin/report.exe", "echo wrong");
    script("Out/Tool", "echo current");
    script("bin/seven", "exit 7");
    script("Tools dir/My Enc.exe", "echo blank");
    script("Tools dir/plain.txt", "");
    fs::permissions(real.root / "Tools dir/plain.txt", fs::perms(0644));
    const struct {
        const char* what;
        const wchar_t* command;
        int code;
        const char* out;
    } cases[] = {
        {"the current folder before PATH", L"TOOL", 0, "current\n"},
        {"the program folder before both", L"REPORT x", 0, "[x]"},
        {"a path with blanks", L"C:\\TOOLS DIR\\MY ENC.EXE -x", 0, "blank\n"},
        {"a path with blanks and no ending", L"C:\\TOOLS DIR\\MY ENC", 0, "blank\n"},
        {"on PATH, its status", L"SEVEN", 7, ""},
        {"not there", L"nothing.exe x", -1, ""},
        {"not executable", L"\"C:\\Tools dir\\plain.txt\"", -1, ""},
        {"a folder", L"C:\\Out", -1, ""},
        {"nothing", L"  ", -1, ""},
    };
    for (const auto& c : cases) {
        fs::remove(real.root / "log");
        EXPECT_EQ(runToEnd(c.command), c.code) << c.what;
        EXPECT_EQ(output(), c.out) << c.what;
    }
    EXPECT_TRUE(log.says("nothing.exe x: there is no such program"));
    EXPECT_TRUE(log.says("SEVEN: ended with status 7"));
}

TEST_F(HostProcesses, aChildHasItsOwnGroupNoInputTheCurrentFolderAndUtf8)
{
    script("bin/show", "echo $(ps -o pgid= -p $$) $$; readlink /proc/self/fd/0; pwd; echo $LC_ALL $LC_CTYPE $LANG "
                       "$LC_MESSAGES; ls /proc/self/fd | wc -l");
    const int leaked = open("/dev/null", O_RDONLY);
    setenv("LC_ALL", "de_DE.ISO-8859-1", 1);
    setenv("LANG", "C", 1);
    setenv("LC_MESSAGES", "fr_FR", 1);
    EXPECT_EQ(runToEnd(L"show"), 0);
    for (const char* variable : {"LC_ALL", "LANG", "LC_MESSAGES"})
        unsetenv(variable);
    close(leaked);
    std::istringstream lines(output());
    std::string group;
    std::string process;
    std::string rest;
    lines >> group >> process;
    EXPECT_EQ(group, process);
    EXPECT_NE(group, std::to_string(getpgrp()));
    std::getline(lines, rest);
    std::getline(lines, rest, '\0');
    // ls holds the folder that it lists besides the three.
    EXPECT_EQ(rest, "/dev/null\n" + real.root.path() + "/Out\nC.UTF-8 de_DE.ISO-8859-1\n4\n")
        << "in the user's language";
}

TEST_F(HostProcesses, theEndOfAChildWakesAWaitAndLeavesNoZombie)
{
    script("bin/nap", "sleep 0.1; exit 7");
    const auto child = processes.start(L"nap", Style::normal);
    ASSERT_TRUE(child);
    EXPECT_EQ(processes.exitCode(*child), std::nullopt);
    const auto start = std::chrono::steady_clock::now();
    loop.wait(10s);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "reaped before anybody asked";
    EXPECT_EQ(processes.exitCode(*child), 7);
    EXPECT_EQ(processes.exitCode(*child), 0) << "taken already";
    EXPECT_EQ(processes.exitCode(12345), 0) << "never started";
}

TEST_F(HostProcesses, longWorkHasLongTurnsAndKeepsItsNiceValue)
{
    const auto turnOf = [](pid_t process) {
        std::array<std::uint64_t, 6> scheduling{};
        syscall(SYS_sched_getattr, process, scheduling.data(), sizeof scheduling, 0);
        return scheduling[3]; // nanoseconds
    };
    const auto usual = turnOf(0);
    if (usual == 0)
        GTEST_SKIP() << "this kernel has no turns of one's own";
    script("bin/low", "echo $$ > pid; exec nice -n 7 sleep 30");
    const auto child = processes.start(L"low", Style::normal);
    ASSERT_TRUE(child);
    pid_t process = 0;
    for (int i = 0; i < 500 && (process == 0 || getpriority(PRIO_PROCESS, static_cast<id_t>(process)) != 7); ++i) {
        loop.wait(10ms);
        std::istringstream(test::readHostFile(real.root / "Out/pid")) >> process;
    }
    ASSERT_NE(process, 0);
    EXPECT_EQ(turnOf(process), usual);
    processes.expectLongWork(*child);
    EXPECT_EQ(turnOf(process), 20'000'000u);
    EXPECT_EQ(getpriority(PRIO_PROCESS, static_cast<id_t>(process)), 7);
    EXPECT_EQ(turnOf(0), usual) << "ours stay short";
    processes.endChildren();
    processes.expectLongWork(*child);
}

TEST_F(HostProcesses, aSignalCountsAs128PlusItsNumber)
{
    script("bin/dies", "kill -SEGV $$");
    EXPECT_EQ(runToEnd(L"dies"), 128 + SIGSEGV);
    EXPECT_TRUE(log.says("dies: ended by signal 11"));
}

TEST_F(HostProcesses, filesOfALivingChildAreHeld)
{
    script("bin/enc", "sleep 0.1; exec 3<\"$2\"; echo started >> started; while [ ! -e go ]; do sleep 0.01; done");
    test::writeHostFile(real.root / "Out/in.wav", "sound");
    const auto child = processes.start(L"enc -x in.wav \"C:\\Out\\out.mp3\"", Style::normal);
    ASSERT_TRUE(child);
    auto& files = real.files();
    EXPECT_FALSE(files.openBinary(L"C:\\Out\\out.mp3"));
    EXPECT_FALSE(files.writeWhole(L"OUT.MP3", "x"));
    EXPECT_FALSE(files.copy(L"in.wav", L"out.mp3"));
    EXPECT_TRUE(files.openBinary(L"other.mp3"));
    for (int i = 0; i < 500 && !files.fileExists(L"started"); ++i)
        loop.wait(10ms);
    EXPECT_FALSE(files.openBinary(L"in.wav")) << "it reads it";
    EXPECT_TRUE(files.remove(L"in.wav")) << "opened: it keeps its contents";
    test::writeHostFile(real.root / "Out/go", "");
    while (!processes.exitCode(*child))
        loop.wait(10ms);
    EXPECT_TRUE(files.openBinary(L"out.mp3"));
}

TEST_F(HostProcesses, aFileThatAChildHasNotOpenedYetGoesAtItsEnd)
{
    script("bin/enc", "while [ ! -e go ]; do sleep 0.01; done; cp in.wav copy.wav");
    auto& files = real.files();
    for (const bool replaced : {false, true}) {
        test::writeHostFile(real.root / "Out/in.wav", "sound");
        const auto child = processes.start(L"enc In.WAV", Style::normal);
        ASSERT_TRUE(child);
        EXPECT_TRUE(files.remove(L"IN.wav"));
        EXPECT_TRUE(files.fileExists(L"in.wav")) << "it would be lost to the child";
        if (replaced) {
            std::filesystem::rename(real.root / "Out/in.wav", real.root / "Out/moved");
            test::writeHostFile(real.root / "Out/in.wav", "other");
        }
        test::writeHostFile(real.root / "Out/go", "");
        while (!processes.exitCode(*child))
            loop.wait(10ms);
        EXPECT_EQ(test::readHostFile(real.root / "Out/copy.wav"), replaced ? "other" : "sound");
        EXPECT_EQ(files.fileExists(L"in.wav"), replaced);
        EXPECT_TRUE(files.remove(L"go"));
    }
}

TEST_F(HostProcesses, aFileThatNoCommandNamesIsHeldWhileAChildOrItsOwnChildWritesIt)
{
    const struct {
        const char* what;
        const char* body;
    } cases[] = {
        {"the child", "exec 3>in.ogg; echo > started; while [ ! -e go ]; do sleep 0.01; done"},
        {"its child", "sh -c 'exec 3>in.ogg; echo > started; while [ ! -e go ]; do sleep 0.01; done'; exit 0"},
    };
    auto& files = real.files();
    for (const auto& c : cases) {
        script("bin/enc", c.body);
        test::writeHostFile(real.root / "Out/in.wav", "sound");
        const auto child = processes.start(L"enc \"in.wav\"", Style::normal);
        ASSERT_TRUE(child);
        for (int i = 0; i < 500 && !files.fileExists(L"started"); ++i)
            loop.wait(10ms);
        EXPECT_FALSE(files.openBinary(L"C:\\Out\\in.ogg")) << c.what;
        EXPECT_FALSE(files.writeWhole(L"IN.OGG", "x")) << c.what;
        test::writeHostFile(real.root / "Out/go", "");
        while (!processes.exitCode(*child))
            loop.wait(10ms);
        EXPECT_TRUE(files.openBinary(L"in.ogg")) << c.what;
        for (const wchar_t* left : {L"go", L"started"})
            EXPECT_TRUE(files.remove(left));
    }
}

TEST_F(HostProcesses, aProgramThatCannotBeRunSaysWhy)
{
    script("bin/data", "");
    test::writeHostFile(real.root / "bin/data", "no program");
    script("bin/lost", "");
    test::writeHostFile(real.root / "bin/lost", "#! /no/such/shell -x\necho\n");
    script("bin/alien", "");
    std::string program = test::readHostFile("/bin/true");
    ASSERT_NE(program.find("/ld-linux"), std::string::npos);
    program.replace(program.find("/ld-linux"), 9, "/ld-other");
    test::writeHostFile(real.root / "bin/alien", program);
    using Kind = base::Failure::Kind;
    const struct {
        const wchar_t* command;
        Kind kind;
        const char* text;
    } cases[] = {
        {L"data \"x\"", Kind::invalid, "data \"x\": is no program that this system can run"},
        {L"lost", Kind::unavailable, "lost: cannot be run: its interpreter is missing (/no/such/shell)"},
        {L"alien", Kind::unavailable, "alien: cannot be run: its loader is missing, it may be for another system"},
    };
    for (const auto& c : cases) {
        const auto child = processes.start(c.command, Style::normal);
        ASSERT_FALSE(child) << c.text;
        EXPECT_EQ(child.failure().kind, c.kind) << c.text;
        EXPECT_TRUE(log.says(c.text)) << base::describe(child.failure());
    }
}

/// Not there, or ended and waiting for whoever took it over to look.
bool isOver(const std::string& process)
{
    const std::string status = test::readHostFile("/proc/" + process + "/stat");
    return status.empty() || status.find(") Z") != std::string::npos;
}

TEST_F(HostProcesses, childrenAreAskedToEndAndThenKilledWithTheirOwnChildren)
{
    script("bin/mild", "sleep 30 & echo $! >> pids; echo $$ >> pids; wait");
    script("bin/parting", "trap 'echo bye > said; exit 0' TERM; sh -c 'trap \"\" TERM; echo $$ >> pids; sleep 30' &\n"
                          "echo $$ >> pids; wait");
    script("bin/stubborn", "trap '' TERM; sleep 30 & echo $! >> pids; echo $$ >> pids; while :; do sleep 30; done");
    const auto pids = [&] {
        std::istringstream text(test::readHostFile(real.root / "Out/pids"));
        return std::vector<std::string>(std::istream_iterator<std::string>(text), {});
    };
    const struct {
        const wchar_t* command;
        std::chrono::milliseconds grace;
        int code;
    } cases[] = {
        {L"mild", 20s, 128 + SIGTERM},
        {L"parting", 20s, 0},
        {L"stubborn", 20ms, 128 + SIGKILL},
    };
    for (const auto& c : cases) {
        const host::HostProcesses::Settings settings{real.root / "log", real.root / "bin:/usr/bin", c.grace};
        host::HostProcesses own(real.files(), loop, log, real.held, endActions, settings);
        own.endChildren();
        const auto child = own.start(c.command, Style::normal);
        const auto other = own.start(c.command, Style::normal);
        ASSERT_TRUE(child && other);
        for (int i = 0; i < 500 && pids().size() < 4; ++i)
            loop.wait(10ms);
        ASSERT_EQ(pids().size(), 4u);

        const auto start = std::chrono::steady_clock::now();
        own.endChildren();
        EXPECT_LT(std::chrono::steady_clock::now() - start, 15s) << "no longer than they take";
        for (const auto& ended : {*child, *other}) {
            std::optional<int> code;
            for (int i = 0; i < 500 && !(code = own.exitCode(ended)); ++i)
                loop.wait(10ms);
            EXPECT_EQ(code, c.code);
        }
        for (const std::string& pid : pids()) {
            for (int i = 0; i < 5000 && !isOver(pid); ++i)
                usleep(1000);
            EXPECT_TRUE(isOver(pid)) << pid << " of " << c.code;
        }
        fs::remove(real.root / "Out/pids");
    }
    EXPECT_EQ(test::readHostFile(real.root / "Out/said"), "bye\n");
}

TEST_F(HostProcesses, theEndOfTheProgramRunsItsEndActionsAndLeavesChildrenAlive)
{
    script("bin/long", "echo $$ > pid; exec sleep 30");
    const pid_t program = fork();
    if (program == 0) {
        host::HostEventLoop ownLoop;
        endActions.add([&] { test::writeHostFile(real.root / "first", ""); });
        endActions.add(
            [&] { test::writeHostFile(real.root / "second", fs::exists(real.root / "first") ? "bad" : ""); });
        static_cast<void>(processes.start(L"long", Style::normal));
        while (test::readHostFile(real.root / "Out/pid").empty())
            usleep(1000);
        processes.endProgram(5);
    }
    int status = 0;
    waitpid(program, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 5);
    EXPECT_TRUE(fs::exists(real.root / "first"));
    EXPECT_EQ(test::readHostFile(real.root / "second"), "") << "the youngest first";
    const pid_t child = std::stoi(test::readHostFile(real.root / "Out/pid"));
    EXPECT_EQ(kill(child, 0), 0);
    kill(child, SIGKILL);
}

}

namespace {

struct RealWorld {
    RealWorld()
    {
        test::writeHostFile(real.root / "enc.exe", "#!/bin/sh\nsleep 0.2\nexit 3\n");
        fs::permissions(real.root / "enc.exe", fs::perms(0755));
    }
    platform::Processes& processes() { return started; }
    platform::EventLoop& loop() { return dispatcher; }
    platform::FileSystem& files() { return real.files(); }
    std::wstring command() { return L"C:\\ENC.EXE \"C:\\out.mp3\""; }

    test::RealFiles real;
    host::HostEventLoop dispatcher;
    test::FakeDiagnostics log;
    host::EndActions end;
    host::HostProcesses started{real.files(), dispatcher, log, real.held, end, {"/dev/null", ""}};
};

}

namespace tonquay::test {
INSTANTIATE_TYPED_TEST_SUITE_P(Real, ProcessesContract, RealWorld);
}
