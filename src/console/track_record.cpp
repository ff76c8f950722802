#include "console/track_record.h"

#include <fmt/format.h>

namespace tonquay::console {

std::string whyNotRead(const TrackRecord& record, std::int32_t row)
{
    using End = platform::DecodeReport::End;
    std::string otherwise = record.problem.empty() ? "it could not be opened for reading" : record.problem;
    if (!record.report || record.report->track != row)
        return otherwise;
    switch (record.report->end) {
    case End::complete: return record.problem;
    case End::unreadable:
        return fmt::format("sector {} cannot be read; clean the disc or try another drive",
                           record.report->firstBadSector);
    case End::gone: return "the disc was taken out";
    case End::stopped: break;
    }
    return otherwise;
}

std::string whyNotEncoded(const TrackRecord& record, std::optional<int> code)
{
    constexpr int signalBase = 128;
    constexpr int lastSignal = 64;
    if (!record.encoder)
        return "not encoded: the run was stopped before";
    if (*record.encoder == 0)
        return "the encoder could not be started";
    if (!code)
        return "unfinished: its encoder is still at work";
    // Above them are statuses again: programs that answer -1 end with 255.
    if (*code > signalBase && *code <= signalBase + lastSignal)
        return fmt::format("the encoder was ended by signal {}", *code - signalBase);
    if (*code != 0)
        return fmt::format("the encoder ended with status {}; --verbose shows what it says", *code);
    return {};
}

}
