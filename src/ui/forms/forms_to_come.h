#pragma once

#include "platform/dialogs.h"
#include "platform/event_loop.h"
#include "state/forms.h"
#include "ui/forms/bindings.h"

namespace tonquay::ui {

/// A form whose window this version does not have yet: analog capture, which says so when it is shown, and goes.
class FormsToCome {
public:
    FormsToCome(state::Forms& forms, platform::Dialogs& dialogs, platform::EventLoop& loop);

private:
    void formShown();
    void sendAway();

    state::Forms& forms_;
    platform::Dialogs& dialogs_;
    platform::EventLoop& loop_;
    Bindings bindings_;
    bool waiting_ = false;
};

}
