#include "encode/run_and_wait.h"

#include "base/text.h"
#include "platform/diagnostics.h"
#include "platform/event_loop.h"
#include "platform/file_system.h"

namespace tonquay::encode {

using platform::Processes;

Processes::Child startInBackground(platform::Platform& platform, std::wstring_view command)
{
    platform.log.line("encoder", base::utf8(command));
    const auto child = platform.processes.start(command, Processes::WindowStyle::normal);
    if (!passOver(platform.log, child, "Start an encoder"))
        return 0;
    platform.processes.expectLongWork(*child);
    return *child;
}

void runAndWait(platform::Platform& platform, state::RunFlags& flags, std::wstring_view command,
                const std::function<void(Processes::Child)>& started)
{
    passOver(platform.log, platform.files.changeDrive(command), "Change to the encoder's drive");
    const Processes::Child child = startInBackground(platform, command);
    if (started)
        started(child);
    platform::waitUntil(platform.loop, [&] { return platform.processes.exitCode(child).has_value(); });
    flags.encodeBusy = 0;
}

}
