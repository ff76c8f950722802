#pragma once

#include "host/audio/background_thread.h"

#include <chrono>
#include <vector>

namespace tonquay::host {

/// Takes over threads that were told to end but may be inside a drive for seconds yet, so that nobody waits for them.
///
/// A thread that is handed over must own all that it touches. All calls from one thread.
class ThreadReaper {
public:
    ThreadReaper() = default;
    ~ThreadReaper(); ///< waits like joinAll(), for half a second
    ThreadReaper(const ThreadReaper&) = delete;
    ThreadReaper& operator=(const ThreadReaper&) = delete;

    /// Never waits.
    void take(BackgroundThread thread);

    /// Waits for all of them, `limit` in total. Who is not back by then is left to end on its own.
    void joinAll(std::chrono::milliseconds limit);

    std::size_t waiting(); ///< how many are not back yet

private:
    void joinEnded();

    std::vector<BackgroundThread> endings_;
};

}
