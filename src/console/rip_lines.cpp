#include "console/rip_lines.h"

#include "console/play_time.h"
#include "console/screen_text.h"

#include <cmath>
#include <fmt/format.h>

namespace tonquay::console {

namespace {

std::string files(int count)
{
    return count == 1 ? "1 file" : fmt::format("{} files", count);
}

}

std::string verdictLine(const TrackVerdict& verdict)
{
    const std::string crc = verdict.crc ? fmt::format("{:08X}", *verdict.crc) : "--------";
    std::string line =
        fmt::format("{:>2}  {}  {:.1f} s  {}  {}  {}", verdict.number, shownBytes(verdict.path), verdict.playSeconds,
                    speedText(verdict.playSeconds, verdict.taken), crc, verdict.whole ? "whole" : "broken");
    if (!verdict.text.empty())
        line += ": " + shownBytes(verdict.text);
    return line;
}

std::string problemLine(const TrackVerdict& verdict)
{
    return fmt::format("tonquay: track {}: {}: {}", verdict.number, shownBytes(verdict.path), shownBytes(verdict.text));
}

std::string summaryLine(const RunEnd& end)
{
    std::string line = files(end.whole) + " whole";
    if (end.broken > 0)
        line += fmt::format(", {} not", end.broken);
    if (end.left > 0)
        line += fmt::format(", {} left out", end.left);
    return line + fmt::format("; {} of sound in {:.1f} s, {}", clockText(std::lround(end.playSeconds)),
                              end.taken.count(), speedText(end.playSeconds, end.taken));
}

}
