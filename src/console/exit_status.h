#pragma once

namespace tonquay::console {

/// How a command ended, as the shell sees it.
enum class ExitStatus {
    good = 0,       ///< all that was asked for is there, whole
    incomplete = 1, ///< some of it is not; each was named
    usage = 2,      ///< the command line or the set-up is wrong; nothing was done
    noDisc = 3,     ///< no drive, no disc, or a disc that cannot be read
};

}
