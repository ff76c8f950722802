#pragma once

#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "state/cdriptab_controls.h"
#include "ui/forms/bindings.h"
#include "ui/forms/bound_widgets.h"
#include "ui/forms/choice_list_view.h"
#include "ui/forms/folder_view.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <array>

class QVBoxLayout;

namespace tonquay::ui {

/// The Settings page of the setup dialog: where tracks come from and go to at the left, what becomes of them in the
/// middle, and how they are encoded at the right.
class SettingsView final : public QWidget {
public:
    SettingsView(state::CdriptabControls& form, platform::FileSystem& files, platform::Dialogs& dialogs);

private:
    void addDrives(QVBoxLayout& column);
    void addFolder(QVBoxLayout& column);
    void addFormats(QVBoxLayout& column);
    void addEncoder(QVBoxLayout& column);
    void addNames(QVBoxLayout& column);
    void addRipMode(QVBoxLayout& column);
    void addMp3Mode(QVBoxLayout& column);
    void addRates(QVBoxLayout& column);
    void addAdvanced(QVBoxLayout& column);
    void addSchedule(QVBoxLayout& column);
    void moveFocus(state::SetupFocus focus);

    state::CdriptabControls& form_;
    platform::FileSystem& files_;
    Bindings bindings_;
    bool writing_ = false;

    // What carries the others goes after them.
    Wrapping<QGroupBox> driveBox_, folderBox_;
    QGroupBox formatBox_, nameBox_, mp3Box_, rateBox_, advancedBox_, scheduleBox_;
    QLabel drivesHint_, selectedHint_, selected_;
    ChoiceListView drives_;
    QLabel location_;
    FolderView folder_;
    std::array<QCheckBox, 4> formats_;
    QLabel encoderHint_, processor_;
    QLineEdit encoder_;
    QPushButton chooseEncoder_;
    OptionViews<7> names_;
    QCheckBox artistFolders_, albumFolders_;
    QLabel ripModeHint_;
    QComboBox ripMode_;
    QCheckBox selectAll_, autoClose_, program_, minimise_;
    OptionViews<2> channels_;
    QCheckBox vbr_;
    QLabel qualityHint_;
    QLineEdit quality_;
    OptionViews<14> rates_;
    QCheckBox crc_, switchesTick_, extensionTick_;
    QLineEdit switches_, extension_;
    QPushButton advanced_;
    OptionViews<2> schedule_;
    QCheckBox turbo_;
};

}
