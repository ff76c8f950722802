#pragma once

#include "state/ripdeck_controls.h"
#include "state/settings.h"
#include "ui/forms/bindings.h"

#include <QPointer>
#include <QWidget>

#include <functional>

class QBoxLayout;

namespace tonquay::ui {

class TextLine;

/// The main window: display, transport keys, track list, progress, and the column of commands.
///
/// The place is told in twips, 15 to a logical pixel. Closing it by the window manager is the Power control, and Esc
/// and F1 are the form's.
class MainWindow final : public QWidget {
public:
    MainWindow(state::RipdeckControls& ripdeck, const state::Theme& theme);

    /// A line at the bottom, with more of it in its tool tip; an empty text takes it away.
    void setNotice(const QString& text, const QString& details, bool good);

    /// Asked before Esc or the window manager ends the program in the middle of a run; without it they do.
    std::function<bool()> mayEndRun;

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void addTitleRow(QBoxLayout& column);
    void addBody(QBoxLayout& column);
    QWidget& trackPanel();
    void bindForm();
    void showState(controls::Form::State state);
    void bindPlace();
    void tellSize();
    void bindEnabled();
    bool mayEnd() const;

    state::RipdeckControls& ripdeck_;
    const state::Theme& theme_;
    Bindings bindings_;
    QWidget* tracks_ = nullptr;
    TextLine* notice_ = nullptr;
    QPointer<QWidget> focusBefore_; ///< while another window has the keyboard
    bool writing_ = false;          ///< of the form, by the user's hand or the window manager's
};

}
