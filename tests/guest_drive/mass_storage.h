#pragma once

#include "usb_link.h"

#include "drive.h"

#include <cstdint>
#include <vector>

namespace tonquay::guest {

/// A simulated drive as a USB device: mass storage, bulk only, with the transparent SCSI commands of an optical drive.
class MassStorage {
public:
    explicit MassStorage(simulated::Drive& drive) : drive_(drive) {}

    void handle(UsbLink& link, const UsbRequest& request);

private:
    enum class Phase { command, dataToHost, dataFromHost, status };

    void control(UsbLink& link, const UsbRequest& request);
    void takeCommand(const UsbRequest& request);
    void run(std::vector<std::uint8_t> packet, std::uint32_t wanted);
    std::vector<std::uint8_t> statusWrapper() const;

    simulated::Drive& drive_;
    Phase phase_ = Phase::command;
    std::uint32_t tag_ = 0;
    std::uint32_t residue_ = 0; ///< bytes that the host wanted and does not get
    bool failed_ = false;
    simulated::Sense sense_{}; ///< of the last command, for who asks
    std::vector<std::uint8_t> data_;
    std::size_t sent_ = 0;
};

}
