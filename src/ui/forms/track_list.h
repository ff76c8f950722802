#pragma once

#include "state/ripdeck_controls.h"
#include "ui/forms/bindings.h"
#include "ui/forms/multi_select_view.h"

namespace tonquay::ui {

/// The track list: any rows selected, told at a glance, and a cursor that moves by itself. Arrows move the cursor, the
/// space bar and a click toggle a row, Ctrl-A selects all.
class TrackList final : public MultiSelectView {
public:
    explicit TrackList(controls::MultiSelectList& list, QWidget* parent = nullptr);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    Bindings bindings_;
    bool hadFocus_ = false; ///< when it was disabled
};

/// The headings above it, in its columns.
class TrackHeadings final : public QWidget {
public:
    explicit TrackHeadings(std::array<controls::Label, 4>& labels, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::array<controls::Label, 4>& labels_;
    Bindings bindings_;
};

}
