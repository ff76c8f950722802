#include "host/real/real_host.h"

#include "base/text.h"
#include "host/acd/host_acd_control.h"
#include "host/audio/host_audio_engine.h"
#include "host/drives/host_discs.h"
#include "host/mci/host_mci.h"
#include "host/posix/program_search.h"
#include "host/real/private_folder.h"
#include "host/system/end_actions.h"
#include "host/system/host_clock.h"
#include "host/system/host_diagnostics.h"
#include "host/system/host_event_loop.h"
#include "host/system/host_file_system.h"
#include "host/system/host_processes.h"
#include "host/system/host_settings_store.h"
#include "host/system/host_system_info.h"
#include "host/system/interrupt.h"
#include "host/system/line_dialogs.h"
#include "host/system/no_help.h"
#include "host/system/places.h"
#include "host/system/program_folder.h"
#include "host/wma/host_wma_encoder.h"

#include <optional>

namespace tonquay::host {

namespace {

std::string programOutputIn(const Places& places)
{
    return places.logFile + ".programs";
}

/// How many trackNN.cda names a drive shows: none without an audio disc.
int discTracks(DriveSet& drives, wchar_t letter)
{
    for (std::size_t i = 0; i < drives.count(); ++i)
        if (driveLetter(i) == letter)
            return static_cast<int>(drives.at(i).tracks().size());
    return -1;
}

}

// In the order of need: what is made first is used by what follows.
struct RealHost::Services {
    Places places;
    std::optional<PrivateFolder> privateFolder;
    EndActions endActions;
    HostDiagnostics log;
    HostClock clock;
    HostEventLoop loop;
    HeldFiles held;
    HostFileSystem files;
    HostProcesses processes;
    LineDialogs lines;
    platform::Dialogs& dialogs;
    NoHelp noHelp;
    platform::HelpViewer& help;
    HostSettingsStore settings;
    HostSystemInfo system;
    HostAudioEngine engine;
    HostWmaEncoder wma;
    HostAcdControl acd;
    HostMci mci;
    std::optional<Interrupt> interrupt;
    platform::MachinePrograms programs;

    Services(HostDriveSet& drives, Settings given, Places found, std::optional<PrivateFolder> ownFolder)
        : places(std::move(found)),
          privateFolder(std::move(ownFolder)),
          log(places.logFile, given.diagnose),
          files({.root = "/",
                 .programFolder = privateFolder ? privateFolder->path() : given.programFolder,
                 .discTracks = [&drives](wchar_t letter) { return discTracks(drives, letter); }},
                held),
          processes(files, loop, log, held, endActions,
                    {.outputFile = programOutputIn(places), .searchPath = searchPath()}),
          lines(std::move(given.say)),
          dialogs(given.dialogs != nullptr ? *given.dialogs : lines),
          help(given.help != nullptr ? *given.help : noHelp),
          settings(places.settingsFile, log),
          system(
              files, log, endActions,
              {.tempFolder = places.tempFolder, .screenWidth = given.screenWidth, .screenHeight = given.screenHeight}),
          engine(drives, loop, log),
          wma(files, log),
          acd(drives, files, loop, log),
          mci(drives, files, loop, log,
              {.folder = places.tempFolder, .selectedDrive = [this] { return acd.selectedDrive(); }})
    {
        if (privateFolder) {
            endActions.add([this] { privateFolder->remove(); });
            preparePrivateFolder(given.oggTool.empty() ? oggToolOfThisProgram() : given.oggTool);
        }
        endActions.add([&drives] { drives.unlockAll(); });
        endActions.add([this] { wma.closeAll(); });
        if (given.decodeEnd) {
            engine.onDecodeEnd(given.decodeEnd);
            acd.onReadEnd(std::move(given.decodeEnd));
        }
        if (given.interrupt)
            interrupt.emplace(loop, std::move(given.interrupt));
    }

    void preparePrivateFolder(const std::string& oggTool)
    {
        programs = ProgramFolder({privateFolder->path(), searchPath(), oggTool}).refresh();
        for (const base::Status& program : {programs.lame, programs.oggenc, programs.vorbiscomment})
            if (!program && program.failure().kind != base::Failure::Kind::notFound)
                log.line("programs", base::describe(program.failure()));
    }
};

RealHost::RealHost(const DriveSources& drives)
    : drives_(driveSet(drives)),
      discs_(std::make_unique<HostDiscs>(*drives_))
{}

RealHost::~RealHost()
{
    services_.reset();
    drives_->unlockAll();
}

platform::Discs& RealHost::discs()
{
    return *discs_;
}

base::Status RealHost::open(Settings settings)
{
    Places found = places();
    std::optional<PrivateFolder> ownFolder;
    if (settings.programFolder.empty()) {
        auto made = PrivateFolder::make(found.tempFolder);
        if (!made)
            return made.failure();
        ownFolder.emplace(std::move(*made));
    }
    services_ = std::make_unique<Services>(*drives_, std::move(settings), std::move(found), std::move(ownFolder));
    return {};
}

platform::Platform RealHost::platform()
{
    Services& s = *services_;
    return {s.files, s.processes, s.loop,     s.clock,  s.dialogs, s.engine, s.wma,
            s.acd,   s.mci,       s.settings, s.system, s.help,    s.log};
}

const platform::MachinePrograms& RealHost::programs() const
{
    return services_->programs;
}

base::Result<std::string> RealHost::linkEncoder(const std::string& program, const std::string& name)
{
    const std::optional<PrivateFolder>& folder = services_->privateFolder;
    if (!folder)
        return base::Failure{base::Failure::Kind::refused, program, "only a private program folder takes links"};
    return ProgramFolder({.folder = folder->path(), .searchPath = {}, .oggTool = {}}).linkEncoder(program, name);
}

std::string RealHost::programOutput() const
{
    return programOutputIn(services_->places);
}

void RealHost::endChildren()
{
    services_->processes.endChildren();
}

std::vector<std::filesystem::path> openedImages(std::string_view variable)
{
    std::vector<std::filesystem::path> images;
    while (!variable.empty()) {
        const std::string_view path = variable.substr(0, variable.find(':'));
        variable.remove_prefix(std::min(path.size() + 1, variable.size()));
        if (!path.empty())
            images.emplace_back(std::string(path));
    }
    return images;
}

}
