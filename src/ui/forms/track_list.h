#pragma once

#include "state/ripdeck_controls.h"
#include "ui/forms/bindings.h"

#include <QListView>

#include <memory>

namespace tonquay::ui {

/// The track list: any rows selected, told at a glance, and a cursor that moves by itself. Arrows move the cursor, the
/// space bar and a click toggle a row, Ctrl-A selects all.
class TrackList final : public QListView {
public:
    explicit TrackList(controls::MultiSelectList& list, QWidget* parent = nullptr);
    ~TrackList() override;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    class Rows;

    void takeOver();
    void showTopRow();
    void writeSelection(const QItemSelection& changed, bool selected);

    controls::MultiSelectList& list_;
    std::unique_ptr<Rows> rows_;
    Bindings bindings_;
    bool hadFocus_ = false; ///< when it was disabled
    bool writing_ = false;  ///< of the program's list, by the user's hand
    bool showing_ = false;  ///< of the program's list in this view
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
