#pragma once

#include "controls/form.h"
#include "ui/forms/bindings.h"

#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>

namespace tonquay::ui {

/// The window of a form that is there only while the form is shown, before the window that was active. It is made when
/// it is first shown, so a form that does its work while it loads is never seen.
class DialogWindow {
public:
    using Maker = std::function<std::unique_ptr<QWidget>()>;

    /// When the window follows its form. A steady one waits a moment, so that a form which comes and goes at once is
    /// not seen, one which goes and comes at once stays, and neither takes the keyboard away.
    enum class Pace { atOnce, steady };

    DialogWindow(controls::Form& form, Maker make, Pace pace = Pace::atOnce);
    ~DialogWindow();
    DialogWindow(const DialogWindow&) = delete;
    DialogWindow& operator=(const DialogWindow&) = delete;

private:
    void follow(controls::Form::State state);
    void showState(controls::Form::State state);

    Maker make_;
    Pace pace_;
    QTimer moment_;
    std::unique_ptr<QWidget> dialog_;
    Bindings bindings_;
};

}
