#pragma once

#include <functional>
#include <utility>

namespace tonquay::controls {

/// What the program does on one event of one control. The behaviour of the form sets it once; until then the event
/// does nothing.
template <class... Arguments>
class Handler {
public:
    template <class Callable>
    Handler& operator=(Callable handler)
    {
        handler_ = std::move(handler);
        return *this;
    }

    void operator()(Arguments... arguments) const
    {
        if (handler_)
            handler_(arguments...);
    }

private:
    std::function<void(Arguments...)> handler_;
};

/// The mouse button of a press or release.
enum class MouseButton { none = 0, left = 1, right = 2 };

/// The keys of the keyboard that a window as a whole answers to.
enum class Key { escape = 27, f1 = 112 };

}
