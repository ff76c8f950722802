#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace tonquay::console {

/// What a drive can do, bit by bit, with its key in JSON and its words for people.
struct Ability {
    std::uint32_t bit;
    std::string_view key;
    std::string_view words;
};

constexpr std::array abilities{
    Ability{0x1, "read_cdr", "CD-R"},
    Ability{0x2, "read_cdrw", "CD-RW"},
    Ability{0x4, "read_method2", "CD-R/RW method 2"},
    Ability{0x8, "read_dvd_rom", "DVD-ROM"},
    Ability{0x10, "read_dvd_r", "DVD-R"},
    Ability{0x20, "read_dvd_ram", "DVD-RAM"},
    Ability{0x100000, "read_mode2_form1", "mode 2 form 1"},
    Ability{0x200000, "read_mode2_form2", "mode 2 form 2"},
    Ability{0x400000, "read_multisession", "multi-session discs"},
    Ability{0x1000000, "read_audio", "CD audio"},
    Ability{0x2000000, "accurate_stream", "accurate stream"},
};

}
