#include "console/tags_command.h"

#include "base/text.h"
#include "console/file_report.h"
#include "console/mp3_tag_edit.h"
#include "console/ogg_tag_edit.h"
#include "console/screen_text.h"
#include "console/settings_seen_once.h"
#include "platform/event_loop.h"
#include "platform/file_system.h"
#include "tags/file_sight.h"

#include <string>
#include <utility>

namespace tonquay::console {

namespace {

using platform::FileTags;

/// The files of one call, one after the other.
class TagsRun {
public:
    TagsRun(Screen& screen, const TagsOptions& options, RunHost& host, platform::Platform platform)
        : screen_(screen),
          options_(options),
          host_(host),
          platform_(platform),
          taggerOptions_(platform_.settings, platform::programFolder)
    {}

    void take(const std::string& file);
    void leaveOut(const std::string& file);
    void end();

    bool allGood() const { return allGood_; }

private:
    FileReport reportOf(const std::string& file);
    base::Status change(const std::string& file, const std::wstring& path, const FileTags& before);
    void remarkHiddenFields(const std::string& file, const FileTags& after);
    std::wstring informationOf(const std::wstring& path);
    void show(const FileReport& report);
    void remark(const std::string& file, const std::string& text);

    Screen& screen_;
    const TagsOptions& options_;
    RunHost& host_;
    platform::Platform platform_;
    tags::COptions taggerOptions_;
    bool shownAny_ = false;
    bool allGood_ = true;
};

/// True when a value is what a tag can hold of the wanted one.
bool isOf(const std::wstring& wanted, const std::wstring& value)
{
    return base::fromWindows1252(base::windows1252(wanted)).starts_with(value);
}

/// Why a file was not changed, without its name.
std::string reason(const base::Failure& failure, const std::string& hostPath)
{
    return "not changed: " + (failure.where == hostPath ? failure.text : base::describe(failure));
}

base::Result<FileTags> readSound(RunHost& host, const std::string& file)
{
    auto tags = host.readTags(file, platform::SoundReading::estimate);
    if (tags && tags->kind == FileTags::Kind::none)
        return base::Failure{base::Failure::Kind::invalid, file, "no MP3, Ogg Vorbis or WAV sound was found in it"};
    return tags;
}

void TagsRun::take(const std::string& file)
{
    show(reportOf(file));
}

FileReport TagsRun::reportOf(const std::string& file)
{
    FileReport report{.file = file};
    auto tags = readSound(host_, file);
    if (tags && !options_.changes.empty()) {
        const std::wstring path = platform_.files.programPath(file);
        if (const auto changed = change(file, path, *tags); !changed) {
            report.problem = reason(changed.failure(), platform_.files.hostPath(path));
            return report;
        }
        tags = readSound(host_, file);
    }
    if (!tags) {
        report.problem = tags.failure().text;
        return report;
    }
    if (!options_.changes.empty() && tags->kind == FileTags::Kind::mp3)
        remarkHiddenFields(file, *tags);
    report.tags = std::move(*tags);
    report.information = informationOf(platform_.files.programPath(file));
    return report;
}

base::Status TagsRun::change(const std::string& file, const std::wstring& path, const FileTags& before)
{
    if (before.kind == FileTags::Kind::wav)
        return base::Failure{base::Failure::Kind::refused, {}, "a WAV file has no tag that could be changed"};
    if (before.kind == FileTags::Kind::mp3) {
        const auto remarks = editMp3Tag(platform_.files, path, options_.changes, before);
        if (!remarks)
            return remarks.failure();
        for (const std::string& text : *remarks)
            remark(file, text);
        return {};
    }
    if (const base::Status tool = host_.programs().vorbiscomment; !tool)
        return base::Failure{tool.failure().kind, "vorbiscomment",
                             "it writes comments, and is not on PATH; install the "
                             "package vorbis-tools"};
    return editOggTag(platform_, path, options_.changes);
}

/// A tag at the start of the file, which readers prefer to the one that was changed, may say something else.
void TagsRun::remarkHiddenFields(const std::string& file, const FileTags& after)
{
    std::string fields;
    for (const auto& [field, value] : fieldsOf(after)) {
        const auto change = options_.changes.find(field);
        // What was cut, or lost letters, is told elsewhere.
        if (change != options_.changes.end() && !isOf(change->second, value))
            fields += (fields.empty() ? "" : ", ") + std::string(nameOf(field));
    }
    if (!fields.empty())
        remark(file, "the ID3v2 tag at its start still says otherwise, and players prefer it: " + fields);
}

std::wstring TagsRun::informationOf(const std::wstring& path)
{
    platform::FileSystem& files = platform_.files;
    switch (tags::fileSort(path)) {
    case tags::FileSort::ogg: return tags::oggSight(files, platform_.log, path).information;
    case tags::FileSort::wav: {
        tags::WavInfo fresh;
        return tags::wavSight(files, platform_.log, fresh, path).information;
    }
    case tags::FileSort::mp3: break;
    }
    tags::TagState fresh;
    return tags::mp3Sight(files, platform_.log, platform_.clock, taggerOptions_, fresh, path).information;
}

void TagsRun::show(const FileReport& report)
{
    const bool first = !std::exchange(shownAny_, true);
    if (!report.problem.empty()) {
        allGood_ = false;
        screen_.complain("tonquay: " + shownBytes(report.file + ": " + report.problem));
    }
    if (options_.json)
        screen_.write((first ? "[\n" : ",\n") + reportJson(report));
    else if (report.problem.empty())
        screen_.write((first ? "" : "\n") + reportText(report));
}

void TagsRun::leaveOut(const std::string& file)
{
    show({.file = file, .problem = "broken off before it"});
}

void TagsRun::end()
{
    if (options_.json)
        screen_.write("\n]\n");
}

void TagsRun::remark(const std::string& file, const std::string& text)
{
    screen_.complain("tonquay: " + shownBytes(file + ": ") + text);
}

}

ExitStatus showTags(Screen& screen, const TagsOptions& options, RunHost& host)
{
    bool brokenOff = false;
    RunListener listener;
    listener.say = [&screen](const std::string& line) { screen.complain("tonquay: " + shownBytes(line)); };
    listener.interrupt = [&brokenOff] { brokenOff = true; };
    auto opened = host.open(listener);
    if (!opened) {
        screen.complain("tonquay: " + shownBytes(base::describe(opened.failure())));
        return ExitStatus::usage;
    }
    platform::Platform platform = *opened;
    SettingsSeenOnce settings(platform.settings);
    TagsRun run(screen, options, host, platform.with(settings));
    for (const std::string& file : options.files) {
        platform.loop.pass();
        if (brokenOff)
            run.leaveOut(file);
        else
            run.take(file);
    }
    run.end();
    return run.allGood() ? ExitStatus::good : ExitStatus::incomplete;
}

}
