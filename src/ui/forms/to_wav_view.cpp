#include "ui/forms/to_wav_view.h"

#include "ui/forms/bound_widgets.h"
#include "ui/forms/host_paths.h"
#include "ui/forms/input.h"
#include "ui/skin/icons.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <algorithm>
#include <memory>

namespace tonquay::ui {

namespace {

/// The line that tells where the decoder is, with the place in the form of this system.
QString decoderText(platform::FileSystem& files, const std::wstring& caption)
{
    if (!caption.starts_with(state::decoderLead))
        return qtText(caption);
    const std::size_t from = state::decoderLead.size();
    const std::size_t end = std::min(caption.find(L"  (", from), caption.size());
    return qtText(caption.substr(0, from)) + shownPath(files, caption.substr(from, end - from)) +
           qtText(caption.substr(end));
}

}

ToWavView::ToWavView(state::CdriptabControls& form, platform::FileSystem& files, platform::Dialogs& dialogs)
    : form_(form),
      folder_(form.Drive3, form.dir3, files, dialogs, FolderView::Purpose::looked),
      files_(form.List5, Mp3Rows::Role::folder, form.converting, files),
      queue_(form.List6, Mp3Rows::Role::queue, form.converting, files)
{
    auto row = std::make_unique<QHBoxLayout>();
    row->setSpacing(12);
    row->addWidget(&folderSide(), 1);
    row->addWidget(&keys());
    row->addWidget(&queueSide(), 1);
    auto column = std::make_unique<QVBoxLayout>();
    column->setContentsMargins(10, 8, 10, 4);
    column->setSpacing(10);
    column->addLayout(row.release(), 1);
    addFoot(*column, files);
    setLayout(column.release());
    bindings_.show(form.converting, [this](const state::Mp3InHand& file) { showInHand(file); });
}

QWidget& ToWavView::folderSide()
{
    bindings_.show(form_.Label20.caption,
                   [this](const std::wstring& caption) { folderBox_.setTitle(captionText(caption, "f")); });
    files_.setAccessibleName(QStringLiteral("MP3 files in the folder"));
    files_.setMinimumHeight(120);
    auto column = std::make_unique<QVBoxLayout>();
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(&folder_, 1);
    column->addWidget(&files_, 1);
    folderBox_.setLayout(column.release());
    folderBox_.setFocusProxy(&folder_.pathField());
    return folderBox_;
}

QWidget& ToWavView::keys()
{
    auto column = std::make_unique<QVBoxLayout>();
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    bindButton(add_, form_.Command14, bindings_, "A");
    bindButton(all_, form_.Command15, bindings_, "L");
    bindButton(clearQueue_, form_.Command16, bindings_, "e");
    bindButton(clearSelection_, form_.Command13, bindings_, "r");
    column->addStretch(1);
    for (QPushButton* key : {&add_, &all_, &clearQueue_, &clearSelection_})
        column->addWidget(key);
    column->addStretch(1);
    QWidget& side = *std::make_unique<QWidget>().release();
    side.setLayout(column.release());
    return side;
}

QWidget& ToWavView::queueSide()
{
    queue_.setAccessibleName(QStringLiteral("MP3 files to convert"));
    queueHint_.setBuddy(&queue_);
    bindLabel(queueHint_, form_.Label18, bindings_, "v");
    bindButton(remove_, form_.Command10, bindings_, "m");
    auto column = std::make_unique<QVBoxLayout>();
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(&queueHint_);
    column->addWidget(&queue_, 1);
    column->addWidget(&remove_);
    QWidget& side = *std::make_unique<QWidget>().release();
    side.setLayout(column.release());
    return side;
}

void ToWavView::addFoot(QVBoxLayout& column, platform::FileSystem& files)
{
    decoder_.setTextFormat(Qt::PlainText);
    bindings_.show(form_.Label8.caption,
                   [this, &files](const std::wstring& caption) { decoder_.setText(decoderText(files, caption)); });
    decoder_.setWordWrap(true);
    decoder_.setProperty("role", "note");
    inHand_.setTextFormat(Qt::PlainText);
    bindButton(convert_, form_.Command17, bindings_, "n");
    convert_.setMinimumWidth(140);
    bindings_.show(form_.Image1[1].visible, [this](const bool& ready) {
        picture_.setPixmap(icon(QStringLiteral("rip")).pixmap(QSize(26, 26), ready ? QIcon::Normal : QIcon::Disabled));
    });
    auto texts = std::make_unique<QVBoxLayout>();
    texts->setContentsMargins(0, 0, 0, 0);
    texts->setSpacing(2);
    texts->addWidget(&decoder_);
    texts->addWidget(&inHand_);
    auto row = std::make_unique<QHBoxLayout>();
    row->setSpacing(10);
    auto told = std::make_unique<Wrapping<QWidget>>();
    told->setLayout(texts.release());
    told->setMinimumHeight(3 * fontMetrics().height());
    row->addWidget(told.release(), 1);
    row->addWidget(&picture_);
    row->addWidget(&convert_);
    column.addLayout(row.release());
}

void ToWavView::showInHand(const state::Mp3InHand& file)
{
    if (file.count == 0)
        inHand_.clear();
    else
        inHand_.setText(QStringLiteral("Converting %1 of %2: %3")
                            .arg(file.number)
                            .arg(file.count)
                            .arg(qtText(state::mp3Row(file.row).name)));
}

}
