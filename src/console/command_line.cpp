#include "console/command_line.h"

#include "console/option_readers.h"
#include "console/rip_arguments.h"
#include "console/screen_text.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace tonquay::console {

namespace {

void declareTags(CLI::App& app, TagsOptions& tags)
{
    addTagChanges(app, tags.changes);
    app.add_flag("--json", tags.json, "One JSON document: an array with an object for each file");
    app.add_option("FILE", tags.files, "MP3, Ogg Vorbis and WAV files")->required();
}

base::Failure wrong(std::string text)
{
    return {base::Failure::Kind::invalid, {}, std::move(text)};
}

}

base::Result<Command> parseCommandLine(const std::vector<std::string>& arguments)
{
    RipOptions rip;
    ListOptions list;
    DrivesOptions drives;
    TagsOptions tags;
    ToWavOptions toWav;

    CLI::App app("Rips audio discs to files.", "tonquay");
    app.set_version_flag("--version", "tonquay " TONQUAY_VERSION);
    app.require_subcommand(1);

    declareRip(*app.add_subcommand("rip", "Rip tracks to files"), rip);
    CLI::App* listCommand = app.add_subcommand("list", "Show the disc's tracks: number, time, size, title");
    listCommand->add_flag("--json", list.json, "One JSON document");
    listCommand->add_option("DISC", list.disc, discHelp);
    CLI::App* drivesCommand = app.add_subcommand("drives", "Show the drives and what they can do");
    drivesCommand->add_flag("--json", drives.json, "One JSON document");
    CLI::App* toWavCommand = app.add_subcommand("towav", "Decode MP3 files to WAV files beside them");
    toWavCommand->add_option("FILE", toWav.files, "MP3 files; a WAV file of the same name is replaced")->required();
    CLI::App* tagsCommand = app.add_subcommand("tags", "Show or change the tags of MP3 and Ogg files, show WAV files");
    declareTags(*tagsCommand, tags);

    try {
        // The parser takes its arguments from the back.
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::CallForHelp&) {
        return Command{Answer{app.help()}};
    } catch (const CLI::CallForVersion& version) {
        return Command{Answer{std::string(version.what()) + '\n'}};
    } catch (const CLI::RequiredError&) {
        if (toWavCommand->parsed())
            return wrong("towav: name one MP3 file at least");
        if (tagsCommand->parsed())
            return wrong("tags: name one file at least");
        const std::string unknown = arguments.empty() || arguments.front().starts_with('-')
                                        ? std::string("name a command")
                                        : fmt::format("\"{}\" is no command", shownBytes(arguments.front()));
        return wrong(unknown + ": rip, list, drives, tags, towav; 'tonquay --help' tells more");
    } catch (const CLI::Error& error) {
        return wrong(shownBytes(error.what()));
    }

    if (drivesCommand->parsed())
        return Command{drives};
    if (toWavCommand->parsed())
        return Command{toWav};
    if (listCommand->parsed())
        return Command{list};
    if (tagsCommand->parsed())
        return Command{tags};
    return Command{rip};
}

}
