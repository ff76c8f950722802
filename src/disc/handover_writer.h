#pragma once

#include "platform/discs.h"

#include <string>
#include <vector>

namespace tonquay::disc {

/// The file `audiocd.dat`, which tells the ripper what is on the disc: written by whoever starts it, read once there
/// and deleted.
struct HandOver {
    std::string bytes;                ///< UTF-8, the whole of the file
    std::vector<std::string> changes; ///< one line for the log for each name that could not be handed over as it is
};

/// Makes the hand-over of a disc in the drive `driveLetter`. Cannot fail, whatever the names hold.
///
/// 107 fields: artist, album, number of tracks, 100 titles, comment, genre, year, drive letter. Title n belongs to the
/// n-th track of the table, whatever number is printed on the sleeve; tracks past the 100th are left out.
///
/// What happens to the names:
/// - The reader turns every backquote into an apostrophe and every tilde into a comma, so apostrophes and commas travel
///   as those. A backquote of the disc's own therefore arrives as an apostrophe, and a tilde of its own is handed over
///   as a hyphen: it mostly stands between a title and its subtitle, where a comma would read wrong.
/// - A double quote becomes an apostrophe. Control characters, line separators, marks that turn the direction of
///   writing, and what is no character at all are dropped. Blanks at both ends go.
/// - A year, genre or comment loses the backslashes at its end, which would swallow the quote that ends it in an
///   encoder's command.
/// - A name of which a file name would keep dots only ("..", "../") is dropped: it would lead out of the output folder.
/// - A name is cut so that every form of file name made of artist, album and title stays under the 255 bytes that a
///   file name may have; short names beside it leave it more room.
///
/// What happens to missing names: the reader takes a disc whose first and last titles are empty for unknown and then
/// overwrites artist, album and all titles. So empty titles become "Track 01" and so on, and every name survives. An
/// unknown artist is handed over as "Unknown Artist", an unknown album as "Unknown Title (DISCID)": each is a folder,
/// and two discs that are known only in part must not end in the same one.
HandOver makeHandOver(const platform::DiscTable& table, wchar_t driveLetter);

}
