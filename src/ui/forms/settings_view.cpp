#include "ui/forms/settings_view.h"

#include "ui/forms/host_paths.h"
#include "ui/forms/input.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include <memory>

namespace tonquay::ui {

namespace {

std::unique_ptr<QVBoxLayout> columnLayout()
{
    auto column = std::make_unique<QVBoxLayout>();
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    return column;
}

/// Fills a box from top to bottom.
template <class... Widgets>
void fillBox(QGroupBox& box, Widgets&... widgets)
{
    auto column = std::make_unique<QVBoxLayout>();
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(3);
    (column->addWidget(&widgets), ...);
    box.setLayout(column.release());
}

/// Hands a double click on a caption on to its control.
class PressedLabel final : public QObject {
public:
    PressedLabel(QLabel& view, controls::Label& label) : QObject(&view), label_(label)
    {
        view.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::MouseButtonDblClick)
            label_.doubleClick();
        return QObject::eventFilter(watched, event);
    }

private:
    controls::Label& label_;
};

void forwardDoubleClick(QLabel& view, controls::Label& label)
{
    // It belongs to the view from here on.
    static_cast<void>(std::make_unique<PressedLabel>(view, label).release());
}

}

SettingsView::SettingsView(state::CdriptabControls& form, platform::FileSystem& files, platform::Dialogs& dialogs)
    : form_(form),
      files_(files),
      drives_(form.List2),
      folder_(form.Drive1, form.dir1, files, dialogs, FolderView::Purpose::kept),
      names_(form.Option1, bindings_),
      channels_(form.Option2, bindings_),
      rates_(form.Option3, bindings_),
      schedule_(form.Option4, bindings_)
{
    auto left = columnLayout();
    addDrives(*left);
    addFolder(*left);
    auto middle = columnLayout();
    addFormats(*middle);
    addNames(*middle);
    addRipMode(*middle);
    middle->addStretch(1);
    auto right = columnLayout();
    addMp3Mode(*right);
    addRates(*right);
    addAdvanced(*right);
    addSchedule(*right);
    right->addStretch(1);

    auto row = std::make_unique<QHBoxLayout>();
    row->setContentsMargins(8, 8, 8, 4);
    row->setSpacing(8);
    row->addLayout(left.release(), 1);
    row->addLayout(middle.release());
    row->addLayout(right.release());
    setLayout(row.release());
    bindings_.show(form.focusWanted, [this](const state::SetupFocus& focus) { moveFocus(focus); });
}

void SettingsView::addDrives(QVBoxLayout& column)
{
    driveBox_.setTitle(QStringLiteral("CD drive"));
    drivesHint_.setText(QStringLiteral("Double-click to &select CD drive"));
    drivesHint_.setBuddy(&drives_);
    drivesHint_.setWordWrap(true);
    drives_.setAccessibleName(QStringLiteral("CD drives"));
    drives_.setToolTip(QStringLiteral("Double-click a drive, or press Enter on it, to rip from it"));
    selectedHint_.setText(QStringLiteral("Selected drive"));
    selectedHint_.setProperty("role", "note");
    selected_.setAccessibleName(QStringLiteral("Selected drive"));
    const auto showSelected = [this] {
        const QString text = qtText(form_.List3.row(0).text);
        selected_.setText(text.isEmpty() ? QStringLiteral("none") : text);
    };
    selected_.setTextFormat(Qt::PlainText);
    selected_.setWordWrap(true);
    bindings_.keep(form_.List3.follow(showSelected));
    showSelected();
    fillBox(driveBox_, drivesHint_, drives_, selectedHint_, selected_);
    driveBox_.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    column.addWidget(&driveBox_);
}

void SettingsView::addFolder(QVBoxLayout& column)
{
    bindings_.show(form_.Label4.caption,
                   [this](const std::wstring& caption) { folderBox_.setTitle(captionText(caption, "R")); });
    bindings_.show(form_.Label3.caption, [this](const std::wstring& caption) {
        const bool named = caption.starts_with(state::ripLocationLead);
        const std::size_t lead = named ? state::ripLocationLead.size() : caption.size();
        location_.setText(qtText(caption.substr(0, lead)) + shownPath(files_, caption.substr(lead)));
    });
    location_.setTextFormat(Qt::PlainText);
    location_.setWordWrap(true);
    fillBox(folderBox_, location_, folder_);
    folderBox_.setFocusProxy(&folder_.pathField());
    column.addWidget(&folderBox_, 1);
}

void SettingsView::addFormats(QVBoxLayout& column)
{
    constexpr std::array letters{"M", "W", "G", "A"};
    formatBox_.setTitle(QStringLiteral("Format"));
    auto box = std::make_unique<QVBoxLayout>();
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(4);
    auto row = std::make_unique<QHBoxLayout>();
    for (std::size_t i = 0; i < formats_.size(); ++i) {
        bindTick(formats_[i], form_.riptofile[i], bindings_, letters[i]);
        row->addWidget(&formats_[i]);
    }
    row->addStretch(1);
    box->addLayout(row.release());
    addEncoder(*box);
    formatBox_.setLayout(box.release());
    column.addWidget(&formatBox_);
}

void SettingsView::addEncoder(QVBoxLayout& column)
{
    encoderHint_.setBuddy(&encoder_);
    bindLabel(encoderHint_, form_.Label12, bindings_, "E");
    forwardDoubleClick(encoderHint_, form_.Label12);
    column.addWidget(&encoderHint_);
    auto row = std::make_unique<QHBoxLayout>();
    row->setSpacing(6);
    encoder_.setAccessibleName(QStringLiteral("Encoder"));
    refuseDoubleQuotes(encoder_);
    bindings_.show(form_.Text3.text, [this](const std::wstring& text) {
        if (!writing_)
            encoder_.setText(shownPath(files_, text));
    });
    connect(&encoder_, &QLineEdit::textEdited, this, [this](const QString& text) {
        const Writing typing(writing_);
        form_.Text3.text = typedPath(files_, text);
    });
    connect(&encoder_, &QLineEdit::returnPressed, this, [this] { form_.Text3.enter(); });
    encoder_.setToolTip(QStringLiteral("The program that encodes; press Enter when you have typed one"));
    chooseEncoder_.setText(QStringLiteral("..."));
    chooseEncoder_.setAccessibleName(QStringLiteral("Choose the encoder"));
    chooseEncoder_.setToolTip(QStringLiteral("Choose the encoder"));
    chooseEncoder_.setMaximumWidth(44);
    connect(&chooseEncoder_, &QPushButton::clicked, this, [this] { form_.Label12.doubleClick(); });
    row->addWidget(&encoder_, 1);
    row->addWidget(&chooseEncoder_);
    column.addLayout(row.release());
    bindLabel(processor_, form_.Label13, bindings_);
    processor_.setProperty("role", "note");
    column.addWidget(&processor_);
}

void SettingsView::addNames(QVBoxLayout& column)
{
    nameBox_.setTitle(QStringLiteral("Create &Filenames From"));
    nameBox_.setToolTip(QStringLiteral("What files are called; without the track in it, its number is put behind"));
    auto grid = std::make_unique<QGridLayout>();
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setVerticalSpacing(2);
    constexpr int rows = 4;
    for (int i = 0; i < form_.Option1.size(); ++i)
        grid->addWidget(&names_[static_cast<std::size_t>(i)], i % rows, i / rows);
    bindTick(artistFolders_, form_.Check8, bindings_, "u");
    bindTick(albumFolders_, form_.Check9, bindings_, "y");
    nameBox_.setLayout(grid.release());
    column.addWidget(&nameBox_);
    auto folders = std::make_unique<QVBoxLayout>();
    folders->setSpacing(2);
    folders->addWidget(&artistFolders_);
    folders->addWidget(&albumFolders_);
    column.addLayout(folders.release());
}

void SettingsView::addRipMode(QVBoxLayout& column)
{
    auto row = std::make_unique<QHBoxLayout>();
    ripModeHint_.setBuddy(&ripMode_);
    bindLabel(ripModeHint_, form_.Label7, bindings_, "p");
    ripMode_.setAccessibleName(QStringLiteral("Rip mode"));
    ripMode_.setToolTip(QStringLiteral("How the disc is read. A change between Digital 2 and the others restarts the "
                                       "ripper"));
    const auto takeOver = [this] {
        if (ripMode_.count() != form_.List4.rowCount()) {
            ripMode_.clear();
            for (std::int32_t i = 0; i < form_.List4.rowCount(); ++i)
                ripMode_.addItem(qtText(form_.List4.row(i).text));
        }
        ripMode_.setCurrentIndex(form_.List4.index());
    };
    bindings_.keep(form_.List4.follow(takeOver));
    takeOver();
    connect(&ripMode_, &QComboBox::activated, this, [this](int mode) { form_.List4.setIndex(mode); });
    row->addWidget(&ripModeHint_);
    row->addWidget(&ripMode_, 1);
    column.addLayout(row.release());
    bindTick(selectAll_, form_.Check3, bindings_, "l");
    bindTick(autoClose_, form_.Check13, bindings_);
    bindTick(program_, form_.Check1, bindings_);
    bindTick(minimise_, form_.Check12, bindings_, "z");
    auto ticks = std::make_unique<QGridLayout>();
    ticks->setVerticalSpacing(2);
    ticks->addWidget(&selectAll_, 0, 0, 1, 2);
    ticks->addWidget(&minimise_, 2, 0, 1, 2);
    ticks->addWidget(&program_, 1, 0);
    ticks->addWidget(&autoClose_, 1, 1);
    column.addLayout(ticks.release());
}

void SettingsView::addMp3Mode(QVBoxLayout& column)
{
    bindFrame(mp3Box_, form_.SSFrame5, bindings_, "n");
    mp3Box_.setToolTip(QStringLiteral("One channel of sound, or two"));
    auto row = std::make_unique<QHBoxLayout>();
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(6);
    row->addWidget(&channels_[0]);
    row->addWidget(&channels_[1]);
    row->addStretch(1);
    qualityHint_.setBuddy(&quality_);
    bindLabel(qualityHint_, form_.Label17, bindings_, "Q");
    forwardDoubleClick(qualityHint_, form_.Label17);
    quality_.setAccessibleName(QStringLiteral("VBR quality"));
    quality_.setFixedWidth(36);
    quality_.setMaxLength(4);
    quality_.setToolTip(QStringLiteral("0=highest quality, 9=lowest quality"));
    refuseDoubleQuotes(quality_);
    bindText(quality_, form_.Text11, bindings_, writing_);
    row->addWidget(&qualityHint_);
    row->addWidget(&quality_);
    mp3Box_.setLayout(row.release());
    column.addWidget(&mp3Box_);
    // Below the box: other encoders have it as well, as a high priority.
    bindTick(vbr_, form_.Check5, bindings_, "Vh");
    column.addWidget(&vbr_);
}

void SettingsView::addRates(QVBoxLayout& column)
{
    bindFrame(rateBox_, form_.SSFrame1, bindings_, "BQ");
    rateBox_.setToolTip(QStringLiteral("More of it is better sound in larger files"));
    auto grid = std::make_unique<QGridLayout>();
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setVerticalSpacing(0);
    const int rows = form_.Option3.size() / 2;
    for (int i = 0; i < form_.Option3.size(); ++i)
        grid->addWidget(&rates_[static_cast<std::size_t>(i)], i % rows, i / rows);
    rateBox_.setLayout(grid.release());
    column.addWidget(&rateBox_);
}

void SettingsView::addAdvanced(QVBoxLayout& column)
{
    bindFrame(advancedBox_, form_.SSFrame4, bindings_);
    bindTick(crc_, form_.Check4, bindings_, "k");
    bindTick(switchesTick_, form_.Check6, bindings_, "d");
    bindTick(extensionTick_, form_.Check7, bindings_, "x");
    switches_.setAccessibleName(QStringLiteral("Encoder command line"));
    extension_.setAccessibleName(QStringLiteral("File extension"));
    for (auto [view, box] : {std::pair{&switches_, &form_.Text1}, std::pair{&extension_, &form_.Text2}}) {
        refuseDoubleQuotes(*view);
        bindText(*view, *box, bindings_, writing_);
    }
    fillBox(advancedBox_, crc_, switchesTick_, switches_, extensionTick_, extension_);
    column.addWidget(&advancedBox_);
    bindings_.show(form_.Command12.caption, [this](const std::wstring& caption) {
        advanced_.setText(captionText(caption, caption == state::advancedCaption ? "d" : "i"));
    });
    advanced_.setToolTip(qtText(form_.Command12.toolTip));
    connect(&advanced_, &QPushButton::clicked, this, [this] { form_.Command12.press(); });
    column.addWidget(&advanced_);
}

void SettingsView::addSchedule(QVBoxLayout& column)
{
    scheduleBox_.setTitle(QStringLiteral("Schedule"));
    bindTick(turbo_, form_.Check2, bindings_, "T");
    schedule_[0].setToolTip(QStringLiteral("Rip all tracks first then encode entire batch"));
    schedule_[1].setToolTip(QStringLiteral("Rip and Encode one track at a time"));
    auto grid = std::make_unique<QGridLayout>();
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setVerticalSpacing(3);
    grid->addWidget(&schedule_[0], 0, 0, 1, 2);
    grid->addWidget(&schedule_[1], 1, 0);
    grid->addWidget(&turbo_, 1, 1);
    scheduleBox_.setLayout(grid.release());
    column.addWidget(&scheduleBox_);
}

void SettingsView::moveFocus(state::SetupFocus focus)
{
    using state::SetupFocus;
    const std::array<std::pair<SetupFocus, QWidget*>, 6> places{{{SetupFocus::drives, &drives_},
                                                                 {SetupFocus::encoder, &encoder_},
                                                                 {SetupFocus::commandLine, &switches_},
                                                                 {SetupFocus::fileExtension, &extension_},
                                                                 {SetupFocus::quality, &quality_},
                                                                 {SetupFocus::advanced, &advanced_}}};
    for (const auto& [wanted, view] : places)
        if (wanted == focus)
            view->setFocus();
    form_.focusWanted = SetupFocus::none;
}

}
