#include "platform/event_loop.h"

namespace tonquay::platform {

void waitUntil(EventLoop& loop, const std::function<bool()>& done)
{
    // What ends a wait is nearly always an event; the limit is for states that only a look can tell.
    constexpr std::chrono::milliseconds look{250};
    while (!done())
        loop.wait(look);
}

}
