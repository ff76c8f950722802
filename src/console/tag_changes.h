#pragma once

#include "platform/file_tags.h"

#include <array>
#include <map>
#include <string>
#include <string_view>

/// What `tonquay tags --set` changes.
namespace tonquay::console {

enum class TagField { title, artist, album, year, genre, comment, track };

struct TagFieldName {
    TagField field;
    std::string_view name;
};

/// In the order of the tag page.
inline constexpr std::array tagFieldNames{
    TagFieldName{TagField::title, "title"},     TagFieldName{TagField::artist, "artist"},
    TagFieldName{TagField::album, "album"},     TagFieldName{TagField::genre, "genre"},
    TagFieldName{TagField::year, "year"},       TagFieldName{TagField::track, "track"},
    TagFieldName{TagField::comment, "comment"},
};

std::string_view nameOf(TagField field);

/// The new values; a field that is not named stays. An empty text takes the field's value away. A year and a track are
/// plain numbers (1 to 3000, 1 to 99), a genre is a name of the table, spelled as there.
using TagChanges = std::map<TagField, std::wstring>;

/// What a file says in each field, in the same form; a field that it does not have is empty.
TagChanges fieldsOf(const platform::FileTags& tags);

/// Takes "FIELD=VALUE" from the command line; of a field that is named twice the last value counts. Answers what is
/// wrong with it, or an empty text.
std::string addTagChange(TagChanges& changes, const std::string& text);

}
