#include "ui/ripdeck/run_report.h"

#include "platform/acd_control.h"
#include "platform/mci.h"
#include "platform/wma_encoder.h"

#include <algorithm>
#include <array>
#include <chrono>

namespace tonquay::ui {

namespace {

/// Steps that failed, programs that ended badly, files that got no tag, tracks that are left out: what is no progress
/// of a run but its trouble.
bool tellsOfTrouble(std::string_view area, std::string_view text)
{
    if (area == "processes")
        return text.find(": ended ") != std::string_view::npos || text.find("cannot be") != std::string_view::npos;
    if (area == "tags")
        return text.find("gets no tag") != std::string_view::npos;
    if (area == "engine")
        return text.find("left out") != std::string_view::npos;
    constexpr std::array<std::string_view, 5> areas{"passed over", "extraction", platform::AcdControl::refusedArea,
                                                    platform::WmaEncoder::troubleArea, platform::Mci::troubleArea};
    return std::ranges::find(areas, area) != areas.end();
}

std::string countText(int count, const std::string& what)
{
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

}

RunReport::RunReport(state::RipdeckControls& ripdeck, platform::EventLoop& loop, Questions questions)
    : loop_(loop),
      questions_(std::move(questions)),
      following_(ripdeck.icntla[state::startButton].picture.follow([this](const int& look) {
          // In between the key shows as pressed.
          if (look == state::runningLook && !running_)
              begin();
          else if (look == state::idleLook && running_)
              end();
      }))
{}

void RunReport::line(std::string_view area, std::string_view text)
{
    constexpr std::size_t most = 100;
    if ((running_ || waiting_) && area == platform::Mci::savedArea)
        ++recorded_;
    if ((running_ || waiting_) && problems_.size() < most && tellsOfTrouble(area, text))
        problems_.emplace_back(text);
}

void RunReport::decodeEnded(const platform::DecodeReport& report)
{
    if (running_ && report.end == platform::DecodeReport::End::complete)
        ++whole_;
}

void RunReport::begin()
{
    running_ = true;
    waiting_.reset();
    whole_ = 0;
    recorded_ = 0;
    problems_.clear();
    questions_.tellNews({});
}

void RunReport::end()
{
    constexpr std::chrono::milliseconds interval{200};
    running_ = false;
    // Lines of other threads are on their way still.
    waiting_ = loop_.every(interval, [this] {
        if (questions_.encodersAreAtWork())
            return;
        tell();
        waiting_.reset();
    });
    if (questions_.encodersAreAtWork())
        questions_.tellNews({.good = true, .text = "Encoders are still at work; they need the program for their tags"});
}

void RunReport::tell()
{
    if (!problems_.empty()) {
        const std::size_t others = problems_.size() - 1;
        questions_.tellNews(
            {.good = false,
             .text = problems_.front() + (others > 0 ? " (and " + std::to_string(others) + " more)" : std::string()),
             .problems = problems_});
    } else if (whole_ > 0 || recorded_ > 0) {
        const std::string made = whole_ > 0 ? countText(whole_, "track") : countText(recorded_, "recording");
        questions_.tellNews({.good = true, .text = made + " in " + questions_.folder()});
    } else {
        questions_.tellNews({});
    }
}

}
