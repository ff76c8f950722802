#pragma once

#include "controls/list_view.h"
#include "ui/forms/bindings.h"

#include <QTreeWidget>

namespace tonquay::ui {

/// A table with headed columns. A click in it, and each key that is let go in it, picks the selected row.
class TableView : public QTreeWidget {
public:
    explicit TableView(controls::ListView& list);

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;

private:
    void takeOver();
    void showRows();

    controls::ListView& list_;
    Bindings bindings_;
    bool writing_ = false;
    bool showing_ = false;
};

}
