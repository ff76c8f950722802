#include "host/discs/cd_text.h"

#include "host/discs/sheet.h"

#include "base/text.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace tonquay::host {

namespace {

constexpr std::size_t packBytes = 18;
constexpr std::size_t headerBytes = 4;
constexpr std::size_t textBytes = 12;
constexpr int album = 0;
constexpr int maxTrack = 99;

enum PackType : unsigned { title = 0x80, performer = 0x81, message = 0x85, genre = 0x87 };

/// The texts of one kind, by track; 0 is the disc as a whole.
using Texts = std::array<std::string, maxTrack + 1>;

/// A text runs on from pack to pack and ends with a zero byte; the one behind it belongs to the next track.
Texts collect(std::span<const std::byte> packs, unsigned type)
{
    Texts texts;
    int track = -1;
    for (; packs.size() >= packBytes; packs = packs.subspan(packBytes)) {
        const auto field = [&](std::size_t i) { return std::to_integer<unsigned>(packs[i]); };
        const bool twoByte = (field(3) & 0x80) != 0;
        const bool firstBlock = (field(3) & 0x70) == 0;
        if (field(0) != type || !firstBlock || twoByte)
            continue;
        // Each pack tells whose text it begins with, so a lost pack costs its own texts only.
        const int number = static_cast<int>(field(1) & 0x7F);
        const bool goesOn = track == number && (field(3) & 0x0F) != 0;
        track = number;
        if (track <= maxTrack && !goesOn)
            texts[static_cast<std::size_t>(track)].clear();
        for (std::size_t i = headerBytes; i < headerBytes + textBytes && track <= maxTrack; ++i) {
            std::string& text = texts[static_cast<std::size_t>(track)];
            if (field(i) == 0)
                ++track;
            else if (text.size() < maxTextLength)
                text.push_back(static_cast<char>(field(i)));
        }
    }
    // A lone tab says "the same as on the track before".
    for (std::size_t i = 1; i < texts.size(); ++i)
        if (texts[i] == "\t")
            texts[i] = texts[i - 1];
    return texts;
}

std::wstring text(const std::string& bytes)
{
    return titleText(base::fromFileBytes(bytes));
}

}

platform::DiscNames parseCdText(std::span<const std::byte> packs, int firstTrack)
{
    platform::DiscNames names;
    const Texts titles = collect(packs, PackType::title);
    names.album = text(titles[album]);
    names.artist = text(collect(packs, PackType::performer)[album]);
    names.comment = text(collect(packs, PackType::message)[album]);
    // The genre is a code of two bytes, then its text; the code has a zero byte of its own.
    for (; packs.size() >= packBytes; packs = packs.subspan(packBytes)) {
        if (std::to_integer<unsigned>(packs[0]) != PackType::genre || std::to_integer<unsigned>(packs[3]) != 0)
            continue;
        std::string bytes;
        for (const std::byte byte : packs.subspan(headerBytes + 2, textBytes - 2)) {
            if (byte == std::byte{0})
                break;
            bytes.push_back(static_cast<char>(byte));
        }
        names.genre = text(bytes);
        break;
    }
    int last = 0;
    for (int track = firstTrack; track <= maxTrack; ++track)
        if (!titles[static_cast<std::size_t>(track)].empty())
            last = track;
    for (int track = firstTrack; track <= last; ++track)
        names.titles.push_back(text(titles[static_cast<std::size_t>(track)]));
    return names;
}

}
