#include "ui/forms/transport_row.h"

#include "ui/forms/deck_key.h"
#include "ui/forms/input.h"
#include "ui/forms/volume_panel.h"

#include <QHBoxLayout>

#include <array>
#include <memory>

namespace tonquay::ui {

namespace {

struct KeyRow {
    state::TransportKey key;
    const char* picture;
    const char* name;
    const char* shortcut;
};

constexpr std::array transportKeys{
    KeyRow{state::previousButton, "previous", "Previous track", "Alt+Left"},
    KeyRow{state::nextButton, "next", "Next track", "Alt+Right"},
    KeyRow{state::playButton, "play", "Play", "Alt+P"},
    KeyRow{state::pauseButton, "pause", "Pause", "Alt+U"},
    KeyRow{state::stopButton, "stop", "Stop", "Alt+S"},
    KeyRow{state::ejectButton, "eject", "Eject", "Alt+J"},
};

QString ripNote(const controls::MultiSelectList& list)
{
    const std::int32_t count = list.selectedCount();
    if (count == 0)
        return QStringLiteral("no track");
    return count == 1 ? QStringLiteral("1 track") : QStringLiteral("%1 tracks").arg(count);
}

}

TransportRow::TransportRow(state::RipdeckControls& ripdeck, QWidget* parent) : QWidget(parent), ripdeck_(ripdeck)
{
    auto row = std::make_unique<QHBoxLayout>();
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    addTransportKeys(*row);
    addControlPreview(*row);
    addRipKey(*row);
    row->addWidget(std::make_unique<VolumePanel>(ripdeck).release(), 2);
    setLayout(row.release());
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void TransportRow::addTransportKeys(QBoxLayout& row)
{
    for (const KeyRow& key : transportKeys) {
        auto view = std::make_unique<DeckKey>(DeckKey::Look{.picture = key.picture}, key.name,
                                              QKeySequence(QString::fromLatin1(key.shortcut)));
        view->setMinimumWidth(36);
        bindKey(*view, ripdeck_.icntla[key.key], bindings_);
        row.addWidget(view.release(), 1);
    }
}

/// Where the drive itself plays there are no times, no volume, and two keys more.
void TransportRow::addControlPreview(QBoxLayout& row)
{
    constexpr std::array pictures{"play", "stop"};
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        controls::Label& label = ripdeck_.LabelP[i];
        auto view = std::make_unique<DeckKey>(DeckKey::Look{.picture = pictures[i], .caption = qtText(label.caption)},
                                              qtText(label.caption), QKeySequence());
        view->setTip(qtText(label.caption));
        forwardPresses(*view, label);
        if (ripdeck_.SSPanel1.visible)
            view->hide();
        bindings_.keep(
            ripdeck_.SSPanel1.visible.follow([key = view.get()](const bool& engine) { key->setVisible(!engine); }));
        row.addWidget(view.release(), 2);
    }
}

void TransportRow::addRipKey(QBoxLayout& row)
{
    auto rip = std::make_unique<DeckKey>(DeckKey::Look{.picture = QStringLiteral("rip"),
                                                       .caption = QStringLiteral("Rip"),
                                                       .note = QStringLiteral("no track"),
                                                       .plate = DeckKey::Plate::accent,
                                                       .iconSize = 18},
                                         QStringLiteral("Rip"), QKeySequence(QStringLiteral("Alt+R")));
    rip->setMinimumWidth(rip->fontMetrics().horizontalAdvance(QStringLiteral("99 tracks")) + 50);
    bindKey(*rip, ripdeck_.icntla[state::startButton], bindings_);
    rip->setNote(ripNote(ripdeck_.list1));
    bindings_.keep(ripdeck_.list1.follow([this, key = rip.get()] { key->setNote(ripNote(ripdeck_.list1)); }));
    row.addWidget(rip.release(), 2);
}

}
