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
#include "engine/track_stream.h"
#include "platform/diagnostics.h"
#include "platform/event_loop.h"
#include "platform/file_system.h"
#include "platform/mci.h"
#include "platform/processes.h"
#include "platform/wma_encoder.h"
#include "state/rip_settings_file.h"
#include "state/settings_text.h"
#include "state/suite_files.h"

#include <fmt/format.h>

#include <memory>
#include <thread>

namespace tonquay::console {

namespace {

ExitStatus refuse(Screen& screen, const std::string& problem)
{
    screen.complain("tonquay: " + shownBytes(problem));
    return ExitStatus::usage;
}

/// The user's saved settings, or the defaults with the music folder as the output folder.
state::RipSettings savedSettings(platform::Platform& platform, RunHost& host)
{
    const std::wstring folder = platform.files.programPath(host.savedSettingsFolder());
    return state::savedRipSettings(platform.files, platform.log, folder,
                                   platform.files.programPath(host.musicFolder()));
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
    folders.appFolder = platform::programFolder;
    state::writeDataFolder(platform.files, platform.log, folders, dataFolder);
    state::writeRipType(platform.files, platform.log, folders, settings.ripMethod == state::engineMethod ? 0 : 1);
    state::writeRipSettings(platform.files, platform.log, folders, settings);
    return platform.files.writeWhole(state::inFolder(platform::programFolder, disc::handoverName), handOver);
}

/// Whether the program has taken what it was given: a folder name with a double quote, say, would not come back from
/// the settings file as it went in.
base::Status cameBackRight(const state::RipSettings& wanted, const state::RipSettings& taken,
                           platform::FileSystem& files)
{
    using base::Failure;
    constexpr std::size_t driveRoot = 3;
    if (wanted.outputFolder != taken.outputFolder && wanted.outputFolder.size() != driveRoot)
        return Failure{Failure::Kind::invalid, files.hostPath(wanted.outputFolder),
                       "files cannot be written to a folder of this name; choose one of UTF-8 letters, without double "
                       "quotes, line ends and blanks at its ends"};
    if (base::trim(wanted.encoderCmdLine) != base::trim(taken.encoderCmdLine))
        return Failure{Failure::Kind::invalid, "--encoder-options", "double quotes and line ends cannot be handed on"};
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

/// One `tonquay rip`, from its options to its exit status. A step that fails says why; the ones behind it are left out.
class RipCommand {
public:
    RipCommand(Screen& screen, const RipOptions& options, RunHost& host, const platform::DriveDescription& drive,
               const platform::DiscTable& table)
        : screen_(screen),
          options_(options),
          host_(host),
          drive_(drive),
          table_(table)
    {}

    ExitStatus run();

private:
    base::Status readOptions();
    base::Status openHost();
    RunListener listener();
    void noteStep(std::string_view area, std::string_view text);
    void interrupted();
    base::Status prepareFolder();
    base::Status startProgram();
    bool methodIsThere() const;
    void planRun();
    std::vector<std::string> problems() const;
    ExitStatus carryOut();

    Screen& screen_;
    const RipOptions& options_;
    RunHost& host_;
    const platform::DriveDescription& drive_;
    const platform::DiscTable& table_;

    std::vector<std::size_t> rows_; ///< places in the table, from 0
    std::optional<TrackPart> part_;
    platform::DiscTable named_; ///< the disc with the names of the command line
    Format format_ = Format::mp3;
    state::RipSettings settings_;
    std::optional<platform::Platform> platform_;
    std::unique_ptr<RunProcesses> processes_;
    std::unique_ptr<app::Program> program_;
    RipPlan plan_;
    std::unique_ptr<RipSession> session_;
};

ExitStatus RipCommand::run()
{
    for (const auto step :
         {&RipCommand::readOptions, &RipCommand::openHost, &RipCommand::prepareFolder, &RipCommand::startProgram})
        if (const base::Status done = (this->*step)(); !done)
            return refuse(screen_, base::describe(done.failure()));
    if (!methodIsThere()) {
        screen_.complain("tonquay: the disc cannot be read by this --method; leave it out, and clean the disc");
        return ExitStatus::noDisc;
    }
    planRun();
    const std::vector<std::string> found = problems();
    for (const std::string& problem : found)
        refuse(screen_, problem);
    return found.empty() ? carryOut() : ExitStatus::usage;
}

base::Status RipCommand::readOptions()
{
    auto rows = options_.tracks ? options_.tracks->on(table_.tracks) : allAudioTracks(table_.tracks);
    if (!rows)
        return rows.failure();
    rows_ = std::move(*rows);
    auto part = partOf(options_, rows_, table_.tracks);
    if (!part)
        return part.failure();
    part_ = *part;
    auto names = withGivenNames(table_, options_.given);
    if (!names)
        return names.failure();
    named_ = table_;
    named_.names = std::move(*names);
    return {};
}

base::Status RipCommand::openHost()
{
    auto opened = host_.open(listener());
    if (!opened)
        return opened.failure();
    platform_.emplace(*opened);
    return {};
}

RunListener RipCommand::listener()
{
    return {.say = [this](const std::string& line) { screen_.complain("tonquay: " + shownBytes(line)); },
            .diagnose =
                [this, logic = std::this_thread::get_id()](std::string_view area, std::string_view text) {
                    if (options_.verbose)
                        screen_.complain(shownBytes(std::string(area) + ": " + std::string(text)));
                    // Steps that are passed over speak on the logic's thread.
                    if (std::this_thread::get_id() == logic)
                        noteStep(area, text);
                },
            .interrupt = [this] { interrupted(); },
            .decodeEnd =
                [this](const platform::DecodeReport& report) {
                    if (session_)
                        session_->decodeEnded(report);
                }};
}

/// What the verdict on the track in hand is to tell.
void RipCommand::noteStep(std::string_view area, std::string_view text)
{
    const std::string lead = std::string(engine::extractionStep) + ": ";
    if (!session_)
        return;
    if (text.starts_with(lead))
        session_->noteProblem(std::string(text.substr(lead.size())));
    else if (area == platform::AcdControl::refusedArea || area == platform::WmaEncoder::troubleArea ||
             area == platform::Mci::troubleArea)
        session_->noteProblem(std::string(text));
    else if (area == platform::Mci::sourceArea)
        session_->noteSource(std::string(text));
}

void RipCommand::interrupted()
{
    if (session_) {
        session_->interrupt();
        return;
    }
    screen_.complain("tonquay: broken off before the first track");
    if (!platform_)
        return;
    host_.endChildren();
    platform_->processes.endProgram(static_cast<int>(ExitStatus::incomplete));
}

base::Status RipCommand::prepareFolder()
{
    format_ = formatOf(savedSettings(*platform_, host_), options_);
    auto settings = chooseSettings(screen_, options_, format_, host_, *platform_);
    if (!settings)
        return settings.failure();
    settings_ = std::move(*settings);
    settings_.driveLetter = std::wstring(1, drive_.letter);

    const disc::HandOver handOver = disc::makeHandOver(named_, drive_.letter);
    for (const std::string& change : handOver.changes)
        platform_->log.line("names", change);
    return prepareProgramFolder(*platform_, settings_, dataFolder(*platform_, host_), handOver.bytes);
}

base::Status RipCommand::startProgram()
{
    processes_ = std::make_unique<RunProcesses>(platform_->processes, [this] {
        if (session_)
            session_->breakOff("the program was ended");
    });
    program_ = std::make_unique<app::Program>(platform_->with(*processes_));
    program_->start(platform::programFolder);
    return cameBackRight(settings_, program_->state().settings, platform_->files);
}

/// False when start-up has switched to the audio engine, since the drive could not be read otherwise.
bool RipCommand::methodIsThere() const
{
    return options_.method == Method::digital2 || program_->state().path.ripEngineMode == 1;
}

void RipCommand::planRun()
{
    state::AppState& state = program_->state();
    plan_ = makePlan(format_, rows_, named_, state.disc, state.settings, platform_->files);
    if (options_.method == Method::analog)
        plan_.recordingFolder = platform_->files.hostPath(state.folders.windowsFolder);
    if (part_) {
        plan_.tracks.front().soundBytes = part_->bytes;
        want(*part_, plan_.tracks.front().row, state.partial);
    }
    if (plan_.oneByOne) {
        const bool asked = options_.schedule && *options_.schedule != Schedule::single;
        const std::string_view why = "this disc and encoder can be encoded track by track only";
        platform_->log.line("schedule", why);
        if (asked)
            screen_.complain(fmt::format("tonquay: --schedule: {}, so that is done", why));
        state.settings.encodeSingle = 1;
        state.settings.turboMode = 0;
    }
}

std::vector<std::string> RipCommand::problems() const
{
    std::vector<std::string> found = sourceProblems(plan_, drive_.image ? drive_.hostPath : std::string());
    return found.empty() ? problemsOf(plan_, platform_->files) : found;
}

ExitStatus RipCommand::carryOut()
{
    if (const auto remark = genreRemark(program_->state().disc.discGenre); remark && format_ == Format::mp3)
        screen_.complain("tonquay: " + *remark);
    const std::unique_ptr<RipView> view = makeRipView(viewKind(options_, screen_), screen_);
    ProgramOutput encoderOutput(screen_, host_.programOutput());
    const auto showing = options_.verbose ? platform_->loop.every(std::chrono::milliseconds{200},
                                                                  [&encoderOutput] { encoderOutput.showNew(); })
                                          : nullptr;
    session_ = std::make_unique<RipSession>(*program_, *platform_, *processes_, host_, *view, plan_);
    const RunEnd end = session_->run();
    session_.reset();
    if (options_.verbose)
        encoderOutput.showNew();
    return end.broken == 0 && end.left == 0 ? ExitStatus::good : ExitStatus::incomplete;
}

}

ExitStatus rip(Screen& screen, const RipOptions& options, RunHost& host, const platform::DriveDescription& drive,
               const platform::DiscTable& table)
{
    return RipCommand(screen, options, host, drive, table).run();
}

}
