#include "base/text.h"
#include "host/drives/host_discs.h"
#include "host/posix/program_search.h"
#include "host/real/real_host.h"
#include "host/system/music_folder.h"
#include "host/system/places.h"
#include "host/system/program_folder.h"
#include "host/system/recorded_folder.h"
#include "host/windows/window_dialogs.h"
#include "launcher/launcher_window.h"
#include "platform/diagnostics.h"
#include "platform/file_system.h"
#include "ui/skin/skin.h"

#include <QApplication>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <filesystem>

using namespace tonquay;

namespace {

constexpr const char* discsVariable = "TONQUAY_DISCS";

/// The drives of this machine behind the images that were opened.
class HostShelf final : public launcher::Shelf {
public:
    /// Waits that long for drives that spin up.
    explicit HostShelf(std::chrono::milliseconds patience)
    {
        if (const char* discs = std::getenv(discsVariable))
            images_ = host::openedImages(discs);
        takeStock(patience);
    }

    platform::Discs& discs() override { return *discs_; }

    base::Status open(const std::string& image) override
    {
        using base::Failure;
        std::error_code error;
        const std::filesystem::path path = std::filesystem::absolute(image, error);
        // Images travel from program to program as one list, parted by colons.
        if (path.string().find(':') != std::string::npos)
            return Failure{Failure::Kind::invalid, image,
                           "an image with a colon in its path cannot be opened; give it another name"};
        if (std::ranges::find(images_, path) != images_.end())
            return {};
        if (const auto disc = host::openImage(path); !disc)
            return disc.failure();
        images_.push_back(path);
        tellOthers();
        takeStock(std::chrono::milliseconds{0});
        return {};
    }

private:
    void takeStock(std::chrono::milliseconds patience)
    {
        discs_.reset();
        drives_ = host::driveSet({.images = images_, .patience = patience});
        discs_ = std::make_unique<host::HostDiscs>(*drives_);
    }

    /// The ripper, and the launcher that it starts in turn, know the images by the environment.
    void tellOthers() const
    {
        std::string list;
        for (const std::filesystem::path& image : images_)
            list += (list.empty() ? "" : ":") + image.string();
        setenv(discsVariable, list.c_str(), 1);
    }

    std::vector<std::filesystem::path> images_;
    std::unique_ptr<host::HostDriveSet> drives_;
    std::unique_ptr<host::HostDiscs> discs_;
};

std::string mixerFile()
{
    constexpr std::array mixers{"pavucontrol", "pavucontrol-qt", "pwvucontrol",     "kmix",
                                "xfce4-mixer", "qasmixer",       "gnome-alsamixer", "mate-volume-control"};
    for (const char* mixer : mixers)
        if (const auto found = host::programsOnPath(mixer, host::searchPath()); !found.empty())
            return found.front();
    return {};
}

launcher::Machine prepareMachine(const host::Places& places, const platform::Platform& platform)
{
    const host::ProgramFolder folder(
        {.folder = places.programFolder, .searchPath = host::searchPath(), .oggTool = host::oggToolOfThisProgram()});
    const platform::MachinePrograms programs = folder.refresh();
    passOver(platform.log, folder.linkLauncher(host::ownProgramFile()), "Link the launcher");
    passOver(platform.log, folder.linkUtility(host::siblingProgram("tqutil")), "Link the tag utility");
    passOver(platform.log, folder.linkHelp(host::helpOfThisProgram()), "Link the help");
    host::recordProgramFolder(places.programFolder);

    const std::string music = host::musicFolder();
    const auto programPath = [&](const std::string& path) {
        return path.empty() ? std::wstring() : platform.files.programPath(path);
    };
    return {.programFolder = std::wstring(platform::programFolder),
            .keptNamesFolder = host::makeFolders(places.discNames) ? programPath(places.discNames) : std::wstring(),
            .ripper = programPath(host::siblingProgram("ripdeck")),
            .musicFolder = !music.empty() && host::makeFolders(music) ? programPath(music) : std::wstring(),
            .mixer = programPath(mixerFile()),
            .programs = programs};
}

/// Starts the ripper without a window. What is in the way is told in one.
base::Status startUnseen(launcher::LaunchDesk& desk, launcher::Shelf& shelf)
{
    const auto drive = desk.choose(shelf.discs().drives());
    if (!drive)
        return base::Failure{base::Failure::Kind::notFound, {}, "No drive holds an audio disc."};
    const auto disc = desk.look(shelf.discs(), *drive);
    if (!disc)
        return disc.failure();
    return desk.startRipper(*disc, disc->names);
}

}

int main(int count, char** words)
{
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGCHLD, SIG_DFL);
    QApplication application(count, words);
    ui::dressApplication(application);

    const host::Places places = host::places();
    host::makeFolders(places.programFolder);
    host::RealHost real({.images = {}, .machine = false});
    host::WindowDialogs dialogs(
        {.hostPath = [&real](std::wstring_view path) { return real.platform().files.hostPath(path); },
         .programPath = [&real](std::string_view path) { return real.platform().files.programPath(path); }});
    if (const base::Status opened = real.open({.programFolder = places.programFolder, .dialogs = &dialogs}); !opened) {
        dialogs.messageBox(L"CD-Tonquay", base::fromHostBytes(base::describe(opened.failure())),
                           platform::Dialogs::Icon::stop, platform::Dialogs::Buttons::ok);
        return 2;
    }
    const platform::Platform platform = real.platform();
    launcher::LaunchDesk desk(platform, prepareMachine(places, platform));
    desk.writeFirstSettings();
    std::string problem;
    std::vector<std::string> images(words + std::min(count, 1), words + count);
    const bool unseen = images.size() == 1 && base::sameText(base::fromHostBytes(images.front()), L"RUNRIPPER");
    // A window shows a drive that spins up as what it is, and looks again.
    HostShelf shelf(std::chrono::seconds{unseen ? 5 : 0});
    if (unseen) {
        images.clear();
        const base::Status started = startUnseen(desk, shelf);
        if (started)
            return 0;
        problem = base::describe(started.failure());
    }
    launcher::LauncherWindow window(desk, shelf);
    for (const std::string& image : images)
        window.openImage(image);
    if (!problem.empty())
        window.tell(problem);
    window.finished = [&application] { QApplication::quit(); };
    window.show();
    return QApplication::exec();
}
