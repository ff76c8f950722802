#include "launcher/names_form.h"

#include "base/numbers.h"
#include "base/red_book.h"

#include <QFormLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QTableWidget>
#include <QVBoxLayout>

#include <array>

namespace tonquay::launcher {

namespace {

enum TitleColumn { numberColumn, titleColumn, timeColumn, titleColumns };

QString timeText(const platform::DiscTrack& track)
{
    constexpr int secondsPerMinute = 60;
    // As the ripper's list counts them.
    const auto seconds = static_cast<int>(
        base::roundHalfEven(static_cast<double>(track.sectorCount) / base::red_book::sectorsPerSecond));
    return QStringLiteral("%1:%2")
        .arg(seconds / secondsPerMinute)
        .arg(seconds % secondsPerMinute, 2, 10, QLatin1Char('0'));
}

std::wstring textOf(const QString& entered)
{
    return entered.trimmed().toStdWString();
}

void setUpTitles(QTableWidget& titles)
{
    const QFontMetrics metrics = titles.fontMetrics();
    titles.setColumnCount(titleColumns);
    titles.setHorizontalHeaderLabels({QStringLiteral("Track"), QStringLiteral("Title"), QStringLiteral("Time")});
    titles.verticalHeader()->hide();
    titles.horizontalHeader()->setHighlightSections(false);
    titles.horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    titles.horizontalHeader()->setSectionResizeMode(titleColumn, QHeaderView::Stretch);
    titles.setColumnWidth(numberColumn, metrics.horizontalAdvance(QStringLiteral("Track 00 ")));
    titles.setColumnWidth(timeColumn, metrics.horizontalAdvance(QStringLiteral("000:00   ")));
    titles.setShowGrid(false);
    titles.setTabKeyNavigation(false);
    titles.setSelectionMode(QAbstractItemView::SingleSelection);
    titles.setSelectionBehavior(QAbstractItemView::SelectRows);
    titles.setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                           QAbstractItemView::AnyKeyPressed | QAbstractItemView::SelectedClicked);
    titles.setAccessibleName(QStringLiteral("Titles"));
}

void setCell(QTableWidget& titles, std::size_t row, TitleColumn column, const QString& text, bool editable)
{
    auto item = std::make_unique<QTableWidgetItem>(text);
    if (!editable)
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    if (column == timeColumn)
        item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    titles.setItem(static_cast<int>(row), column, item.release());
}

}

struct NamesForm::Parts {
    QLineEdit artist, album, year, genre, comment;
    QTableWidget titles;

    std::array<QLineEdit*, 5> fields() { return {&artist, &album, &year, &genre, &comment}; }
};

NamesForm::NamesForm() : parts_(std::make_unique<Parts>())
{
    auto fields = std::make_unique<QFormLayout>();
    fields->setHorizontalSpacing(14);
    fields->setVerticalSpacing(7);
    constexpr std::array captions{"&Artist", "A&lbum", "&Year", "&Genre", "&Comment"};
    constexpr int longest = 250;
    for (std::size_t i = 0; i < captions.size(); ++i) {
        QLineEdit& edit = *parts_->fields()[i];
        edit.setMaxLength(longest);
        edit.setAccessibleName(QString::fromLatin1(captions[i]).remove('&'));
        fields->addRow(QString::fromLatin1(captions[i]), &edit);
    }
    setUpTitles(parts_->titles);
    auto column = std::make_unique<QVBoxLayout>();
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(10);
    column->addLayout(fields.release());
    column->addWidget(&parts_->titles, 1);
    setLayout(column.release());
}

NamesForm::~NamesForm() = default;

void NamesForm::clear()
{
    for (QLineEdit* field : parts_->fields())
        field->clear();
    parts_->titles.setRowCount(0);
    setEnabled(false);
}

void NamesForm::showDisc(const SeenDisc& disc)
{
    const platform::DiscNames& names = disc.names;
    const std::array texts{&names.artist, &names.album, &names.year, &names.genre, &names.comment};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        parts_->fields()[i]->setText(QString::fromStdWString(*texts[i]));
        parts_->fields()[i]->setCursorPosition(0);
    }
    const std::vector<platform::DiscTrack>& tracks = disc.table.tracks;
    parts_->titles.setRowCount(static_cast<int>(tracks.size()));
    for (std::size_t i = 0; i < tracks.size(); ++i) {
        const bool audio = tracks[i].audio;
        setCell(parts_->titles, i, numberColumn, QStringLiteral("%1").arg(tracks[i].number, 2, 10, QLatin1Char('0')),
                false);
        setCell(parts_->titles, i, titleColumn, QString::fromStdWString(names.titles[i]), audio);
        setCell(parts_->titles, i, timeColumn, audio ? timeText(tracks[i]) : QStringLiteral("data"), false);
    }
    parts_->titles.setCurrentCell(0, titleColumn);
    setEnabled(true);
}

platform::DiscNames NamesForm::entered() const
{
    platform::DiscNames names{.artist = textOf(parts_->artist.text()),
                              .album = textOf(parts_->album.text()),
                              .year = textOf(parts_->year.text()),
                              .genre = textOf(parts_->genre.text()),
                              .comment = textOf(parts_->comment.text()),
                              .titles = {}};
    for (int row = 0; row < parts_->titles.rowCount(); ++row)
        names.titles.push_back(textOf(parts_->titles.item(row, titleColumn)->text()));
    return names;
}

}
