#pragma once

#include <atomic>

namespace tonquay::host {

/// One disc from the moment it is seen in a drive to the moment it is taken out. The drive's watch and the disc's
/// readers share it, each on its own thread; a disc that comes back is a new medium.
class Medium {
public:
    bool isIn() const { return in_; }
    void takeOut() { in_ = false; }

    /// While somebody reads, a drive that stutters is no drive without a disc.
    bool hasReaders() const { return readers_ > 0; }
    void addReader() { ++readers_; }
    void removeReader() { --readers_; }

private:
    std::atomic<bool> in_ = true;
    std::atomic<int> readers_ = 0;
};

}
