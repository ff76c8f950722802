#include "deck/shell.h"

#include "deck/window_place.h"
#include "platform/diagnostics.h"
#include "platform/dialogs.h"
#include "platform/processes.h"
#include "platform/system_info.h"
#include "state/help.h"

namespace tonquay::deck {

using controls::MouseButton;

Shell::Shell(state::AppState& state, state::Forms& forms, platform::Platform& platform)
    : state_(state),
      forms_(forms),
      main_(forms.ripdeck()),
      platform_(platform)
{
    main_.Image15.mouseDown = [this](MouseButton) { main_.Image15.picture = state::pressedLook; };
    main_.Image15.mouseUp = [this](MouseButton) {
        main_.Image15.picture = state::idleLook;
        startMixer();
    };
    main_.mixicon.mouseUp = [this](MouseButton) { startMixer(); };
    main_.SSPanel1.mouseUp = [this](MouseButton button) {
        if (button == MouseButton::right)
            startMixer();
    };
    main_.tqtxt.mouseUp = [this](MouseButton) { openMenu(); };
    main_.Image95.mouseUp = [this](MouseButton) { openMenu(); };
    main_.form.mouseDown = [this](MouseButton button) { backgroundPressed(button); };
    main_.form.doubleClick = [this] { centre(); };
    main_.form.keyDown = [this](controls::Key key) { keyPressed(key); };
    controls::Form& frame = forms_.controlsOf<state::CdripbgControls>().form;
    frame.onLoad = [this, &frame] { centerOnScreen(frame, platform_.system.screen()); };
}

void Shell::backgroundPressed(MouseButton button)
{
    if (button == MouseButton::left)
        main_.form.heldByPointer.tell();
    else if (button == MouseButton::right)
        openMenu();
}

void Shell::keyPressed(controls::Key key)
{
    switch (key) {
    case controls::Key::escape: main_.Label28.click(); break;
    case controls::Key::f1: helpOpen(); break;
    }
}

void Shell::openMenu()
{
    // One that still hangs open opens anew where the pointer is now.
    controls::Form& menu = forms_.controlsOf<state::PopaControls>().form;
    menu.unload();
    menu.show();
}

void Shell::centre()
{
    centerOnScreen(main_.form, platform_.system.screen());
}

void Shell::startMixer()
{
    const auto started = platform_.processes.start(state_.window.mixerPath, platform::Processes::WindowStyle::normal);
    if (!passOver(platform_.log, started, "Start the mixer"))
        platform_.dialogs.messageBox(L"CD-Tonquay",
                                     L"            Audio Mixer Application NOT FOUND!\n\n"
                                     L"Use the Setup command to enter the mixer application.",
                                     platform::Dialogs::Icon::none);
}

void Shell::helpOpen()
{
    state::helpOpen(platform_.help, state_.folders, state::ripperTopic);
}

}
