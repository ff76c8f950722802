#pragma once

#include "controls/lists.h"
#include "ui/forms/bindings.h"

#include <QListView>

#include <functional>
#include <memory>

namespace tonquay::ui {

/// A list of the program in which any rows may be selected, with a cursor that moves by itself: rows, selection and
/// cursor follow the list, and the user's hand changes the list's. A click is told when both are as they became.
class MultiSelectView : public QListView {
public:
    /// What Qt asks of a row, which has that text.
    using Cell = std::function<QVariant(const QString& text, int row, int role)>;

    MultiSelectView(controls::MultiSelectList& list, Cell cell, QWidget* parent = nullptr);
    ~MultiSelectView() override;

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

    controls::MultiSelectList& list() { return list_; }
    bool isEmpty() const;

private:
    class Rows;

    void takeOver();
    void showTopRow();
    void writeSelection(const QItemSelection& changed, bool selected);

    controls::MultiSelectList& list_;
    std::unique_ptr<Rows> rows_;
    Bindings bindings_;
    bool writing_ = false; ///< of the program's list, by the user's hand
    bool showing_ = false; ///< of the program's list in this view
};

}
