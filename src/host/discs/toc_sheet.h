#pragma once

#include "host/discs/sheet.h"

/// Tables of contents as cdrdao writes and reads them (cdrdao(1), "TOC FILES").
namespace tonquay::host {

/// Reads a table of contents from the bytes of its file; `path` is named in failures. Looks at no file.
///
/// A track is put together from its statements in their order; lengths are counted in samples or, in data tracks, in
/// bytes, so a piece may begin in the middle of a sector. As cdrdao has it, files with an ending of sound files are
/// decoded and all others hold samples with the high byte first; SWAP turns that round. Of CD_TEXT the names in
/// language 0 are taken, or those of the first language that has any. Fails at the first statement that does not add
/// up; FIFOs, standard input and sub-channel data are refused.
base::Result<Sheet> parseTocSheet(std::string_view bytes, const std::string& path);

}
