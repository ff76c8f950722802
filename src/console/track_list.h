#pragma once

#include "base/result.h"
#include "platform/discs.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace tonquay::console {

/// Tracks as a user lists them: `1,3-5,8-`, by the numbers printed on the sleeve. An open end reaches to the last
/// track.
class TrackList {
public:
    /// Fails on anything else: an empty list or place, 0, more than 99, an end before its start.
    static base::Result<TrackList> parse(std::string_view text);

    /// Their places in the disc's table, each once and in the table's order. Fails, with a sentence that names the
    /// track, for a number that the disc has not, and for a data track.
    base::Result<std::vector<std::size_t>> on(const std::vector<platform::DiscTrack>& tracks) const;

private:
    static constexpr int openEnd = 0;

    struct Span {
        int first;
        int last; ///< or openEnd
    };

    std::vector<Span> spans_;
};

/// The places of all audio tracks. Fails when there is none.
base::Result<std::vector<std::size_t>> allAudioTracks(const std::vector<platform::DiscTrack>& tracks);

}
