#pragma once

#include "host/acd/sector_reader.h"

namespace tonquay::host {

/// Burst: straight through. A sector without data is tried once more and is silence then.
class StraightReader final : public SectorReader {
public:
    explicit StraightReader(const ReadingTask& task) : task_(task), next_(task.wanted.first) {}

    std::size_t read(std::span<std::byte> buffer) override;
    [[nodiscard]] bool discIsGone() const override { return gone_; }

private:
    std::size_t readRun(std::span<std::byte> buffer);

    ReadingTask task_;
    int next_;
    bool gone_ = false;
};

}
