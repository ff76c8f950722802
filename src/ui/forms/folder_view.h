#pragma once

#include "controls/folders.h"
#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "ui/forms/bindings.h"

#include <QFileSystemModel>
#include <QLineEdit>
#include <QToolButton>
#include <QTreeView>

class QVBoxLayout;

namespace tonquay::ui {

/// A folder of this system: a tree of them, the open one's path, which may be typed, and a menu of usual places. A
/// click, the arrow keys and Enter open a folder.
class FolderView final : public QWidget {
public:
    /// A folder that is kept in the settings may be made here, and its path has no double quotes. One that is looked
    /// into may be any.
    enum class Purpose { looked, kept };

    FolderView(controls::DriveList& drive, controls::FolderTree& tree, platform::FileSystem& files,
               platform::Dialogs& dialogs, Purpose purpose);

    /// What a label's letter leads to.
    QWidget& pathField() { return path_; }

protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addPathRow(QVBoxLayout& column);
    void addTree(QVBoxLayout& column);
    void fillPlaces();
    void addPlace(const QString& name, const QString& path);
    void takeOver();
    void showCurrent();
    void open(const QString& path);
    void openTyped();
    bool refused(const QString& path);
    void tell(const QString& text);
    void makeFolder();

    controls::DriveList& drive_;
    controls::FolderTree& tree_;
    platform::FileSystem& files_;
    platform::Dialogs& dialogs_;
    Purpose purpose_;
    QLineEdit path_;
    QToolButton places_;
    QFileSystemModel folders_;
    QTreeView view_;
    Bindings bindings_;
    bool showing_ = false;
    bool handledByUser_ = false; ///< since another folder was opened
};

}
