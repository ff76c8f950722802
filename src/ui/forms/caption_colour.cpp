#include "ui/forms/caption_colour.h"

#include "ui/skin/colours.h"

namespace tonquay::ui {

namespace {

constexpr controls::Colour unset = 0;
constexpr controls::Colour red = 255;
constexpr controls::Colour bright = 0x00FFFF;
constexpr controls::Colour dark = 0x004040;
constexpr controls::Colour darkRed = 128;

}

QColor captionColour(controls::Colour colour, const state::Theme& theme, const QColor& design)
{
    if (colour == unset)
        return design;
    if (theme.useThemeColours != 1) {
        switch (colour) {
        case red: return colours::alarm;
        case bright: return colours::accent;
        case dark: return colours::muted;
        case darkRed: return colours::dim;
        default: break;
        }
    }
    return {colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF};
}

bool isLit(controls::Colour colour, const state::Theme& theme)
{
    if (theme.useThemeColours == 1)
        return colour == theme.themeColourA && colour != unset;
    return colour == red || colour == bright;
}

}
