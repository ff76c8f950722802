#include "ui/forms/tagger_window.h"

#include "ui/forms/bound_widgets.h"
#include "ui/forms/input.h"
#include "ui/forms/typed_name.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <array>

namespace tonquay::ui {

namespace {

using Clean = std::wstring (*)(std::wstring_view);

}

class TaggerWindow::Dialog final : public QWidget {
public:
    explicit Dialog(state::Id3autoControls& form) : form_(form)
    {
        setWindowTitle(qtText(form.form.caption));
        auto fields = std::make_unique<QFormLayout>();
        fields->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
        fields->setHorizontalSpacing(14);
        fields->setVerticalSpacing(9);
        addText(*fields, QStringLiteral("A&rtist"), form.Text2, artist_, typedFolderName);
        addText(*fields, QStringLiteral("A&lbum"), form.Text3, album_, typedFolderName);
        addText(*fields, QStringLiteral("&Year"), form.Text4, year_, typedTag);
        addGenres(*fields);
        addText(*fields, QStringLiteral("C&omment"), form.Text5, comment_, typedTag);

        auto column = std::make_unique<QVBoxLayout>();
        column->setContentsMargins(22, 20, 22, 18);
        column->setSpacing(12);
        column->addLayout(fields.release());
        addTick(*column, form.Check1, swap_);
        addTick(*column, form.Check2, prefixes_);
        note_.setText(qtText(form.note.caption));
        note_.setWordWrap(true);
        note_.setProperty("role", "note");
        column->addWidget(&note_);
        addButtons(*column);
        setLayout(column.release());
        bindings_.show(form.focused, [this](const state::TaggerFocus& focus) { moveFocus(focus); });
        resize(460, sizeHint().height());
    }

protected:
    void closeEvent(QCloseEvent* event) override
    {
        event->ignore();
        form_.form.unload();
    }

    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Escape)
            form_.Command2.press();
        else
            QWidget::keyPressEvent(event);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        for (std::size_t i = 0; i < focusOrder_.size(); ++i)
            if (watched == focusOrder_[i] && event->type() == QEvent::FocusIn)
                form_.focused = static_cast<state::TaggerFocus>(i);
        if (watched == &genres_ && event->type() == QEvent::KeyPress &&
            isEnter(static_cast<QKeyEvent*>(event)->key())) {
            form_.list1.enter();
            return true;
        }
        return QWidget::eventFilter(watched, event);
    }

private:
    static bool isEnter(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter; }

    void addText(QFormLayout& fields, const QString& caption, controls::TextBox& box, QLineEdit& edit, Clean clean)
    {
        constexpr int longest = 200;
        edit.setMaxLength(longest);
        fields.addRow(caption, &edit);
        edit.setAccessibleName(QString(caption).remove('&'));
        edit.installEventFilter(this);
        bindings_.show(box.text, [this, &edit](const std::wstring& text) {
            if (!writing_)
                edit.setText(qtText(text));
        });
        connect(&edit, &QLineEdit::textEdited, this, [this, &box, clean](const QString& text) {
            const Writing writing(writing_);
            box.text = clean(text.toStdWString());
        });
        // What was typed and left out is seen to be left out.
        connect(&edit, &QLineEdit::editingFinished, this, [&box, &edit] { edit.setText(qtText(box.text)); });
        connect(&edit, &QLineEdit::returnPressed, this, [&box] { box.enter(); });
    }

    void addGenres(QFormLayout& fields)
    {
        constexpr int visibleRows = 16;
        genres_.setMaxVisibleItems(visibleRows);
        // Else the style shows all of them at once, over the whole screen.
        genres_.setStyleSheet(QStringLiteral("QComboBox { combobox-popup: 0; }"));
        genres_.setAccessibleName(QStringLiteral("Genre"));
        genres_.installEventFilter(this);
        fields.addRow(QStringLiteral("&Genre"), &genres_);
        bindings_.keep(form_.list1.follow([this] { takeOverGenres(); }));
        takeOverGenres();
        connect(&genres_, &QComboBox::activated, this, [this](int row) {
            const Writing writing(writing_);
            form_.list1.setIndex(row);
        });
    }

    void takeOverGenres()
    {
        if (writing_)
            return;
        const controls::ComboBox& list = form_.list1;
        if (genres_.count() != list.rowCount()) {
            genres_.clear();
            for (std::int32_t row = 0; row < list.rowCount(); ++row)
                genres_.addItem(qtText(list.row(row).text));
        }
        genres_.setCurrentIndex(list.index());
    }

    void addTick(QVBoxLayout& column, controls::CheckBox& box, QCheckBox& view)
    {
        bindTick(view, box, bindings_);
        column.addWidget(&view);
    }

    void addButtons(QVBoxLayout& column)
    {
        auto row = std::make_unique<QHBoxLayout>();
        row->addStretch(1);
        const auto add = [&](controls::Button& button, QPushButton& view) {
            bindButton(view, button, bindings_);
            view.setMinimumWidth(100);
            row->addWidget(&view);
        };
        add(form_.Command1, start_);
        add(form_.Command2, cancel_);
        start_.setDefault(true);
        start_.installEventFilter(this);
        column.addLayout(row.release());
    }

    void moveFocus(state::TaggerFocus focus)
    {
        QWidget* wanted = focusOrder_[static_cast<std::size_t>(focus)];
        if (!wanted->hasFocus())
            wanted->setFocus();
    }

    state::Id3autoControls& form_;
    QLineEdit artist_, album_, year_, comment_;
    QComboBox genres_;
    QCheckBox swap_, prefixes_;
    QLabel note_;
    QPushButton start_, cancel_;
    std::array<QWidget*, 6> focusOrder_{&artist_, &album_, &year_, &genres_, &comment_, &start_}; ///< by TaggerFocus
    Bindings bindings_;
    bool writing_ = false;
};

TaggerWindow::TaggerWindow(state::Id3autoControls& form)
    : window_(form.form, [&form] { return std::make_unique<Dialog>(form); })
{}

}
