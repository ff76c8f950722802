#include "base/text.h"
#include "host/system/held_files.h"
#include "host/system/host_clock.h"
#include "host/system/host_diagnostics.h"
#include "host/system/host_file_system.h"
#include "host/system/places.h"
#include "host/tags/id3v2_reader.h"
#include "host/windows/window_dialogs.h"
#include "ui/skin/skin.h"
#include "utility/arguments.h"
#include "utility/tag_window.h"

#include <QApplication>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <unistd.h>
#include <vector>

using namespace tonquay;

namespace {

/// What this program needs of the host: files, and somewhere to leave a line. No drive is opened for it.
struct Host {
    host::Places places = host::places();
    host::HostDiagnostics log{places.logFile};
    host::HostClock clock;
    host::HeldFiles held;
    host::HostFileSystem files{
        {.root = "/", .programFolder = places.programFolder, .discTracks = [](wchar_t) { return -1; }}, held};
    host::WindowDialogs dialogs{{.hostPath = [this](std::wstring_view path) { return files.hostPath(path); },
                                 .programPath = [this](std::string_view path) { return files.programPath(path); }}};
};

/// Whoever handed a file over takes it to be in use as long as the program runs that got it, and would not write a tag
/// of its own into it as long as this window is open. So that program ends here, and its copy has the window.
void leaveStarter()
{
    const pid_t copy = fork();
    if (copy > 0)
        _exit(0);
    if (copy == 0)
        setsid();
}

}

int main(int count, char** words)
{
    const std::vector<std::string_view> given(words + std::min(count, 1), words + count);
    const utility::Arguments arguments = utility::readArguments(given);
    if (!arguments.problem.empty()) {
        std::fprintf(stderr, "tqutil: %s\n%s", arguments.problem.c_str(), utility::usage.data());
        return 2;
    }
    if (arguments.wish != utility::Arguments::Wish::window) {
        std::fputs(arguments.wish == utility::Arguments::Wish::help ? utility::usage.data()
                                                                    : "tqutil " TONQUAY_VERSION "\n",
                   stdout);
        return 0;
    }
    if (arguments.handedOver)
        leaveStarter();
    std::signal(SIGPIPE, SIG_IGN);
    int own = 1;
    QApplication application(own, words);
    ui::dressApplication(application);

    Host host;
    std::error_code error;
    const std::string folder = std::filesystem::current_path(error).string();
    utility::TagDesk desk({.files = host.files,
                           .log = host.log,
                           .clock = host.clock,
                           .readContents = host::readId3v2Contents,
                           .startFolder = folder.empty() ? std::wstring(L"C:\\") : host.files.programPath(folder)},
                          host.dialogs);
    utility::TagWindow window(desk);
    window.show();
    QTimer::singleShot(0, &window, [&] {
        if (arguments.file.empty())
            desk.chooseFile();
        else
            desk.openHost(arguments.file);
        window.takeOver();
    });
    return QApplication::exec();
}
