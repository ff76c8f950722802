#pragma once

#include "engine/engine_context.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace tonquay::engine {

/// The names of a disc, 0 being the disc's own and 1 and up the tracks'.
struct CdTextNames {
    std::map<std::int32_t, std::wstring> titles{};
    std::map<std::int32_t, std::wstring> performers{};
};

/// Why a block cannot be read to its end.
struct CdTextFault {
    std::int32_t number = 0; ///< 0: it can
    std::wstring description{};
};

/// Reads the names out of a block of CD-Text as BASS_CD_GetID has it: strings that end in NUL, the last one empty, each
/// "TITLE" or "PERFORMER" in any case, a number from 0 to `trackCount`, "=" and the text. Other strings are passed
/// over. A block without its last, empty string ends with its bytes.
///
/// `seen` is called with each string, the last one too, and its place in the block. Reading ends at a string of those
/// two kinds that has no "=" or another number; what was read before it is in `names`.
CdTextFault readCdText(std::string_view block, std::int32_t trackCount, CdTextNames& names,
                       const std::function<void(std::int32_t place, const std::wstring& tag)>& seen);

/// Fills the artist and album boxes and adds a row for each audio track to lstTracks, named by a block of CD-Text; each
/// of its strings is shown in a message box first. A block that cannot be read to its end changes nothing but leaves a
/// line.
///
/// Nothing calls this: the names that the list shows are those of the disc as it was handed over.
void LoadTrackListFromCDText(EngineContext& context, std::string_view tags, std::int32_t trackCount);

}
