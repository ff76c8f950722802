#pragma once

#include "base/result.h"
#include "console/options.h"
#include "platform/discs.h"

namespace tonquay::console {

/// The disc's names with those that the user gave in their place. An empty text given takes a name away. Fails, and
/// changes nothing, when a title is given for a track that the disc has not.
base::Result<platform::DiscNames> withGivenNames(const platform::DiscTable& table, const GivenNames& given);

}
