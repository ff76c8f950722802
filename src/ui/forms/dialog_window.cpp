#include "ui/forms/dialog_window.h"

#include <QApplication>
#include <QWindow>

#include <utility>

namespace tonquay::ui {

DialogWindow::DialogWindow(controls::Form& form, Maker make) : make_(std::move(make))
{
    bindings_.keep(form.follow([this](const controls::Form::State& state) { showState(state); }));
    bindings_.keep(form.broughtToFront.add([this] {
        if (!dialog_)
            return;
        dialog_->raise();
        dialog_->activateWindow();
    }));
}

DialogWindow::~DialogWindow() = default;

void DialogWindow::showState(controls::Form::State state)
{
    if (state != controls::Form::State::shown) {
        if (dialog_)
            dialog_->hide();
        return;
    }
    if (!dialog_)
        dialog_ = make_();
    if (const QWidget* before = QApplication::activeWindow(); before != nullptr && before != dialog_.get()) {
        dialog_->move(before->geometry().center() - dialog_->rect().center());
        // So that the window behind it, which takes no input meanwhile, stays behind it.
        static_cast<void>(dialog_->winId());
        dialog_->windowHandle()->setTransientParent(before->windowHandle());
    }
    dialog_->show();
}

}
