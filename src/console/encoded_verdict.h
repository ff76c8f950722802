#pragma once

#include "base/result.h"
#include "console/options.h"
#include "platform/file_tags.h"

#include <chrono>
#include <functional>
#include <string>

namespace tonquay::console {

/// What a track's MP3 or Ogg file must be.
struct EncodedExpectation {
    Format format = Format::mp3; ///< mp3 or ogg
    double playSeconds = 0;      ///< of what was encoded
    /// fileTimeNow() (judged_file.h) of the output folder, taken before the run. A file that was written within the
    /// same step of its file system's clock counts as new.
    std::chrono::system_clock::time_point runBegan{};
    bool unwritten = false; ///< it was older when its encoder had ended: what is new is its tag
    std::wstring title{};
    int track = 0;
    bool tagged = true; ///< false: the tag is the user's own affair, there or not, and is not looked at
};

struct EncodedVerdict {
    bool whole = false;
    std::string text{}; ///< what is wrong, and what to do where that is known, without the file's name; else empty
};

/// Reads tags and stream of a file (RunHost::readTags).
using TagReader = std::function<base::Result<platform::FileTags>(const std::string& hostPath)>;

/// Looks at the finished file and tells whether it is what the run was to make. It is a plain file, not empty, written
/// since the run began; it is of its kind, its sound is as long as the track and not broken off, and it carries its
/// tag.
///
/// The sound of an MP3 may be 0.3 seconds longer than the track: encoders put silence in front and fill the last frame,
/// which was seen to add 0.04 to 0.1 seconds at all rates, and 0.2 at 8 kHz. It may be 0.04 seconds shorter, for an
/// encoder that leaves out the last frame. Ogg files are exact; 0.02 seconds are let pass.
///
/// The tag of an MP3 is the ID3v1 block at its end, with the title one byte a character and the track number; an ID3v2
/// tag is not asked. A title of more than 30 characters may have been cut in the user's own way, so it only must not be
/// empty. The tag of an Ogg file has the title and the number exactly; only bytes that are no UTF-8 cannot be held to
/// that.
///
/// That a file is new does not prove that its encoder wrote it: tagging changes an old file too. So the encoder's exit
/// is to be asked as well, and `unwritten` to be found out before the tag is written.
///
/// Costs reading an MP3 once. Never fails; what cannot be read is not whole.
EncodedVerdict judgeEncoded(const std::string& hostPath, const EncodedExpectation& expected, const TagReader& readTags);

}
