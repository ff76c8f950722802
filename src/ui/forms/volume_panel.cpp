#include "ui/forms/volume_panel.h"

#include "ui/forms/input.h"
#include "ui/forms/text_line.h"
#include "ui/skin/colours.h"

#include <QGridLayout>
#include <QMouseEvent>
#include <QSlider>

#include <memory>

namespace tonquay::ui {

VolumePanel::VolumePanel(state::RipdeckControls& ripdeck, QWidget* parent) : QFrame(parent), ripdeck_(ripdeck)
{
    setObjectName(QStringLiteral("panel"));
    auto grid = std::make_unique<QGridLayout>();
    grid->setContentsMargins(12, 6, 12, 6);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(4);
    grid->setColumnStretch(1, 1);
    QSlider& volume = addSlider(ripdeck.SliderVolume, QStringLiteral("Volume"), Direction::mirrored);
    QSlider& balance = addSlider(ripdeck.SliderBalance, QStringLiteral("Balance"), Direction::same);
    grid->addWidget(&volume, 0, 1);
    grid->addWidget(&balance, 1, 1);
    setLayout(grid.release());
    addCaption(QStringLiteral("Vol"), ripdeck.SSPanel2.mouseUp, QStringLiteral("Volume to its middle"), 0);
    addCaption(qtText(ripdeck.Label2.caption).trimmed(), ripdeck.Label2.mouseUp,
               QStringLiteral("Balance to the middle"), 1);
    bindVisible(*this, ripdeck.SSPanel1.visible, bindings_);
    bindings_.show(ripdeck.SSPanel1.toolTip, [this](const std::wstring& tip) { setToolTip(qtText(tip)); });
}

QSlider& VolumePanel::addSlider(controls::Slider& slider, const QString& name, Direction direction)
{
    QSlider& view = *std::make_unique<QSlider>(Qt::Horizontal, this).release();
    const int sign = direction == Direction::mirrored ? -1 : 1;
    view.setRange(std::min(sign * slider.min(), sign * slider.max()),
                  std::max(sign * slider.min(), sign * slider.max()));
    view.setValue(sign * slider.value());
    view.setPageStep(10);
    view.setMinimumWidth(60);
    view.setAccessibleName(name);
    view.setFocusPolicy(Qt::StrongFocus);
    view.installEventFilter(this);
    connect(&view, &QSlider::valueChanged, this, [this, &slider, sign](int value) {
        const Writing writing(writing_);
        slider.drag(sign * value);
    });
    bindings_.keep(slider.follow([this, &view, sign](const std::int32_t& value) {
        if (!writing_)
            view.setValue(sign * value);
    }));
    bindings_.show(slider.toolTip, [&view](const std::wstring& tip) {
        view.setToolTip(qtText(tip));
        view.setAccessibleDescription(qtText(tip));
    });
    bindings_.show(slider.busyPointer,
                   [&view](const bool& busy) { view.setCursor(busy ? Qt::BusyCursor : Qt::ArrowCursor); });
    bindVisible(view, slider.visible, bindings_);
    return view;
}

void VolumePanel::addCaption(const QString& text, controls::Handler<controls::MouseButton>& released,
                             const QString& tip, int row)
{
    auto caption = std::make_unique<TextLine>(
        TextLine::Look{.colour = colours::muted, .scale = 0.85, .weight = 600, .widest = text + QStringLiteral(" ")},
        this);
    caption->setText(text);
    caption->setTip(tip);
    caption->setAccessibleName(tip);
    caption->setClickable(true);
    caption->pressed = [](Qt::MouseButton) {};
    caption->released = [this, &released](Qt::MouseButton button) {
        if (button == Qt::RightButton)
            ripdeck_.SSPanel1.mouseUp(controls::MouseButton::right);
        else
            released(controls::MouseButton::left);
    };
    static_cast<QGridLayout*>(layout())->addWidget(caption.release(), row, 0);
}

/// Taken, or the window behind would get it, and the release with it.
void VolumePanel::mousePressEvent(QMouseEvent* event)
{
    event->accept();
}

void VolumePanel::mouseReleaseEvent(QMouseEvent* event)
{
    ripdeck_.SSPanel1.mouseUp(buttonOf(*event));
}

bool VolumePanel::eventFilter(QObject* watched, QEvent* event)
{
    const bool mouse = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonRelease;
    if (!mouse || static_cast<QMouseEvent*>(event)->button() != Qt::RightButton)
        return QFrame::eventFilter(watched, event);
    if (event->type() == QEvent::MouseButtonRelease)
        ripdeck_.SSPanel1.mouseUp(controls::MouseButton::right);
    return true;
}

}
