#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

namespace tonquay::state {

/// The most tracks that the program knows of a disc. Tables by track number run from 0 to this; 0 is not used.
inline constexpr std::size_t maxTracks = 100;

/// True for a track number that has a place in the tables. A statement about any other number is passed over.
constexpr bool hasTrackSlot(std::int64_t number)
{
    return number >= 0 && number <= static_cast<std::int64_t>(maxTracks);
}

/// A table by track number. A number outside it reads as an empty value and is not written.
template <class T>
class TrackTable {
public:
    const T& operator()(std::int64_t number) const
    {
        static const T none{};
        return hasTrackSlot(number) ? values_[static_cast<std::size_t>(number)] : none;
    }

    void set(std::int64_t number, T value)
    {
        if (hasTrackSlot(number))
            values_[static_cast<std::size_t>(number)] = std::move(value);
    }

    /// Tracks 1 to 100 back to an empty value.
    void clear()
    {
        for (std::size_t number = 1; number <= maxTracks; ++number)
            values_[number] = T{};
    }

private:
    std::array<T, maxTracks + 1> values_{};
};

/// What is known of the audio disc in the selected drive.
struct DiscInfo {
    std::wstring discArtist; ///< "Unknown Artist" when not known
    std::wstring discAlbum;  ///< "Unknown Title" when not known
    std::wstring discYear;
    std::wstring discGenre;
    std::wstring discComment;
    std::int16_t trackCount = 0; ///< tracks named by the hand-over file; 0 without one
    TrackTable<std::wstring> trackTitles;
    TrackTable<std::int32_t> trackSeconds;
    std::wstring handoverDriveLetter; ///< the drive that the hand-over file was written for
};

/// The wanted part of each track in milliseconds. A length above 0 marks a partial rip.
struct PartialTracks {
    TrackTable<double> partialStartMs;
    TrackTable<double> partialEndMs;
    TrackTable<double> partialLengthMs;
};

}
