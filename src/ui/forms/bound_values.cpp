#include "ui/forms/bound_values.h"

#include "ui/forms/input.h"

#include <QComboBox>
#include <QSignalBlocker>
#include <QSlider>

namespace tonquay::ui {

void bindChoice(QComboBox& view, controls::ChoiceList& list, Bindings& bindings)
{
    const auto takeOver = [&view, &list] {
        const QSignalBlocker quiet(view);
        view.clear();
        for (std::int32_t row = 0; row < list.rowCount(); ++row)
            view.addItem(qtText(list.row(row).text));
        view.setCurrentIndex(list.index());
    };
    takeOver();
    bindings.keep(list.follow(takeOver));
    QObject::connect(&view, &QComboBox::activated, &view, [&list](int row) { list.setIndex(row); });
}

void bindSlider(QSlider& view, controls::Slider& slider, Bindings& bindings)
{
    view.setRange(slider.min(), slider.max());
    const auto show = [&view](const std::int32_t& value) {
        if (view.isSliderDown())
            return;
        const QSignalBlocker quiet(view);
        view.setValue(value);
    };
    show(slider.value());
    bindings.keep(slider.follow(show));
    bindVisible(view, slider.visible, bindings);
    QObject::connect(&view, &QSlider::sliderPressed, &view, [&slider] { slider.mouseDown(); });
    QObject::connect(&view, &QSlider::valueChanged, &view, [&view, &slider](int value) {
        slider.drag(value);
        // A key or a press beside the handle moves it at once.
        if (!view.isSliderDown())
            slider.click();
    });
    QObject::connect(&view, &QSlider::sliderReleased, &view, [&slider] {
        slider.mouseUp();
        slider.click();
    });
}

}
