#pragma once

#include "state/popa_controls.h"
#include "ui/forms/bindings.h"

#include <QPointer>

class QMenu;

namespace tonquay::ui {

/// The popup menu, shown where the pointer is whenever its form opens it. A choice is carried out when the menu has
/// closed, since it may take as long as a whole run, and open the menu again meanwhile.
class PopupMenuView {
public:
    explicit PopupMenuView(state::PopaControls& popa);
    ~PopupMenuView();
    PopupMenuView(const PopupMenuView&) = delete;
    PopupMenuView& operator=(const PopupMenuView&) = delete;

private:
    void open();

    state::PopaControls& popa_;
    QPointer<QMenu> menu_;
    Bindings bindings_;
};

}
