#include "ui/forms/folder_view.h"

#include "base/text.h"
#include "ui/forms/host_paths.h"
#include "ui/skin/icons.h"

#include <QDir>
#include <QEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QToolTip>
#include <QVBoxLayout>

#include <memory>

namespace tonquay::ui {

FolderView::FolderView(controls::DriveList& drive, controls::FolderTree& tree, platform::FileSystem& files,
                       platform::Dialogs& dialogs, Purpose purpose)
    : drive_(drive),
      tree_(tree),
      files_(files),
      dialogs_(dialogs),
      purpose_(purpose)
{
    auto column = std::make_unique<QVBoxLayout>();
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    addPathRow(*column);
    addTree(*column);
    setLayout(column.release());
    bindings_.show(tree.path, [this](const std::wstring&) { takeOver(); });
}

void FolderView::addPathRow(QVBoxLayout& column)
{
    auto row = std::make_unique<QHBoxLayout>();
    row->setSpacing(6);
    path_.setAccessibleName(QStringLiteral("Folder"));
    path_.setToolTip(QStringLiteral("Type a path and press Enter"));
    connect(&path_, &QLineEdit::returnPressed, this, [this] { openTyped(); });
    row->addWidget(&path_, 1);

    places_.setIcon(icon(QStringLiteral("home")));
    places_.setAccessibleName(QStringLiteral("Places"));
    places_.setToolTip(purpose_ == Purpose::kept ? QStringLiteral("Usual places, and a new folder")
                                                 : QStringLiteral("Usual places"));
    places_.setPopupMode(QToolButton::InstantPopup);
    auto menu = std::make_unique<QMenu>(&places_);
    connect(menu.get(), &QMenu::aboutToShow, this, [this] { fillPlaces(); });
    places_.setMenu(menu.release());
    row->addWidget(&places_);

    column.addLayout(row.release());
}

void FolderView::addTree(QVBoxLayout& column)
{
    folders_.setFilter(QDir::Dirs | QDir::NoDotAndDotDot);
    folders_.setRootPath(QDir::rootPath());
    view_.setModel(&folders_);
    view_.setHeaderHidden(true);
    for (int columnNumber = 1; columnNumber < folders_.columnCount(); ++columnNumber)
        view_.hideColumn(columnNumber);
    view_.setAccessibleName(QStringLiteral("Folders"));
    view_.setUniformRowHeights(true);
    view_.setIndentation(16);
    view_.setMinimumHeight(80);
    // A folder that is merely passed by the model's own doing is none that was chosen.
    connect(view_.selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& current) {
        if (!showing_ && view_.hasFocus() && current.isValid())
            open(folders_.filePath(current));
    });
    // Its rows come later, and push the open folder out of sight.
    connect(
        &folders_, &QFileSystemModel::directoryLoaded, this, [this] { showCurrent(); }, Qt::QueuedConnection);
    connect(
        &folders_, &QFileSystemModel::layoutChanged, this, [this] { showCurrent(); }, Qt::QueuedConnection);
    view_.installEventFilter(this);
    view_.viewport()->installEventFilter(this);
    column.addWidget(&view_, 1);
}

void FolderView::fillPlaces()
{
    places_.menu()->clear();
    addPlace(QStringLiteral("Home"), QDir::homePath());
    addPlace(QStringLiteral("Music"), QStandardPaths::writableLocation(QStandardPaths::MusicLocation));
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
        const QString root = volume.rootPath();
        if (root.startsWith("/media/") || root.startsWith("/run/media/") || root.startsWith("/mnt"))
            addPlace(volume.displayName(), root);
    }
    places_.menu()->addAction(QStringLiteral("File system"), this, [this] {
        drive_.drive = L"C:";
        drive_.change();
    });
    if (purpose_ == Purpose::looked)
        return;
    places_.menu()->addSeparator();
    places_.menu()->addAction(QStringLiteral("New folder..."), this, [this] { makeFolder(); });
}

void FolderView::addPlace(const QString& name, const QString& path)
{
    if (QDir(path).exists())
        places_.menu()->addAction(QString(name).replace('&', "&&"), this, [this, path] { open(path); });
}

void FolderView::takeOver()
{
    const Writing showing(showing_);
    const QString path = shownPath(files_, tree_.path);
    path_.setText(path);
    path_.setCursorPosition(0);
    const QModelIndex index = folders_.index(path);
    view_.setCurrentIndex(index);
    handledByUser_ = handledByUser_ && view_.hasFocus();
    showCurrent();
}

/// Until the user has a hand on the tree.
void FolderView::showCurrent()
{
    if (!handledByUser_ && view_.currentIndex().isValid())
        view_.scrollTo(view_.currentIndex());
}

bool FolderView::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::Wheel:
    case QEvent::KeyPress: handledByUser_ = true; break;
    default: break;
    }
    return QWidget::eventFilter(watched, event);
}

void FolderView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    showCurrent();
}

void FolderView::open(const QString& path)
{
    if (!refused(path))
        tree_.open(typedPath(files_, path));
}

bool FolderView::refused(const QString& path)
{
    if (purpose_ == Purpose::looked || !path.contains('"'))
        return false;
    takeOver();
    tell(QStringLiteral("A folder with a double quote in its path cannot be kept in the settings"));
    return true;
}

void FolderView::tell(const QString& text)
{
    QToolTip::showText(path_.mapToGlobal(QPoint(0, path_.height())), text, &path_);
}

void FolderView::openTyped()
{
    if (refused(path_.text()))
        return;
    const std::wstring path = typedPath(files_, path_.text());
    if (files_.folderExists(path)) {
        tree_.open(path);
        takeOver();
        return;
    }
    tell(QStringLiteral("There is no such folder"));
    path_.selectAll();
}

void FolderView::makeFolder()
{
    const std::wstring above = tree_.path;
    const auto name = dialogs_.inputBox(L"CD-Tonquay", L"Name of the new folder:", L"");
    if (!name || name->empty())
        return;
    const QString path = shownPath(files_, above) + '/' + QString::fromStdWString(*name).replace('/', '-');
    if (refused(path))
        return;
    const std::wstring folder = typedPath(files_, path);
    if (const base::Status made = files_.createFolder(folder); !made) {
        dialogs_.messageBox(L"CD-Tonquay", L"The folder could not be made: " + base::fromHostBytes(made.failure().text),
                            platform::Dialogs::Icon::exclamation);
        return;
    }
    tree_.open(folder);
}

}
