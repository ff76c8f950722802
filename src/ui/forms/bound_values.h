#pragma once

#include "controls/lists.h"
#include "controls/slider.h"
#include "ui/forms/bindings.h"

class QComboBox;
class QSlider;

/// Widgets that show one of several values, each bound to a control of a form. All widgets live as long as their
/// control or shorter.
namespace tonquay::ui {

/// A choice by the user is one by the program too; the row that was chosen already counts anew.
void bindChoice(QComboBox& view, controls::ChoiceList& list, Bindings& bindings);

/// A movement by the user drags the control, and letting go clicks it. What the program sets is only shown.
void bindSlider(QSlider& view, controls::Slider& slider, Bindings& bindings);

}
