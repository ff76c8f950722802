#pragma once

#include "console/options.h"
#include "console/screen.h"
#include "platform/decode_report.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace tonquay::console {

using Seconds = std::chrono::duration<double>;

/// What is going on in a run, in the words of whoever carries it out. Texts may hold anything; views make them
/// harmless.
struct RunFacts {
    int tracks = 0;
    double playSeconds = 0; ///< of all selected tracks
    std::string folder{};   ///< host path of the output folder
    std::string format{};   ///< "wav"
};

struct TrackFacts {
    int number = 0;  ///< as printed on the sleeve
    int ordinal = 1; ///< in this run, from 1
    std::wstring title{};
    std::string path{}; ///< host path of its file
    double playSeconds = 0;
};

struct RunProgress {
    enum class Activity { recording, encoding };

    Activity activity = Activity::recording;
    double trackPart = 0;       ///< 0 to 1
    double totalPart = 0;       ///< 0 to 1
    double playSecondsRead = 0; ///< of the whole run so far
    Seconds elapsed{0};         ///< since the run began
};

struct TrackVerdict {
    int number = 0;
    std::string path{};
    double playSeconds = 0;
    Seconds taken{0};
    std::optional<std::uint32_t> crc{}; ///< of its samples
    bool whole = false;
    std::string text{}; ///< what is wrong, or a remark on a whole file; mostly empty
    platform::ReadTroubles troubles{};
};

struct RunEnd {
    int whole = 0;
    int broken = 0;
    int left = 0;           ///< selected, but not begun: the run was stopped
    double playSeconds = 0; ///< of the whole ones
    Seconds taken{0};
};

/// Shows a run. Called in the order run, then track, encoding, progress and verdict
/// in any number and mixture, a track's verdict after its beginning, then left out..., end, from one thread. A view
/// depends on what it is told and on the screen only: it asks no clock.
class RipView {
public:
    virtual ~RipView() = default;
    virtual void runBegins(const RunFacts& run) = 0;
    virtual void trackBegins(const TrackFacts& track) = 0;
    /// The encoder of a track that was read before was started; no track is being read.
    virtual void encodingBegins(const TrackFacts& track) = 0;
    /// May be called as often as there is news; a view shows what people can follow.
    virtual void progress(const RunProgress& progress) = 0;
    virtual void trackEnds(const TrackVerdict& verdict) = 0;
    /// A selected track that was not begun, with the reason as its text; after the last trackEnds.
    virtual void trackIsLeftOut(const TrackVerdict& track) = 0;
    virtual void runEnds(const RunEnd& end) = 0;
};

enum class ViewKind { bars, lines, json, jsonQuiet, quiet };

/// Bars on a terminal, otherwise a line for each finished track, also when diagnostic lines would run between the bars.
/// Quiet leaves the summary and the problems.
ViewKind viewKind(const RipOptions& options, const Screen& screen);

std::unique_ptr<RipView> makeRipView(ViewKind kind, Screen& screen);

}
