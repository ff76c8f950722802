#pragma once

#include "platform/file_system.h"
#include "state/cdriptab_controls.h"
#include "ui/forms/multi_select_view.h"

namespace tonquay::ui {

/// Rows of MP3 files, of which the name is seen and the tool tip tells the folder. Rows may be dragged from the list of
/// a folder and dropped on the queue. Enter acts as a double click does.
class Mp3Rows final : public MultiSelectView {
public:
    enum class Role { folder, queue };

    /// The row of the file in hand stands out in the queue, if it is still there.
    Mp3Rows(controls::MultiSelectList& list, Role role, controls::Property<state::Mp3InHand>& inHand,
            platform::FileSystem& files);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool takes(const QDropEvent& event) const;

    Role role_;
    Bindings bindings_;
};

}
