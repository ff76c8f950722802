#include "host/audio/background_thread.h"

#include <csignal>
#include <utility>

namespace tonquay::host {

BackgroundThread startInBackground(std::function<void()> work)
{
    std::promise<void> promise;
    std::future<void> ended = promise.get_future();
    std::thread thread([work = std::move(work), promise = std::move(promise)]() mutable {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_BLOCK, &all, nullptr);
        work();
        work = nullptr;
        promise.set_value();
    });
    return {std::move(thread), std::move(ended)};
}

}
