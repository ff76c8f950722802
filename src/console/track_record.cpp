#include "console/track_record.h"

#include "console/play_time.h"

#include <fmt/format.h>

#include <utility>

namespace tonquay::console {

std::string whyNotRead(const TrackRecord& record, std::int32_t row)
{
    using End = platform::DecodeReport::End;
    std::string otherwise = record.problem.empty() ? "it could not be opened for reading" : record.problem;
    if (!record.report || record.report->track != row)
        return otherwise;
    const platform::DecodeReport& report = *record.report;
    switch (report.end) {
    case End::complete:
        if (!report.troubles.givenUp.empty())
            return "not every sample could be read, and the file has silence or a guess instead: " +
                   troublesText(report.troubles);
        return record.problem;
    case End::unreadable:
        return fmt::format("sector {} cannot be read; clean the disc or try another drive", report.firstBadSector);
    case End::gone: return "the disc was taken out";
    case End::unwritten: return report.problem;
    case End::stopped: return record.problem.empty() ? "stopped before its end" : record.problem;
    }
    return otherwise;
}

std::string troublesText(const platform::ReadTroubles& troubles)
{
    std::string text;
    for (const auto& [what, seconds] :
         {std::pair{"read again", &troubles.reread}, std::pair{"repaired", &troubles.repaired},
          std::pair{"given up", &troubles.givenUp}})
        if (!seconds->empty())
            addRemark(text, fmt::format("{} at {}", what, timesText(*seconds)));
    return text;
}

void addRemark(std::string& text, const std::string& remark)
{
    if (!text.empty() && !remark.empty())
        text += "; ";
    text += remark;
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
