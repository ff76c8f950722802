#include "ui/forms/drive_info_box.h"

#include "ui/forms/bound_widgets.h"
#include "ui/forms/input.h"

#include <QFormLayout>
#include <QVBoxLayout>

#include <memory>

namespace tonquay::ui {

DriveInfoBox::DriveInfoBox(state::Cdrip1Controls& form) : QGroupBox(QStringLiteral("Drive Info"))
{
    auto column = std::make_unique<QVBoxLayout>();
    auto numbers = std::make_unique<QFormLayout>();
    numbers->addRow(QStringLiteral("Maximum read speed"), &speed_);
    numbers->addRow(QStringLiteral("Drive's cache size"), &cache_);
    bindLabel(speed_, form.lblMaxReadSpeed, bindings_);
    bindLabel(cache_, form.lblCacheSize, bindings_);
    column->addLayout(numbers.release());
    for (std::size_t i = 0; i < flags_.size(); ++i) {
        QCheckBox& view = flags_[i];
        view.setText(captionText(form.chkRWFlags[i].caption));
        view.setAttribute(Qt::WA_TransparentForMouseEvents);
        view.setFocusPolicy(Qt::NoFocus);
        const auto show = [&view](const std::int16_t& value) { view.setChecked(value != 0); };
        show(form.chkRWFlags[i].value());
        bindings_.keep(form.chkRWFlags[i].follow(show));
        column->addWidget(&view);
    }
    column->addStretch(1);
    setLayout(column.release());
}

}
