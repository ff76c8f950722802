#include "console/rip_command.h"

#include "app/program.h"
#include "base/text.h"
#include "console/encoder_choice.h"
#include "console/genre_byte.h"
#include "console/given_names.h"
#include "console/program_output.h"
#include "console/rip_plan.h"
#include "console/rip_session.h"
#include "console/rip_settings.h"
#include "console/run_processes.h"
#include "console/screen_text.h"
#include "console/track_part.h"
#include "disc/handover_file.h"
#include "disc/handover_writer.h"
#include "encode/encoder_kind.h"
#include "engine/extraction_to_wav.h"
#include "platform/diagnostics.h"
#include "platform/event_loop.h"
#include "platform/file_system.h"
#include "platform/processes.h"
#include "state/rip_settings_file.h"
#include "state/settings_text.h"
#include "state/suite_files.h"

#include <memory>
#include <thread>

namespace tonquay::console {

namespace {

constexpr std::wstring_view programFolder = L"C:\\CDTONQUAY";

ExitStatus refuse(Screen& screen, const std::string& problem)
{
    screen.complain("tonquay: " + shownBytes(problem));
    return ExitStatus::usage;
}

/// The user's saved settings, or the defaults with the music folder as the output folder.
state::RipSettings savedSettings(platform::Platform& platform, RunHost& host)
{
    const std::wstring path = state::inFolder(platform.files.programPath(host.savedSettingsFolder()), L"acdset.ini");
    const std::wstring music = platform.files.programPath(host.musicFolder());
    return state::parseRipSettings(state::settingsText(platform.files, platform.log, path).value_or(L""), music);
}

/// Where the user's own program has its program files, else the music folder.
std::wstring dataFolder(platform::Platform& platform, RunHost& host)
{
    state::Folders saved;
    saved.appFolder = platform.files.programPath(host.savedSettingsFolder());
    const std::wstring named = state::readDataFolder(platform.files, platform.log, saved);
    return platform.files.folderExists(named) ? named : platform.files.programPath(host.musicFolder());
}

/// What start-up finds in the program folder: settings, the way of reading, the data folder and the disc's names.
base::Status prepareProgramFolder(platform::Platform& platform, const state::RipSettings& settings,
                                  const std::wstring& dataFolder, const std::string& handOver)
{
    state::Folders folders;
    folders.appFolder = programFolder;
    state::writeDataFolder(platform.files, platform.log, folders, dataFolder);
    state::writeRipType(platform.files, platform.log, folders, settings.ripMethod == 4 ? 0 : 1);
    state::writeRipSettings(platform.files, platform.log, folders, settings);
    return platform.files.writeWhole(state::inFolder(programFolder, disc::handoverName), handOver);
}

/// A folder name with a double quote, say, would not come back from the settings file as it went in.
std::string whatCameBackWrong(const state::RipSettings& wanted, const state::RipSettings& taken,
                              platform::FileSystem& files)
{
    constexpr std::size_t driveRoot = 3;
    if (wanted.outputFolder != taken.outputFolder && wanted.outputFolder.size() != driveRoot)
        return files.hostPath(wanted.outputFolder) +
               ": files cannot be written to a folder of this name; choose one of UTF-8 letters, without double "
               "quotes, line ends and blanks at its ends";
    if (base::trim(wanted.encoderCmdLine) != base::trim(taken.encoderCmdLine))
        return "--encoder-options: double quotes and line ends cannot be handed on";
    return {};
}

/// The settings of the run, with the output folder and the encoder that it is to have.
base::Result<state::RipSettings> chooseSettings(Screen& screen, const RipOptions& options, Format format, RunHost& host,
                                                platform::Platform& platform)
{
    using base::Failure;
    const state::RipSettings saved = savedSettings(platform, host);
    RunPlaces places;
    if (options.output) {
        places.output = platform.files.programPath(*options.output);
        if (places.output.empty())
            return Failure{Failure::Kind::invalid, *options.output, "this folder cannot be reached"};
    }
    // Before an encoder is looked for: what the options lack is the better thing to hear of.
    if (auto sensible = settingsForRun(saved, options, places); !sensible)
        return sensible;
    const auto encoder = chooseEncoder(format, options.encoder, host, platform);
    if (!encoder)
        return encoder.failure();
    if (encoder->remark)
        screen.complain("tonquay: " + shownBytes(*encoder->remark));
    places.encoder = encoder->path;
    if (options.vbrQuality && encode::encoderKind(places.encoder) != encode::EncoderKind::lame)
        return Failure{Failure::Kind::invalid, "--vbr", "only LAME has this"};
    auto settings = settingsForRun(saved, options, places);
    if (settings && base::isBlank(settings->outputFolder))
        return Failure{Failure::Kind::invalid, {}, "no output folder is set; name one with --output"};
    return settings;
}

}

ExitStatus rip(Screen& screen, const RipOptions& options, RunHost& host, const platform::DriveDescription& drive,
               const platform::DiscTable& table)
{
    const std::string imagePath = drive.image ? drive.hostPath : std::string();
    const auto rows = options.tracks ? options.tracks->on(table.tracks) : allAudioTracks(table.tracks);
    if (!rows)
        return refuse(screen, base::describe(rows.failure()));
    const auto part = partOf(options, *rows, table.tracks);
    if (!part)
        return refuse(screen, base::describe(part.failure()));
    auto names = withGivenNames(table, options.given);
    if (!names)
        return refuse(screen, base::describe(names.failure()));

    std::unique_ptr<RipSession> session;
    RunListener listener;
    listener.say = [&screen](const std::string& line) { screen.complain("tonquay: " + shownBytes(line)); };
    listener.diagnose = [&screen, &session, verbose = options.verbose,
                         logic = std::this_thread::get_id()](std::string_view area, std::string_view text) {
        if (verbose)
            screen.complain(shownBytes(std::string(area) + ": " + std::string(text)));
        // Steps that are passed over speak on the logic's thread.
        const std::string lead = std::string(engine::extractionStep) + ": ";
        if (!session || std::this_thread::get_id() != logic)
            return;
        if (text.starts_with(lead))
            session->noteProblem(std::string(text.substr(lead.size())));
        else if (area == platform::AcdControl::refusedArea)
            session->noteProblem(std::string(text));
    };
    platform::Processes* ending = nullptr;
    listener.interrupt = [&screen, &session, &ending, &host] {
        if (session) {
            session->interrupt();
            return;
        }
        screen.complain("tonquay: broken off before the first track");
        if (ending == nullptr)
            return;
        host.endChildren();
        ending->endProgram(static_cast<int>(ExitStatus::incomplete));
    };
    listener.decodeEnd = [&session](const platform::DecodeReport& report) {
        if (session)
            session->decodeEnded(report);
    };
    auto opened = host.open(listener);
    if (!opened)
        return refuse(screen, base::describe(opened.failure()));
    platform::Platform platform = *opened;
    ending = &platform.processes;

    const Format format = formatOf(savedSettings(platform, host), options);
    auto settings = chooseSettings(screen, options, format, host, platform);
    if (!settings)
        return refuse(screen, base::describe(settings.failure()));
    settings->driveLetter = std::wstring(1, drive.letter);

    platform::DiscTable named = table;
    named.names = std::move(*names);
    const disc::HandOver handOver = disc::makeHandOver(named, drive.letter);
    for (const std::string& change : handOver.changes)
        platform.log.line("names", change);
    if (const auto prepared = prepareProgramFolder(platform, *settings, dataFolder(platform, host), handOver.bytes);
        !prepared)
        return refuse(screen, base::describe(prepared.failure()));

    RunProcesses processes(platform.processes, [&session] {
        if (session)
            session->breakOff("the program was ended");
    });
    app::Program program({platform.files, processes, platform.loop, platform.clock, platform.dialogs, platform.engine,
                          platform.acd, platform.settings, platform.system, platform.help, platform.log});
    program.start(programFolder);
    if (const auto wrong = whatCameBackWrong(*settings, program.state().settings, platform.files); !wrong.empty())
        return refuse(screen, wrong);
    if (options.method != Method::digital2 && program.state().path.ripEngineMode != 1) {
        screen.complain("tonquay: the disc cannot be read by this --method; leave it out, and clean the disc");
        return ExitStatus::noDisc;
    }
    RipPlan plan = makePlan(format, *rows, named, program.state().disc, program.state().settings, platform.files);
    if (*part) {
        plan.tracks.front().soundBytes = (*part)->bytes;
        want(**part, plan.tracks.front().row, program.state().partial);
    }
    if (plan.oneByOne) {
        platform.log.line("schedule", "This disc and encoder are encoded track by track");
        program.state().settings.encodeSingle = 1;
        program.state().settings.turboMode = 0;
    }
    std::vector<std::string> problems = sourceProblems(plan, imagePath);
    if (problems.empty())
        problems = problemsOf(plan, platform.files);
    if (!problems.empty()) {
        for (const std::string& problem : problems)
            refuse(screen, problem);
        return ExitStatus::usage;
    }

    if (const auto remark = genreRemark(program.state().disc.discGenre); remark && format == Format::mp3)
        screen.complain("tonquay: " + *remark);
    const std::unique_ptr<RipView> view = makeRipView(viewKind(options, screen), screen);
    ProgramOutput encoderOutput(screen, host.programOutput());
    const auto showing = options.verbose ? platform.loop.every(std::chrono::milliseconds{200},
                                                               [&encoderOutput] { encoderOutput.showNew(); })
                                         : nullptr;
    session = std::make_unique<RipSession>(program, platform, processes, host, *view, std::move(plan));
    const RunEnd end = session->run();
    session.reset();
    if (options.verbose)
        encoderOutput.showNew();
    return end.broken == 0 && end.left == 0 ? ExitStatus::good : ExitStatus::incomplete;
}

}
