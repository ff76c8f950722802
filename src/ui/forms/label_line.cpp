#include "ui/forms/label_line.h"

#include "ui/forms/caption_colour.h"
#include "ui/forms/input.h"

#include <utility>

namespace tonquay::ui {

namespace {

controls::MouseButton controlButton(Qt::MouseButton button)
{
    return button == Qt::RightButton ? controls::MouseButton::right : controls::MouseButton::left;
}

}

LabelLine::LabelLine(controls::Label& label, const state::Theme& theme, const Look& look, const QString& name,
                     std::function<QString(const QString&)> shown)
    : TextLine(look),
      label_(label)
{
    constexpr int twipsPerPixel = 15;
    setAccessibleName(name);
    bindings_.show(label.caption, [this, shown = std::move(shown)](const std::wstring& caption) {
        setText(shown ? shown(qtText(caption)) : qtText(caption));
        label_.width = textWidth() * twipsPerPixel;
    });
    bindings_.show(label.colour, [this, &theme, design = look.colour](const controls::Colour& colour) {
        setColour(captionColour(colour, theme, design));
    });
    bindVisible(*this, label.visible, bindings_);
    bindings_.show(label.enabled, [this](const bool& enabled) { setEnabled(enabled); });
    bindings_.show(label.fontName, [this](const std::wstring& family) { setFamily(qtText(family)); });
    bindings_.show(label.fontSize, [this](const std::int32_t& points) {
        setPoints(points);
        label_.width = textWidth() * twipsPerPixel;
    });
    bindings_.show(label.toolTip, [this](const std::wstring& tip) { setTip(qtText(tip)); });
}

void LabelLine::forwardPresses()
{
    setClickable(true);
    pressed = [this](Qt::MouseButton button) { label_.mouseDown(controlButton(button)); };
    released = [this](Qt::MouseButton button) { label_.mouseUp(controlButton(button)); };
}

}
