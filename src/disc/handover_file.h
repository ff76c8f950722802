#pragma once

#include "platform/diagnostics.h"
#include "platform/file_system.h"
#include "state/disc_info.h"

#include <string>
#include <string_view>

namespace tonquay::disc {

/// Undoes the mapping that keeps apostrophes and commas out of the hand-over file: each backquote becomes an
/// apostrophe, each tilde a comma.
void demap(std::wstring& text);

/// What the hand-over file is called, in the program folder.
inline constexpr std::wstring_view handoverName = L"audiocd.dat";

/// Takes the disc's names from the text of a hand-over file: artist, album, track count, titles of tracks 1 to 100,
/// comment, genre, year, drive letter. All titles are read, whatever the track count says. A short text leaves the
/// rest as it was.
void parseHandover(std::wstring_view text, state::DiscInfo& disc);

/// Clears the titles and takes over the hand-over file at `path`. False when there is none. The file
/// stays; who has used what it says deletes it.
bool readHandover(platform::FileSystem& files, platform::Diagnostics& log, std::wstring_view path,
                  state::DiscInfo& disc);

/// A disc whose first and last title are both unknown is an unknown disc: it gets "Unknown Artist", "Unknown Title"
/// and a numbered title for every track.
void applyUnknownDiscNames(state::DiscInfo& disc);

}
