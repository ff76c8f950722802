#pragma once

#include "state/disc_info.h"
#include "state/ripdeck_controls.h"

namespace tonquay::state {

/// Artist and album on the main window; the artist alone for a disc without an album. A Cyrillic artist brings the
/// suite's font for that.
void showDiscNames(RipdeckControls& ripdeck, const DiscInfo& disc);

/// Has the title begin a little behind the end of artist and album.
void placeTitle(RipdeckControls& ripdeck);

/// Year, genre and comment on the main window, each seen when there is one.
void showDiscTags(RipdeckControls& ripdeck, const DiscInfo& disc);

}
