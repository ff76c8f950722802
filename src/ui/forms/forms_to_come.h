#pragma once

#include "platform/dialogs.h"
#include "platform/event_loop.h"
#include "state/forms.h"
#include "ui/forms/bindings.h"

namespace tonquay::ui {

/// Forms whose windows this version does not have yet. The keys and menu entries that lead to them only are disabled;
/// one that is shown all the same says so, and goes, and the main window comes back.
class FormsToCome {
public:
    FormsToCome(state::Forms& forms, platform::Dialogs& dialogs, platform::EventLoop& loop);

private:
    void disableKeys();
    void formShown();
    void sendAway();

    state::Forms& forms_;
    platform::Dialogs& dialogs_;
    platform::EventLoop& loop_;
    Bindings bindings_;
    bool waiting_ = false;
};

}
