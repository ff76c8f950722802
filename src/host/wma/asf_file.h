#pragma once

#include "base/result.h"
#include "host/wma/asf_layout.h"
#include "host/wma/ffmpeg.h"
#include "platform/file_system.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tonquay::host {

/// An ASF file in the making (Advanced Systems Format, revision 01.20.03), with one stream of equal blocks of sound.
///
/// Until finish() its header has the flag of a broadcast, which says that its lengths are not known: what is there of
/// a file that was broken off plays to its end. What was written is on its way to the disk every few seconds of sound.
///
/// A write that fails is reported by that call or the next; from then on everything fails, and the header stays.
class AsfFile {
public:
    /// `file` is empty, open, and at its first byte. `where` is the path for failures.
    AsfFile(std::unique_ptr<platform::BinaryFile> file, std::string where);
    AsfFile(const AsfFile&) = delete;
    AsfFile& operator=(const AsfFile&) = delete;
    ~AsfFile();

    /// Before begin(). The key as the format's own names have it ("WM/Genre").
    void setTag(const std::string& key, std::wstring_view text);

    /// Writes the header. `blockFrames` is the sound in a block, in frames of the stream.
    base::Status begin(const AVCodecContext& stream, std::int32_t blockFrames, const AsfLayout& layout);

    /// The next block; all have the stream's size.
    base::Status write(std::span<const std::byte> block);

    /// Writes the header anew, for that much sound, and closes the file.
    base::Status finish(std::int64_t frames);

private:
    class Bytes;

    base::Status makeOutput();
    base::Status writeObject();
    base::Failure failed(const char* what, int error) const;

    std::string where_;
    std::unique_ptr<Bytes> bytes_;
    ffmpeg::ByteStream stream_;
    ffmpeg::Output output_;
    ffmpeg::Packet packet_;
    std::vector<std::byte> object_; ///< blocks that go into the file as one piece
    AsfLayout layout_;
    std::int64_t blockFrames_ = 0;
    std::int64_t blocks_ = 0; ///< handed over before object_
    std::int32_t sampleRate_ = 0;
};

}
