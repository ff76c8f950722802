#pragma once

#include <QColor>

/// The suite's palette: dark, calm, one accent for what is to be pressed, one light colour for what is on.
namespace tonquay::ui::colours {

inline constexpr QColor window{0x14, 0x17, 0x1c};
inline constexpr QColor panel{0x1b, 0x1f, 0x26};
inline constexpr QColor display{0x0b, 0x0d, 0x11};
inline constexpr QColor key{0x23, 0x28, 0x31};
inline constexpr QColor keyHover{0x2c, 0x32, 0x3d};
inline constexpr QColor keyDown{0x18, 0x1c, 0x22};
inline constexpr QColor border{0x2e, 0x34, 0x3e};
inline constexpr QColor groove{0x23, 0x28, 0x31};
inline constexpr QColor text{0xe9, 0xec, 0xf0};
inline constexpr QColor muted{0x93, 0x9b, 0xa7};
inline constexpr QColor dim{0x5a, 0x62, 0x6e};
inline constexpr QColor accent{0xff, 0xb4, 0x54};
inline constexpr QColor accentText{0x23, 0x1a, 0x0b};
inline constexpr QColor on{0x57, 0xd3, 0xbf};
inline constexpr QColor alarm{0xff, 0x6b, 0x5e};
inline constexpr QColor selection{0x2a, 0x3a, 0x3e};

}
