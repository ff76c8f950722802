#include "ui/forms/dialog_window.h"

#include <QApplication>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace tonquay::ui {

namespace {

/// In the middle of the other window, as far as the screen has room there for the dialog and its frame. One that is not
/// waited for leaves the upper part free, where the other one's keys are.
QPoint placeBefore(const QWidget& other, const QWidget& dialog, DialogWindow::Pace pace)
{
    constexpr double keys = 0.39;
    constexpr int frame = 4;
    constexpr int titleBar = 30;
    const QRect room = other.screen()->availableGeometry().adjusted(0, 0, -2 * frame, -titleBar - frame);
    QPoint wanted = other.geometry().center() - dialog.rect().center();
    if (pace == DialogWindow::Pace::steady)
        wanted.setY(other.y() + static_cast<int>(other.height() * keys));
    return {std::max(std::min(wanted.x(), room.right() - dialog.width()), room.left()),
            std::max(std::min(wanted.y(), room.bottom() - dialog.height()), room.top())};
}

}

DialogWindow::DialogWindow(controls::Form& form, Maker make, Pace pace) : make_(std::move(make)), pace_(pace)
{
    constexpr std::chrono::milliseconds moment{250};
    moment_.setSingleShot(true);
    moment_.setInterval(moment);
    QObject::connect(&moment_, &QTimer::timeout, &moment_, [this, &form] { showState(form.state()); });
    bindings_.keep(form.follow([this](const controls::Form::State& state) { follow(state); }));
    bindings_.keep(form.broughtToFront.add([this] {
        if (!dialog_ || pace_ == Pace::steady)
            return;
        dialog_->raise();
        dialog_->activateWindow();
    }));
}

DialogWindow::~DialogWindow() = default;

void DialogWindow::follow(controls::Form::State state)
{
    if (pace_ == Pace::steady)
        moment_.start();
    else
        showState(state);
}

void DialogWindow::showState(controls::Form::State state)
{
    if (state != controls::Form::State::shown) {
        if (dialog_)
            dialog_->hide();
        return;
    }
    if (!dialog_) {
        dialog_ = make_();
        dialog_->setAttribute(Qt::WA_ShowWithoutActivating, pace_ == Pace::steady);
    }
    if (dialog_->isVisible())
        return;
    if (const QWidget* before = QApplication::activeWindow(); before != nullptr && before != dialog_.get()) {
        dialog_->move(placeBefore(*before, *dialog_, pace_));
        // So that the window behind it, which takes no input meanwhile, stays behind it.
        static_cast<void>(dialog_->winId());
        dialog_->windowHandle()->setTransientParent(before->windowHandle());
    }
    dialog_->show();
}

}
