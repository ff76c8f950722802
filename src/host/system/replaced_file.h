#pragma once

#include "base/result.h"

#include <string>
#include <string_view>
#include <sys/stat.h>

namespace tonquay::host {

/// Makes `path` hold `bytes` in one step: a new file beside it, on the disk, then put in its place. A link is followed,
/// so that the file it names is replaced and not the link. `mode` is what the file gets, 0 for the usual mode of a new
/// file. A failure leaves what was there and nothing else.
base::Status replaceFile(const std::string& path, std::string_view bytes, mode_t mode);

/// The same with the contents, the mode and the time of change of another file.
base::Status replaceByCopy(const std::string& from, const std::string& to);

/// The same by another file itself, which is then no longer under its old name. Beside each other no byte is copied.
base::Status replaceByMove(const std::string& from, const std::string& to, mode_t mode);

}
