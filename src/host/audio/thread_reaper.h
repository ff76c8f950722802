#pragma once

#include <chrono>
#include <future>
#include <thread>
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

    /// `ended` gets ready with the thread's last step. Never waits.
    void take(std::thread thread, std::future<void> ended);

    /// Waits for all of them, `limit` in total. Who is not back by then is left to end on its own.
    void joinAll(std::chrono::milliseconds limit);

    std::size_t waiting(); ///< how many are not back yet

private:
    struct Ending {
        std::thread thread;
        std::future<void> ended;
    };

    void joinEnded();

    std::vector<Ending> endings_;
};

}
