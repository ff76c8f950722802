#pragma once

#include <sys/types.h>

namespace tonquay::host {

/// Gives a process longer turns at a processor, for one that computes and that nobody looks at. A dozen of them on two
/// processors otherwise push each other's data out of the caches some hundred times a second. Its share stays the same,
/// and whoever wakes up with something short to do gets in sooner than among ordinary turns.
///
/// The process keeps its nice value; one under another policy than the ordinary is left alone. Linux before 6.12 takes
/// the wish and changes nothing.
void giveLongTurns(pid_t process);

}
