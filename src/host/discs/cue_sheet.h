#pragma once

#include "host/discs/sheet.h"

/// Cue sheets: one command a line, times in frames of 1/75 second counted from the start of the FILE in force.
namespace tonquay::host {

/// Reads a sheet from the bytes of its file; `path` is named in failures. Looks at no file.
///
/// A sheet may name several files, also within a track (index 0 at the end of one file, index 1 at the start of the
/// next). PREGAP and POSTGAP are silence that no file holds. A CDTEXTFILE is passed over: the names come from TITLE,
/// PERFORMER, REM GENRE, REM DATE and REM COMMENT. Fails at the first line that does not add up.
base::Result<Sheet> parseCueSheet(std::string_view bytes, const std::string& path);

}
