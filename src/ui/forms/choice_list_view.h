#pragma once

#include "controls/lists.h"
#include "ui/forms/bindings.h"

#include <QListWidget>

namespace tonquay::ui {

/// A short list of the program of which one row is chosen. A double click, or Enter, acts on the chosen one.
class ChoiceListView final : public QListWidget {
public:
    explicit ChoiceListView(controls::ChoiceList& list, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {120, sizeHint().height() * 2 / 3}; }

protected:
    void showEvent(QShowEvent* event) override;

private:
    void takeOver();

    controls::ChoiceList& list_;
    Bindings bindings_;
    bool showing_ = false;
};

}
