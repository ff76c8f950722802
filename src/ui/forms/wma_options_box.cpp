#include "ui/forms/wma_options_box.h"

#include "ui/forms/bound_values.h"
#include "ui/forms/bound_widgets.h"

#include <QGridLayout>
#include <QLabel>

#include <memory>

namespace tonquay::ui {

namespace {

/// By the index of txtWMATags.
constexpr std::array<const char*, 8> captions{"Title",  "Artist",    "Album Title", "Description",
                                              "Rating", "Copyright", "Genre",       "Year"};

void addCaption(QGridLayout& grid, const QString& text, QWidget& of, int row, int column)
{
    auto caption = std::make_unique<QLabel>(text);
    caption->setBuddy(&of);
    of.setAccessibleName(text);
    grid.addWidget(caption.release(), row, column);
}

}

WmaOptionsBox::WmaOptionsBox(state::Cdrip1Controls& form)
{
    auto grid = std::make_unique<QGridLayout>();
    addCaption(*grid, QStringLiteral("WMA Encoding Bitrate"), rates_, 0, 0);
    bindChoice(rates_, form.cmbWMAEncodingBitrate, bindings_);
    grid->addWidget(&rates_, 0, 1);
    bindTick(tagged_, form.chkWMAFileTags, bindings_);
    grid->addWidget(&tagged_, 0, 2, 1, 2);
    constexpr int columns = 2;
    for (std::size_t i = 0; i < tags_.size(); ++i) {
        const int row = 1 + static_cast<int>(i) / columns;
        const int column = static_cast<int>(i) % columns * 2;
        addCaption(*grid, QString::fromLatin1(captions[i]), tags_[i], row, column);
        bindText(tags_[i], form.txtWMATags[i], bindings_, writing_);
        grid->addWidget(&tags_[i], row, column + 1);
    }
    setLayout(grid.release());
    bindVisible(*this, form.picWMAExtractOptionsVisible, bindings_);
}

}
