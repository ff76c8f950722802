#pragma once

#include "engine/engine_context.h"

#include <functional>
#include <string>

namespace tonquay::engine {

/// What happens every 50 ms while the engine form is loaded: the door is looked at, and the main window's level meters,
/// bars, percentages and times follow the stream, whether it plays or is extracted. When nothing has moved for a
/// second it happens twice a second only, until something moves or is pressed: a program that lies idle on a disc
/// should not keep a processor from sleeping, and the state of a drive is looked at once a second at most.
class PositionTimer {
public:
    /// `loadTrackList` is called when a shut door is seen with no tracks listed.
    PositionTimer(EngineContext& context, std::function<void()> loadTrackList);

    void tick();

private:
    void settle(bool active);
    void watchDoor();
    void showLevels();
    void showPosition();

    EngineContext& c_;
    std::function<void()> loadTrackList_;
    bool seekingPosition_ = false;
    bool doorWasOpen_ = false;
    float ratio_ = 0;
    std::int16_t trackPercent_ = 0;
    std::wstring trackPercentText_;
    std::int16_t totalPercent_ = 0;
};

}
