#include "ui/ripdeck/ripdeck.h"

#include "base/text.h"
#include "host/system/places.h"
#include "host/system/recorded_folder.h"
#include "host/windows/screen_size.h"
#include "platform/event_loop.h"
#include "platform/file_system.h"

#include <QStringList>

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
                                      .diagnose =
                                          [this](std::string_view area, std::string_view text) {
                                              if (auto* const loop = reportLoop_.load())
                                                  loop->post([this, area = std::string(area),
                                                              text = std::string(text)] { report_->line(area, text); });
                                          },
                                      .interrupt =
                                          [this] {
                                              if (program_)
                                                  program_->forms().ripdeck().form.keyDown(controls::Key::escape);
                                          },
                                      .decodeEnd =
                                          [this](const platform::DecodeReport& report) {
                                              if (report_)
                                                  report_->decodeEnded(report);
                                          }});
    if (!opened)
        return opened;
    const platform::Platform platform = host_.platform();
    program_ = std::make_unique<app::Program>(platform);
    windows_ = std::make_unique<Windows>(program_->forms(), program_->state().theme, platform);
    // For developers. The command line is no place for it: all of it is the program folder.
    if (std::getenv("TONQUAY_ENGINE_FORM") != nullptr)
        windows_->addEngineForm(program_->forms());
    makeReport();
    program_->start(named ? std::wstring(platform::programFolder) : base::fromHostBytes(commandLine));
    return {};
}

void Ripdeck::makeReport()
{
    const platform::Platform platform = host_.platform();
    report_ = std::make_unique<RunReport>(
        program_->forms().ripdeck(), platform.loop,
        RunReport::Questions{
            .folder = [this] { return host_.platform().files.hostPath(program_->state().run.destFolder); },
            .encodersAreAtWork = [this] { return program_->lateTags().pending(); },
            .tellNews = [this](const RunReport::Result& result) { showReport(result); }});
    reportLoop_ = &platform.loop;
}

void Ripdeck::showReport(const RunReport::Result& result)
{
    QStringList lines;
    for (const std::string& problem : result.problems)
        lines.append(QString::fromStdString(problem));
    windows_->main().setNotice(QString::fromStdString(result.text), lines.join('\n'), result.good);
}

}
