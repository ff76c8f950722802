#pragma once

#include <cstdint>
#include <optional>

namespace tonquay::host {

/// The sound of a layer III stream (ISO 11172-3, 13818-3, and the 2.5 extension of them), as its frames tell it.
struct MpegSound {
    int sampleRateHz = 0; ///< of the first frame
    int channels = 0;     ///< likewise
    std::int64_t frames = 0;
    std::int64_t bytes = 0; ///< of those frames
    double seconds = 0;
    bool complete = true; ///< false: the last frame is cut, or an information frame announces more frames
};

/// Walks the frames of a file from the first to the last. Nothing when there are no two frames in a row, or one that
/// fills the file, within 256 KiB behind its ID3v2 tags. An information frame (Xing, Info, VBRI) is no sound and does
/// not count. Some junk between frames is passed over. Reads the whole file; 1 GB takes about a second. Free format
/// (a bitrate that no frame names) is not known.
std::optional<MpegSound> walkMpegSound(int descriptor, std::int64_t length);

/// The same from a few places of the file: from the counts of an information frame that fit the file's size, or from
/// the bitrate when frames at five places share it. A file that gives neither is walked. Whether it is complete is not
/// looked at. Tags at the end (ID3v1, APE) do not count as sound.
std::optional<MpegSound> estimateMpegSound(int descriptor, std::int64_t length);

}
