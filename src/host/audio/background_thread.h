#pragma once

#include <functional>
#include <future>
#include <thread>

namespace tonquay::host {

/// A thread that may be inside a drive for seconds, and the word that it has ended.
struct BackgroundThread {
    std::thread thread{};
    std::future<void> ended{};
};

/// Starts `work`, which owns all that it touches and lets go of it at its end. Signals stay with the main thread, whose
/// waits are made to be interrupted as a read of a disc is not. Throws std::system_error when the system has no thread
/// to give.
BackgroundThread startInBackground(std::function<void()> work);

}
