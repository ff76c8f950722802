#pragma once

#include "base/result.h"
#include "console/disc_choice.h"
#include "console/exit_status.h"
#include "console/run_host.h"
#include "console/screen.h"
#include "platform/discs.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tonquay::console {

/// What a command needs of the system that it runs on.
class Host : public RunHost {
public:
    virtual platform::Discs& discs() = 0;
};

/// Builds the host once it is clear which disc is meant. An image or a device that the machine's own list has not
/// becomes a drive there.
using HostFactory = std::function<base::Result<std::unique_ptr<Host>>(const DiscChoice&)>;

/// The whole program but for the host: reads the command line and carries it out. Never throws.
ExitStatus run(const std::vector<std::string>& arguments, Screen& screen, const HostFactory& makeHost);

}
