#include "console/run.h"

#include "console/command_line.h"
#include "console/disc_json.h"
#include "console/disc_tables.h"
#include "console/screen_text.h"

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

ExitStatus list(Screen& screen, const HostFactory& makeHost, const ListOptions& options)
{
    const DiscChoice choice = discChoice(options.disc);
    const base::Status sensible = checkChoice(choice);
    if (!sensible) {
        complain(screen, sensible.failure());
        return ExitStatus::noDisc;
    }
    base::Result<std::unique_ptr<Host>> host = makeHost(choice);
    if (!host) {
        complain(screen, host.failure());
        return ExitStatus::noDisc;
    }
    platform::Discs& discs = (*host)->discs();
    const base::Result<platform::DriveDescription> drive = chooseDrive(discs.drives(), choice);
    if (!drive) {
        complain(screen, drive.failure());
        return ExitStatus::noDisc;
    }
    const base::Result<platform::DiscTable> table = discs.read(drive->letter);
    if (!table) {
        complain(screen, table.failure());
        return ExitStatus::noDisc;
    }
    screen.write(options.json ? listJson(*table) : listTable(*table));
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

ExitStatus rip(Screen& screen, const RipOptions&)
{
    screen.complain("tonquay: rip: not available yet in this version");
    return ExitStatus::usage;
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
                return rip(screen, options);
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
