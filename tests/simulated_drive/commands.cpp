#include "commands.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <string>

namespace tonquay::simulated {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint8_t capabilitiesPage = 0x2a;

std::uint8_t byteOf(int value, int shift)
{
    return static_cast<std::uint8_t>((static_cast<unsigned>(value) >> shift) & 0xff);
}

void append16(Bytes& bytes, int value)
{
    bytes.push_back(byteOf(value, 8));
    bytes.push_back(byteOf(value, 0));
}

void appendAddress(Bytes& bytes, int sector, bool minutes)
{
    if (minutes) {
        const int frames = sector + 150;
        bytes.insert(bytes.end(), {0, byteOf(frames / 4500, 0), byteOf(frames / 75 % 60, 0), byteOf(frames % 75, 0)});
    } else {
        bytes.insert(bytes.end(), {byteOf(sector, 24), byteOf(sector, 16), byteOf(sector, 8), byteOf(sector, 0)});
    }
}

Sense answer(const Bytes& bytes, std::span<std::uint8_t> data)
{
    std::copy_n(bytes.begin(), std::min(bytes.size(), data.size()), data.begin());
    return {};
}

/// An answer of READ TOC, which begins with the length of what follows it.
Sense answerSized(Bytes bytes, std::span<std::uint8_t> data)
{
    const int size = static_cast<int>(bytes.size());
    bytes.insert(bytes.begin(), {byteOf(size, 8), byteOf(size, 0)});
    return answer(bytes, data);
}

void appendPadded(Bytes& bytes, std::string text, std::size_t width)
{
    text.resize(width, ' ');
    bytes.insert(bytes.end(), text.begin(), text.end());
}

}

Sense Commands::run(std::span<const std::uint8_t> command, std::span<std::uint8_t> data)
{
    std::fill(data.begin(), data.end(), std::uint8_t{0});
    switch (command[0]) {
    case 0x00: return drive_.readiness();
    case 0x12: return inquiry(data);
    case 0x1a:
    case 0x5a: return modeSense(command, data);
    case 0x1b: return startStop(command[4]);
    case 0x1e:
        drive_.locked_ = (command[4] & 1) != 0;
        drive_.keepState();
        return {};
    case 0x25: return capacity(data);
    case 0x43: return readToc(command, data);
    case 0x4a: return eventStatus(data);
    case 0xbb: return {};
    case 0xbe: return readCd(command, data);
    default: return invalidField;
    }
}

Sense Drive::command(std::span<const std::uint8_t> packet, std::span<std::uint8_t> data)
{
    const std::lock_guard guard(mutex_);
    reload();
    return Commands(*this).run(packet, data);
}

void describe(const Sense& sense, std::span<std::uint8_t> bytes)
{
    const std::array<std::uint8_t, senseBytes> fixed{0x70, 0, sense.key, 0, 0, 0,          0,
                                                     10,   0, 0,         0, 0, sense.code, sense.qualifier};
    std::copy_n(fixed.begin(), std::min(bytes.size(), senseBytes), bytes.begin());
}

Sense Commands::inquiry(std::span<std::uint8_t> data) const
{
    Bytes bytes{5, 0x80, 5, 0x32, 31, 0, 0, 0};
    appendPadded(bytes, drive_.config_.vendor, 8);
    appendPadded(bytes, drive_.config_.product, 16);
    appendPadded(bytes, drive_.config_.revision, 4);
    return answer(bytes, data);
}

Sense Commands::capacity(std::span<std::uint8_t> data) const
{
    if (const Sense sense = drive_.readiness(); !sense.good())
        return sense;
    constexpr int blockBytes = 2048;
    Bytes bytes;
    appendAddress(bytes, drive_.config_.leadOut - 1, false);
    appendAddress(bytes, blockBytes, false);
    return answer(bytes, data);
}

Sense Commands::modeSense(std::span<const std::uint8_t> command, std::span<std::uint8_t> data) const
{
    if (!drive_.config_.modePage || (command[2] & 0x3f) != capabilitiesPage)
        return invalidField;
    Bytes page{capabilitiesPage, 18, 0x3f, 0, 0x71, 0x03};
    page.push_back(static_cast<std::uint8_t>(0x29 | (drive_.locked_ ? 2 : 0)));
    page.push_back(0);
    append16(page, 8467); // 48 times play speed, in 1000 bytes a second
    append16(page, 256);
    append16(page, 2048);
    append16(page, 8467);
    page.insert(page.end(), 4, 0);

    Bytes bytes;
    const int size = static_cast<int>(page.size());
    if (command[0] == 0x5a) {
        append16(bytes, size + 6);
        bytes.insert(bytes.end(), 6, 0);
    } else {
        bytes = {byteOf(size + 3, 0), 0, 0, 0};
    }
    bytes.insert(bytes.end(), page.begin(), page.end());
    return answer(bytes, data);
}

Sense Commands::readToc(std::span<const std::uint8_t> command, std::span<std::uint8_t> data) const
{
    if (const Sense sense = drive_.readiness(); !sense.good())
        return sense;
    const bool minutes = (command[1] & 2) != 0;
    // The oldest drives took the format in the last byte of the command.
    const int format = (command[2] & 15) != 0 ? command[2] & 15 : command[9] >> 6;
    switch (format) {
    case 0: return answerSized(table(command[6], minutes), data);
    case 1: return answerSized(sessions(minutes), data);
    case 5: return cdText(data);
    default: return invalidField;
    }
}

Bytes Commands::table(int firstNumber, bool minutes) const
{
    Bytes bytes{byteOf(drive_.config_.firstNumber, 0), byteOf(drive_.lastNumber(), 0)};
    const auto entry = [&](int number) {
        bytes.insert(bytes.end(),
                     {0, static_cast<std::uint8_t>(drive_.isData(number) ? 0x14 : 0x10), byteOf(number, 0), 0});
        appendAddress(bytes, drive_.startOf(number).value_or(0), minutes);
    };
    for (int number = drive_.config_.firstNumber; number <= drive_.lastNumber(); ++number)
        if (number >= firstNumber)
            entry(number);
    entry(0xaa);
    return bytes;
}

Bytes Commands::sessions(bool minutes) const
{
    const int start = drive_.config_.lastSession;
    int number = drive_.config_.firstNumber;
    while (number < drive_.lastNumber() && drive_.startOf(number).value_or(0) < start)
        ++number;
    Bytes bytes{1,
                static_cast<std::uint8_t>(start > 0 ? 2 : 1),
                0,
                static_cast<std::uint8_t>(drive_.isData(number) ? 0x14 : 0x10),
                byteOf(number, 0),
                0};
    appendAddress(bytes, start > 0 ? start : drive_.startOf(number).value_or(0), minutes);
    return bytes;
}

Sense Commands::cdText(std::span<std::uint8_t> data) const
{
    std::ifstream input(drive_.config_.cdText, std::ios::binary);
    if (!input)
        return invalidField;
    Bytes bytes{0, 0};
    std::transform(std::istreambuf_iterator<char>(input), {}, std::back_inserter(bytes),
                   [](char c) { return static_cast<std::uint8_t>(c); });
    return answerSized(std::move(bytes), data);
}

Sense Commands::eventStatus(std::span<std::uint8_t> data) const
{
    const int status = (drive_.doorOpen_ ? 1 : 0) | (drive_.mediumIn() ? 2 : 0);
    return answer({0, 6, 4, 0x10, 0, byteOf(status, 0), 0, 0}, data);
}

Sense Commands::startStop(std::uint8_t what)
{
    const bool moves = (what & 2) != 0;
    if (!moves)
        return {};
    return drive_.moveDoor((what & 1) == 0) ? Sense{} : removalPrevented;
}

Sense Commands::readCd(std::span<const std::uint8_t> command, std::span<std::uint8_t> data)
{
    const unsigned first = (static_cast<unsigned>(command[2]) << 24) | (static_cast<unsigned>(command[3]) << 16) |
                           (static_cast<unsigned>(command[4]) << 8) | command[5];
    const int count = (command[6] << 16) | (command[7] << 8) | command[8];
    const bool audioOnly = ((command[1] >> 2) & 7) == 1;
    return drive_.read(static_cast<int>(first), count, audioOnly, data);
}

}
