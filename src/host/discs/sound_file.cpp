#include "host/discs/sound_file.h"

#include "base/red_book.h"

#include <fcntl.h>
#include <sndfile.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstring>
#include <mutex>
#include <system_error>
#include <utility>
#include <vector>

namespace tonquay::host {

namespace {

static_assert(std::endian::native == std::endian::little, "samples are handed on in the byte order of the disc");

constexpr int rate = base::red_book::samplesPerSecond;
constexpr int channels = 2;
constexpr std::int64_t frameBytes = 4;
constexpr std::int64_t noPosition = -1;

constexpr std::array kinds{SF_FORMAT_WAV, SF_FORMAT_WAVEX, SF_FORMAT_RF64,
                           SF_FORMAT_W64, SF_FORMAT_AIFF,  SF_FORMAT_FLAC};

struct CloseSound {
    void operator()(SNDFILE* sound) const { sf_close(sound); }
};

using Sound = std::unique_ptr<SNDFILE, CloseSound>;

/// `problem` is set when there is no sound.
Sound openSound(int descriptor, SF_INFO& info, std::string& problem)
{
    lseek(descriptor, 0, SEEK_SET);
    // The library closes what it is given, also when it refuses it and was told not to; so it gets a number of its own.
    const int given = fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
    if (given < 0) {
        problem = std::generic_category().message(errno);
        return {};
    }
    // What went wrong is kept in one place for all threads.
    static std::mutex opening;
    const std::lock_guard guard(opening);
    Sound sound(sf_open_fd(given, SFM_READ, &info, SF_TRUE));
    if (!sound)
        problem = sf_strerror(nullptr);
    return sound;
}

base::Failure refusal(const std::string& path, std::string text)
{
    return {base::Failure::Kind::invalid, path, std::move(text)};
}

}

class SoundFile::Decoder {
public:
    Decoder(int descriptor, Sound sound, std::int64_t frames)
        : descriptor_(descriptor),
          sound_(std::move(sound)),
          frames_(frames)
    {}

    std::int64_t frames() const { return frames_; }

    std::size_t read(std::int64_t frame, std::span<std::byte> buffer)
    {
        if (frame != next_ && !moveTo(frame)) {
            next_ = noPosition;
            return 0;
        }
        // The library wants samples that are aligned, which a buffer of bytes need not be.
        constexpr std::size_t mostFrames = 16384;
        samples_.resize(std::min(buffer.size() / frameBytes, mostFrames) * channels);
        std::size_t done = 0;
        next_ = frame;
        while (buffer.size() - done >= frameBytes) {
            const std::size_t wanted = std::min((buffer.size() - done) / frameBytes, mostFrames);
            const sf_count_t got = sf_readf_short(sound_.get(), samples_.data(), static_cast<sf_count_t>(wanted));
            if (got > 0) {
                const auto bytes = static_cast<std::size_t>(got * frameBytes);
                std::memcpy(buffer.data() + done, samples_.data(), bytes);
                done += bytes;
                next_ += got;
            }
            if (got != static_cast<sf_count_t>(wanted)) {
                next_ = noPosition;
                break;
            }
        }
        return done;
    }

private:
    /// After a part that cannot be decoded, a decoder may refuse every further place; a new one does not.
    bool moveTo(std::int64_t frame)
    {
        if (next_ == noPosition) {
            SF_INFO info{};
            std::string ignored;
            if (Sound again = openSound(descriptor_, info, ignored); again && info.channels == channels)
                sound_ = std::move(again);
        }
        return sf_seek(sound_.get(), frame, SEEK_SET) == frame;
    }

    int descriptor_;
    Sound sound_;
    std::int64_t frames_;
    std::int64_t next_ = 0;
    std::vector<short> samples_;
};

base::Result<SoundFile> SoundFile::open(int descriptor, const std::string& path)
{
    SF_INFO info{};
    std::string problem;
    Sound sound = openSound(descriptor, info, problem);
    if (!sound)
        return refusal(path, "this is no sound file that can be read: " + problem);
    const int kind = info.format & SF_FORMAT_TYPEMASK;
    if (std::ranges::find(kinds, kind) == kinds.end())
        return refusal(path, "only WAVE, AIFF and FLAC files hold the exact sound of a disc");
    const bool sixteenBits = (info.format & SF_FORMAT_SUBMASK) == SF_FORMAT_PCM_16;
    if (info.samplerate != rate || info.channels != channels || !sixteenBits)
        return refusal(path, "the sound of a disc is 44100 Hz, 2 channels, 16 bits; this is " +
                                 std::to_string(info.samplerate) + " Hz, " + std::to_string(info.channels) +
                                 (info.channels == 1 ? " channel" : " channels") +
                                 (sixteenBits ? ", 16 bits" : ", not 16 bits"));
    constexpr std::int64_t mostFrames = std::int64_t{100} * 60 * rate;
    if (info.frames <= 0 || info.frames > mostFrames)
        return refusal(path, info.frames == 0 ? "there is no sound in this file"
                                              : "the length of this file is not known, or longer than a disc");
    return SoundFile(std::make_unique<Decoder>(descriptor, std::move(sound), info.frames));
}

SoundFile::SoundFile(std::unique_ptr<Decoder> decoder) : decoder_(std::move(decoder)) {}
SoundFile::SoundFile(SoundFile&&) noexcept = default;
SoundFile& SoundFile::operator=(SoundFile&&) noexcept = default;
SoundFile::~SoundFile() = default;

std::int64_t SoundFile::length() const
{
    return decoder_->frames() * frameBytes;
}

std::size_t SoundFile::read(std::int64_t offset, std::span<std::byte> buffer)
{
    return decoder_->read(offset / frameBytes, buffer);
}

}
