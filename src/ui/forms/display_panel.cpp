#include "ui/forms/display_panel.h"

#include "ui/forms/caption_colour.h"
#include "ui/forms/input.h"
#include "ui/forms/label_line.h"
#include "ui/forms/level_meter.h"
#include "ui/forms/status_light.h"
#include "ui/skin/colours.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <memory>

namespace tonquay::ui {

namespace {

using Look = TextLine::Look;

/// Idle clocks are set to no time in two ways, which would change the display's width to and fro.
QString shownTime(const QString& time)
{
    return time == QStringLiteral("0:00") ? QStringLiteral("00:00") : time.trimmed();
}

}

DisplayPanel::DisplayPanel(state::RipdeckControls& ripdeck, const state::Theme& theme, QWidget* parent)
    : QFrame(parent),
      ripdeck_(ripdeck),
      theme_(theme)
{
    setObjectName(QStringLiteral("display"));
    auto columns = std::make_unique<QHBoxLayout>();
    columns->setContentsMargins(20, 12, 20, 12);
    columns->setSpacing(16);
    auto texts = std::make_unique<QVBoxLayout>();
    texts->setSpacing(5);
    addNames(*texts);
    addDiscTags(*texts);
    texts->addStretch(1);
    addMeters(*texts);
    texts->addStretch(1);
    addLamps(*texts);
    columns->addLayout(texts.release(), 1);
    addNumbers(*columns);
    setLayout(columns.release());
}

void DisplayPanel::addNames(QBoxLayout& column)
{
    auto disc = std::make_unique<LabelLine>(ripdeck_.Label12, theme_, Look{.colour = colours::text, .weight = 600},
                                            QStringLiteral("Artist and album"));
    auto title = std::make_unique<LabelLine>(ripdeck_.Label13, theme_, Look{.colour = colours::on},
                                             QStringLiteral("Title in work"));
    disc->forwardPresses();
    title->forwardPresses();
    column.addWidget(disc.release());
    column.addWidget(title.release());
}

void DisplayPanel::addDiscTags(QBoxLayout& column)
{
    auto row = std::make_unique<QHBoxLayout>();
    row->setSpacing(18);
    const auto add = [&](state::StatusLabel label, const QString& name, int stretch) {
        const bool fits = stretch == 0;
        auto line = std::make_unique<LabelLine>(ripdeck_.Label6[label], theme_,
                                                Look{.colour = colours::muted, .fits = fits}, name);
        line->forwardPresses();
        row->addWidget(line.release(), stretch);
    };
    add(state::yearLabel, QStringLiteral("Year"), 0);
    add(state::genreLabel, QStringLiteral("Genre"), 0);
    add(state::commentLabel, QStringLiteral("Comment"), 1);
    column.addLayout(row.release());
}

void DisplayPanel::addMeters(QBoxLayout& column)
{
    auto meters = std::make_unique<QVBoxLayout>();
    meters->setSpacing(2);
    meters->addWidget(
        std::make_unique<LevelMeter>(ripdeck_.picVUMeter[0], QStringLiteral("L"), QStringLiteral("Level, left"))
            .release());
    meters->addWidget(
        std::make_unique<LevelMeter>(ripdeck_.picVUMeter[1], QStringLiteral("R"), QStringLiteral("Level, right"))
            .release());
    column.addLayout(meters.release());
}

void DisplayPanel::addLamps(QBoxLayout& column)
{
    auto row = std::make_unique<QHBoxLayout>();
    row->setSpacing(20);
    const auto add = [&](const QString& name) -> StatusLight& {
        auto lamp = std::make_unique<StatusLight>(name);
        StatusLight& made = *lamp;
        row->addWidget(lamp.release());
        return made;
    };
    bindDiscLamp(add(QStringLiteral("Disc")));
    bindLamp(add(QStringLiteral("Recording")), ripdeck_.Label6[state::statusLabel]);
    bindLamp(add(QStringLiteral("Partial")), ripdeck_.Label6[state::partialCaption]);
    bindLamp(add(QStringLiteral("Preview")), ripdeck_.Label66);
    row->addStretch(1);
    column.addLayout(row.release());
}

void DisplayPanel::bindLamp(StatusLight& lamp, controls::Label& label)
{
    bindings_.show(label.caption, [&lamp](const std::wstring& caption) { lamp.setCaption(qtText(caption)); });
    bindings_.show(label.colour, [this, &lamp](const controls::Colour& colour) {
        lamp.setLamp(isLit(colour, theme_) ? captionColour(colour, theme_, {}) : QColor());
    });
}

/// Alight while there is a disc; in the colour that the program gives it once the disc has gone.
void DisplayPanel::bindDiscLamp(StatusLight& lamp)
{
    controls::Label& label = ripdeck_.Label6[state::discCaption];
    const auto show = [this, &lamp, &label] {
        const bool tracks = ripdeck_.list1.rowCount() > 0;
        lamp.setLamp(isLit(label.colour, theme_) ? captionColour(label.colour, theme_, {})
                     : tracks                    ? colours::on
                                                 : QColor());
    };
    bindings_.show(label.caption, [&lamp](const std::wstring& caption) { lamp.setCaption(qtText(caption)); });
    bindings_.show(label.colour, [show](const controls::Colour&) { show(); });
    bindings_.keep(ripdeck_.list1.follow(show));
}

void DisplayPanel::addNumbers(QBoxLayout& row)
{
    const Qt::Alignment right = Qt::AlignRight | Qt::AlignVCenter;
    auto column = std::make_unique<QVBoxLayout>();
    column->setSpacing(0);
    const auto add = [&](controls::Label& label, const Look& look, const QString& name,
                         std::function<QString(const QString&)> shown = {}) {
        auto line = std::make_unique<LabelLine>(label, theme_, look, name, std::move(shown));
        column->addWidget(line.release(), 0, Qt::AlignRight);
    };
    add(ripdeck_.Label8, {.colour = colours::accent, .scale = 3, .weight = 300, .alignment = right, .widest = "00"},
        QStringLiteral("Track number"), [](const QString& number) { return number.trimmed().rightJustified(2, '0'); });
    auto caption = std::make_unique<TextLine>(Look{.colour = colours::muted,
                                                   .scale = 0.82,
                                                   .weight = 600,
                                                   .alignment = right,
                                                   .widest = QStringLiteral("TRACK "),
                                                   .spaced = true});
    caption->setText(QStringLiteral("TRACK"));
    column->addWidget(caption.release(), 0, Qt::AlignRight);
    column->addStretch(1);
    add(ripdeck_.lblTrackTime,
        {.colour = colours::text, .scale = 2.1, .weight = 300, .alignment = right, .widest = QStringLiteral("00:00")},
        QStringLiteral("Elapsed time"), [this, last = QString()](const QString& time) mutable {
            // Beside encoders in the background the clock is reset twice a second, and at once set again by the track
            // that is being read; only the latter is worth seeing.
            const bool reset = time == QStringLiteral("0:00");
            const bool reading =
                ripdeck_.Trackprogress.visible && ripdeck_.Label6[state::statusLabel].caption.get() == L"Recording";
            if (!reset || !reading || last.isEmpty())
                last = shownTime(time);
            return last;
        });
    add(ripdeck_.lblTrackTot, {.colour = colours::muted, .alignment = right, .widest = QStringLiteral("of 0:00:00")},
        QStringLiteral("Total track time"),
        [](const QString& time) { return QStringLiteral("of ") + shownTime(time); });
    row.addLayout(column.release());
}

}
