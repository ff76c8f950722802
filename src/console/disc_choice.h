#pragma once

#include "base/result.h"
#include "platform/discs.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tonquay::console {

/// Which disc the user means. Made from the command line before any drive is looked at, since a named image or device
/// has to become a drive first: whoever builds the drives is handed this.
struct DiscChoice {
    enum class Kind {
        any,    ///< the first drive with an audio disc in it
        letter, ///< the drive of that letter
        image,  ///< a file by its ending: .cue, .toc, .nrg, in any case
        device, ///< anything else: a device node, or a mistake that choosing will name
    };

    Kind kind = Kind::any;
    wchar_t letter = 0; ///< upper case, for Kind::letter
    std::string path{}; ///< as typed, for image and device
};

/// Reads `DISC` of the command line. `E`, `e:` and `E:\` are a letter; `./E` is a path.
DiscChoice discChoice(std::string_view disc);

/// Why a path cannot be a disc, by a look at the path alone (missing, a folder, neither image nor device), or success.
base::Status checkChoice(const DiscChoice& choice);

/// Finds the chosen drive among those that there are, by letter or by path (two names of one file count as one). Fails,
/// with a sentence for people and what to do, when it is not there or holds no audio disc.
base::Result<platform::DriveDescription> chooseDrive(const std::vector<platform::DriveDescription>& drives,
                                                     const DiscChoice& choice);

}
