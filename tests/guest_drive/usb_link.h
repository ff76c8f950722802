#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace tonquay::guest {

/// One request of the kernel for a device on its virtual USB port (USB/IP, version 1.1.1).
struct UsbRequest {
    std::uint32_t number = 0;
    bool toHost = false; ///< the device is to send
    std::uint32_t endpoint = 0;
    std::uint32_t room = 0;            ///< bytes that may be sent
    std::vector<std::uint8_t> setup{}; ///< 8 bytes, of endpoint 0
    std::vector<std::uint8_t> data{};  ///< what the host has sent
};

/// The cable of a device that is made in this process: a socket whose other end the kernel holds. Any error on it is
/// the end of the guest, so the process ends then.
class UsbLink {
public:
    /// Plugs a device of high speed into the first port of the kernel's virtual host controller (vhci-hcd).
    UsbLink();

    /// Waits for the next request. What the kernel takes back is answered here, since nothing is ever under way.
    UsbRequest next();

    void answer(const UsbRequest& request, std::span<const std::uint8_t> data);
    void accept(const UsbRequest& request); ///< all that the host has sent
    void stall(const UsbRequest& request);  ///< the device does not know this

private:
    void reply(std::uint32_t kind, std::uint32_t number, std::uint32_t status, std::uint32_t length,
               std::span<const std::uint8_t> data);
    void read(std::span<std::uint8_t> bytes) const;
    void write(std::span<const std::uint8_t> bytes) const;

    int socket_ = -1;
};

}
