#pragma once

#include "host/drives/host_drives.h"
#include "platform/decode_report.h"
#include "platform/diagnostics.h"
#include "platform/discs.h"
#include "platform/machine_programs.h"
#include "platform/platform.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace tonquay::host {

/// Everything this system gives the program, in one place. One for a process, on the logic's thread.
///
/// The drives are there at once; the rest is made by open(), so that a look at a disc costs no more than that.
class RealHost {
public:
    struct Settings {
        /// Host path, mounted as C:\CDTONQUAY. Empty: a private one with the machine's programs, removed at the end.
        std::string programFolder = {};
        /// Host path of the Ogg adapter for a private folder; empty: the one that belongs to this program.
        std::string oggTool = {};
        std::function<void(std::string)> say = {}; ///< message boxes, one line each, where there are no dialogs
        platform::Dialogs* dialogs = nullptr;      ///< of a program with windows
        platform::HelpViewer* help = nullptr;      ///< likewise
        std::int32_t screenWidth = 1920;           ///< logical pixels
        std::int32_t screenHeight = 1080;
        /// Diagnostic lines, beside the log.
        std::function<void(std::string_view area, std::string_view text)> diagnose = {};
        std::function<void()> interrupt = {}; ///< Ctrl-C and the like, on the logic's thread
        std::function<void(const platform::DecodeReport&)> decodeEnd = {};
    };

    explicit RealHost(const DriveSources& drives);
    ~RealHost();
    RealHost(const RealHost&) = delete;
    RealHost& operator=(const RealHost&) = delete;

    platform::Discs& discs();

    /// Makes the platform. Fails when a private program folder cannot be made. To be called once.
    base::Status open(Settings settings);

    /// What open() has made.
    platform::Platform platform();

    /// What a private program folder leads to; a folder that was given is prepared by whoever gave it. After open().
    const platform::MachinePrograms& programs() const;

    /// Links a program of the user's into a private program folder (ProgramFolder::linkEncoder). After open().
    base::Result<std::string> linkEncoder(const std::string& program, const std::string& name);

    /// Host path of the file that started programs write to. After open().
    std::string programOutput() const;

    /// Ends the programs that were started through the platform and that still live, within a second. After open().
    void endChildren();

private:
    struct Services;

    std::unique_ptr<HostDriveSet> drives_;
    std::unique_ptr<platform::Discs> discs_;
    std::unique_ptr<Services> services_;
};

/// The discs that the user has opened as files, from TONQUAY_DISCS: image paths parted by colons.
std::vector<std::filesystem::path> openedImages(std::string_view variable);

}
