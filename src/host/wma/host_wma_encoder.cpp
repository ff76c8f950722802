#include "host/wma/host_wma_encoder.h"

#include "base/red_book.h"
#include "base/text.h"
#include "host/wma/asf_file.h"
#include "host/wma/block_encoder.h"
#include "host/wma/ffmpeg_library.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tonquay::host {

using base::Failure;
using base::Status;

namespace {

/// The rates that people know of these files. The encoder takes every one.
constexpr std::array<std::uint32_t, 14> takenRates{32000,  40000,  48000,  56000,  64000,  80000,  96000,
                                                   112000, 128000, 160000, 192000, 224000, 256000, 320000};

constexpr std::uint32_t firstHandle = 0x8000'0000;

/// A text as it can stand in a file: every character, and nothing that is none.
std::wstring tagText(std::wstring_view text)
{
    constexpr std::size_t most = 16000;
    constexpr wchar_t replacement = 0xFFFD;
    std::wstring clean(text.substr(0, std::min(most, text.find(L'\0'))));
    std::ranges::replace_if(
        clean, [](wchar_t c) { return c >= 0xD800 && c < 0xE000; }, replacement);
    return clean;
}

AsfLayout layoutOf(std::uint32_t rate)
{
    return asfLayout(rate, BlockEncoder::framesPerBlock);
}

base::Result<BlockEncoder> openEncoder(std::uint32_t rate)
{
    return BlockEncoder::open(layoutOf(rate).blockBytes);
}

bool isDiscSound(std::uint32_t frequency, std::uint32_t channels)
{
    return frequency == base::red_book::samplesPerSecond && channels == base::red_book::channels;
}

}

/// One file that is being encoded.
class HostWmaEncoder::Recording {
public:
    Recording(BlockEncoder encoder, const AsfLayout& layout, std::unique_ptr<platform::BinaryFile> file,
              std::string where)
        : encoder_(std::move(encoder)),
          layout_(layout),
          file_(std::move(file), std::move(where)),
          take_([this](std::span<const std::byte> block) { return file_.write(block); })
    {}

    Status setTag(std::wstring_view tag, std::wstring_view text)
    {
        if (begun_)
            return Failure{Failure::Kind::invalid, base::utf8(tag), "the tags are complete already"};
        if (tag.empty())
            return begin();
        file_.setTag(base::utf8(tag), tagText(text));
        return {};
    }

    Status write(std::span<const std::byte> sound)
    {
        if (auto begun = begin(); !begun)
            return begun;
        return status_ = encoder_.write(sound, take_);
    }

    /// After a failure nothing is to be finished; it was told by then.
    Status close()
    {
        if (auto begun = begin(); !begun)
            return begun;
        if (auto rest = encoder_.finish(take_); !rest)
            return rest;
        return file_.finish(encoder_.frames());
    }

    bool failed() const { return !status_; }

private:
    Status begin()
    {
        if (std::exchange(begun_, true) || !status_)
            return status_;
        return status_ = file_.begin(encoder_.stream(), BlockEncoder::framesPerBlock, layout_);
    }

    BlockEncoder encoder_;
    AsfLayout layout_;
    AsfFile file_;
    BlockEncoder::Take take_;
    bool begun_ = false;
    Status status_;
};

HostWmaEncoder::HostWmaEncoder(platform::FileSystem& files, platform::Diagnostics& log)
    : files_(files),
      log_(log),
      lastHandle_(firstHandle)
{}

HostWmaEncoder::~HostWmaEncoder()
{
    closeAll();
}

void HostWmaEncoder::closeAll()
{
    while (!recordings_.empty())
        BASS_WMA_EncodeClose(recordings_.begin()->first);
}

std::vector<std::uint32_t> HostWmaEncoder::BASS_WMA_EncodeGetRates(std::uint32_t frequency, std::uint32_t channels,
                                                                   std::uint32_t)
{
    if (!isDiscSound(frequency, channels)) {
        tell(Failure{Failure::Kind::unavailable, "Windows Media Audio", "only sound as discs have it can be encoded"});
        return {};
    }
    // Each of them was tried. The encoder itself is not asked: every start of the program comes here, and most rip
    // something else.
    if (ffmpeg::isInstalled()) {
        tell({});
        return {takenRates.begin(), takenRates.end()};
    }
    tell(Failure{Failure::Kind::unavailable, "Windows Media Audio", "FFmpeg's libraries are not installed"});
    return {};
}

HostWmaEncoder::Handle HostWmaEncoder::BASS_WMA_EncodeOpenFile(std::uint32_t frequency, std::uint32_t channels,
                                                               std::uint32_t, std::uint32_t bitrate,
                                                               std::wstring_view file)
{
    const std::string where = files_.hostPath(file);
    const auto refuse = [&](const Failure& failure) {
        tell(failure);
        return Handle{0};
    };
    if (!isDiscSound(frequency, channels) || std::ranges::find(takenRates, bitrate) == takenRates.end())
        return refuse({Failure::Kind::invalid, where,
                       "the WMA encoder offers no rate of " + std::to_string(bitrate) +
                           " bits per second; choose another bitrate"});
    auto encoder = openEncoder(bitrate);
    if (!encoder)
        return refuse(encoder.failure());
    auto opened = files_.openBinary(file);
    if (!opened)
        return refuse(opened.failure());
    // The end of an older, longer file would stay behind the new one.
    if (const Status emptied = (*opened)->endHere(); !emptied)
        return refuse(emptied.failure());
    tell({});
    recordings_[++lastHandle_] =
        std::make_unique<Recording>(std::move(*encoder), layoutOf(bitrate), std::move(*opened), where);
    return lastHandle_;
}

bool HostWmaEncoder::BASS_WMA_EncodeSetTag(Handle encoder, std::wstring_view tag, std::wstring_view text, std::uint32_t)
{
    Recording* const recording = find(encoder);
    return recording != nullptr && tell(recording->setTag(tag, text));
}

bool HostWmaEncoder::BASS_WMA_EncodeWrite(Handle encoder, std::span<const std::byte> sound)
{
    Recording* const recording = find(encoder);
    return recording != nullptr && !recording->failed() && tell(recording->write(sound));
}

bool HostWmaEncoder::BASS_WMA_EncodeClose(Handle encoder)
{
    Recording* const recording = find(encoder);
    if (recording == nullptr)
        return false;
    const bool closed = !recording->failed() && tell(recording->close());
    recordings_.erase(encoder);
    return closed;
}

bool HostWmaEncoder::BASS_ChannelStop(Handle encoder)
{
    return find(encoder) != nullptr;
}

HostWmaEncoder::Recording* HostWmaEncoder::find(Handle encoder)
{
    const auto found = recordings_.find(encoder);
    return found == recordings_.end() ? nullptr : found->second.get();
}

bool HostWmaEncoder::tell(const Status& done)
{
    lastError_ = done ? 0 : static_cast<std::int32_t>(done.failure().kind) + 1;
    if (!done)
        log_.line(troubleArea, base::describe(done.failure()));
    return static_cast<bool>(done);
}

}
