#pragma once

#include "base/result.h"

namespace tonquay::platform {

/// The programs of the machine that the program folder leads to: for each, good, or why it is not there. A machine that
/// has no such program is `notFound`, a folder that does not take the link is another kind.
struct MachinePrograms {
    base::Status lame;          ///< lame.exe
    base::Status oggenc;        ///< oggtools\oggenc.exe and oggtools\oggencp4.exe
    base::Status vorbiscomment; ///< oggtools\vorbiscomment.exe
};

}
