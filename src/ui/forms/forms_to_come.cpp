#include "ui/forms/forms_to_come.h"

#include <utility>

namespace tonquay::ui {

FormsToCome::FormsToCome(state::Forms& forms, platform::Dialogs& dialogs, platform::EventLoop& loop)
    : forms_(forms),
      dialogs_(dialogs),
      loop_(loop)
{
    bindings_.keep(forms.controlsOf<state::CdrecaltControls>().form.follow([this](const controls::Form::State& state) {
        if (state == controls::Form::State::shown)
            formShown();
    }));
}

/// Whoever shows it is still in the middle of it.
void FormsToCome::formShown()
{
    if (std::exchange(waiting_, true))
        return;
    loop_.post([this] { sendAway(); });
}

void FormsToCome::sendAway()
{
    dialogs_.messageBox(L"CD-Tonquay",
                        L"Analog capture is not there yet in this version. Choose another rip mode in the setup.",
                        platform::Dialogs::Icon::information);
    waiting_ = false;
    forms_.controlsOf<state::CdrecaltControls>().form.unload();
}

}
