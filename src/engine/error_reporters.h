#pragma once

#include "platform/diagnostics.h"

#include <cstdint>
#include <string_view>

namespace tonquay::engine {

/// Where errors of the engine and of its form arrive. The user sees nothing of them; they leave a line.
void ReportEngineError(platform::Diagnostics& log, std::wstring_view text, std::int32_t code);
void LogError(platform::Diagnostics& log, std::int32_t number, std::wstring_view procedure, std::wstring_view module,
              std::wstring_view description);

}
