#pragma once

#include "base/result.h"
#include "platform/file_tags.h"

#include <string>

namespace tonquay::host {

/// Reads the tags and the stream of an MP3, Ogg Vorbis or WAV file, whatever its name is; what it is shows in its
/// bytes.
///
/// MP3: a field comes from the ID3v2 tag at the start (version 2.2 to 2.4, any encoding), and where that has none from
/// the ID3v1 block at the end, whose text is Windows-1252 and whose genre is a number that has a name. The stream is
/// counted frame by frame, so its length is right for variable bitrates and for broken files too, or estimated
/// (estimateMpegSound).
/// Ogg: the Vorbis comments; the length is what the last page says.
/// WAV: no fields; the length is that of the sound that is there, whatever the header claims.
///
/// A file that is neither, or empty, is no failure: its kind is `none`, though its ID3 fields are told if it has any.
/// Fails when there is no such file, it cannot be read, or is no plain file; never waits for a pipe. Reads an MP3 whole
/// unless its sound is estimated, and of the others a little. A tag of more than 32 MiB is passed over, and so are what
/// a tag says behind its thousandth frame and compressed frames that are large.
///
/// From one thread at a time.
base::Result<platform::FileTags> readFileTags(const std::string& hostPath,
                                              platform::SoundReading reading = platform::SoundReading::whole);

}
