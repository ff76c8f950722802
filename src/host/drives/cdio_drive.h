#pragma once

#include "host/drives/drive_abilities.h"
#include "host/drives/drive_table.h"
#include "platform/discs.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tonquay::host {

/// A drive as libcdio's Linux driver reaches it; the only place that knows libcdio. One thread at a time uses it, but
/// several may be open on one device. Every call blocks until the drive answers, which takes seconds while it spins up.
class CdioDrive {
public:
    enum class Access {
        reading,
        commanding, ///< may also send the commands that move and lock the door
    };

    struct Hardware {
        std::string vendor;
        std::string product;
        std::string revision;
    };

    enum class Answer { good, noMedium, failed };

    /// None when the node cannot be opened so. Needs no disc.
    static std::optional<CdioDrive> open(const std::string& device, Access access = Access::reading);

    std::optional<Hardware> hardware() const;
    std::optional<CapabilitiesPage> capabilities() const;

    /// The table of the disc that is in; none without a disc or when the drive cannot read it.
    std::optional<RawTable> table() const;

    /// CD-Text of the disc, its titles in the order of `tracks`; empty names when it has none.
    platform::DiscNames names(const std::vector<platform::DiscTrack>& tracks) const;

    /// Reads `count` audio sectors, all or none. `buffer` holds at least as many.
    Answer readAudio(int firstSector, int count, std::span<std::byte> buffer) const;

    bool ejectDisc() const;
    bool allowRemoval() const;

private:
    struct Closer {
        void operator()(void* handle) const;
    };

    explicit CdioDrive(std::unique_ptr<void, Closer> handle);

    bool senseSaysNoMedium() const;

    std::unique_ptr<void, Closer> handle_;
};

}
