#include "console/towav_command.h"

#include "app/program.h"
#include "base/text.h"
#include "console/decoded_verdict.h"
#include "console/encoder_choice.h"
#include "console/judged_file.h"
#include "console/run_processes.h"
#include "console/screen_text.h"
#include "platform/file_system.h"
#include "platform/system_info.h"
#include "state/mp3_row.h"

#include <fmt/format.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tonquay::console {

namespace {

namespace fs = std::filesystem;

/// One file of the command line that can stand in the queue.
struct QueuedFile {
    std::string named{}; ///< as the user wrote it
    std::wstring row{};
    std::wstring wavPath{}; ///< in the program's form
    platform::FileTags::Stream stream{};
    std::chrono::system_clock::time_point began{};
};

/// Carries the files through the queue and judges each WAV file when the next one is taken in hand.
class Conversion {
public:
    Conversion(Screen& screen, RunHost& host, platform::FileSystem& files) : screen_(screen), host_(host), files_(files)
    {}

    /// Takes a file of the command line, or says why it cannot be converted.
    void take(const std::string& named);

    std::vector<std::wstring> rows() const;

    /// The row that is in hand from now on, -1 when the queue is through.
    void handOver(std::int32_t row);

    /// The decoder that works on the row in hand ended.
    void decoderEnded(int status) { decoderExit_ = status; }

    /// All that is not judged yet.
    void breakOff();

    ExitStatus status() const { return failed_ ? ExitStatus::incomplete : ExitStatus::good; }

private:
    std::string problemOf(const fs::path& path, QueuedFile& file);
    void judge(const QueuedFile& file);
    void complain(const std::string& named, const std::string& problem);

    Screen& screen_;
    RunHost& host_;
    platform::FileSystem& files_;
    std::vector<QueuedFile> queue_;
    std::map<std::wstring, std::string> wavNames_; ///< upper case, with the file that makes it
    std::optional<std::size_t> inHand_;
    std::optional<int> decoderExit_; ///< none: it could not be started
    bool failed_ = false;
};

void Conversion::take(const std::string& named)
{
    QueuedFile file;
    file.named = named;
    std::error_code error;
    const std::string problem = problemOf(fs::absolute(named, error), file);
    if (problem.empty())
        queue_.push_back(std::move(file));
    else
        complain(named, problem);
}

std::string Conversion::problemOf(const fs::path& path, QueuedFile& file)
{
    std::error_code error;
    if (!fs::exists(path, error))
        return "there is no such file";
    const std::wstring programPath = files_.programPath(path.string());
    if (!base::upper(programPath).ends_with(L".MP3"))
        return "its name does not end in .mp3";
    if (const JudgedFile there(path.string()); !there.problem().empty())
        return there.problem();
    const base::Result<platform::FileTags> tags = host_.readTags(path.string(), platform::SoundReading::whole);
    if (!tags)
        return tags.failure().text;
    if (tags->kind != platform::FileTags::Kind::mp3)
        return "no MP3 sound was found in it";

    const std::size_t slash = programPath.rfind(L'\\');
    const state::Mp3Row row{programPath.substr(slash + 1), programPath.substr(0, slash)};
    file.row = row.text();
    const state::Mp3Row carried = state::mp3Row(file.row);
    if (carried.name != row.name || carried.folder != row.folder)
        return "a name or folder with blanks at its ends, or five in a row, cannot be converted; rename it";
    constexpr std::size_t ending = 4;
    file.wavPath = programPath.substr(0, programPath.size() - ending) + L".wav";
    const auto [other, isNew] = wavNames_.emplace(base::upper(file.wavPath), file.named);
    if (!isNew)
        return fmt::format("its WAV file would be that of {} too", other->second);
    file.stream = tags->stream;
    file.began = fileTimeNow(path.parent_path().string());
    return {};
}

std::vector<std::wstring> Conversion::rows() const
{
    std::vector<std::wstring> rows;
    rows.reserve(queue_.size());
    for (const QueuedFile& file : queue_)
        rows.push_back(file.row);
    return rows;
}

void Conversion::handOver(std::int32_t row)
{
    if (inHand_)
        judge(queue_[*inHand_]);
    decoderExit_.reset();
    inHand_ = row < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(row));
}

void Conversion::judge(const QueuedFile& file)
{
    if (!decoderExit_) {
        complain(file.named, "the decoder could not be started");
        return;
    }
    const std::string wav = files_.hostPath(file.wavPath);
    const DecodedVerdict verdict =
        judgeDecoded(wav, {.stream = file.stream, .decoderExit = *decoderExit_, .runBegan = file.began});
    if (verdict.whole)
        screen_.write(fmt::format("{}  {:.1f} s\n", shownBytes(wav), verdict.seconds));
    else
        complain(file.named, verdict.text);
}

void Conversion::breakOff()
{
    for (std::size_t i = inHand_.value_or(0); i < queue_.size(); ++i)
        complain(queue_[i].named, "not converted: broken off");
}

void Conversion::complain(const std::string& named, const std::string& problem)
{
    failed_ = true;
    screen_.complain("tonquay: " + shownBytes(named + ": " + problem));
}

base::Result<std::wstring> decoderOf(RunHost& host, platform::Platform& platform)
{
    if (const platform::MachinePrograms programs = host.programs();
        !programs.lame && programs.lame.failure().kind == base::Failure::Kind::notFound)
        return base::Failure{base::Failure::Kind::notFound, "lame",
                             "it decodes MP3 files, and is not on PATH; install the package lame"};
    auto chosen = chooseEncoder(Format::mp3, std::nullopt, host, platform);
    if (!chosen)
        return chosen.failure();
    return std::move(chosen->path);
}

/// Fills the queue of a program's dialog, presses its key, and returns when the last file is done.
void convert(Conversion& conversion, const std::wstring& decoder, const platform::Platform& platform)
{
    RunProcesses processes(platform.processes, [] {});
    processes.followEnds(
        [&](platform::Processes::Child child) { conversion.decoderEnded(processes.exitCode(child).value_or(1)); });
    app::Program program(platform.with(processes));
    state::AppState& state = program.state();
    state.folders.appFolder = platform::programFolder;
    state.folders.windowsFolder = platform.system.windowsFolder();
    state.settings.encoderPath = decoder;
    state::CdriptabControls& form = program.forms().controlsOf<state::CdriptabControls>();
    const auto following =
        form.converting.follow([&conversion](const state::Mp3InHand& file) { conversion.handOver(file.number - 1); });
    form.List6.append(conversion.rows());
    form.List6.click();
    form.Command17.press();
}

}

ExitStatus toWav(Screen& screen, const ToWavOptions& options, RunHost& host)
{
    std::optional<Conversion> conversion;
    platform::Processes* ending = nullptr;
    RunListener listener;
    listener.say = [&screen](const std::string& line) { screen.complain("tonquay: " + shownBytes(line)); };
    listener.interrupt = [&] {
        if (conversion)
            conversion->breakOff();
        if (ending == nullptr)
            return;
        host.endChildren();
        ending->endProgram(static_cast<int>(ExitStatus::incomplete));
    };
    auto opened = host.open(listener);
    if (!opened) {
        screen.complain("tonquay: " + shownBytes(base::describe(opened.failure())));
        return ExitStatus::usage;
    }
    platform::Platform platform = *opened;
    ending = &platform.processes;
    const auto decoder = decoderOf(host, platform);
    if (!decoder) {
        screen.complain("tonquay: " + shownBytes(base::describe(decoder.failure())));
        return ExitStatus::usage;
    }

    conversion.emplace(screen, host, platform.files);
    for (const std::string& file : options.files)
        conversion->take(file);

    convert(*conversion, *decoder, platform);
    return conversion->status();
}

}
