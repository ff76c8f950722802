#include "tags/tag_state.h"

#include "tags/tagger_options.h"

#include <utility>

namespace tonquay::tags {

void ClearTagInfo(TagState& state)
{
    state = TagState{};
}

void ResetTagFields(TagState& state, COptions& options)
{
    options.readOptions();
    Id3v1Fields fields;
    fields.Title.assign(30, L' ');
    fields.Genre = options.defaultGenre();
    fields.Track = state.id3v1.Track;
    state.id3v1 = std::move(fields);
    state.stream = {};
}

}
