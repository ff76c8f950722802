#include "engine/error_reporters.h"

#include "base/numbers.h"
#include "base/text.h"

namespace tonquay::engine {

void ReportEngineError(platform::Diagnostics& log, std::wstring_view text, std::int32_t code)
{
    log.line("engine", base::utf8(std::wstring(text) + base::str(code)));
}

void LogError(platform::Diagnostics& log, std::int32_t number, std::wstring_view procedure, std::wstring_view module,
              std::wstring_view description)
{
    log.line("engine", base::utf8(std::wstring(module) + L'.' + std::wstring(procedure) + L':' + base::str(number) +
                                  L' ' + std::wstring(description)));
}

}
