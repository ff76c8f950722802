#pragma once

#include "host/discs/disc.h"
#include "host/discs/image_file.h"
#include "host/discs/layout.h"

#include <chrono>

namespace tonquay::host {

/// A disc image of any format, read by its layout. Keeps its files open.
///
/// Whether the files are still there is looked at every quarter of a second of reading, and whenever a file gives less
/// than it should.
class ImageDisc : public Disc {
public:
    /// `files` in the order of the sheet's; `sheetFile` is the sheet, so that a disc goes with its sheet too.
    ImageDisc(Sheet sheet, Layout layout, std::vector<ImageFile> files, ImageFile sheetFile);

    const std::vector<platform::DiscTrack>& tracks() const override { return layout_.tracks; }
    const platform::DiscNames& names() const override { return sheet_.names; }
    Read read(int firstSector, std::span<std::byte> buffer) override;

private:
    std::size_t stretchAt(std::int64_t byte);
    std::size_t readRun(const Stretch& stretch, std::int64_t first, std::span<std::byte> out);
    bool readMixedSector(std::int64_t first, std::span<std::byte> out);
    std::size_t readPlain(ImageFile& file, std::int64_t offset, std::span<std::byte> out);
    std::size_t readSound(ImageFile& file, std::int64_t offset, std::span<std::byte> out);
    std::size_t readSpaced(ImageFile& file, const Stretch& stretch, std::int64_t first, std::span<std::byte> out);
    bool isGone(bool atOnce);

    Sheet sheet_;
    Layout layout_;
    std::vector<ImageFile> files_;
    ImageFile sheetFile_;
    std::size_t stretch_ = 0; ///< where the last read ended; reading mostly goes on from there
    std::chrono::steady_clock::time_point nextLook_;
    bool gone_ = false;
    std::vector<std::byte> decoded_;
};

}
