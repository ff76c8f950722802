#pragma once

#include "controls/buttons.h"
#include "controls/folders.h"
#include "controls/label.h"
#include "controls/option_group.h"
#include "controls/text_box.h"
#include "ui/forms/bindings.h"
#include "ui/forms/input.h"

#include <QButtonGroup>
#include <QRadioButton>

#include <array>

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;

/// Widgets of the usual kinds, each bound to a control of a form: captions, whether it is there and can be used, its
/// value, and what the user does with it. All widgets live as long as their control or shorter.
namespace tonquay::ui {

/// A caption as a widget shows it: an ampersand stands for itself, and the first of `mnemonics` that it has is the
/// letter that leads to it with Alt.
QString captionText(const std::wstring& caption, const char* mnemonics = "");

void bindButton(QPushButton& view, controls::Button& button, Bindings& bindings, const char* mnemonics = "");
void bindTick(QCheckBox& view, controls::CheckBox& box, Bindings& bindings, const char* mnemonics = "");
void bindFrame(QGroupBox& view, controls::Frame& frame, Bindings& bindings, const char* mnemonics = "");
void bindLabel(QLabel& view, controls::Label& label, Bindings& bindings, const char* mnemonics = "");

/// `writing` is true while the user types, so that the text is not written back under the hand.
void bindText(QLineEdit& view, controls::TextBox& box, Bindings& bindings, bool& writing);

/// Keeps double quotes out of a text that a settings file has to hold, and says so where one was typed.
void refuseDoubleQuotes(QLineEdit& view);

/// What carries texts that wrap. It does not ask for a height by its width, which would have a page scroll that has
/// room enough.
template <class Widget>
class Wrapping : public Widget {
public:
    bool hasHeightForWidth() const override { return false; }
};

/// Radio buttons for a group of options. The arrow keys move in it.
template <std::size_t count>
class OptionViews {
public:
    OptionViews(controls::OptionGroup<count>& options, Bindings& bindings)
    {
        for (std::size_t i = 0; i < count; ++i)
            bind(i, options, bindings);
    }

    QRadioButton& operator[](std::size_t index) { return views_[index]; }

private:
    void bind(std::size_t index, controls::OptionGroup<count>& options, Bindings& bindings)
    {
        QRadioButton& view = views_[index];
        controls::OptionButton& option = options[index];
        group_.addButton(&view);
        bindings.show(option.caption,
                      [&view](const std::wstring& caption) { view.setText(captionText(caption).trimmed()); });
        bindings.show(option.enabled, [&view](const bool& enabled) { view.setEnabled(enabled); });
        bindVisible(view, option.visible, bindings);
        const auto showValue = [this, &view](const bool& on) {
            // A group that is put back to its design has none on.
            group_.setExclusive(on);
            view.setChecked(on);
            group_.setExclusive(true);
            leadTab();
        };
        showValue(option.value());
        bindings.keep(option.follow(showValue));
        QObject::connect(&view, &QRadioButton::clicked, &view,
                         [&options, index] { options.choose(static_cast<std::int32_t>(index)); });
    }

    /// The Tab key stops at the one that is on; without one, at any.
    void leadTab()
    {
        const QAbstractButton* on = group_.checkedButton();
        for (QRadioButton& view : views_)
            view.setFocusPolicy(on == nullptr || on == &view ? Qt::StrongFocus : Qt::ClickFocus);
    }

    QButtonGroup group_;
    std::array<QRadioButton, count> views_;
};

}
