#include "mass_storage.h"

#include <algorithm>
#include <array>

namespace tonquay::guest {

namespace {

constexpr std::array<std::uint8_t, 18> deviceDescriptor{18, 1, 0, 2, 0, 0, 0, 64, 0x6b, 0x1d, 4, 1, 0, 1, 1, 2, 0, 1};

// One interface, mass storage (8), SCSI (6), bulk only (0x50); endpoint 1 to the host, 2 from it, 512 bytes each.
constexpr std::array<std::uint8_t, 32> configuration{9, 2, 32,   0, 1, 1, 0, 0x80, 50, //
                                                     9, 4, 0,    0, 2, 8, 6, 0x50, 0,  //
                                                     7, 5, 0x81, 2, 0, 2, 0,           //
                                                     7, 5, 2,    2, 0, 2, 0};
constexpr std::array<std::uint8_t, 4> languages{4, 3, 9, 4};
constexpr std::array<std::uint8_t, 6> name{6, 3, '1', 0, '2', 0};

constexpr std::uint8_t requestSense = 3;

std::uint32_t littleEndian(const std::vector<std::uint8_t>& bytes, std::size_t at)
{
    std::uint32_t value = 0;
    for (std::size_t i = 4; i > 0; --i)
        value = value << 8 | bytes[at + i - 1];
    return value;
}

void append(std::vector<std::uint8_t>& bytes, std::uint32_t value)
{
    for (int i = 0; i < 4; ++i)
        bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

}

void MassStorage::handle(UsbLink& link, const UsbRequest& request)
{
    if (request.endpoint == 0) {
        control(link, request);
    } else if (!request.toHost) {
        if (phase_ == Phase::dataFromHost)
            phase_ = Phase::status;
        else
            takeCommand(request);
        link.accept(request);
    } else if (phase_ == Phase::dataToHost) {
        const std::size_t part = std::min<std::size_t>(data_.size() - sent_, request.room);
        link.answer(request, std::span(data_).subspan(sent_, part));
        sent_ += part;
        if (sent_ == data_.size())
            phase_ = Phase::status;
    } else {
        phase_ = Phase::command;
        link.answer(request, statusWrapper());
    }
}

void MassStorage::control(UsbLink& link, const UsbRequest& request)
{
    constexpr std::uint8_t standardIn = 0x80;
    constexpr std::uint8_t classIn = 0xa1;
    const std::uint8_t type = request.setup[0];
    const std::uint8_t what = request.setup[1];
    if (type == standardIn && what == 6 && request.setup[3] == 1)
        link.answer(request, deviceDescriptor);
    else if (type == standardIn && what == 6 && request.setup[3] == 2)
        link.answer(request, configuration);
    else if (type == standardIn && what == 6 && request.setup[3] == 3)
        request.setup[2] == 0 ? link.answer(request, languages) : link.answer(request, name);
    else if (type == standardIn && what == 0)
        link.answer(request, std::array<std::uint8_t, 2>{});
    else if (type == classIn && what == 0xfe) // the highest unit: there is one drive in the box
        link.answer(request, std::array<std::uint8_t, 1>{});
    else if ((type & standardIn) != 0)
        link.stall(request);
    else
        link.accept(request);
}

/// A command block wrapper: signature, tag, length, direction, unit, length of the command, command.
void MassStorage::takeCommand(const UsbRequest& request)
{
    constexpr std::size_t wrapperBytes = 31;
    constexpr std::size_t packetAt = 15;
    if (request.data.size() != wrapperBytes)
        return;
    tag_ = littleEndian(request.data, 4);
    const std::uint32_t wanted = littleEndian(request.data, 8);
    const bool toHost = (request.data[12] & 0x80) != 0;
    run({request.data.begin() + packetAt, request.data.end()}, wanted);
    if (wanted == 0)
        phase_ = Phase::status;
    else
        phase_ = toHost ? Phase::dataToHost : Phase::dataFromHost;
}

void MassStorage::run(std::vector<std::uint8_t> packet, std::uint32_t wanted)
{
    constexpr std::uint32_t most = 1 << 20;
    data_.assign(std::min(wanted, most), 0);
    sent_ = 0;
    residue_ = 0;
    failed_ = false;
    if (packet[0] == requestSense) {
        simulated::describe(sense_, data_);
        data_.resize(std::min(data_.size(), simulated::senseBytes));
        sense_ = {};
    } else {
        sense_ = drive_.command(packet, data_);
        failed_ = !sense_.good();
    }
    if (failed_)
        data_.clear();
    residue_ = wanted - static_cast<std::uint32_t>(data_.size());
}

std::vector<std::uint8_t> MassStorage::statusWrapper() const
{
    std::vector<std::uint8_t> bytes{'U', 'S', 'B', 'S'};
    append(bytes, tag_);
    append(bytes, residue_);
    bytes.push_back(failed_ ? 1 : 0);
    return bytes;
}

}
