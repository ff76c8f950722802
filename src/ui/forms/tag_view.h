#pragma once

#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "state/cdriptab_controls.h"
#include "ui/forms/bindings.h"
#include "ui/forms/folder_view.h"
#include "ui/forms/multi_select_view.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <array>

class QFormLayout;
class QVBoxLayout;

namespace tonquay::ui {

/// The tag page: a folder and its files at the left, the fields of the selected file's tag and what the file is at the
/// right. Enter leads from field to field.
class TagView final : public QWidget {
public:
    TagView(state::TagPageControls& page, platform::FileSystem& files, platform::Dialogs& dialogs);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget& folderSide();
    QWidget& tagSide();
    void addField(QFormLayout& fields, const QString& caption, controls::TextBox& box, QLineEdit& edit);
    void addGenre(QFormLayout& fields);
    void takeOverGenres();
    void addKeys(QVBoxLayout& column);
    void addOptions(QVBoxLayout& column);
    void moveFocus(state::TagPageFocus focus);

    state::TagPageControls& page_;
    Bindings bindings_;
    QGroupBox folderBox_, optionsBox_;
    FolderView folder_;
    MultiSelectView list_;
    QLineEdit title_, artist_, album_, year_, track_, comment_;
    QComboBox genre_;
    QLabel info_;
    QPushButton save_, revert_, clear_, copy_, paste_, autoTag_, id3v2_;
    QCheckBox swap_, prefixes_;
    bool writing_ = false; ///< of the page's controls, by the user's hand
};

}
