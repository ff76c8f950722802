#pragma once

#include "host/audio/read_ahead.h"
#include "host/audio/stream.h"
#include "platform/decode_report.h"

#include <functional>
#include <memory>

namespace tonquay::host {

/// A track that is read as fast as the disc gives it, in blocks of the caller's size.
///
/// It cannot be played, paused or moved: what it delivers is the track from its first byte on, once.
class DecodeStream : public Stream {
public:
    using EndCall = std::function<void(const platform::DecodeReport&)>;

    /// `origin` brings the drive, the track and the bytes expected. `whenEnded` is called once, by data() or stop().
    DecodeStream(std::uint32_t flags, std::unique_ptr<ReadAhead> source, const platform::DecodeReport& origin,
                 EndCall whenEnded);

    Engine::Active active() override { return source_ ? Engine::playing : Engine::stopped; }
    std::int64_t position() override { return report_.bytesDelivered; }
    Peaks peaks() override;
    void stop() override;

    /// Fills the whole frames of the buffer; sleeps until they are read.
    std::int32_t data(std::span<std::byte> buffer) override;

private:
    void keepPeaks();
    void conclude(platform::DecodeReport::End end);

    std::unique_ptr<ReadAhead> source_; ///< null once the stream has ended
    platform::DecodeReport report_;
    EndCall whenEnded_;
    // Peaks are counted when somebody asks, from the part of the block that still lies in the ring.
    Peaks peaks_;
    std::span<const std::byte> uncounted_;
};

}
