#pragma once

#include <atomic>
#include <semaphore.h>

namespace tonquay::host {

/// Wakes one thread that sleeps. Ringing never waits, allocates or takes a lock, so the sound callback may ring.
/// Rings while nobody sleeps become one, and the next wait returns at once; whoever wakes looks what there is to do.
class Bell {
public:
    Bell() { sem_init(&semaphore_, 0, 0); }
    ~Bell() { sem_destroy(&semaphore_); }
    Bell(const Bell&) = delete;
    Bell& operator=(const Bell&) = delete;

    void ring()
    {
        if (!rung_.exchange(true, std::memory_order_acq_rel))
            sem_post(&semaphore_);
    }

    void wait()
    {
        while (sem_wait(&semaphore_) != 0) {
            // A signal came; the bell has not rung.
        }
        // An exchange and not a store: a ring that found the bell still ringing must be seen with all it announces.
        rung_.exchange(false, std::memory_order_acq_rel);
    }

private:
    sem_t semaphore_{};
    std::atomic<bool> rung_{false};
};

}
