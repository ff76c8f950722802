#pragma once

#include "tags/file_bytes.h"

#include <cstdint>

/// The first frame of an MPEG audio file (ISO 11172-3 and 13818-3), and the Xing header that may lie in it.
///
/// A frame begins with four bytes:
///
///     1111 1111   111V VLLP   BBBB FFR-   CCEE ----     V version, B bitrate, F sample rate, C channels, E extension
///
/// Only the first twelve bits tell a frame from other bytes, so FindFrameSync() passes over those of version 2.5, which
/// have a 0 there. The layer is not looked at: all sound counts as Layer III. The tables are this program's own and
/// know whole kHz only.
///
/// A position counts from 1 and lies in 16 signed bits: what begins behind 32767 is not found, and a part of a header
/// that would lie there is not read. A byte that is not read, for that reason or because the file ends before it,
/// counts as 0.
///
/// `version` is that of GetMpegVersion(), rounded: 2.5 is taken for 2. With 0 bitrate and sample rate are 0.
namespace tonquay::tags {

/// Where the first frame at or behind `start` begins: at the first byte 255 that has a byte of at least 240 behind it,
/// wherever that is, also inside a tag. -1 when there is none up to the end of the file or position 32767.
std::int16_t FindFrameSync(FileBytes& file, std::int16_t start);

/// 1, 2 or 2.5; 0 for the pattern that means none.
float GetMpegVersion(FileBytes& file, std::int16_t position);

/// kbps. "Free" and the forbidden pattern give 128, and so do the rates that the table of version 2 does not have.
std::int16_t GetBitrate(FileBytes& file, std::int16_t position, std::int16_t version);

/// Whole kHz, without the fraction: 44 for 44.1, 22 for 22.05. The reserved pattern gives 44.
float GetSampleRate(FileBytes& file, std::int16_t position, std::int16_t version);

/// 0 mono, 1 stereo, 2 joint stereo, 3 dual channel. The mode extension counts as a fraction, which is rounded: with an
/// extension of 3 each mode is taken for the next one, joint stereo and mono (for stereo) with one of 2 already.
std::int16_t GetChannelMode(FileBytes& file, std::int16_t position);

/// True when "Xing" stands where that header has its place, which depends on version and channels.
bool HasXingHeader(FileBytes& file, std::int16_t position, std::int16_t version, std::int16_t channelCode);

/// The numbers of the Xing header: its flags (1: it tells the frames, 2: the bytes), the number of frames in the file
/// and the number of their bytes. They are read whether the flags announce them or not.
std::int64_t GetXingFlags(FileBytes& file, std::int16_t position, std::int16_t version, std::int16_t channelCode);
std::int64_t GetXingFrames(FileBytes& file, std::int16_t position, std::int16_t version, std::int16_t channelCode);
std::int64_t GetXingBytes(FileBytes& file, std::int16_t position, std::int16_t version, std::int16_t channelCode);

/// The number of the four bytes from `position` on, the most significant first. Where the file ends among them the last
/// one that it has stands for those that are missing.
std::int64_t ReadBigEndian32(FileBytes& file, std::int16_t position);

}
