#pragma once

#include "controls/form.h"
#include "ui/forms/bindings.h"

#include <QWidget>

#include <functional>
#include <memory>

namespace tonquay::ui {

/// The window of a form that is there only while the form is shown, before the window that was active. It is made when
/// it is first shown, so a form that does its work while it loads is never seen.
class DialogWindow {
public:
    using Maker = std::function<std::unique_ptr<QWidget>()>;

    DialogWindow(controls::Form& form, Maker make);
    ~DialogWindow();
    DialogWindow(const DialogWindow&) = delete;
    DialogWindow& operator=(const DialogWindow&) = delete;

private:
    void showState(controls::Form::State state);

    Maker make_;
    std::unique_ptr<QWidget> dialog_;
    Bindings bindings_;
};

}
