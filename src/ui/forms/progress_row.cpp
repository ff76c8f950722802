#include "ui/forms/progress_row.h"

#include "ui/forms/caption_colour.h"
#include "ui/forms/label_line.h"
#include "ui/skin/colours.h"

#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QProgressBar>

#include <algorithm>
#include <memory>

namespace tonquay::ui {

namespace {

/// QProgressBar for what it tells assistive programs; drawn by us.
class Bar final : public QProgressBar {
public:
    Bar(controls::ProgressPanel& panel, const state::Theme& theme, const QColor& colour)
        : panel_(panel),
          design_(colour)
    {
        setRange(0, 100);
        setTextVisible(false);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        setMinimumWidth(80);
        bindings_.show(panel.value, [this](const std::int16_t& value) {
            setValue(std::clamp<int>(value, 0, 100));
            update();
        });
        bindings_.show(panel.barColour, [this, &theme](const std::int32_t& barColour) {
            colour_ = theme.useThemeColours == 1 ? captionColour(barColour, theme, design_) : design_;
            update();
        });
    }

    QSize sizeHint() const override { return {200, 14}; }
    QSize minimumSizeHint() const override { return {80, 14}; }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(colours::groove);
        const QRectF whole(rect());
        const double round = whole.height() / 2;
        painter.drawRoundedRect(whole, round, round);
        if (value() == 0)
            return;
        painter.setBrush(colour_);
        painter.drawRoundedRect(QRectF(0, 0, std::max(whole.height(), whole.width() * value() / 100), whole.height()),
                                round, round);
    }

    void mouseReleaseEvent(QMouseEvent* event) override
    {
        if (rect().contains(event->pos()) && width() > 0)
            panel_.mouseUp(std::clamp(event->position().x() / width(), 0.0, 1.0));
    }

private:
    controls::ProgressPanel& panel_;
    QColor design_;
    QColor colour_;
    Bindings bindings_;
};

}

ProgressRow::ProgressRow(controls::ProgressPanel& panel, controls::Label& caption, controls::Label& percent,
                         const state::Theme& theme, const QColor& bar, QWidget* parent)
    : QWidget(parent)
{
    const QString name = QString::fromStdWString(caption.caption).trimmed();
    auto row = std::make_unique<QHBoxLayout>();
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(14);
    row->addWidget(
        std::make_unique<LabelLine>(
            caption, theme,
            TextLine::Look{.colour = colours::muted, .scale = 0.95, .widest = QStringLiteral("Track Progress ")}, name)
            .release());
    auto view = std::make_unique<Bar>(panel, theme, bar);
    view->setAccessibleName(name);
    row->addWidget(view.release(), 1);
    row->addWidget(std::make_unique<LabelLine>(percent, theme,
                                               TextLine::Look{.colour = colours::text,
                                                              .weight = 600,
                                                              .alignment = Qt::AlignRight | Qt::AlignVCenter,
                                                              .widest = QStringLiteral("100%")},
                                               name + QStringLiteral(" in percent"))
                       .release());
    QSizePolicy keep = row->itemAt(2)->widget()->sizePolicy();
    keep.setRetainSizeWhenHidden(true);
    row->itemAt(2)->widget()->setSizePolicy(keep);
    setLayout(row.release());
}

}
