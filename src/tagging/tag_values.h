#pragma once

#include "controls/lists.h"
#include "state/disc_info.h"
#include "tags/tag_state.h"

#include <string>
#include <string_view>

/// Tags for the MP3 files of a disc.
namespace tonquay::tagging {

/// The values that all files of a disc share, as they stand in the tagger's fields.
struct TagValues {
    std::wstring artist{};
    std::wstring album{};
    std::wstring year{};
    std::wstring comment{};
    std::wstring genre{}; ///< as the list of genres spells it; empty when none is chosen
};

/// The genres to choose from, behind whatever the list holds.
void FillGenreList(controls::ComboBox& list);

/// The genre that a disc's own one stands for, by its first four letters in any case: "newage" is "New Age", "blues" is
/// "R&B". A genre that these do not know is taken when the list has it by that very name. Empty for any other.
std::wstring_view genreForCategory(std::wstring_view category);

/// What the fields hold at first for a disc.
TagValues tagValuesOf(const state::DiscInfo& disc);

/// Puts the values of one track into the places of TagInfo that a file's tag is written from; the other places stay.
/// Texts are cut to the width of their fields and filled up with blanks. A genre that the tags have no number for
/// becomes 0. The track is written as it stands.
void fillTagInfo(tags::TagState& tags, const TagValues& values, std::wstring_view title, std::wstring_view track);

}
