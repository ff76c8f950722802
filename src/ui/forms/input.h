#pragma once

#include "controls/handler.h"
#include "controls/label.h"
#include "ui/forms/bindings.h"

#include <QAbstractButton>
#include <QMouseEvent>
#include <QString>

#include <string>

namespace tonquay::ui {

inline QString qtText(const std::wstring& text)
{
    return QString::fromStdWString(text);
}

inline controls::MouseButton buttonOf(const QMouseEvent& event)
{
    switch (event.button()) {
    case Qt::LeftButton: return controls::MouseButton::left;
    case Qt::RightButton: return controls::MouseButton::right;
    default: return controls::MouseButton::none;
    }
}

/// Has a widget be there as long as its control is. One that has no parent yet is not shown by it: that would make a
/// window of it, if only for a moment.
inline void bindVisible(QWidget& widget, controls::Property<bool>& visible, Bindings& bindings)
{
    if (!visible)
        widget.hide();
    bindings.keep(visible.follow([&widget](const bool& shown) { widget.setVisible(shown); }));
}

/// Has a key on the screen press and release its control, by mouse and keyboard alike. A release beside the key is
/// none. `Control` is a controls::Label or a controls::Image; both outlive the button.
template <class Control>
void forwardPresses(QAbstractButton& button, Control& control)
{
    QObject::connect(&button, &QAbstractButton::pressed,
                     [&control] { control.mouseDown(controls::MouseButton::left); });
    QObject::connect(&button, &QAbstractButton::clicked, [&control] { control.mouseUp(controls::MouseButton::left); });
}

}
