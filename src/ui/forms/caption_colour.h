#pragma once

#include "controls/label.h"
#include "state/settings.h"

#include <QColor>

namespace tonquay::ui {

/// The colour that a caption is drawn in: `design` where the program has set none. With the suite's colour theme its
/// colours are drawn as they are; without one the numbers that the program tells states by become colours of ours.
QColor captionColour(controls::Colour colour, const state::Theme& theme, const QColor& design);

/// True when the program has set a caption alight.
bool isLit(controls::Colour colour, const state::Theme& theme);

}
