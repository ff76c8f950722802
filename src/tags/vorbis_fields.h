#pragma once

#include "tags/tag_fields.h"

#include <cstdint>
#include <string>
#include <string_view>

/// An Ogg Vorbis file as it is shown and edited, and how what was edited is written: by vorbiscomment, which reads it
/// from a file of comments.
namespace tonquay::tags {

struct VorbisTag;

/// What is shown of a tag: its texts without blanks around them, and its track number if that is above 0.
TagFields shownFields(const VorbisTag& tag);

/// The lines of information above the fields: size, date and type. `date` is that of the file, as it is to be shown. A
/// file of `length` 0, so also one that is missing, is "Corrupt file".
std::wstring oggInformation(std::int64_t length, std::wstring_view date);

/// The file of comments: "title=", "artist=", "album=", "genre=", "date=", "tracknumber=", "comment=", a line each that
/// ends with CR LF, whether there is something behind it or not. Texts are without blanks around them. A line end or
/// NUL inside of one, which would end its comment, becomes a blank.
std::wstring commentsFileText(const TagFields& fields);

/// The command that has vorbiscomment, in the current folder, replace all comments of `file` by those of
/// `commentsFile`.
std::wstring vorbisCommentCommand(std::wstring_view commentsFile, std::wstring_view file);

/// The command that has vorbiscomment, in the current folder, write `draft`: `file` with the comments of `commentsFile`
/// in place of its own. That is UTF-8, a comment a line, with "\\n" for a line end inside of one, and "\\\\".
std::wstring vorbisCommentDraftCommand(std::wstring_view commentsFile, std::wstring_view file, std::wstring_view draft);

}
