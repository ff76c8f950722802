#include "host/audio/voice.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tonquay::host {

namespace {

constexpr int gainBits = 15;
constexpr std::int32_t fullGain = 1 << gainBits;

std::int16_t saturated(std::int32_t sample)
{
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(std::clamp<std::int32_t>(sample, Limits::min(), Limits::max()));
}

/// Neither is above 2^15, so the product fits; the half rounds to the nearest.
std::int32_t scaled(std::int32_t sample, std::int32_t gain)
{
    return (sample * gain + fullGain / 2) >> gainBits;
}

}

Voice::Voice(std::unique_ptr<ReadAhead> source) : source_(std::move(source)), leftGain_(fullGain), rightGain_(fullGain)
{}

void Voice::mixInto(std::span<std::int16_t> block, Time now)
{
    heard_ = coming_;
    heardSince_ = now;
    coming_ = {.begin = taken_, .end = taken_, .peaks = {}};

    while (!block.empty()) {
        const auto piece = source_->ready();
        if (piece.empty())
            break;
        const std::size_t bytes = std::min(piece.size(), block.size_bytes());
        const auto frames = piece.first(bytes);
        add(frames, block);
        if (tap_)
            tap_(frames);
        coming_.peaks = peaksOf(frames, coming_.peaks);
        source_->take(bytes);
        taken_ += static_cast<std::int64_t>(bytes);
        block = block.subspan(bytes / sizeof(std::int16_t));
    }
    coming_.end = taken_;

    const bool ended = source_->end() != ReadAhead::End::none;
    starving_ = !block.empty() && !ended;
    if (ended && heard_.begin == taken_ && !over_) {
        over_ = true;
        source_->drained();
    }
}

void Voice::add(std::span<const std::byte> frames, std::span<std::int16_t> block) const
{
    const std::size_t samples = frames.size() / sizeof(std::int16_t);
    for (std::size_t at = 0; at + 1 < samples; at += 2) {
        block[at] = saturated(block[at] + scaled(sampleAt(frames, at * 2), leftGain_));
        block[at + 1] = saturated(block[at + 1] + scaled(sampleAt(frames, at * 2 + 2), rightGain_));
    }
}

void Voice::setGains(float volume, float pan)
{
    const float loud = std::clamp(volume, 0.0F, 100.0F) / 100.0F;
    const float side = std::clamp(pan, -100.0F, 100.0F) / 100.0F;
    const auto gain = [loud](float part) { return static_cast<std::int32_t>(std::lround(loud * part * fullGain)); };
    leftGain_ = gain(std::min(1.0F, 1.0F - side));
    rightGain_ = gain(std::min(1.0F, 1.0F + side));
}

void Voice::seek(std::int64_t position)
{
    source_->seek(position);
    taken_ = position;
    rest();
}

void Voice::rest()
{
    heard_ = {.begin = taken_, .end = taken_, .peaks = {}};
    coming_ = heard_;
    starving_ = false;
    over_ = false;
}

std::int64_t Voice::heardPosition(Time now) const
{
    const auto elapsed = std::chrono::duration_cast<std::chrono::microseconds>(now - heardSince_).count();
    const std::int64_t frames = std::clamp<std::int64_t>(elapsed, 0, 1'000'000) * framesPerSecond / 1'000'000;
    return std::min(heard_.begin + frames * static_cast<std::int64_t>(frameBytes), heard_.end);
}

}
