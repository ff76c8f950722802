#pragma once

#include "console/file_verdict.h"
#include "console/rip_view.h"
#include "platform/decode_report.h"
#include "platform/processes.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tonquay::console {

/// What was seen of one track in a run.
struct TrackRecord {
    bool begun = false;
    bool told = false; ///< its verdict was told
    Seconds taken{0};
    std::optional<platform::DecodeReport> report{};      ///< of its reading
    std::string problem{};                               ///< what went wrong last while it was in hand
    std::string source{};                                ///< what it was recorded from; empty unless it was
    std::optional<FileVerdict> written{};                ///< on the WAV or WMA file, from when it was done
    std::optional<platform::Processes::Child> encoder{}; ///< 0: could not be started; nothing: none was
    bool unwritten = false; ///< when its encoder had ended, its file was older than the run, or not there
};

/// Why the track in `row` of the list could not be read whole, one sentence; empty when it was.
std::string whyNotRead(const TrackRecord& record, std::int32_t row);

/// What became of places that were not read at the first try, as "read again at 0:12; repaired at 1:05-1:07"; empty
/// without troubles.
std::string troublesText(const platform::ReadTroubles& troubles);

/// Puts a remark behind a text that may be empty.
void addRemark(std::string& text, const std::string& remark);

/// Why its encoder has not done its work, by how it was started and ended; empty when it ended well. `code` is its
/// exit code, nothing while it lives.
std::string whyNotEncoded(const TrackRecord& record, std::optional<int> code);

}
