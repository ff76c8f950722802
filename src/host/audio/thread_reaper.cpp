#include "host/audio/thread_reaper.h"

namespace tonquay::host {

ThreadReaper::~ThreadReaper()
{
    joinAll(std::chrono::milliseconds{500});
}

void ThreadReaper::take(BackgroundThread thread)
{
    joinEnded();
    endings_.push_back(std::move(thread));
}

void ThreadReaper::joinAll(std::chrono::milliseconds limit)
{
    const auto until = std::chrono::steady_clock::now() + limit;
    for (BackgroundThread& ending : endings_) {
        if (ending.ended.wait_until(until) == std::future_status::ready)
            ending.thread.join();
        else
            ending.thread.detach();
    }
    endings_.clear();
}

std::size_t ThreadReaper::waiting()
{
    joinEnded();
    return endings_.size();
}

void ThreadReaper::joinEnded()
{
    std::erase_if(endings_, [](BackgroundThread& ending) {
        if (ending.ended.wait_for(std::chrono::seconds{0}) != std::future_status::ready)
            return false;
        ending.thread.join();
        return true;
    });
}

}
