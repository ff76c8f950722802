#pragma once

#include "controls/buttons.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace tonquay::controls {

/// Options of which at most one is on. Choosing one switches the others off first; only the one that comes on fires
/// click.
template <std::size_t count>
class OptionGroup {
public:
    OptionButton& operator[](std::size_t index) { return options_[index]; }

    auto begin() { return options_.begin(); }
    auto end() { return options_.end(); }
    static constexpr std::int32_t size() { return static_cast<std::int32_t>(count); }

    /// An index that no option has changes nothing.
    void choose(std::int32_t index)
    {
        if (index < 0 || index >= size())
            return;
        for (std::int32_t i = 0; i < size(); ++i)
            if (i != index)
                options_[static_cast<std::size_t>(i)].setValue(false);
        options_[static_cast<std::size_t>(index)].setValue(true);
    }

    /// All off, as in the design.
    void clear()
    {
        for (OptionButton& option : options_)
            option.setValue(false);
    }

    /// -1 when none is on.
    std::int32_t chosen() const
    {
        for (std::int32_t i = 0; i < size(); ++i)
            if (options_[static_cast<std::size_t>(i)].value())
                return i;
        return -1;
    }

private:
    std::array<OptionButton, count> options_;
};

}
