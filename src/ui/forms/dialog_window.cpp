#include "ui/forms/dialog_window.h"

#include <QApplication>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace tonquay::ui {

namespace {

/// In the middle of the other window, as far as the screen has room there for the dialog and its frame.
QPoint placeBefore(const QWidget& other, const QWidget& dialog)
{
    constexpr int frame = 4;
    constexpr int titleBar = 30;
    const QRect room = other.screen()->availableGeometry().adjusted(0, 0, -2 * frame, -titleBar - frame);
    const QPoint wanted = other.geometry().center() - dialog.rect().center();
    return {std::max(std::min(wanted.x(), room.right() - dialog.width()), room.left()),
            std::max(std::min(wanted.y(), room.bottom() - dialog.height()), room.top())};
}

}

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
        dialog_->move(placeBefore(*before, *dialog_));
        // So that the window behind it, which takes no input meanwhile, stays behind it.
        static_cast<void>(dialog_->winId());
        dialog_->windowHandle()->setTransientParent(before->windowHandle());
    }
    dialog_->show();
}

}
