#pragma once

#include "state/ripdeck_controls.h"
#include "ui/forms/bindings.h"

#include <QWidget>

class QBoxLayout;

namespace tonquay::ui {

/// The keys below the display: six for the preview, the wide one that rips, and volume and balance.
class TransportRow final : public QWidget {
public:
    explicit TransportRow(state::RipdeckControls& ripdeck, QWidget* parent = nullptr);

private:
    void addTransportKeys(QBoxLayout& row);
    void addControlPreview(QBoxLayout& row);
    void addRipKey(QBoxLayout& row);

    state::RipdeckControls& ripdeck_;
    Bindings bindings_;
};

}
