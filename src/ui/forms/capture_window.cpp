#include "ui/forms/capture_window.h"

#include "ui/forms/bound_widgets.h"
#include "ui/forms/choice_list_view.h"
#include "ui/forms/host_paths.h"
#include "ui/forms/input.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <array>
#include <memory>

namespace tonquay::ui {

class CaptureWindow::Dialog final : public QWidget {
public:
    Dialog(state::CdrecaltControls& form, platform::FileSystem& files)
        : form_(form),
          tracks_(form.lstTracks),
          record_(form.lstRecord)
    {
        setWindowTitle(qtText(form.form.caption));
        auto column = std::make_unique<QVBoxLayout>();
        column->setContentsMargins(22, 20, 22, 18);
        column->setSpacing(14);
        addDisc(*column);
        addLists(*column);
        addFile(*column, files);
        addFoot(*column);
        setLayout(column.release());
        resize(620, 330);
    }

protected:
    void closeEvent(QCloseEvent* event) override
    {
        event->ignore();
        form_.form.unload();
    }

private:
    void addDisc(QVBoxLayout& column)
    {
        auto row = std::make_unique<QHBoxLayout>();
        row->setSpacing(10);
        const auto addField = [&](state::CaptureCaption place, controls::Label& label, QLabel& view) {
            captions_[place].setText(qtText(form_.captions[place].caption));
            captions_[place].setProperty("role", "note");
            bindLabel(view, label, bindings_);
            view.setTextInteractionFlags(Qt::TextSelectableByMouse);
            row->addWidget(&captions_[place]);
            row->addWidget(&view);
        };
        addField(state::discIdCaption, form_.lblCDID, discId_);
        row->addSpacing(14);
        addField(state::trackCountCaption, form_.lblNumTracks, trackCount_);
        row->addStretch(1);
        bindButton(refresh_, form_.cmdRefresh, bindings_);
        row->addWidget(&refresh_);
        column.addLayout(row.release());
    }

    void addLists(QVBoxLayout& column)
    {
        constexpr int listHeight = 110;
        auto grid = std::make_unique<QGridLayout>();
        grid->setHorizontalSpacing(12);
        grid->setVerticalSpacing(6);
        const auto addList = [&](state::CaptureCaption place, ChoiceListView& list, int listColumn) {
            nameField(place, list);
            list.setMinimumHeight(listHeight);
            grid->addWidget(&captions_[place], 0, listColumn);
            grid->addWidget(&list, 1, listColumn);
            grid->setColumnStretch(listColumn, 1);
        };
        addList(state::availableTracksCaption, tracks_, 0);
        addList(state::recordTracksCaption, record_, 2);
        auto keys = std::make_unique<QVBoxLayout>();
        keys->setSpacing(8);
        keys->addStretch(1);
        bindButton(to_, form_.cmdTo, bindings_);
        bindButton(from_, form_.cmdFrom, bindings_);
        keys->addWidget(&to_);
        keys->addWidget(&from_);
        keys->addStretch(1);
        grid->addLayout(keys.release(), 1, 1);
        column.addLayout(grid.release(), 1);
    }

    /// Where a recording goes is the run's to say, so the path is there to be seen and copied.
    void addFile(QVBoxLayout& column, platform::FileSystem& files)
    {
        auto row = std::make_unique<QHBoxLayout>();
        row->setSpacing(10);
        nameField(state::filenameCaption, file_);
        file_.setReadOnly(true);
        bindings_.show(form_.txtFile.text,
                       [this, &files](const std::wstring& path) { file_.setText(shownPath(files, path)); });
        bindings_.show(form_.txtFile.enabled, [this](const bool& enabled) { file_.setEnabled(enabled); });
        row->addWidget(&captions_[state::filenameCaption]);
        row->addWidget(&file_, 1);
        column.addLayout(row.release());
    }

    void addFoot(QVBoxLayout& column)
    {
        auto row = std::make_unique<QHBoxLayout>();
        bindLabel(status_, form_.lblStatus, bindings_);
        status_.setAccessibleName(QStringLiteral("Track in hand"));
        row->addWidget(&status_);
        row->addStretch(1);
        bindButton(start_, form_.cmdStart, bindings_);
        bindButton(cancel_, form_.cmdCancel, bindings_, "C");
        for (QPushButton* key : {&start_, &cancel_}) {
            key->setMinimumWidth(100);
            row->addWidget(key);
        }
        column.addLayout(row.release());
    }

    /// Its caption leads to it.
    void nameField(state::CaptureCaption place, QWidget& field)
    {
        const QString caption = qtText(form_.captions[place].caption);
        captions_[place].setText(caption);
        captions_[place].setBuddy(&field);
        field.setAccessibleName(QString(caption).remove('&').remove(':'));
    }

    state::CdrecaltControls& form_;
    std::array<QLabel, 5> captions_; ///< by CaptureCaption
    QLabel discId_, trackCount_, status_;
    ChoiceListView tracks_, record_;
    QLineEdit file_;
    QPushButton to_, from_, start_, cancel_, refresh_;
    Bindings bindings_;
};

CaptureWindow::CaptureWindow(state::CdrecaltControls& form, platform::FileSystem& files)
    : window_(
          form.form, [&form, &files] { return std::make_unique<Dialog>(form, files); }, DialogWindow::Pace::steady)
{}

}
