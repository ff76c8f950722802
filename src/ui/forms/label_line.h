#pragma once

#include "controls/label.h"
#include "state/settings.h"
#include "ui/forms/bindings.h"
#include "ui/forms/text_line.h"

#include <functional>

namespace tonquay::ui {

/// A label of the program as one line of text.
class LabelLine final : public TextLine {
public:
    /// `shown` makes of a caption what is shown of it.
    LabelLine(controls::Label& label, const state::Theme& theme, const Look& look, const QString& name,
              std::function<QString(const QString&)> shown = {});

    /// Has presses and releases on it reach the label, and the pointer say so.
    void forwardPresses();

private:
    controls::Label& label_;
    Bindings bindings_;
};

}
