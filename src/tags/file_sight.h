#pragma once

#include "platform/clock.h"
#include "platform/diagnostics.h"
#include "platform/file_system.h"
#include "tags/tag_fields.h"
#include "tags/tag_state.h"
#include "tags/tagger_options.h"
#include "tags/wav_info.h"

#include <string>
#include <string_view>

/// What people see of a sound file: some lines about it, and the fields of its tag. Of a file that is missing or empty
/// the lines are "Corrupt file" and the fields are empty. Nothing fails; a step that does leaves a line in the log. The
/// files are only read.
namespace tonquay::tags {

struct FileSight {
    std::wstring information{}; ///< several lines, each ended by CR LF
    TagFields fields{};
};

/// What sort of file a name stands for.
enum class FileSort { mp3, ogg, wav };

/// By what follows the last full stop, in any case; whatever is neither "ogg" nor "wav" is taken for an MP3 file.
FileSort fileSort(std::wstring_view name);

/// An MP3 file (ReadMp3Info). `state` holds what was found, also what is not shown; of an empty file it stays as it is.
FileSight mp3Sight(platform::FileSystem& files, platform::Diagnostics& log, platform::Clock& clock, COptions& options,
                   TagState& state, std::wstring_view path);

/// An Ogg Vorbis file, with the comments that ReadVorbisTag finds.
FileSight oggSight(platform::FileSystem& files, platform::Diagnostics& log, std::wstring_view path);

/// A WAV file, which has no fields. What it does not give stays in `info` as the file before gave it, and is shown.
FileSight wavSight(platform::FileSystem& files, platform::Diagnostics& log, WavInfo& info, std::wstring_view path);

}
