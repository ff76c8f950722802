#include "host/posix/processor_turns.h"

#include <chrono>
#include <cstdint>
#include <sched.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace tonquay::host {

namespace {

/// Long enough for the caches to pay off; a window that is busy at the same time waits for some of these at most.
constexpr std::chrono::nanoseconds longTurn = std::chrono::milliseconds{20};

/// How the system schedules a process, in the first form that it published. The kernel's own header for this repeats a
/// type of the C library and so cannot be included.
struct Scheduling {
    std::uint32_t size = sizeof(Scheduling);
    std::uint32_t policy = 0;
    std::uint64_t flags = 0;
    std::int32_t niceValue = 0;
    std::uint32_t priority = 0;
    std::uint64_t turn = 0; ///< nanoseconds
    std::uint64_t deadline = 0;
    std::uint64_t period = 0;
};
static_assert(sizeof(Scheduling) == 48);

}

void giveLongTurns(pid_t process)
{
    // The C library has no names for these calls.
    Scheduling scheduling;
    if (syscall(SYS_sched_getattr, process, &scheduling, sizeof scheduling, 0) != 0)
        return;
    if (scheduling.policy != SCHED_OTHER && scheduling.policy != SCHED_BATCH)
        return;
    scheduling.turn = static_cast<std::uint64_t>(longTurn.count());
    syscall(SYS_sched_setattr, process, &scheduling, 0);
}

}
