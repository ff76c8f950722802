#include "ui/ripdeck/ripdeck.h"

#include "base/text.h"
#include "host/system/places.h"
#include "host/system/recorded_folder.h"
#include "host/windows/screen_size.h"
#include "platform/file_system.h"

#include <cstdlib>

namespace tonquay::ui {

namespace {

/// The folder that is mounted as the program's. Without a record it is where a launcher would have made it; when that
/// is not there either the program ends by itself.
std::string folderToMount(const std::string& commandLine)
{
    if (commandLine.starts_with('/'))
        return commandLine;
    const std::string recorded = host::recordedProgramFolder();
    return recorded.empty() ? host::places().programFolder : recorded;
}

host::DriveSources drivesOfThisUser()
{
    host::DriveSources sources;
    if (const char* discs = std::getenv("TONQUAY_DISCS"))
        sources.images = host::openedImages(discs);
    return sources;
}

}

Ripdeck::Ripdeck()
    : host_(drivesOfThisUser()),
      dialogs_({.hostPath = [this](std::wstring_view path) { return host_.platform().files.hostPath(path); },
                .programPath = [this](std::string_view path) { return host_.platform().files.programPath(path); }}),
      help_([this](std::wstring_view path) { return host_.platform().files.hostPath(path); })
{}

base::Status Ripdeck::start(const std::string& commandLine)
{
    const bool named = commandLine.starts_with('/');
    const host::ScreenSize screen = host::screenSize();
    base::Status opened = host_.open({.programFolder = folderToMount(commandLine),
                                      .dialogs = &dialogs_,
                                      .help = &help_,
                                      .screenWidth = screen.width,
                                      .screenHeight = screen.height,
                                      .interrupt = [this] {
                                          if (program_)
                                              program_->forms().ripdeck().form.keyDown(controls::Key::escape);
                                      }});
    if (!opened)
        return opened;
    const platform::Platform platform = host_.platform();
    program_ = std::make_unique<app::Program>(platform);
    windows_ = std::make_unique<Windows>(program_->forms(), program_->state().theme, platform);
    program_->start(named ? std::wstring(platform::programFolder) : base::fromHostBytes(commandLine));
    return {};
}

}
