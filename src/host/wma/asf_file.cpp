#include "host/wma/asf_file.h"

#include "base/text.h"
#include "host/wma/asf_header.h"

#include <algorithm>
#include <utility>

namespace tonquay::host {

namespace {

std::uint8_t* bytePointer(std::byte* bytes)
{
    return reinterpret_cast<std::uint8_t*>(bytes);
}

}

/// The file as the library sees it. The header is kept, since fields of it are set that the library does not set.
class AsfFile::Bytes {
public:
    explicit Bytes(std::unique_ptr<platform::BinaryFile> file) : file_(std::move(file)) {}

    static int write(void* self, std::uint8_t* bytes, int count)
    {
        return static_cast<Bytes*>(self)->write(std::as_bytes(std::span(bytes, static_cast<std::size_t>(count))));
    }

    static std::int64_t seek(void* self, std::int64_t offset, int whence)
    {
        auto& bytes = *static_cast<Bytes*>(self);
        if ((whence & AVSEEK_SIZE) != 0)
            return bytes.end_;
        if (whence != SEEK_SET || offset < 0)
            return AVERROR(EINVAL);
        return bytes.place_ = offset;
    }

    /// What was written until now is the header, and goes to the disk.
    base::Status putHeader()
    {
        headerIsWhole_ = true;
        asf::setBroadcast(header_, true);
        std::vector<std::byte> header = header_;
        grown_ = asf::putDescription(header, description_);
        if (auto put = file_->write(header); !put)
            return put;
        return file_->seek(placeInFile(end_));
    }

    base::Status finish(std::int64_t playTime)
    {
        if (!status_)
            return status_;
        asf::setPlayTime(header_, playTime);
        asf::putDescription(header_, description_);
        if (auto placed = file_->seek(0); !placed)
            return placed;
        if (auto put = file_->write(header_); !put)
            return put;
        return file_->close();
    }

    void setDescription(std::wstring_view text) { description_ = text; }

    const base::Status& status() const { return status_; }

private:
    int write(std::span<const std::byte> bytes)
    {
        const auto headerEnd = static_cast<std::int64_t>(header_.size());
        if (headerIsWhole_ && place_ >= headerEnd) {
            writeSound(bytes);
        } else {
            const auto end = static_cast<std::size_t>(place_) + bytes.size();
            // Written a second time it has the same length, and nothing of it belongs behind its end.
            if (headerIsWhole_ && end > header_.size())
                return AVERROR(EINVAL);
            header_.resize(std::max(header_.size(), end));
            std::ranges::copy(bytes, header_.begin() + place_);
        }
        place_ += static_cast<std::int64_t>(bytes.size());
        end_ = std::max(end_, place_);
        return status_ ? static_cast<int>(bytes.size()) : AVERROR(EIO);
    }

    void writeSound(std::span<const std::byte> bytes)
    {
        constexpr std::size_t longestWait = 32 << 10;
        if (!status_)
            return;
        status_ = file_->write(bytes);
        waiting_ += bytes.size();
        if (status_ && waiting_ >= longestWait) {
            status_ = file_->seek(placeInFile(place_ + static_cast<std::int64_t>(bytes.size())));
            waiting_ = 0;
        }
    }

    std::unique_ptr<platform::BinaryFile> file_;
    /// What the header has grown by, the library knows nothing of.
    std::int64_t placeInFile(std::int64_t place) const { return place + static_cast<std::int64_t>(grown_); }

    std::vector<std::byte> header_;
    std::wstring description_;
    std::size_t grown_ = 0;
    bool headerIsWhole_ = false;
    std::int64_t place_ = 0;
    std::int64_t end_ = 0;
    std::size_t waiting_ = 0; ///< bytes that may not be on their way to the disk
    base::Status status_;
};

AsfFile::AsfFile(std::unique_ptr<platform::BinaryFile> file, std::string where)
    : where_(std::move(where)),
      bytes_(std::make_unique<Bytes>(std::move(file))),
      packet_(ffmpeg::library().av_packet_alloc())
{
    AVFormatContext* made = nullptr;
    ffmpeg::library().avformat_alloc_output_context2(&made, nullptr, "asf", nullptr);
    output_.reset(made);
}

AsfFile::~AsfFile() = default;

void AsfFile::setTag(const std::string& key, std::wstring_view text)
{
    if (output_)
        ffmpeg::library().av_dict_set(&output_->metadata, key.c_str(), base::utf8(text).c_str(), 0);
    // The library has it among the further tags only.
    if (key == "Description")
        bytes_->setDescription(text);
}

base::Status AsfFile::makeOutput()
{
    constexpr std::size_t bufferBytes = 64 << 10;
    auto* const buffer = static_cast<std::uint8_t*>(ffmpeg::library().av_malloc(bufferBytes));
    if (!output_ || !packet_ || buffer == nullptr)
        return base::Failure{base::Failure::Kind::unavailable, where_, "there is no writer of ASF files"};
    stream_.reset(ffmpeg::library().avio_alloc_context(buffer, bufferBytes, 1, bytes_.get(), nullptr, &Bytes::write,
                                                       &Bytes::seek));
    output_->pb = stream_.get();
    // Without the library's own name among the tags, and the same bytes each time.
    output_->flags |= AVFMT_FLAG_CUSTOM_IO | AVFMT_FLAG_BITEXACT;
    return {};
}

base::Status AsfFile::begin(const AVCodecContext& stream, std::int32_t blockFrames, const AsfLayout& layout)
{
    if (auto made = makeOutput(); !made)
        return made;
    AVStream* const entry = ffmpeg::library().avformat_new_stream(output_.get(), nullptr);
    if (entry == nullptr || ffmpeg::library().avcodec_parameters_from_context(entry->codecpar, &stream) < 0)
        return base::Failure{base::Failure::Kind::other, where_, "there is no memory for a stream"};
    sampleRate_ = stream.sample_rate;
    blockFrames_ = blockFrames;
    layout_ = layout;

    AVDictionary* options = nullptr;
    ffmpeg::library().av_dict_set_int(&options, "packet_size", static_cast<std::int64_t>(layout.packetBytes), 0);
    const int error = ffmpeg::library().avformat_write_header(output_.get(), &options);
    ffmpeg::library().av_dict_free(&options);
    if (error < 0)
        return failed("the header cannot be written", error);
    ffmpeg::library().avio_flush(stream_.get());
    return bytes_->putHeader();
}

base::Status AsfFile::write(std::span<const std::byte> block)
{
    object_.insert(object_.end(), block.begin(), block.end());
    return object_.size() < layout_.blocksInObject * layout_.blockBytes ? base::Status() : writeObject();
}

base::Status AsfFile::writeObject()
{
    const AVRational samples{1, sampleRate_};
    const AVRational ticks = output_->streams[0]->time_base;
    const auto blocks = static_cast<std::int64_t>(object_.size() / layout_.blockBytes);
    packet_->data = bytePointer(object_.data());
    packet_->size = static_cast<int>(object_.size());
    packet_->stream_index = 0;
    packet_->flags = AV_PKT_FLAG_KEY;
    packet_->pts = ffmpeg::library().av_rescale_q(blocks_ * blockFrames_, samples, ticks);
    packet_->dts = packet_->pts;
    packet_->duration = ffmpeg::library().av_rescale_q(blocks * blockFrames_, samples, ticks);
    const int error = ffmpeg::library().av_write_frame(output_.get(), packet_.get());
    blocks_ += blocks;
    object_.clear();
    if (!bytes_->status())
        return bytes_->status();
    return error < 0 ? base::Status(failed("sound cannot be written", error)) : base::Status();
}

base::Status AsfFile::finish(std::int64_t frames)
{
    if (!object_.empty())
        if (auto written = writeObject(); !written)
            return written;
    const int error = ffmpeg::library().av_write_trailer(output_.get());
    ffmpeg::library().avio_flush(stream_.get());
    if (error < 0 && bytes_->status())
        return failed("the end cannot be written", error);
    constexpr std::int64_t unitsPerSecond = 10'000'000;
    return bytes_->finish(ffmpeg::library().av_rescale(frames, unitsPerSecond, sampleRate_));
}

base::Failure AsfFile::failed(const char* what, int error) const
{
    return {base::Failure::Kind::other, where_, std::string(what) + ": " + ffmpeg::errorText(error)};
}

}
