#pragma once

#include "host/drives/seen_drive.h"
#include "host/drives/watch.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <mutex>
#include <string>

namespace tonquay::host {

/// Opens a disc image; openImage() but in tests.
using ImageOpener = std::function<base::Result<std::unique_ptr<Disc>>(const std::filesystem::path&)>;

/// A disc image as a drive. Its door is closed at the start, and opens, closes and locks as a drive's does. Images
/// whose files go away are discs taken out; when the files come back, so does the disc. An image that cannot be read
/// is a drive with a disc that cannot be read, and its problem is the line that the image was refused with.
class ImageDrive final : public SeenDrive {
public:
    /// Looks at the image once before it returns.
    ImageDrive(std::filesystem::path image, wchar_t letter, ImageOpener opener, std::chrono::milliseconds interval);
    ~ImageDrive() override;

    std::shared_ptr<Disc> openDisc() override;
    bool openDoor() override;
    bool closeDoor() override;
    bool lockDoor() override;
    bool unlockDoor() override;
    void releaseDoor() override {}

private:
    std::chrono::milliseconds look();
    void lookInside(Seen& seen);
    void tellFailure(Seen& seen, const base::Failure& failure);
    std::string filesNow() const;

    const std::filesystem::path image_;
    const ImageOpener opener_;
    const std::chrono::milliseconds interval_;
    // Held by whoever looks at the files or moves the door; the fields below belong to its holder.
    std::mutex files_;
    std::string filesThen_;
    int looksSinceInside_ = 0;
    bool everOpened_ = false;
    Watch watch_;
};

}
