#pragma once

#include "platform/platform.h"
#include "platform/processes.h"
#include "state/run_flags.h"

#include <functional>
#include <string_view>

namespace tonquay::encode {

/// Starts a command in a normal window and waits for its end; the event loop runs meanwhile, there is no time limit,
/// and the exit code decides nothing. A command that cannot be started has ended at once. The encoder's own drive
/// becomes the current one before. At the end encodeBusy is 0.
///
/// `started`, if given, is told of the child before the wait; 0 for one that could not be started.
void runAndWait(platform::Platform& platform, state::RunFlags& flags, std::wstring_view command,
                const std::function<void(platform::Processes::Child)>& started = {});

/// Starts a command in a normal window and returns at once. Answers 0 for one that could not be started.
platform::Processes::Child startInBackground(platform::Platform& platform, std::wstring_view command);

}
