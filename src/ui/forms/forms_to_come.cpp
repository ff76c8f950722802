#include "ui/forms/forms_to_come.h"

#include <utility>

namespace tonquay::ui {

FormsToCome::FormsToCome(state::Forms& forms, platform::Dialogs& dialogs, platform::EventLoop& loop)
    : forms_(forms),
      dialogs_(dialogs),
      loop_(loop)
{
    disableKeys();
    for (controls::Form* form :
         {&forms.controlsOf<state::CdriptabControls>().form, &forms.controlsOf<state::CdrecaltControls>().form})
        bindings_.keep(form->follow([this](const controls::Form::State& state) {
            if (state == controls::Form::State::shown)
                formShown();
        }));
}

void FormsToCome::disableKeys()
{
    state::RipdeckControls& main = forms_.ripdeck();
    for (const state::CommandKey key : {state::setupKey, state::tagUtilityKey}) {
        main.image10[key].enabled = false;
        main.Label10[key].enabled = false;
    }
    state::PopaControls& popa = forms_.controlsOf<state::PopaControls>();
    for (const state::PopupEntry entry : {state::setupEntry, state::tagUtilityEntry, state::convertEntry})
        popa.pop[entry].enabled = false;
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
                        L"This dialog is not there yet in this version. The launcher finds the drive and its disc, and "
                        L"settings can be given to tonquay, the program for the terminal.",
                        platform::Dialogs::Icon::information);
    waiting_ = false;
    forms_.controlsOf<state::CdriptabControls>().form.unload();
    forms_.controlsOf<state::CdripbgControls>().form.unload();
    forms_.controlsOf<state::CdrecaltControls>().form.unload();
    forms_.ripdeck().form.enabled = true;
    forms_.ripdeck().form.windowState = controls::Form::WindowState::normal;
}

}
