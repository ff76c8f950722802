#pragma once

#include "drive.h"

#include <cstdint>
#include <span>
#include <vector>

namespace tonquay::simulated {

/// The packet commands of MMC that a program for audio discs sends.
class Commands {
public:
    explicit Commands(Drive& drive) : drive_(drive) {}

    /// Fills `data` as far as the answer and its room go.
    Sense run(std::span<const std::uint8_t> command, std::span<std::uint8_t> data);

private:
    Sense inquiry(std::span<std::uint8_t> data) const;
    Sense capacity(std::span<std::uint8_t> data) const;
    Sense modeSense(std::span<const std::uint8_t> command, std::span<std::uint8_t> data) const;
    Sense readToc(std::span<const std::uint8_t> command, std::span<std::uint8_t> data) const;
    std::vector<std::uint8_t> table(int firstNumber, bool minutes) const;
    std::vector<std::uint8_t> sessions(bool minutes) const;
    Sense cdText(std::span<std::uint8_t> data) const;
    Sense eventStatus(std::span<std::uint8_t> data) const;
    Sense startStop(std::uint8_t what);
    Sense readCd(std::span<const std::uint8_t> command, std::span<std::uint8_t> data);

    Drive& drive_;
};

}
