#include "utility/tag_window.h"

#include "base/text.h"
#include "ui/skin/colours.h"
#include "ui/skin/icons.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFile>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace tonquay::utility {

namespace {

QString qtText(std::wstring_view text)
{
    return QString::fromWCharArray(text.data(), static_cast<qsizetype>(text.size()));
}

QString linesText(const std::vector<std::wstring>& lines)
{
    constexpr std::size_t most = 4;
    QStringList shown;
    for (std::size_t i = 0; i < std::min(lines.size(), most); ++i)
        shown.append(qtText(lines[i]));
    if (lines.size() > most)
        shown.append(QStringLiteral("..."));
    return shown.join('\n');
}

/// Where a field stands: the short ones share a row. `columns` counts the grid's columns that its box takes.
struct Place {
    tags::FrameValueID id;
    const char* caption;
    const char* tip;
    int row, column, columns;
};

using enum tags::FrameValueID;

// In the order in which Enter leads through them.
constexpr std::array<Place, fieldCount> places{{
    {title, "&Title", "What the track is called", 0, 0, 5},
    {artist, "&Artist", "Who plays it", 1, 0, 5},
    {album, "A&lbum", "The album that it is from", 2, 0, 5},
    {track, "Trac&k number", "Its number, or its number of all: 3/12", 3, 0, 1},
    {year, "&Year", "Four digits", 3, 2, 1},
    {genre, "&Genre", "A name, or a number in brackets: (17) is Rock", 3, 4, 1},
    {comment, "Co&mment", "Up to 121 letters that other programs can read", 4, 0, 5},
    {composer, "Com&poser", "Who wrote the music", 5, 0, 5},
    {originalArtist, "&Original artist", "Who played it first", 6, 0, 5},
    {copyright, "&Copyright", "The year and the owner", 7, 0, 5},
    {webLink, "&User web link", "An address: https://...", 8, 0, 5},
    {encodedBy, "&Encoded by", "Who, or what, made the file", 9, 0, 5},
}};

}

struct TagWindow::Parts {
    QLabel name;
    QLabel summary;
    QScrollArea fields;
    std::array<QLineEdit, fieldCount> edits; ///< by field
    QLabel lossesCaption{QStringLiteral("&In the tag besides, and lost when it is written:")};
    QListWidget losses;
    QLabel warnings;
    QPushButton open{QStringLiteral("Ope&n...")};
    QPushButton remove{QStringLiteral("&Remove")};
    QPushButton close{QStringLiteral("Clo&se")};
    QPushButton write{QStringLiteral("&Write")};
    std::string dropped; ///< host path of a file that is to be opened at once
    QTimer openDropped;
};

TagWindow::TagWindow(TagDesk& desk) : desk_(desk), parts_(std::make_unique<Parts>())
{
    setAcceptDrops(true);
    build();
    connectAll();
    takeOver();
}

TagWindow::~TagWindow() = default;

void TagWindow::build()
{
    Parts& p = *parts_;
    dressTexts();
    dressKeys();
    auto top = std::make_unique<QHBoxLayout>();
    top->addWidget(&p.name, 1);
    top->addWidget(&p.open);
    auto bottom = std::make_unique<QHBoxLayout>();
    bottom->addWidget(&p.remove);
    bottom->addStretch(1);
    bottom->addWidget(&p.close);
    bottom->addWidget(&p.write);

    auto column = std::make_unique<QVBoxLayout>();
    column->setContentsMargins(22, 18, 22, 18);
    column->setSpacing(10);
    column->addLayout(top.release());
    column->addWidget(&p.summary);
    // The list has what the fields leave of the window.
    column->addWidget(&fieldSheet(), 100);
    column->addWidget(&p.lossesCaption);
    column->addWidget(&p.losses, 1);
    column->addWidget(&p.warnings);
    column->addStretch(0);
    column->addLayout(bottom.release());
    setLayout(column.release());
    const QSize room = screen()->availableSize();
    resize(QSize(640, 660).boundedTo(QSize(room.width() - 40, room.height() - 50)));
}

void TagWindow::dressTexts()
{
    Parts& p = *parts_;
    p.name.setProperty("role", "heading");
    p.name.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    for (QLabel* label : {&p.name, &p.summary, &p.warnings})
        label->setTextFormat(Qt::PlainText);
    for (QLabel* label : {&p.summary, &p.warnings}) {
        label->setWordWrap(true);
        label->setProperty("role", label == &p.warnings ? "warning" : "note");
    }
    p.summary.setAccessibleName(QStringLiteral("What the file has"));
    p.warnings.setAccessibleName(QStringLiteral("Warnings"));
    p.lossesCaption.setBuddy(&p.losses);
    p.lossesCaption.setProperty("role", "note");
    p.losses.setAccessibleName(QStringLiteral("What would be lost"));
    p.losses.setToolTip(QStringLiteral("Write keeps the fields above only"));
    p.losses.setWordWrap(true);
    p.losses.setMinimumHeight(p.losses.fontMetrics().height() * 4);
}

void TagWindow::dressKeys()
{
    Parts& p = *parts_;
    p.open.setIcon(ui::icon(QStringLiteral("open")));
    p.write.setIcon(ui::icon(QStringLiteral("tags"), ui::colours::accentText));
    p.write.setDefault(true);
    // The default key is written bold, which its size does not know of.
    p.write.setMinimumWidth(p.write.fontMetrics().horizontalAdvance(p.write.text()) + 72);
    p.open.setToolTip(QStringLiteral("Show the tag of another file (Ctrl+O)"));
    p.remove.setToolTip(QStringLiteral("Take the whole ID3v2 tag out of the file"));
    p.close.setToolTip(QStringLiteral("Close this window (Esc)"));
    p.write.setToolTip(QStringLiteral("Write the fields into the file's ID3v2 tag (Ctrl+S)"));
    for (QPushButton* key : {&p.open, &p.remove, &p.close, &p.write})
        key->setAccessibleName(key->text().remove('&').remove(QStringLiteral("...")));
}

/// On a small screen the fields are moved past, and the keys stay where they are.
QWidget& TagWindow::fieldSheet()
{
    Parts& p = *parts_;
    auto grid = std::make_unique<QGridLayout>();
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(6);
    for (std::size_t place = 0; place < fieldCount; ++place)
        addField(*grid, place);
    grid->setColumnStretch(1, 2);
    grid->setColumnStretch(3, 2);
    grid->setColumnStretch(5, 3);
    auto sheet = std::make_unique<QWidget>();
    sheet->setLayout(grid.release());
    p.fields.setWidget(sheet.release());
    p.fields.setWidgetResizable(true);
    p.fields.setFrameShape(QFrame::NoFrame);
    p.fields.setFocusPolicy(Qt::NoFocus);
    p.fields.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    return p.fields;
}

void TagWindow::addField(QGridLayout& grid, std::size_t place)
{
    const Place& where = places[place];
    const std::size_t field = placeOf(where.id);
    QLineEdit& edit = parts_->edits[field];
    const QString caption = QString::fromLatin1(where.caption);
    auto label = std::make_unique<QLabel>(caption);
    label->setBuddy(&edit);
    edit.setAccessibleName(QString(caption).remove('&'));
    edit.setToolTip(QString::fromLatin1(where.tip));
    grid.addWidget(label.release(), where.row, where.column);
    grid.addWidget(&edit, where.row, where.column + 1, 1, where.columns);
    connect(&edit, &QLineEdit::textEdited, this, [this, field](const QString& text) {
        desk_.edit(field, text.toStdWString());
        showConcerns();
    });
    connect(&edit, &QLineEdit::returnPressed, this, [this, place] {
        Parts& p = *parts_;
        const std::size_t next = place + 1;
        QWidget* const follower =
            next < fieldCount ? static_cast<QWidget*>(&p.edits[placeOf(places[next].id)]) : &p.write;
        // As the Tab key does, with the text selected.
        follower->setFocus(Qt::TabFocusReason);
    });
}

void TagWindow::connectAll()
{
    Parts& p = *parts_;
    connect(&p.open, &QPushButton::clicked, this, [this] { ask(&TagDesk::chooseFile); });
    connect(&p.remove, &QPushButton::clicked, this, [this] { ask(&TagDesk::remove); });
    connect(&p.write, &QPushButton::clicked, this, [this] { ask(&TagDesk::write); });
    connect(&p.close, &QPushButton::clicked, this, [this] { close(); });
    p.openDropped.setSingleShot(true);
    connect(&p.openDropped, &QTimer::timeout, this, [this] {
        desk_.openHost(parts_->dropped);
        takeOver();
    });
    const auto onKeys = [this](QKeySequence::StandardKey keys, QPushButton& key) {
        auto shortcut = std::make_unique<QShortcut>(QKeySequence(keys), this);
        connect(shortcut.release(), &QShortcut::activated, &key, &QPushButton::click);
    };
    onKeys(QKeySequence::Save, p.write);
    onKeys(QKeySequence::Open, p.open);
}

void TagWindow::ask(void (TagDesk::*what)())
{
    (desk_.*what)();
    takeOver();
}

void TagWindow::takeOver()
{
    Parts& p = *parts_;
    for (std::size_t field = 0; field < fieldCount; ++field) {
        QLineEdit& edit = p.edits[field];
        if (edit.text() != qtText(desk_.value(field))) {
            edit.setText(qtText(desk_.value(field)));
            edit.setCursorPosition(0);
        }
        edit.setEnabled(desk_.isOpen());
    }
    p.summary.setText(qtText(desk_.summary()));
    p.remove.setEnabled(desk_.hasTag());
    if (shown_ != desk_.hostPath()) {
        shown_ = desk_.hostPath();
        p.edits[placeOf(places.front().id)].setFocus(Qt::TabFocusReason);
    }
    showName();
    showConcerns();
}

void TagWindow::showName()
{
    const QString name = desk_.isOpen() ? qtText(base::fromHostBytes(desk_.fileName())) : QStringLiteral("ID3v2 tag");
    setWindowTitle(desk_.isOpen() ? name + QStringLiteral("[*] - ID3v2 tag") : name);
    parts_->name.setText(parts_->name.fontMetrics().elidedText(name, Qt::ElideMiddle, parts_->name.width()));
    parts_->name.setToolTip(qtText(base::fromHostBytes(desk_.hostPath())));
}

void TagWindow::showConcerns()
{
    Parts& p = *parts_;
    const std::vector<std::wstring> losses = desk_.losses();
    p.losses.clear();
    for (const std::wstring& line : losses)
        p.losses.addItem(qtText(line));
    p.losses.setVisible(!losses.empty());
    p.lossesCaption.setVisible(!losses.empty());
    const std::vector<std::wstring> warnings = desk_.warnings();
    p.warnings.setText(linesText(warnings));
    p.warnings.setVisible(!warnings.empty());
    p.write.setEnabled(desk_.isEdited());
    setWindowModified(desk_.isEdited());
}

void TagWindow::closeEvent(QCloseEvent* event)
{
    if (desk_.mayClose())
        event->accept();
    else
        event->ignore();
}

void TagWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void TagWindow::dropEvent(QDropEvent* event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    const auto file = std::ranges::find_if(urls, &QUrl::isLocalFile);
    if (file == urls.end())
        return;
    event->acceptProposedAction();
    // A question inside of this would keep whoever dropped the file waiting.
    parts_->dropped = QFile::encodeName(file->toLocalFile()).toStdString();
    parts_->openDropped.start(0);
}

void TagWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

void TagWindow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    showName();
}

/// Only now the fields know how high they are in the font and style that they have.
void TagWindow::showEvent(QShowEvent* event)
{
    const int height = parts_->fields.widget()->sizeHint().height();
    parts_->fields.setMaximumHeight(height);
    parts_->fields.setMinimumHeight(height / 4);
    QWidget::showEvent(event);
}

}
