#pragma once

#include "controls/handler.h"
#include "controls/label.h"

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
