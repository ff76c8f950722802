#include "host/audio/decode_stream.h"

#include <cstring>
#include <limits>

namespace tonquay::host {

using platform::DecodeReport;

DecodeStream::DecodeStream(std::uint32_t flags, std::unique_ptr<ReadAhead> source, const DecodeReport& origin,
                           EndCall whenEnded)
    : Stream(flags, origin.bytesExpected),
      source_(std::move(source)),
      report_(origin),
      whenEnded_(std::move(whenEnded))
{}

std::int32_t DecodeStream::data(std::span<std::byte> buffer)
{
    if (!source_)
        return -1;
    constexpr std::size_t most = std::numeric_limits<std::int32_t>::max();
    buffer = buffer.first(std::min(buffer.size(), most) / frameBytes * frameBytes);

    peaks_ = {};
    uncounted_ = {};
    std::size_t filled = 0;
    while (filled < buffer.size() && report_.bytesDelivered < length()) {
        keepPeaks();
        const auto piece = source_->await();
        if (piece.empty())
            break;
        const auto part = piece.first(std::min(piece.size(), buffer.size() - filled));
        std::memcpy(buffer.data() + filled, part.data(), part.size());
        source_->take(part.size());
        uncounted_ = part;
        filled += part.size();
        report_.bytesDelivered += static_cast<std::int64_t>(part.size());
    }

    if (report_.bytesDelivered == length()) {
        conclude(DecodeReport::End::complete);
    } else if (filled == 0 && !buffer.empty()) {
        conclude(source_->end() == ReadAhead::End::gone ? DecodeReport::End::gone : DecodeReport::End::unreadable);
        return -1;
    }
    return static_cast<std::int32_t>(filled);
}

Peaks DecodeStream::peaks()
{
    keepPeaks();
    return peaks_;
}

void DecodeStream::stop()
{
    if (source_)
        conclude(DecodeReport::End::stopped);
}

/// Needed before the ring may use the block's memory anew.
void DecodeStream::keepPeaks()
{
    peaks_ = peaksOf(uncounted_, peaks_);
    uncounted_ = {};
}

void DecodeStream::conclude(DecodeReport::End end)
{
    keepPeaks();
    report_.end = end;
    report_.crc32 = source_->checksum();
    report_.firstBadSector = source_->badSector();
    source_.reset();
    if (whenEnded_)
        whenEnded_(report_);
}

}
