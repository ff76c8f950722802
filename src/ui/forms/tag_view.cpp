#include "ui/forms/tag_view.h"

#include "ui/forms/bound_widgets.h"
#include "ui/forms/input.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>

#include <memory>
#include <utility>

namespace tonquay::ui {

namespace {

QVariant fileCell(const QString& text, int, int role)
{
    return role == Qt::DisplayRole ? QVariant(text) : QVariant();
}

bool isEnter(const QKeyEvent& event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

/// A key that does something to a field's text, or may.
bool isTyped(const QKeyEvent& event)
{
    return !event.text().isEmpty() && event.key() != Qt::Key_Tab && event.key() != Qt::Key_Escape;
}

}

TagView::TagView(state::TagPageControls& page, platform::FileSystem& files, platform::Dialogs& dialogs)
    : page_(page),
      folder_(page.Drive2, page.dir2, files, dialogs, FolderView::Purpose::looked),
      list_(page.List55, fileCell)
{
    auto row = std::make_unique<QHBoxLayout>();
    row->setContentsMargins(10, 8, 10, 4);
    row->setSpacing(12);
    row->addWidget(&folderSide(), 1);
    row->addWidget(&tagSide(), 1);
    setLayout(row.release());
    bindings_.show(page.focusWanted, [this](const state::TagPageFocus& focus) { moveFocus(focus); });
}

QWidget& TagView::folderSide()
{
    folderBox_.setTitle(QStringLiteral("&Files"));
    list_.setAccessibleName(QStringLiteral("Files with tags"));
    list_.setSelectionMode(QAbstractItemView::ExtendedSelection);
    list_.setTextElideMode(Qt::ElideMiddle);
    list_.setMinimumHeight(120);
    auto column = std::make_unique<QVBoxLayout>();
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(&folder_, 1);
    column->addWidget(&list_, 1);
    folderBox_.setLayout(column.release());
    folderBox_.setFocusProxy(&folder_.pathField());
    return folderBox_;
}

QWidget& TagView::tagSide()
{
    auto fields = std::make_unique<QFormLayout>();
    fields->setVerticalSpacing(6);
    addField(*fields, QStringLiteral("T&itle"), page_.Text8, title_);
    addField(*fields, QStringLiteral("A&rtist"), page_.Text7, artist_);
    addField(*fields, QStringLiteral("A&lbum"), page_.Text6, album_);
    addGenre(*fields);
    addField(*fields, QStringLiteral("&Year"), page_.Text4, year_);
    addField(*fields, QStringLiteral("Trac&k"), page_.Text10, track_);
    addField(*fields, QStringLiteral("Co&mment"), page_.Text5, comment_);
    auto column = std::make_unique<QVBoxLayout>();
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addLayout(fields.release());
    addOptions(*column);
    addKeys(*column);
    info_.setTextFormat(Qt::PlainText);
    info_.setWordWrap(true);
    info_.setAlignment(Qt::AlignLeft | Qt::AlignTop);
    info_.setTextInteractionFlags(Qt::TextSelectableByMouse);
    info_.setAccessibleName(QStringLiteral("What the file is"));
    bindings_.show(page_.Label10.caption, [this](const std::wstring& text) { info_.setText(qtText(text).trimmed()); });
    column->addWidget(&info_, 1);
    QWidget& side = *std::make_unique<Wrapping<QWidget>>().release();
    side.setLayout(column.release());
    return side;
}

void TagView::addField(QFormLayout& fields, const QString& caption, controls::TextBox& box, QLineEdit& edit)
{
    fields.addRow(caption, &edit);
    edit.setAccessibleName(QString(caption).remove('&'));
    edit.installEventFilter(this);
    bindText(edit, box, bindings_, writing_);
    QWidget* label = fields.labelForField(&edit);
    bindings_.show(box.visible, [label](const bool& visible) { label->setVisible(visible); });
}

void TagView::addGenre(QFormLayout& fields)
{
    constexpr int visibleRows = 16;
    genre_.setEditable(true);
    genre_.setInsertPolicy(QComboBox::NoInsert);
    genre_.setMaxVisibleItems(visibleRows);
    // Else the style shows all of them at once, over the whole screen.
    genre_.setStyleSheet(QStringLiteral("QComboBox { combobox-popup: 0; }"));
    genre_.setAccessibleName(QStringLiteral("Genre"));
    genre_.lineEdit()->installEventFilter(this);
    fields.addRow(QStringLiteral("&Genre"), &genre_);
    QWidget* label = fields.labelForField(&genre_);
    bindings_.show(page_.genlist1.visible, [this, label](const bool& visible) {
        genre_.setVisible(visible);
        label->setVisible(visible);
    });
    bindings_.show(page_.genlist1.rows, [this](const std::vector<std::wstring>&) { takeOverGenres(); });
    bindings_.show(page_.genlist1.text, [this](const std::wstring& text) {
        if (!writing_)
            genre_.setEditText(qtText(text));
    });
    connect(&genre_, &QComboBox::editTextChanged, this, [this](const QString& text) {
        const Writing typing(writing_);
        page_.genlist1.text = text.toStdWString();
    });
    connect(&genre_, &QComboBox::activated, this, [this] { page_.genlist1.keyDown(); });
}

void TagView::takeOverGenres()
{
    const Writing filling(writing_);
    const QString text = qtText(page_.genlist1.text);
    genre_.clear();
    for (const std::wstring& row : page_.genlist1.rows.get())
        genre_.addItem(qtText(row));
    genre_.setEditText(text);
}

void TagView::addOptions(QVBoxLayout& column)
{
    bindFrame(optionsBox_, page_.Frame3, bindings_);
    bindTick(swap_, page_.Check10, bindings_, "w");
    bindTick(prefixes_, page_.Check11, bindings_, "x");
    auto ticks = std::make_unique<QVBoxLayout>();
    ticks->setContentsMargins(0, 0, 0, 0);
    ticks->setSpacing(3);
    ticks->addWidget(&swap_);
    ticks->addWidget(&prefixes_);
    optionsBox_.setLayout(ticks.release());
    column.addWidget(&optionsBox_);
}

void TagView::addKeys(QVBoxLayout& column)
{
    bindButton(save_, page_.Command4, bindings_, "S");
    bindButton(revert_, page_.Command2, bindings_, "v");
    bindButton(clear_, page_.Command3, bindings_, "e");
    bindButton(copy_, page_.Command5, bindings_, "p");
    bindButton(paste_, page_.Command6, bindings_, "a");
    bindButton(autoTag_, page_.Command9, bindings_, "u");
    bindButton(id3v2_, page_.Command1, bindings_, "3");
    constexpr int perRow = 4;
    auto rows = std::make_unique<QGridLayout>();
    rows->setSpacing(6);
    int place = 0;
    for (QPushButton* key : {&save_, &revert_, &clear_, &id3v2_, &copy_, &paste_, &autoTag_}) {
        rows->addWidget(key, place / perRow, place % perRow);
        ++place;
    }
    column.addLayout(rows.release());
}

bool TagView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto& key = *static_cast<QKeyEvent*>(event);
    const bool genre = watched == genre_.lineEdit();
    if (isTyped(key)) {
        const std::array boxes{std::pair{&title_, &page_.Text8},  std::pair{&artist_, &page_.Text7},
                               std::pair{&album_, &page_.Text6},  std::pair{&year_, &page_.Text4},
                               std::pair{&track_, &page_.Text10}, std::pair{&comment_, &page_.Text5}};
        for (const auto& [edit, box] : boxes)
            if (watched == edit)
                box->keyDown();
        if (genre)
            page_.genlist1.keyDown();
    }
    if (genre && isEnter(key)) {
        page_.genlist1.enter();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void TagView::moveFocus(state::TagPageFocus focus)
{
    using state::TagPageFocus;
    const std::array<std::pair<TagPageFocus, QWidget*>, 8> places{{{TagPageFocus::title, &title_},
                                                                   {TagPageFocus::artist, &artist_},
                                                                   {TagPageFocus::album, &album_},
                                                                   {TagPageFocus::genre, &genre_},
                                                                   {TagPageFocus::year, &year_},
                                                                   {TagPageFocus::track, &track_},
                                                                   {TagPageFocus::comment, &comment_},
                                                                   {TagPageFocus::save, &save_}}};
    if (focus == TagPageFocus::none)
        return;
    for (const auto& [wanted, view] : places)
        if (wanted == focus)
            // As the Tab key does, with the text selected.
            view->setFocus(Qt::TabFocusReason);
    page_.focusWanted = TagPageFocus::none;
}

}
