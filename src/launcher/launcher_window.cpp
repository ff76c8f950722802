#include "launcher/launcher_window.h"

#include "launcher/names_form.h"
#include "ui/skin/icons.h"

#include <QDragEnterEvent>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace tonquay::launcher {

namespace {

QString qtText(const std::string& text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString driveText(const platform::DriveDescription& drive)
{
    const QString letter = QString(QChar(static_cast<char16_t>(drive.letter))) + QStringLiteral(":  ");
    if (drive.image)
        return letter + qtText(drive.hostPath.substr(drive.hostPath.rfind('/') + 1)) + QStringLiteral("  (disc image)");
    const QString name = qtText(drive.vendor + ' ' + drive.product).simplified();
    return letter + (name.isEmpty() ? qtText(drive.hostPath) : name);
}

QString driveState(const platform::DriveDescription& drive)
{
    return drive.disc ? QStringLiteral("Audio disc") : qtText(drive.problemText);
}

QString sourceText(NameSource source)
{
    switch (source) {
    case NameSource::disc: return QStringLiteral("Names from the disc's CD-Text");
    case NameSource::sheet: return QStringLiteral("Names from the image's own sheet");
    case NameSource::kept: return QStringLiteral("Names as you gave them last time");
    case NameSource::nowhere: break;
    }
    return QStringLiteral("The disc tells no names. What you enter is kept for it.");
}

bool sameDrives(const std::vector<platform::DriveDescription>& left,
                const std::vector<platform::DriveDescription>& right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const platform::DriveDescription& a, const platform::DriveDescription& b) {
                          return a.letter == b.letter && a.hostPath == b.hostPath && a.disc == b.disc &&
                                 a.problemText == b.problemText;
                      });
}

}

struct LauncherWindow::Parts {
    QLabel heading{QStringLiteral("What is in the drive?")};
    QListWidget drives;
    QPushButton open{QStringLiteral("&Open disc image...")};
    QLabel problem; ///< what went wrong, there while it has something to say
    QLabel state;   ///< of the chosen drive
    NamesForm names;
    QLabel source;
    QLabel warning;
    QPushButton quit{QStringLiteral("&Quit")};
    QPushButton start{QStringLiteral("&Start ripper")};
};

LauncherWindow::LauncherWindow(LaunchDesk& desk, Shelf& shelf)
    : desk_(desk),
      shelf_(shelf),
      parts_(std::make_unique<Parts>())
{
    constexpr int lookInterval = 1000;
    setWindowTitle(QStringLiteral("CD-Tonquay"));
    setAcceptDrops(true);
    build();
    connectAll();
    parts_->warning.setText(qtText(desk_.encoderWarning()));
    parts_->warning.setVisible(!parts_->warning.text().isEmpty());
    takeOverDrives();
    startTimer(lookInterval);
}

LauncherWindow::~LauncherWindow() = default;

void LauncherWindow::build()
{
    Parts& p = *parts_;
    p.heading.setProperty("role", "heading");
    p.drives.setAccessibleName(QStringLiteral("Drives"));
    p.drives.setMaximumHeight(p.drives.fontMetrics().height() * 5);
    p.open.setIcon(ui::icon(QStringLiteral("open")));
    p.open.setAutoDefault(false);
    for (QLabel* label : {&p.problem, &p.state, &p.source, &p.warning}) {
        label->setWordWrap(true);
        label->setTextFormat(Qt::PlainText);
        label->setProperty("role", label == &p.warning || label == &p.problem ? "warning" : "note");
    }
    p.problem.hide();

    auto top = std::make_unique<QHBoxLayout>();
    top->addWidget(&p.heading, 1);
    top->addWidget(&p.open);

    auto bottom = std::make_unique<QHBoxLayout>();
    bottom->addWidget(&p.source, 1);
    bottom->addWidget(&p.quit);
    bottom->addWidget(&p.start);
    p.quit.setAutoDefault(false);
    // The default key is written bold, which its size does not know of.
    p.start.setMinimumWidth(p.start.fontMetrics().horizontalAdvance(p.start.text()) + 72);
    p.start.setDefault(true);
    p.start.setIcon(ui::icon(QStringLiteral("rip"), QColor(0x23, 0x1a, 0x0b)));

    auto column = std::make_unique<QVBoxLayout>();
    column->setContentsMargins(22, 18, 22, 18);
    column->setSpacing(10);
    column->addLayout(top.release());
    column->addWidget(&p.drives);
    column->addWidget(&p.problem);
    column->addWidget(&p.state);
    column->addWidget(&p.names, 1);
    column->addWidget(&p.warning);
    column->addLayout(bottom.release());
    setLayout(column.release());
    const QSize room = screen()->availableSize();
    resize(QSize(620, 660).boundedTo(QSize(room.width() - 40, room.height() - 50)));
    p.start.setFocus();
}

void LauncherWindow::connectAll()
{
    connect(&parts_->drives, &QListWidget::currentRowChanged, this, [this] {
        parts_->problem.hide();
        driveChosen();
    });
    connect(&parts_->open, &QPushButton::clicked, this, [this] { chooseImage(); });
    connect(&parts_->quit, &QPushButton::clicked, this, [this] { close(); });
    connect(&parts_->start, &QPushButton::clicked, this, [this] { start(); });
}

void LauncherWindow::tell(const std::string& problem)
{
    parts_->problem.setText(qtText(problem));
    parts_->problem.show();
}

void LauncherWindow::timerEvent(QTimerEvent*)
{
    takeOverDrives();
}

void LauncherWindow::takeOverDrives()
{
    std::vector<platform::DriveDescription> now = shelf_.discs().drives();
    if (parts_->drives.count() > 0 && sameDrives(now, drives_))
        return;
    const auto chosen = desk_.choose(now);
    const std::string wanted = !wanted_.empty() ? wanted_
                               : disc_          ? disc_->drive.hostPath
                               : chosen         ? chosen->hostPath
                                                : "";
    wanted_.clear();
    drives_ = std::move(now);
    int row = 0;
    bool discStays = false;
    {
        const QSignalBlocker quiet(&parts_->drives);
        parts_->drives.clear();
        for (const platform::DriveDescription& drive : drives_) {
            parts_->drives.addItem(driveText(drive) + QStringLiteral("    ") + driveState(drive));
            if (drive.hostPath != wanted)
                continue;
            row = parts_->drives.count() - 1;
            discStays = disc_ && drive.disc && drive.letter == disc_->drive.letter;
        }
        if (drives_.empty())
            parts_->drives.addItem(QStringLiteral("No drive was found"));
        parts_->drives.setCurrentRow(row);
    }
    // What is being typed stays while another drive changes.
    if (!discStays)
        driveChosen();
}

void LauncherWindow::driveChosen()
{
    disc_.reset();
    const int row = parts_->drives.currentRow();
    if (drives_.empty() || row < 0) {
        showNoDisc(
            "Connect a drive, or open a disc image (.cue, .toc, .nrg) with the key above; it can also be dropped "
            "onto this window.");
        return;
    }
    const platform::DriveDescription& drive = drives_[static_cast<std::size_t>(row)];
    if (!drive.disc) {
        showNoDisc(drive.problemText.empty() ? "There is no audio disc in this drive." : drive.problemText);
        return;
    }
    auto seen = desk_.look(shelf_.discs(), drive);
    if (!seen) {
        showNoDisc(base::describe(seen.failure()));
        return;
    }
    disc_ = std::move(*seen);
    showDisc();
}

void LauncherWindow::showNoDisc(const std::string& why)
{
    parts_->state.setText(qtText(why));
    parts_->source.clear();
    parts_->names.clear();
    parts_->start.setEnabled(false);
}

void LauncherWindow::showDisc()
{
    parts_->names.showDisc(*disc_);
    parts_->state.setText(QStringLiteral("%1 tracks").arg(disc_->table.tracks.size()));
    parts_->source.setText(sourceText(disc_->source));
    parts_->start.setEnabled(true);
    parts_->start.setFocus();
}

void LauncherWindow::start()
{
    if (!disc_)
        return;
    QGuiApplication::setOverrideCursor(Qt::BusyCursor);
    const base::Status started = desk_.startRipper(*disc_, parts_->names.entered());
    QGuiApplication::restoreOverrideCursor();
    if (!started)
        tell("The ripper could not be started: " + base::describe(started.failure()));
    else if (finished)
        finished();
}

void LauncherWindow::chooseImage()
{
    const QString image = QFileDialog::getOpenFileName(
        this, QStringLiteral("Open disc image"), QFile::decodeName(desk_.imageFolder().c_str()),
        QStringLiteral("Disc images (*.cue *.CUE *.toc *.TOC *.nrg *.NRG);;All files (*)"));
    if (image.isEmpty())
        return;
    desk_.keepImageFolder(QFile::encodeName(QFileInfo(image).path()).toStdString());
    openImage(QFile::encodeName(image).toStdString());
}

void LauncherWindow::openImage(const std::string& image)
{
    QGuiApplication::setOverrideCursor(Qt::BusyCursor);
    const base::Status opened = shelf_.open(image);
    QGuiApplication::restoreOverrideCursor();
    if (!opened) {
        tell(base::describe(opened.failure()));
        return;
    }
    disc_.reset();
    wanted_ = image;
    drives_.clear();
    takeOverDrives();
}

void LauncherWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void LauncherWindow::dropEvent(QDropEvent* event)
{
    for (const QUrl& url : event->mimeData()->urls())
        if (url.isLocalFile())
            openImage(url.toLocalFile().toStdString());
}

void LauncherWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        start();
    else
        QWidget::keyPressEvent(event);
}

}
