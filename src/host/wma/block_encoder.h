#pragma once

#include "base/result.h"
#include "host/wma/ffmpeg.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

namespace tonquay::host {

/// Windows Media Audio 2 of 44100 Hz stereo sound, block by block. A block is what 2048 frames of sound become, and all
/// blocks of a rate have the same size.
///
/// Decoders drop the first two blocks' worth of what they make, as the format's own encoder has taught them, and the
/// sound of a block is whole with the block behind it only. So a block of silence goes before the sound and one behind
/// it, and the last one with sound is filled up with silence. A decode then begins with the first frame of the sound,
/// has every frame, and goes on with silence: up to the end of the block, and 2048 frames more. A decoder of the years
/// before, which drops nothing, gives 4096 frames of silence first.
///
/// Noise as loud as a disc can have it does not fit into the blocks of low rates; it is encoded softer.
class BlockEncoder {
public:
    static constexpr std::int32_t framesPerBlock = 2048;
    static constexpr std::int32_t blocksBeforeSound = 2;

    /// Given each block in turn; a failure ends the encoding.
    using Take = std::function<base::Status(std::span<const std::byte> block)>;

    /// Blocks of that many bytes, which is what sets the rate. Fails when the encoder makes none of that size.
    static base::Result<BlockEncoder> open(std::size_t blockBytes);

    BlockEncoder(BlockEncoder&&) noexcept = default;
    BlockEncoder& operator=(BlockEncoder&&) noexcept = default;
    ~BlockEncoder() = default;

    /// What a container needs to know of the stream.
    const AVCodecContext& stream() const { return *codec_; }

    /// Sound in whole frames of four bytes; what does not fill a block is kept for the next call.
    base::Status write(std::span<const std::byte> sound, const Take& take);

    /// The rest, and what a decoder needs behind it.
    base::Status finish(const Take& take);

    /// Frames of sound written.
    std::int64_t frames() const { return frames_; }

private:
    BlockEncoder(ffmpeg::Codec codec, ffmpeg::Frame frame, ffmpeg::Frame before, ffmpeg::Packet packet);

    base::Status begin(const Take& take);
    base::Status makeRoom();
    std::size_t fill(std::span<const std::byte> sound);
    int encode(AVFrame& frame);
    int encodeSofter();
    base::Status encodeFrame(const Take& take);
    base::Status encodeSilence(const Take& take);

    ffmpeg::Codec codec_;
    ffmpeg::Frame frame_;
    ffmpeg::Frame before_; ///< what was encoded before it
    ffmpeg::Packet packet_;
    std::size_t filled_ = 0; ///< frames of sound in frame_
    std::int64_t frames_ = 0;
    bool begun_ = false;
};

}
