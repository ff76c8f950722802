#pragma once

#include "host/drives/drive_set.h"
#include "platform/discs.h"

#include <functional>
#include <string>
#include <vector>

namespace tonquay::host {

/// Answers what is asked of drives and discs from a set of drives, which outlives it.
class HostDiscs final : public platform::Discs {
public:
    using Identifier = std::function<std::string(const std::vector<platform::DiscTrack>&)>;

    explicit HostDiscs(DriveSet& drives, Identifier identify = discId);

    std::vector<platform::DriveDescription> drives() override;

    /// The letter in either case. Fails with the drive's own problem.
    base::Result<platform::DiscTable> read(wchar_t letter) override;

private:
    DriveSet& drives_;
    Identifier identify_;
};

}
