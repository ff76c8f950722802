#pragma once

#include "platform/diagnostics.h"

#include <mutex>
#include <vector>

namespace tonquay::test {

/// Keeps the lines, each as "area: text".
class FakeDiagnostics final : public platform::Diagnostics {
public:
    void line(std::string_view area, std::string_view text) override
    {
        const std::lock_guard lock(mutex_);
        lines.push_back(std::string(area) + ": " + std::string(text));
    }

    /// True when a line holds `part`.
    bool says(std::string_view part) const
    {
        for (const std::string& entry : lines)
            if (entry.find(part) != std::string::npos)
                return true;
        return false;
    }

    std::vector<std::string> lines;

private:
    std::mutex mutex_;
};

}
