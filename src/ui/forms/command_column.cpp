#include "ui/forms/command_column.h"

#include "ui/forms/deck_key.h"
#include "ui/forms/input.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <array>
#include <memory>

namespace tonquay::ui {

namespace {

struct KeyRow {
    state::CommandKey key;
    const char* picture;
    const char* shortcut;
};

/// The ninth command is the wide key below the display.
constexpr std::array commandKeys{
    KeyRow{state::playerKey, "player", "Alt+Y"},      KeyRow{state::setupKey, "setup", "Alt+E"},
    KeyRow{state::tagUtilityKey, "tagutil", "Alt+I"}, KeyRow{state::partialKey, "rippart", "Alt+T"},
    KeyRow{state::refreshKey, "refresh", "Alt+F"},    KeyRow{state::selectAllKey, "all", "Alt+A"},
    KeyRow{state::clearAllKey, "clear", "Alt+C"},     KeyRow{state::discTagsKey, "tags", "Alt+G"},
};

}

CommandColumn::CommandColumn(state::RipdeckControls& ripdeck, QWidget* parent) : QFrame(parent)
{
    setObjectName(QStringLiteral("panel"));
    auto column = std::make_unique<QVBoxLayout>();
    column->setContentsMargins(10, 10, 10, 10);
    column->setSpacing(6);
    for (const KeyRow& key : commandKeys) {
        controls::Image& image = ripdeck.image10[key.key];
        const QString caption = qtText(ripdeck.Label10[key.key].caption);
        auto view = std::make_unique<DeckKey>(
            DeckKey::Look{.picture = key.picture, .caption = caption, .note = qtText(image.toolTip), .iconSize = 22},
            caption, QKeySequence(QString::fromLatin1(key.shortcut)));
        view->setMaximumHeight(view->sizeHint().height() + 10);
        bindKey(*view, image, bindings_);
        column->addWidget(view.release(), 1);
    }
    setLayout(column.release());
}

SideKeys::SideKeys(state::RipdeckControls& ripdeck, QWidget* parent) : QWidget(parent)
{
    auto row = std::make_unique<QHBoxLayout>();
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    auto mixer =
        std::make_unique<DeckKey>(DeckKey::Look{.picture = QStringLiteral("mixer"), .caption = QStringLiteral("Mixer")},
                                  QStringLiteral("Mixer"), QKeySequence(QStringLiteral("Alt+X")));
    bindKey(*mixer, ripdeck.Image15, bindings_);
    mixer->setTip(QStringLiteral("Audio mixer of the system"));
    auto menu =
        std::make_unique<DeckKey>(DeckKey::Look{.picture = QStringLiteral("menu"), .caption = QStringLiteral("Menu")},
                                  QStringLiteral("Menu"), QKeySequence(QStringLiteral("Alt+M")));
    forwardPresses(*menu, ripdeck.tqtxt);
    bindings_.show(ripdeck.tqtxt.toolTip, [key = menu.get()](const std::wstring& tip) { key->setTip(qtText(tip)); });
    row->addWidget(mixer.release(), 1);
    row->addWidget(menu.release(), 1);
    setLayout(row.release());
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

}
