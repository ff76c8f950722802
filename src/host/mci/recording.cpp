#include "host/mci/recording.h"

#include "base/wav_header.h"
#include "host/audio/background_thread.h"
#include "host/audio/bell.h"
#include "host/mci/sound_ring.h"
#include "host/posix/descriptor.h"
#include "platform/wav_file.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <stdlib.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace tonquay::host {

namespace {

/// Both sizes of the header hold 32 bits, and the first one counts 36 bytes more.
constexpr std::int64_t mostBytes = (std::int64_t{std::numeric_limits<std::uint32_t>::max()} - 36) / 4 * 4;

struct NamelessFile {
    Descriptor file;
    bool canBeNamed = false;
};

base::Result<NamelessFile> makeFile(const std::string& folder)
{
    constexpr mode_t asEveryFile = 0666;
    Descriptor file(open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, asEveryFile));
    if (file)
        return NamelessFile{std::move(file), true};
    // Not every file system has such files.
    std::string name = folder + "/tonquay-XXXXXX";
    file = Descriptor(mkostemp(name.data(), O_CLOEXEC));
    if (!file)
        return systemFailure(name, "made", errno);
    unlink(name.c_str());
    return NamelessFile{std::move(file), false};
}

}

/// What the recording and its thread share; the last of them lets go of the file.
struct Recording::Work {
    NamelessFile file;
    std::string folder;
    SoundRing ring;
    Bell bell;
    std::atomic<bool> ending{false};
    std::atomic<bool> closed{false}; ///< nothing is let in any more
    BackgroundThread writing;

    // The writing thread's until it has ended.
    std::int64_t written = 0;
    base::Status trouble;

    void run();
    void writeDown();
    void write(std::span<const std::byte> piece);
};

void Recording::Work::run()
{
    while (!ending.load(std::memory_order_acquire)) {
        bell.wait();
        writeDown();
    }
    writeDown();
}

void Recording::Work::writeDown()
{
    for (auto piece = ring.oldest(); !piece.empty(); piece = ring.oldest()) {
        write(piece);
        ring.drop(piece.size());
    }
}

void Recording::Work::write(std::span<const std::byte> piece)
{
    if (!trouble)
        return;
    const auto room = static_cast<std::size_t>(mostBytes - written);
    if (piece.size() > room) {
        trouble = base::Failure{base::Failure::Kind::full, folder, "a recording can be no longer than that"};
        piece = piece.first(room);
    }
    std::size_t done = 0;
    const auto put = writeAt(file.file.get(), piece, base::waveHeaderBytes + written, folder, done);
    written += static_cast<std::int64_t>(done);
    if (!put)
        trouble = put;
}

base::Result<std::unique_ptr<Recording>> Recording::start(const std::string& folder)
{
    auto file = makeFile(folder);
    if (!file)
        return file.failure();
    const auto work = std::make_shared<Work>();
    work->file = std::move(*file);
    work->folder = folder;
    try {
        work->writing = startInBackground([work] { work->run(); });
    } catch (const std::system_error& error) {
        return base::Failure{base::Failure::Kind::unavailable, "recording",
                             std::string("no thread to write it down: ") + error.what()};
    }
    return std::make_unique<Recording>(work);
}

Recording::~Recording()
{
    static_cast<void>(end());
}

std::function<void(std::span<const std::byte>)> Recording::inlet()
{
    return [work = work_](std::span<const std::byte> frames) {
        if (work->closed.load(std::memory_order_acquire))
            return;
        work->ring.put(frames);
        work->bell.ring();
    };
}

base::Status Recording::end(std::int64_t unwanted)
{
    if (ended_)
        return {};
    ended_ = true;
    work_->closed.store(true, std::memory_order_release);
    work_->ending.store(true, std::memory_order_release);
    work_->bell.ring();
    work_->writing.thread.join();
    soundBytes_ = std::max<std::int64_t>(work_->written - std::max<std::int64_t>(unwanted, 0), 0);
    // A piece that the disk took in part may have ended inside of a frame.
    soundBytes_ -= soundBytes_ % 4;
    if (!work_->trouble)
        return work_->trouble;
    if (const std::uint64_t lost = work_->ring.bytesLost(); lost > 0)
        return base::Failure{base::Failure::Kind::other, work_->folder,
                             "the disk was too slow, and " + std::to_string(lost) + " bytes of sound were lost"};
    return {};
}

base::Status Recording::save(platform::FileSystem& files, std::wstring_view path)
{
    if (auto header = writeHeader(); !header)
        return header;
    if (files.fileExists(path))
        if (auto removed = files.remove(path); !removed)
            return removed;
    return giveName(files, path) ? base::Status() : copyTo(files, path);
}

base::Status Recording::writeHeader()
{
    const int file = work_->file.file.get();
    const base::WaveHeader header = base::waveHeader({});
    std::vector<std::byte> bytes;
    for (const std::span<const std::byte> record :
         {std::span<const std::byte>(header.riff), std::span<const std::byte>(header.format),
          std::span<const std::byte>(header.data)})
        bytes.insert(bytes.end(), record.begin(), record.end());
    const auto dataSize = static_cast<std::uint32_t>(soundBytes_);
    std::ranges::copy(base::littleEndian(dataSize + 36), bytes.begin() + base::riffSizeOffset);
    std::ranges::copy(base::littleEndian(dataSize), bytes.begin() + base::dataSizeOffset);
    std::size_t done = 0;
    if (auto put = writeAt(file, bytes, 0, work_->folder, done); !put)
        return put;
    if (ftruncate(file, base::waveHeaderBytes + soundBytes_) != 0)
        return systemFailure(work_->folder, "cut", errno);
    return {};
}

bool Recording::giveName(platform::FileSystem& files, std::wstring_view path)
{
    if (named_ || !work_->file.canBeNamed)
        return false;
    const std::string itself = "/proc/self/fd/" + std::to_string(work_->file.file.get());
    named_ = linkat(AT_FDCWD, itself.c_str(), AT_FDCWD, files.hostPath(path).c_str(), AT_SYMLINK_FOLLOW) == 0;
    return named_;
}

base::Status Recording::copyTo(platform::FileSystem& files, std::wstring_view path)
{
    constexpr std::size_t blockBytes = 1 << 20;
    auto opened = files.openBinary(path);
    if (!opened)
        return opened.failure();
    const auto copyAll = [&]() -> base::Status {
        std::vector<std::byte> block(blockBytes);
        const std::int64_t all = base::waveHeaderBytes + soundBytes_;
        for (std::int64_t at = 0; at < all; at += std::ssize(block)) {
            const auto read = readAt(work_->file.file.get(), block, at, work_->folder);
            if (!read)
                return read.failure();
            if (auto put = (*opened)->write(std::span(block).first(*read)); !put)
                return put;
        }
        return (*opened)->close();
    };
    auto done = copyAll();
    // Part of a recording would look whole by its header.
    if (!done)
        static_cast<void>(files.remove(path));
    return done;
}

}
