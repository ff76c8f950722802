#include "host/wma/asf_layout.h"

#include "base/red_book.h"

#include <algorithm>

namespace tonquay::host {

namespace {

constexpr std::size_t objectHeaderBytes = 17;
constexpr std::size_t packetHeaderBytes = 14;

constexpr std::size_t smallBlockBytes = 600;
constexpr std::size_t gatheredBytes = 1400;
constexpr std::size_t usualPacketBytes = 3200;

constexpr std::size_t roundedUp(std::size_t number, std::size_t by)
{
    return (number + by - 1) / by;
}

}

AsfLayout asfLayout(std::uint32_t rate, std::int32_t blockFrames)
{
    constexpr std::size_t bitsPerByte = 8;
    const std::size_t room =
        std::size_t{rate} * static_cast<std::size_t>(blockFrames) / (base::red_book::samplesPerSecond * bitsPerByte);
    AsfLayout layout;
    std::size_t objects = 1;
    if (room < smallBlockBytes)
        layout.blocksInObject = roundedUp(gatheredBytes, std::max<std::size_t>(room, 1));
    else
        objects = std::max<std::size_t>(usualPacketBytes / (objectHeaderBytes + room), 1);
    const std::size_t headers = packetHeaderBytes + objects * objectHeaderBytes;
    layout.blockBytes = room - std::min(room, roundedUp(headers, objects * layout.blocksInObject));
    layout.packetBytes = headers + objects * layout.blocksInObject * layout.blockBytes;
    return layout;
}

}
