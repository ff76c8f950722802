#pragma once

#include "platform/mci.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tonquay::host {

/// What a command comes to: 0 or an error of platform::Mci, and the text that was asked for.
struct MciAnswer {
    std::uint32_t code = 0;
    std::wstring text{};
};

/// An open device. It closes with its object.
class MciDevice {
public:
    virtual ~MciDevice() = default;

    /// `words`: the verb, the device's name, and what is behind it. Not for opening and closing.
    virtual MciAnswer carryOut(const std::vector<std::wstring>& words) = 0;
};

}
