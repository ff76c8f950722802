#include "console/run.h"

#include "console/command_line.h"
#include "console/disc_json.h"
#include "console/disc_tables.h"
#include "console/rip_command.h"
#include "console/screen_text.h"
#include "console/tags_command.h"
#include "console/towav_command.h"

#include <algorithm>
#include <type_traits>

namespace tonquay::console {

namespace {

void complain(Screen& screen, const base::Failure& failure)
{
    screen.complain("tonquay: " + shownBytes(base::describe(failure)));
}

ExitStatus answer(Screen& screen, const Answer& answer)
{
    screen.write(answer.text);
    return ExitStatus::good;
}

/// The disc that a command is about, in its drive.
struct ChosenDisc {
    std::unique_ptr<Host> host;
    platform::DriveDescription drive;
    platform::DiscTable table;
};

base::Result<ChosenDisc> openDisc(const HostFactory& makeHost, const std::string& disc)
{
    const DiscChoice choice = discChoice(disc);
    if (const base::Status sensible = checkChoice(choice); !sensible)
        return sensible.failure();
    base::Result<std::unique_ptr<Host>> host = makeHost(choice);
    if (!host)
        return host.failure();
    platform::Discs& discs = (*host)->discs();
    const base::Result<platform::DriveDescription> drive = chooseDrive(discs.drives(), choice);
    if (!drive)
        return drive.failure();
    base::Result<platform::DiscTable> table = discs.read(drive->letter);
    if (!table)
        return table.failure();
    return ChosenDisc{std::move(*host), *drive, std::move(*table)};
}

ExitStatus list(Screen& screen, const HostFactory& makeHost, const ListOptions& options)
{
    const base::Result<ChosenDisc> disc = openDisc(makeHost, options.disc);
    if (!disc) {
        complain(screen, disc.failure());
        return ExitStatus::noDisc;
    }
    screen.write(options.json ? listJson(disc->table) : listTable(disc->table));
    return ExitStatus::good;
}

ExitStatus drives(Screen& screen, const HostFactory& makeHost, const DrivesOptions& options)
{
    base::Result<std::unique_ptr<Host>> host = makeHost({});
    if (!host) {
        complain(screen, host.failure());
        return ExitStatus::noDisc;
    }
    const std::vector<platform::DriveDescription> found = (*host)->discs().drives();
    screen.write(options.json ? drivesJson(found) : drivesTable(found));
    const bool any = std::any_of(found.begin(), found.end(), [](const platform::DriveDescription& drive) {
        return drive.problem != platform::DriveProblem::noDevice;
    });
    if (any)
        return ExitStatus::good;
    screen.complain("tonquay: no drive was found; connect one, or name a disc image (.cue, .toc, .nrg) to the other "
                    "commands");
    return ExitStatus::noDisc;
}

/// For the commands that are about files, whatever drives there are.
template <class Options>
ExitStatus withoutDisc(Screen& screen, const HostFactory& makeHost, const Options& options,
                       ExitStatus (*command)(Screen&, const Options&, RunHost&))
{
    base::Result<std::unique_ptr<Host>> host = makeHost({});
    if (!host) {
        complain(screen, host.failure());
        return ExitStatus::usage;
    }
    return command(screen, options, **host);
}

ExitStatus ripDisc(Screen& screen, const HostFactory& makeHost, const RipOptions& options)
{
    const base::Result<ChosenDisc> disc = openDisc(makeHost, options.disc);
    if (!disc) {
        complain(screen, disc.failure());
        return ExitStatus::noDisc;
    }
    return rip(screen, options, *disc->host, disc->drive, disc->table);
}

}

ExitStatus run(const std::vector<std::string>& arguments, Screen& screen, const HostFactory& makeHost)
{
    const base::Result<Command> command = parseCommandLine(arguments);
    if (!command) {
        complain(screen, command.failure());
        return ExitStatus::usage;
    }
    const ExitStatus status = std::visit(
        [&](const auto& options) {
            using Options = std::decay_t<decltype(options)>;
            if constexpr (std::is_same_v<Options, ListOptions>)
                return list(screen, makeHost, options);
            else if constexpr (std::is_same_v<Options, DrivesOptions>)
                return drives(screen, makeHost, options);
            else if constexpr (std::is_same_v<Options, RipOptions>)
                return ripDisc(screen, makeHost, options);
            else if constexpr (std::is_same_v<Options, ToWavOptions>)
                return withoutDisc(screen, makeHost, options, toWav);
            else if constexpr (std::is_same_v<Options, TagsOptions>)
                return withoutDisc(screen, makeHost, options, showTags);
            else
                return answer(screen, options);
        },
        *command);
    if (!screen.flush() && status == ExitStatus::good) {
        screen.complain("tonquay: standard output: not everything could be written");
        return ExitStatus::incomplete;
    }
    return status;
}

}
