#pragma once

#include "controls/handler.h"
#include "controls/property.h"

#include <cstdint>
#include <string>

namespace tonquay::controls {

/// A window as far as the program's behaviour reaches: not loaded, loaded, or shown. Nothing of how it looks.
///
/// Loading runs the load handler once. Unloading runs the query-unload handler and then `design`, which puts every
/// control of the form back to its design value in place, so that views stay bound. A load handler may unload its own
/// form: that takes effect when the handler is through, and the form is not shown then.
class Form {
public:
    enum class State { notLoaded, loaded, shown };
    enum class WindowState { normal, minimised };

    Property<std::wstring> caption;
    Property<bool> enabled{true};
    Property<WindowState> windowState{WindowState::normal};
    Property<std::int32_t> left{0}; ///< twips
    Property<std::int32_t> top{0};
    Property<std::int32_t> width{0};
    Property<std::int32_t> height{0};

    Handler<Key> keyDown;           ///< a key that no control of the form has taken
    Handler<MouseButton> mouseDown; ///< on the background
    Handler<> doubleClick;          ///< likewise

    Handler<> onLoad;
    Handler<> onQueryUnload;
    Handler<> design;

    State state() const { return state_; }
    Following follow(std::function<void(const State&)> follower) { return state_.follow(std::move(follower)); }
    bool isLoaded() const { return state_ != State::notLoaded; }

    void load();
    void show();
    void unload();

    /// Told when an already shown form is to come to the front.
    Followers<> broughtToFront;

    /// Told when the pressed mouse is to move the window from now on, as if it held the title bar.
    Followers<> heldByPointer;

private:
    Property<State> state_{State::notLoaded};
    bool loading_ = false;
    bool unloadAfterLoad_ = false;
};

}
