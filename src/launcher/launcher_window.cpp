#include "launcher/launcher_window.h"

#include "base/text.h"
#include "ui/skin/icons.h"

#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFormLayout>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QTableWidget>
#include <QVBoxLayout>

#include <array>

namespace tonquay::launcher {

namespace {

QString qtText(const std::wstring& text)
{
    return QString::fromStdWString(text);
}

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

QString timeText(const platform::DiscTrack& track)
{
    constexpr int sectorsPerSecond = 75;
    constexpr int secondsPerMinute = 60;
    const int seconds = track.sectorCount / sectorsPerSecond;
    return QStringLiteral("%1:%2")
        .arg(seconds / secondsPerMinute)
        .arg(seconds % secondsPerMinute, 2, 10, QLatin1Char('0'));
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

enum TitleColumn { numberColumn, titleColumn, timeColumn, titleColumns };

}

struct LauncherWindow::Parts {
    QLabel heading{QStringLiteral("What is in the drive?")};
    QListWidget drives;
    QPushButton open{QStringLiteral("&Open disc image...")};
    QLabel problem; ///< what went wrong, there while it has something to say
    QLabel state;   ///< of the chosen drive
    QLineEdit artist, album, year, genre, comment;
    QLabel source;
    QTableWidget titles;
    QLabel warning;
    QPushButton quit{QStringLiteral("&Quit")};
    QPushButton start{QStringLiteral("&Start ripper")};

    std::array<QLineEdit*, 5> fields() { return {&artist, &album, &year, &genre, &comment}; }
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

    auto fields = std::make_unique<QFormLayout>();
    fields->setHorizontalSpacing(14);
    fields->setVerticalSpacing(7);
    constexpr std::array captions{"&Artist", "A&lbum", "&Year", "&Genre", "&Comment"};
    constexpr int longest = 250;
    for (std::size_t i = 0; i < captions.size(); ++i) {
        QLineEdit& edit = *p.fields()[i];
        edit.setMaxLength(longest);
        edit.setAccessibleName(QString::fromLatin1(captions[i]).remove('&'));
        fields->addRow(QString::fromLatin1(captions[i]), &edit);
    }

    p.titles.setColumnCount(titleColumns);
    p.titles.setHorizontalHeaderLabels({QStringLiteral("Track"), QStringLiteral("Title"), QStringLiteral("Time")});
    p.titles.verticalHeader()->hide();
    p.titles.horizontalHeader()->setHighlightSections(false);
    p.titles.horizontalHeader()->setSectionResizeMode(titleColumn, QHeaderView::Stretch);
    p.titles.setColumnWidth(numberColumn, p.titles.fontMetrics().horizontalAdvance(QStringLiteral("Track 00 ")));
    p.titles.setColumnWidth(timeColumn, p.titles.fontMetrics().horizontalAdvance(QStringLiteral("000:00   ")));
    p.titles.horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    p.titles.setShowGrid(false);
    p.titles.setTabKeyNavigation(false);
    p.titles.setSelectionMode(QAbstractItemView::SingleSelection);
    p.titles.setSelectionBehavior(QAbstractItemView::SelectRows);
    p.titles.setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                             QAbstractItemView::AnyKeyPressed | QAbstractItemView::SelectedClicked);
    p.titles.setAccessibleName(QStringLiteral("Titles"));

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
    column->addLayout(fields.release());
    column->addWidget(&p.titles, 1);
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
    for (QLineEdit* field : parts_->fields()) {
        field->clear();
        field->setEnabled(false);
    }
    parts_->titles.setRowCount(0);
    parts_->titles.setEnabled(false);
    parts_->start.setEnabled(false);
}

void LauncherWindow::showDisc()
{
    const platform::DiscNames& names = disc_->names;
    const std::array texts{&names.artist, &names.album, &names.year, &names.genre, &names.comment};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        parts_->fields()[i]->setEnabled(true);
        parts_->fields()[i]->setText(qtText(*texts[i]));
        parts_->fields()[i]->setCursorPosition(0);
    }
    const std::vector<platform::DiscTrack>& tracks = disc_->table.tracks;
    parts_->titles.setEnabled(true);
    parts_->titles.setRowCount(static_cast<int>(tracks.size()));
    for (std::size_t i = 0; i < tracks.size(); ++i) {
        const auto cell = [&](TitleColumn column, const QString& text, bool editable) {
            auto item = std::make_unique<QTableWidgetItem>(text);
            if (!editable)
                item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            if (column == timeColumn)
                item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            parts_->titles.setItem(static_cast<int>(i), column, item.release());
        };
        cell(numberColumn, QStringLiteral("%1").arg(tracks[i].number, 2, 10, QLatin1Char('0')), false);
        cell(titleColumn, qtText(names.titles[i]), tracks[i].audio);
        cell(timeColumn, tracks[i].audio ? timeText(tracks[i]) : QStringLiteral("data"), false);
    }
    parts_->titles.setCurrentCell(0, titleColumn);
    parts_->state.setText(QStringLiteral("%1 tracks").arg(tracks.size()));
    parts_->source.setText(sourceText(disc_->source));
    parts_->start.setEnabled(true);
    parts_->start.setFocus();
}

platform::DiscNames LauncherWindow::enteredNames() const
{
    platform::DiscNames names{.artist = parts_->artist.text().trimmed().toStdWString(),
                              .album = parts_->album.text().trimmed().toStdWString(),
                              .year = parts_->year.text().trimmed().toStdWString(),
                              .genre = parts_->genre.text().trimmed().toStdWString(),
                              .comment = parts_->comment.text().trimmed().toStdWString(),
                              .titles = {}};
    for (int row = 0; row < parts_->titles.rowCount(); ++row)
        names.titles.push_back(parts_->titles.item(row, titleColumn)->text().trimmed().toStdWString());
    return names;
}

void LauncherWindow::start()
{
    if (!disc_)
        return;
    QGuiApplication::setOverrideCursor(Qt::BusyCursor);
    const base::Status started = desk_.startRipper(*disc_, enteredNames());
    QGuiApplication::restoreOverrideCursor();
    if (!started)
        tell("The ripper could not be started: " + base::describe(started.failure()));
    else if (finished)
        finished();
}

void LauncherWindow::chooseImage()
{
    const QString image = QFileDialog::getOpenFileName(
        this, QStringLiteral("Open disc image"), {},
        QStringLiteral("Disc images (*.cue *.CUE *.toc *.TOC *.nrg *.NRG);;All files (*)"));
    if (!image.isEmpty())
        openImage(image.toStdString());
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
