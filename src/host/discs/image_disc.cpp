#include "host/discs/image_disc.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace tonquay::host {

namespace {

constexpr std::int64_t sectorSize = Disc::sectorBytes;

std::size_t wholeSectors(std::size_t bytes)
{
    return bytes - bytes % Disc::sectorBytes;
}

void swapSamples(std::span<std::byte> sound)
{
    for (std::size_t i = 0; i + 1 < sound.size(); i += 2)
        std::swap(sound[i], sound[i + 1]);
}

}

ImageDisc::ImageDisc(Sheet sheet, Layout layout, std::vector<ImageFile> files, ImageFile sheetFile)
    : sheet_(std::move(sheet)),
      layout_(std::move(layout)),
      files_(std::move(files)),
      sheetFile_(std::move(sheetFile))
{}

Disc::Read ImageDisc::read(int firstSector, std::span<std::byte> buffer)
{
    if (isGone(false))
        return {0, ReadEnd::gone};
    if (firstSector < 0 || firstSector >= layout_.sectors)
        return {0, ReadEnd::endOfDisc};
    const std::size_t wanted = buffer.size() / sectorBytes;
    const std::size_t there = static_cast<std::size_t>(layout_.sectors - firstSector);
    const std::span<std::byte> out = buffer.first(std::min(wanted, there) * sectorBytes);

    std::size_t done = 0;
    while (done < out.size()) {
        const std::int64_t first = firstSector * sectorSize + static_cast<std::int64_t>(done);
        const Stretch& stretch = layout_.stretches[stretchAt(first)];
        const auto left = static_cast<std::size_t>(stretch.first + stretch.bytes - first);
        const std::size_t run = wholeSectors(std::min(left, out.size() - done));
        const std::size_t got = run > 0 ? readRun(stretch, first, out.subspan(done, run))
                                        : (readMixedSector(first, out.subspan(done, sectorBytes)) ? sectorBytes : 0);
        done += got;
        if (got < std::max(run, std::size_t{1}))
            return {done / sectorBytes, isGone(true) ? ReadEnd::gone : ReadEnd::unreadable};
    }
    return {done / sectorBytes, there < wanted ? ReadEnd::endOfDisc : ReadEnd::full};
}

std::size_t ImageDisc::stretchAt(std::int64_t byte)
{
    const auto holds = [&](std::size_t i) {
        const Stretch& stretch = layout_.stretches[i];
        return byte >= stretch.first && byte < stretch.first + stretch.bytes;
    };
    if (holds(stretch_))
        return stretch_;
    if (stretch_ + 1 < layout_.stretches.size() && holds(stretch_ + 1))
        return ++stretch_;
    const auto after = std::ranges::upper_bound(layout_.stretches, byte, {}, &Stretch::first);
    stretch_ = static_cast<std::size_t>(after - layout_.stretches.begin()) - 1;
    return stretch_;
}

/// Whole sectors of one stretch. Returns the bytes that were there, whole sectors too; nothing is written behind them.
std::size_t ImageDisc::readRun(const Stretch& stretch, std::int64_t first, std::span<std::byte> out)
{
    if (stretch.from == Stretch::From::nowhere)
        return 0;
    if (stretch.from == Stretch::From::silence) {
        std::ranges::fill(out, std::byte{0});
        return out.size();
    }
    ImageFile& file = files_[static_cast<std::size_t>(stretch.file)];
    const std::int64_t offset = stretch.offset + (first - stretch.first);
    const std::size_t got = stretch.sectorBytes != sectorSize ? readSpaced(file, stretch, first, out)
                            : file.isSound()                  ? readSound(file, offset, out)
                                                              : readPlain(file, offset, out);
    if (sheet_.files[static_cast<std::size_t>(stretch.file)].swapped)
        swapSamples(out.first(got));
    return got;
}

/// The length is asked first: a read that comes short would leave half a sector behind the last whole one.
std::size_t ImageDisc::readPlain(ImageFile& file, std::int64_t offset, std::span<std::byte> out)
{
    const std::int64_t there = std::max<std::int64_t>(file.lengthNow() - offset, 0);
    const std::size_t wanted = std::min(out.size(), wholeSectors(static_cast<std::size_t>(there)));
    return wholeSectors(file.read(offset, out.first(wanted)));
}

std::size_t ImageDisc::readSound(ImageFile& file, std::int64_t offset, std::span<std::byte> out)
{
    constexpr std::size_t mostBytes = 75 * sectorBytes;
    std::size_t done = 0;
    while (done < out.size()) {
        const std::size_t wanted = std::min(out.size() - done, mostBytes);
        decoded_.resize(wanted);
        const std::size_t got = wholeSectors(file.read(offset + static_cast<std::int64_t>(done), decoded_));
        std::memcpy(out.data() + done, decoded_.data(), got);
        done += got;
        if (got < wanted)
            break;
    }
    return done;
}

/// Sectors with sub-channel data behind each.
std::size_t ImageDisc::readSpaced(ImageFile& file, const Stretch& stretch, std::int64_t first, std::span<std::byte> out)
{
    std::array<std::byte, sectorBytes> sector{};
    std::size_t done = 0;
    for (; done < out.size(); done += sectorBytes) {
        const std::int64_t number =
            (first - stretch.first) / sectorSize + static_cast<std::int64_t>(done / sectorBytes);
        if (file.read(stretch.offset + number * stretch.sectorBytes, sector) != sector.size())
            break;
        std::ranges::copy(sector, out.begin() + static_cast<std::ptrdiff_t>(done));
    }
    return done;
}

/// A sector in which one stretch ends and another begins.
bool ImageDisc::readMixedSector(std::int64_t first, std::span<std::byte> out)
{
    std::array<std::byte, sectorBytes> sector{};
    std::size_t done = 0;
    while (done < sector.size()) {
        const std::int64_t at = first + static_cast<std::int64_t>(done);
        const Stretch& stretch = layout_.stretches[stretchAt(at)];
        const auto left = static_cast<std::size_t>(stretch.first + stretch.bytes - at);
        const std::span<std::byte> part = std::span(sector).subspan(done, std::min(left, sector.size() - done));
        if (stretch.from == Stretch::From::nowhere)
            return false;
        if (stretch.from == Stretch::From::file) {
            ImageFile& file = files_[static_cast<std::size_t>(stretch.file)];
            if (file.read(stretch.offset + (at - stretch.first), part) != part.size())
                return false;
            if (sheet_.files[static_cast<std::size_t>(stretch.file)].swapped)
                swapSamples(part);
        }
        done += part.size();
    }
    std::ranges::copy(sector, out.begin());
    return true;
}

bool ImageDisc::isGone(bool atOnce)
{
    constexpr auto interval = std::chrono::milliseconds(250);
    const auto now = std::chrono::steady_clock::now();
    if (gone_ || (!atOnce && now < nextLook_))
        return gone_;
    nextLook_ = now + interval;
    gone_ = !sheetFile_.isStillThere() ||
            !std::ranges::all_of(files_, [](const ImageFile& file) { return file.isStillThere(); });
    return gone_;
}

}
