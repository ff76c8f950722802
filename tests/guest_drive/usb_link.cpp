#include "usb_link.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tonquay::guest {

namespace {

constexpr std::size_t headerBytes = 48;
constexpr std::uint32_t submit = 1;
constexpr std::uint32_t takeBack = 2;
constexpr std::uint32_t submitted = 3;
constexpr std::uint32_t takenBack = 4;

using Header = std::array<std::uint8_t, headerBytes>;

std::uint32_t field(const Header& header, std::size_t index)
{
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        value = value << 8 | header[index * 4 + i];
    return value;
}

void setField(Header& header, std::size_t index, std::uint32_t value)
{
    for (std::size_t i = 0; i < 4; ++i)
        header[index * 4 + i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
}

[[noreturn]] void giveUp(const char* what)
{
    std::perror(what);
    std::_Exit(1);
}

}

UsbLink::UsbLink()
{
    constexpr int highSpeed = 3;
    constexpr int deviceId = 1 << 16 | 2;
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()) != 0)
        giveUp("socketpair");
    const int port = ::open("/sys/devices/platform/vhci_hcd.0/attach", O_WRONLY);
    const std::string plug =
        "0 " + std::to_string(ends[0]) + " " + std::to_string(deviceId) + " " + std::to_string(highSpeed);
    if (port < 0 || ::write(port, plug.data(), plug.size()) != static_cast<ssize_t>(plug.size()))
        giveUp("plugging the drive in");
    ::close(port);
    ::close(ends[0]);
    socket_ = ends[1];
}

UsbRequest UsbLink::next()
{
    for (;;) {
        Header header{};
        read(header);
        if (field(header, 0) == takeBack) {
            reply(takenBack, field(header, 1), 0, 0, {});
            continue;
        }
        if (field(header, 0) != submit)
            giveUp("a message that is none of USB/IP");
        UsbRequest request{.number = field(header, 1),
                           .toHost = field(header, 3) != 0,
                           .endpoint = field(header, 4),
                           .room = field(header, 6)};
        request.setup.assign(header.begin() + 40, header.end());
        if (!request.toHost) {
            request.data.resize(request.room);
            read(request.data);
        }
        return request;
    }
}

void UsbLink::answer(const UsbRequest& request, std::span<const std::uint8_t> data)
{
    const auto part = data.first(std::min<std::size_t>(data.size(), request.room));
    reply(submitted, request.number, 0, static_cast<std::uint32_t>(part.size()), part);
}

void UsbLink::accept(const UsbRequest& request)
{
    reply(submitted, request.number, 0, static_cast<std::uint32_t>(request.data.size()), {});
}

void UsbLink::stall(const UsbRequest& request)
{
    reply(submitted, request.number, static_cast<std::uint32_t>(-EPIPE), 0, {});
}

void UsbLink::reply(std::uint32_t kind, std::uint32_t number, std::uint32_t status, std::uint32_t length,
                    std::span<const std::uint8_t> data)
{
    Header header{};
    setField(header, 0, kind);
    setField(header, 1, number);
    setField(header, 5, status);
    setField(header, 6, length);
    write(header);
    write(data);
}

void UsbLink::read(std::span<std::uint8_t> bytes) const
{
    while (!bytes.empty()) {
        const ssize_t got = ::read(socket_, bytes.data(), bytes.size());
        if (got <= 0)
            std::_Exit(0);
        bytes = bytes.subspan(static_cast<std::size_t>(got));
    }
}

void UsbLink::write(std::span<const std::uint8_t> bytes) const
{
    while (!bytes.empty()) {
        const ssize_t put = ::write(socket_, bytes.data(), bytes.size());
        if (put <= 0)
            std::_Exit(0);
        bytes = bytes.subspan(static_cast<std::size_t>(put));
    }
}

}
