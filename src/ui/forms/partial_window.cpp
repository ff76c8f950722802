#include "ui/forms/partial_window.h"

#include "ui/forms/bound_widgets.h"
#include "ui/forms/input.h"
#include "ui/forms/table_view.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <array>
#include <memory>

namespace tonquay::ui {

namespace {

bool isEnter(const QKeyEvent& event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

/// Keys that move the keyboard or the window are not meant for the field that has it.
bool isForTheField(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Escape:
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta: return false;
    default: return !event.modifiers().testFlag(Qt::AltModifier);
    }
}

}

class PartialWindow::Dialog final : public QWidget {
public:
    explicit Dialog(state::TrkcustControls& form) : form_(form), list_(form.ListView1)
    {
        setWindowTitle(qtText(form.form.caption));
        list_.setToolTip(qtText(form.listToolTip));
        list_.setAccessibleName(QStringLiteral("Tracks and their parts"));
        list_.installEventFilter(this);

        auto column = std::make_unique<QVBoxLayout>();
        column->setContentsMargins(22, 20, 22, 18);
        column->setSpacing(14);
        column->addWidget(&list_, 1);
        auto fields = std::make_unique<QGridLayout>();
        fields->setHorizontalSpacing(18);
        fields->setVerticalSpacing(6);
        addField(*fields, state::partialTrackCaption, QStringLiteral("&Track"), form.Text4, number_);
        addField(*fields, state::partialStartCaption, QStringLiteral("&Start Time (mm:ss)"), form.Text1, start_);
        addField(*fields, state::partialEndCaption, QStringLiteral("&End Time (mm:ss)"), form.Text2, end_);
        fields->setColumnStretch(3, 1);
        column->addLayout(fields.release());
        addButtons(*column);
        setLayout(column.release());
        bindings_.show(form.focused, [this](const state::PartialFocus& focus) { moveFocus(focus); });
        resize(600, 460);
    }

protected:
    void closeEvent(QCloseEvent* event) override
    {
        event->ignore();
        form_.Command2.press();
    }

    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Escape)
            form_.form.keyDown(controls::Key::escape);
        else
            QWidget::keyPressEvent(event);
    }

    void mousePressEvent(QMouseEvent* event) override { form_.form.mouseDown(buttonOf(*event)); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        for (std::size_t i = 0; i < focusOrder_.size(); ++i)
            if (watched == focusOrder_[i] && event->type() == QEvent::FocusIn)
                form_.focused = static_cast<state::PartialFocus>(i);
        for (std::size_t i = 0; i < labels_.size(); ++i)
            if (watched == &labels_[i] && event->type() == QEvent::MouseButtonRelease)
                form_.captions[i].mouseUp(buttonOf(*static_cast<QMouseEvent*>(event)));
        if (watched == &number_)
            fieldEvent(*event, form_.Text4);
        else if (watched == &start_)
            fieldEvent(*event, form_.Text1);
        else if (watched == &end_)
            fieldEvent(*event, form_.Text2);
        else if (event->type() == QEvent::KeyPress && isEnter(*static_cast<QKeyEvent*>(event)))
            return enterElsewhere(watched);
        return QWidget::eventFilter(watched, event);
    }

private:
    static void fieldEvent(const QEvent& event, controls::TextBox& box)
    {
        if (event.type() == QEvent::KeyPress && isForTheField(static_cast<const QKeyEvent&>(event)))
            box.keyDown();
        if (event.type() != QEvent::FocusOut)
            return;
        // Another program's window takes the keyboard of all of this one; the field has it again afterwards.
        const Qt::FocusReason reason = static_cast<const QFocusEvent&>(event).reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            box.leave();
    }

    /// On a key it presses the key; in the list it leads on to the start of the track that is picked.
    bool enterElsewhere(QObject* watched)
    {
        if (watched == &list_) {
            start_.setFocus();
            start_.selectAll();
        } else {
            static_cast<QPushButton*>(watched)->click();
        }
        return true;
    }

    void addField(QGridLayout& grid, state::PartialCaption place, const QString& caption, controls::TextBox& box,
                  QLineEdit& edit)
    {
        constexpr int longest = 8;
        controls::Label& label = form_.captions[place];
        QLabel& view = labels_[place];
        view.setText(caption);
        view.setBuddy(&edit);
        view.setToolTip(qtText(label.toolTip));
        view.installEventFilter(this);
        edit.setMaxLength(longest);
        edit.setAccessibleName(qtText(label.caption));
        edit.installEventFilter(this);
        bindText(edit, box, bindings_, writing_);
        const int column = static_cast<int>(place);
        grid.addWidget(&view, 0, column);
        grid.addWidget(&edit, 1, column);
    }

    void addButtons(QVBoxLayout& column)
    {
        auto row = std::make_unique<QHBoxLayout>();
        row->addStretch(1);
        const auto add = [&](controls::Button& button, QPushButton& view) {
            bindButton(view, button, bindings_);
            view.setMinimumWidth(100);
            view.installEventFilter(this);
            row->addWidget(&view);
        };
        add(form_.Command1, ok_);
        add(form_.Command2, cancel_);
        ok_.setDefault(true);
        column.addLayout(row.release());
    }

    void moveFocus(state::PartialFocus focus)
    {
        QWidget* wanted = focusOrder_[static_cast<std::size_t>(focus)];
        if (!wanted->hasFocus())
            wanted->setFocus();
    }

    state::TrkcustControls& form_;
    TableView list_;
    std::array<QLabel, 3> labels_; ///< by PartialCaption
    QLineEdit number_, start_, end_;
    QPushButton ok_, cancel_;
    std::array<QWidget*, 5> focusOrder_{&list_, &number_, &start_, &end_, &ok_}; ///< by PartialFocus
    Bindings bindings_;
    bool writing_ = false;
};

PartialWindow::PartialWindow(state::TrkcustControls& form)
    : window_(form.form, [&form] { return std::make_unique<Dialog>(form); })
{}

}
