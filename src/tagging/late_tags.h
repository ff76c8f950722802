#pragma once

#include "platform/event_loop.h"
#include "platform/platform.h"
#include "platform/processes.h"
#include "state/app_state.h"
#include "tagging/tag_values.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tonquay::tagging {

/// Tags the MP3 files of a run that the automatic tagger could not reach: under Turbo their encoders were still at
/// work, or had not begun to write, when it had its turn, and a stopped run never calls it.
///
/// Every encoder of a run is followed here, on the loop and outside of the run. When one has ended and its run is over,
/// the file that it made is looked at, and if it carries no tag, it gets the one that the values of the encoder's start
/// give. Ogg files carry their tags already.
class LateTags {
public:
    /// Both outlive this.
    LateTags(state::AppState& state, platform::Platform& platform) : state_(state), platform_(platform) {}

    /// An encoder was started for the track in `row` of the list; 0 for one that could not be. The disc's values are
    /// taken as they are now.
    void encoderStarted(std::int32_t row, platform::Processes::Child child, const std::wstring& encodedPath);

    /// True while there are files to tag.
    bool pending() const { return !waiting_.empty(); }

private:
    struct Waiting {
        platform::Processes::Child child = 0;
        std::wstring path;
        TagValues values;
        std::wstring title;
        std::int32_t track = 0;
        bool runIsOver = false;
    };

    void look();
    void tag(const Waiting& file);

    state::AppState& state_;
    platform::Platform& platform_;
    std::vector<Waiting> waiting_;
    std::unique_ptr<platform::EventLoop::LoopTimer> looking_; ///< while something waits
};

}
