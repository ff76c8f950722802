#pragma once

#include "controls/property.h"
#include "platform/decode_report.h"
#include "platform/event_loop.h"
#include "state/ripdeck_controls.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tonquay::ui {

/// What a person is told of a run when it is over, since the run itself shows nothing: how many tracks were read or
/// recorded and where their files are, or what went wrong. It rests on what the readers delivered and on the lines that
/// failing steps leave, and changes nothing.
class RunReport {
public:
    struct Result {
        bool good = true;
        std::string text{};                  ///< one line
        std::vector<std::string> problems{}; ///< each in a line
    };

    struct Questions {
        std::function<std::string()> folder;         ///< of the run's files, as this system writes it
        std::function<bool()> encodersAreAtWork;     ///< that still are to be followed
        std::function<void(const Result&)> tellNews; ///< an empty text takes an older one away
    };

    /// Follows the key that shows whether a run is on.
    RunReport(state::RipdeckControls& ripdeck, platform::EventLoop& loop, Questions questions);

    /// A diagnostic line. On the logic's thread.
    void line(std::string_view area, std::string_view text);

    void decodeEnded(const platform::DecodeReport& report);

private:
    void begin();
    void end();
    void tell();

    platform::EventLoop& loop_;
    Questions questions_;
    controls::Following following_;
    std::unique_ptr<platform::EventLoop::LoopTimer> waiting_; ///< for encoders in the background
    bool running_ = false;
    int whole_ = 0;
    int recorded_ = 0;
    std::vector<std::string> problems_;
};

}
