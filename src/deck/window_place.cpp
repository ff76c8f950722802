#include "deck/window_place.h"

#include "platform/diagnostics.h"
#include "platform/file_system.h"
#include "state/suite_files.h"

namespace tonquay::deck {

namespace {

void clampAxis(std::int32_t& place, std::int32_t size, std::int32_t margin, std::int32_t screen)
{
    if (place < 0)
        place = 0;
    // Wider than the fields, which come from a file and may hold anything.
    if (std::int64_t{size} + place + margin > screen)
        place = screen - size;
}

void moveTo(controls::Form& form, const state::WindowState& window)
{
    form.left = window.savedLeft;
    form.top = window.savedTop;
}

}

void clampPlace(state::WindowState& window, const controls::Form& form, const platform::SystemInfo::Screen& screen)
{
    constexpr std::int32_t rightMargin = 400;
    constexpr std::int32_t bottomMargin = 200;
    clampAxis(window.savedLeft, form.width, rightMargin, screen.width);
    clampAxis(window.savedTop, form.height, bottomMargin, screen.height);
}

void centerOnScreen(controls::Form& form, const platform::SystemInfo::Screen& screen)
{
    form.left = (screen.width - form.width) / 2;
    form.top = (screen.height - form.height) / 2;
}

void saveposn(state::AppState& state, state::RipdeckControls& ripdeck, platform::Platform& platform)
{
    state.window.savedLeft = ripdeck.form.left;
    state.window.savedTop = ripdeck.form.top;
    clampPlace(state.window, ripdeck.form, platform.system.screen());
    moveTo(ripdeck.form, state.window);
    state::writeWindowPlace(platform.files, platform.log, state.folders, state.window);
}

}
