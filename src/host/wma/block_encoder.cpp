#include "host/wma/block_encoder.h"

#include "base/red_book.h"

#include <algorithm>
#include <utility>

namespace tonquay::host {

namespace {

constexpr std::size_t frameBytes = 4;
constexpr std::size_t blockFrames = BlockEncoder::framesPerBlock;

base::Failure failed(const char* what, int error)
{
    return {base::Failure::Kind::other, "Windows Media Audio", std::string(what) + ": " + ffmpeg::errorText(error)};
}

/// The rate that has blocks of that size. A file tells it in bytes, and a decoder goes by what the file tells.
std::int64_t rateOf(std::size_t blockBytes)
{
    constexpr std::int64_t bitsPerByte = 8;
    const std::int64_t bytesPerSecond =
        (static_cast<std::int64_t>(blockBytes) * base::red_book::samplesPerSecond + BlockEncoder::framesPerBlock - 1) /
        BlockEncoder::framesPerBlock;
    return bytesPerSecond * bitsPerByte;
}

/// A frame of silence; null without memory.
ffmpeg::Frame frameFor(const AVCodecContext& codec)
{
    ffmpeg::Frame frame(ffmpeg::library().av_frame_alloc());
    if (!frame)
        return frame;
    frame->format = codec.sample_fmt;
    frame->nb_samples = codec.frame_size;
    frame->sample_rate = codec.sample_rate;
    if (ffmpeg::library().av_channel_layout_copy(&frame->ch_layout, &codec.ch_layout) < 0 ||
        ffmpeg::library().av_frame_get_buffer(frame.get(), 0) < 0 ||
        ffmpeg::library().av_samples_set_silence(frame->extended_data, 0, frame->nb_samples, 2, codec.sample_fmt) < 0)
        frame.reset();
    return frame;
}

std::span<float> channel(AVFrame& frame, std::size_t index)
{
    return {reinterpret_cast<float*>(frame.extended_data[index]), blockFrames};
}

/// A signed 16-bit little-endian sample, full scale being 1.
float sampleAt(std::span<const std::byte> sound, std::size_t offset)
{
    constexpr float fullScale = 32768;
    const auto bits = static_cast<std::uint16_t>(std::to_integer<unsigned>(sound[offset]) |
                                                 std::to_integer<unsigned>(sound[offset + 1]) << 8);
    return static_cast<float>(static_cast<std::int16_t>(bits)) / fullScale;
}

}

base::Result<BlockEncoder> BlockEncoder::open(std::size_t blockBytes)
{
    if (ffmpeg::Library::load() == nullptr)
        return base::Failure{base::Failure::Kind::unavailable, "Windows Media Audio",
                             "FFmpeg's libraries, which encode it, are not installed"};
    const AVCodec* kind = ffmpeg::library().avcodec_find_encoder(AV_CODEC_ID_WMAV2);
    ffmpeg::Codec codec(kind == nullptr ? nullptr : ffmpeg::library().avcodec_alloc_context3(kind));
    ffmpeg::Packet packet(ffmpeg::library().av_packet_alloc());
    if (!codec || !packet)
        return base::Failure{base::Failure::Kind::unavailable, "Windows Media Audio", "there is no encoder for it"};
    codec->bit_rate = rateOf(blockBytes);
    codec->sample_rate = base::red_book::samplesPerSecond;
    codec->sample_fmt = AV_SAMPLE_FMT_FLTP;
    codec->time_base = {1, codec->sample_rate};
    ffmpeg::library().av_channel_layout_default(&codec->ch_layout, 2);
    if (const int error = ffmpeg::library().avcodec_open2(codec.get(), kind, nullptr); error < 0)
        return failed("the encoder does not open", error);
    if (codec->frame_size != framesPerBlock || codec->block_align != static_cast<int>(blockBytes))
        return base::Failure{base::Failure::Kind::unavailable, "Windows Media Audio", "the encoder works otherwise"};
    ffmpeg::Frame frame = frameFor(*codec);
    ffmpeg::Frame before = frameFor(*codec);
    if (!frame || !before)
        return base::Failure{base::Failure::Kind::other, "Windows Media Audio", "there is no memory for it"};
    return BlockEncoder(std::move(codec), std::move(frame), std::move(before), std::move(packet));
}

BlockEncoder::BlockEncoder(ffmpeg::Codec codec, ffmpeg::Frame frame, ffmpeg::Frame before, ffmpeg::Packet packet)
    : codec_(std::move(codec)),
      frame_(std::move(frame)),
      before_(std::move(before)),
      packet_(std::move(packet))
{}

base::Status BlockEncoder::write(std::span<const std::byte> sound, const Take& take)
{
    if (auto begun = begin(take); !begun)
        return begun;
    while (sound.size() >= frameBytes) {
        if (auto made = makeRoom(); !made)
            return made;
        sound = sound.subspan(fill(sound));
        if (filled_ == blockFrames)
            if (auto encoded = encodeFrame(take); !encoded)
                return encoded;
    }
    return {};
}

base::Status BlockEncoder::finish(const Take& take)
{
    if (auto begun = begin(take); !begun)
        return begun;
    if (filled_ > 0)
        if (auto encoded = encodeSilence(take); !encoded)
            return encoded;
    return encodeSilence(take);
}

base::Status BlockEncoder::begin(const Take& take)
{
    return std::exchange(begun_, true) ? base::Status() : encodeSilence(take);
}

/// The encoder may still hold the memory of the frame before.
base::Status BlockEncoder::makeRoom()
{
    if (filled_ > 0)
        return {};
    if (const int error = ffmpeg::library().av_frame_make_writable(frame_.get()); error < 0)
        return failed("there is no memory for sound", error);
    return {};
}

/// Takes as much as there is room for; the result is its bytes.
std::size_t BlockEncoder::fill(std::span<const std::byte> sound)
{
    const std::size_t count = std::min(sound.size() / frameBytes, blockFrames - filled_);
    const auto left = channel(*frame_, 0).subspan(filled_);
    const auto right = channel(*frame_, 1).subspan(filled_);
    for (std::size_t i = 0; i < count; ++i) {
        left[i] = sampleAt(sound, i * frameBytes);
        right[i] = sampleAt(sound, i * frameBytes + frameBytes / 2);
    }
    filled_ += count;
    frames_ += static_cast<std::int64_t>(count);
    return count * frameBytes;
}

/// What is there already, filled up.
base::Status BlockEncoder::encodeSilence(const Take& take)
{
    if (auto made = makeRoom(); !made)
        return made;
    for (const std::size_t side : {0U, 1U})
        std::ranges::fill(channel(*frame_, side).subspan(filled_), 0.0F);
    return encodeFrame(take);
}

/// Leaves the block in packet_; the result is an error of the library or 0.
int BlockEncoder::encode(AVFrame& frame)
{
    if (const int error = ffmpeg::library().avcodec_send_frame(codec_.get(), &frame); error < 0)
        return error;
    return ffmpeg::library().avcodec_receive_packet(codec_.get(), packet_.get());
}

/// A block spans two frames of sound, of which the encoder keeps the first; so both are halved.
int BlockEncoder::encodeSofter()
{
    for (AVFrame* const frame : {before_.get(), frame_.get()}) {
        if (const int error = ffmpeg::library().av_frame_make_writable(frame); error < 0)
            return error;
        for (const std::size_t side : {0U, 1U})
            std::ranges::for_each(channel(*frame, side), [](float& sample) { sample /= 2; });
    }
    if (encode(*before_) == 0)
        ffmpeg::library().av_packet_unref(packet_.get());
    return encode(*frame_);
}

base::Status BlockEncoder::encodeFrame(const Take& take)
{
    constexpr int mostHalvings = 10;
    filled_ = 0;
    int error = encode(*frame_);
    for (int i = 0; i < mostHalvings && error == AVERROR(EINVAL); ++i)
        error = encodeSofter();
    if (error < 0)
        return failed("the sound cannot be encoded", error);
    std::swap(frame_, before_);
    base::Status taken = take(std::as_bytes(std::span(packet_->data, static_cast<std::size_t>(packet_->size))));
    ffmpeg::library().av_packet_unref(packet_.get());
    return taken;
}

}
