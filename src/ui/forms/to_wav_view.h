#pragma once

#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "state/cdriptab_controls.h"
#include "ui/forms/bindings.h"
#include "ui/forms/folder_view.h"
#include "ui/forms/mp3_rows.h"

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

class QVBoxLayout;

namespace tonquay::ui {

/// The page that turns MP3 files into WAV files: a folder and its files at the left, the queue at the right.
class ToWavView final : public QWidget {
public:
    ToWavView(state::CdriptabControls& form, platform::FileSystem& files, platform::Dialogs& dialogs);

private:
    QWidget& folderSide();
    QWidget& keys();
    QWidget& queueSide();
    void addFoot(QVBoxLayout& column, platform::FileSystem& files);
    void showInHand(const state::Mp3InHand& file);

    state::CdriptabControls& form_;
    Bindings bindings_;
    QGroupBox folderBox_;
    FolderView folder_;
    Mp3Rows files_, queue_;
    QLabel queueHint_, decoder_, inHand_, picture_;
    QPushButton add_, all_, clearQueue_, clearSelection_, remove_, convert_;
};

}
