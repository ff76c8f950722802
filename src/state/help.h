#pragma once

#include "platform/help_viewer.h"
#include "state/settings.h"

#include <cstdint>

namespace tonquay::state {

/// Topics of the help by number.
inline constexpr std::int32_t ripperTopic = 1008;
inline constexpr std::int32_t setupTopic = 1016;
inline constexpr std::int32_t toWavTopic = 1019;
inline constexpr std::int32_t tagUtilityTopic = 1020;

/// Shows a topic of the help.
void helpOpen(platform::HelpViewer& viewer, const Folders& folders, std::int32_t topic);

}
