#include "host/drives/image_drive.h"

#include "host/drives/drive_abilities.h"
#include "host/drives/problem_text.h"
#include "host/drives/watched_disc.h"

#include <sys/stat.h>
#include <utility>

namespace tonquay::host {
namespace {

using platform::DriveProblem;

// The sheet and its folder are looked at each time, which finds what was removed beside the sheet; opening the image
// finds the rest, data in other folders, and costs more.
constexpr int looksBetweenOpenings = 10;

Seen unseen(const std::filesystem::path& image, wchar_t letter)
{
    Seen seen;
    seen.description.letter = letter;
    seen.description.vendor = "Image";
    seen.description.product = image.filename().string();
    seen.description.hostPath = image.string();
    seen.description.image = true;
    seen.description.abilities = ability::readsAudio | ability::streamIsAccurate;
    seen.description.canOpen = true;
    seen.description.canLock = true;
    return seen;
}

std::string stampOf(const std::filesystem::path& path)
{
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return "none";
    std::string stamp;
    for (const long long part : {static_cast<long long>(status.st_mtim.tv_sec), status.st_mtim.tv_nsec + 0LL,
                                 static_cast<long long>(status.st_ino), static_cast<long long>(status.st_size)})
        stamp += std::to_string(part) + ' ';
    return stamp;
}

bool isThere(const std::filesystem::path& path)
{
    std::error_code error;
    return std::filesystem::exists(path, error);
}

}

ImageDrive::ImageDrive(std::filesystem::path image, wchar_t letter, ImageOpener opener,
                       std::chrono::milliseconds interval)
    : SeenDrive(unseen(image, letter)),
      image_(std::move(image)),
      opener_(std::move(opener)),
      interval_(interval),
      watch_([this] { return look(); })
{
    look();
    watch_.start();
}

ImageDrive::~ImageDrive()
{
    watch_.stop();
}

std::shared_ptr<Disc> ImageDrive::openDisc()
{
    const Seen now = seen();
    if (!now.description.disc)
        return nullptr;
    auto disc = opener_(image_);
    if (!disc)
        return nullptr;
    return std::make_shared<WatchedDisc>(std::move(*disc), now.medium);
}

std::chrono::milliseconds ImageDrive::look()
{
    const std::lock_guard looking(files_);
    std::string files = filesNow();
    if (!doorIsOpen() && (files != filesThen_ || ++looksSinceInside_ >= looksBetweenOpenings)) {
        filesThen_ = std::move(files);
        Seen now = seen();
        lookInside(now);
        publish(std::move(now));
    }
    settled();
    return interval_;
}

std::string ImageDrive::filesNow() const
{
    const std::filesystem::path folder = image_.has_parent_path() ? image_.parent_path() : ".";
    return stampOf(image_) + '/' + stampOf(folder);
}

void ImageDrive::lookInside(Seen& seen)
{
    looksSinceInside_ = 0;
    const auto disc = opener_(image_);
    if (!disc) {
        tellFailure(seen, disc.failure());
        return;
    }
    everOpened_ = true;
    seen.discIsIn((*disc)->tracks(), (*disc)->names());
}

void ImageDrive::tellFailure(Seen& seen, const base::Failure& failure)
{
    const std::string path = image_.string();
    const bool sheetIsThere = isThere(image_);
    const bool filesAreGone = !sheetIsThere || failure.kind == base::Failure::Kind::notFound;
    // A reader finds out for itself how far its files still go; they are looked at again when it is through.
    if (!filesAreGone && seen.medium && seen.medium->hasReaders()) {
        looksSinceInside_ = looksBetweenOpenings;
        return;
    }
    if (!sheetIsThere && !everOpened_)
        seen.noDisc(DriveProblem::noDevice, "There is no image " + path + ": name one that exists");
    else if (filesAreGone && everOpened_)
        seen.noDisc(DriveProblem::noDisc, "The files of the image " + path + " are gone: put them back");
    else if (failure.kind == base::Failure::Kind::refused)
        seen.noDisc(DriveProblem::noPermission, base::describe(failure));
    else
        seen.noDisc(DriveProblem::unreadable, base::describe(failure));
}

bool ImageDrive::openDoor()
{
    const std::lock_guard moving(files_);
    Seen now = seen();
    if (now.locked)
        return false;
    now.doorOpen = true;
    now.noDisc(DriveProblem::trayOpen);
    publish(std::move(now));
    return true;
}

bool ImageDrive::closeDoor()
{
    const std::lock_guard moving(files_);
    Seen now = seen();
    if (now.doorOpen) {
        now.doorOpen = false;
        filesThen_ = filesNow();
        lookInside(now);
        publish(std::move(now));
    }
    return true;
}

bool ImageDrive::lockDoor()
{
    const std::lock_guard moving(files_);
    Seen now = seen();
    now.locked = true;
    publish(std::move(now));
    return true;
}

bool ImageDrive::unlockDoor()
{
    const std::lock_guard moving(files_);
    Seen now = seen();
    now.locked = false;
    publish(std::move(now));
    return true;
}

}
