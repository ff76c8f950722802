#pragma once

#include <cstdint>

namespace tonquay::host {

struct ScreenSize {
    std::int32_t width;
    std::int32_t height;
};

/// The primary screen in logical pixels, panels of the desktop included.
ScreenSize screenSize();

}
