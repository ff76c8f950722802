#pragma once

#include "end_to_end/sandbox.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

/// Runs that end in MP3 files, and a judge of these files that rests on the machine's encoder.
namespace tonquay::test {

/// `tonquay rip --format mp3 --bitrate 128 --output OUT MORE DISC`.
std::unique_ptr<Child> startMp3Rip(const Sandbox& box, const std::filesystem::path& disc, const Arguments& more = {},
                                   const Environment& environment = {});

/// The text of a script that stands in for an encoder: it answers for its version, then does `body`, in which $mp3 is
/// the file to make, its last argument, and "$lame" the machine's encoder.
std::string fakeEncoder(const std::string& body);

/// Why these are not the bytes of a track that was encoded at 128 kbps and tagged with its title and number; empty when
/// they are, to the last byte of sound.
std::string whyNoMp3(const Sandbox& box, const std::vector<std::byte>& file, const DiscPlan& plan, std::size_t track);

}
