#pragma once

#include "controls/displays.h"
#include "controls/label.h"
#include "state/settings.h"
#include "ui/forms/bindings.h"

#include <QColor>
#include <QWidget>

namespace tonquay::ui {

/// A bar with its caption before and its percentage behind it. A click tells at which part of the width it was.
class ProgressRow final : public QWidget {
public:
    ProgressRow(controls::ProgressPanel& panel, controls::Label& caption, controls::Label& percent,
                const state::Theme& theme, const QColor& bar, QWidget* parent = nullptr);
};

}
