#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace tonquay::platform {

/// Makes Windows Media files (ASF with Windows Media Audio 2) out of sound: 44100 Hz, 16 bit signed little-endian, two
/// channels, left first.
///
/// The calls keep the names they are known by; all belong to the logic's thread. What is refused or fails leaves one
/// line in `troubleArea` that says why. A handle that names no open encoder is refused without harm. Handles have
/// numbers that no stream of the audio engine has.
///
/// Until it is closed a file plays as far as it goes; only its header does not know its length yet. An encoder that its
/// owner leaves open is closed when it is freed, and at the latest with the program.
class WmaEncoder {
public:
    using Handle = std::uint32_t;

    static constexpr std::uint32_t BASS_WMA_TAG_ANSI = 0; ///< the form of a tag: plain text

    static constexpr std::string_view troubleArea = "wma";

    virtual ~WmaEncoder() = default;

    /// The rates that are offered for sound of that form, in bits per second and in rising order; none where there is
    /// no such encoder.
    virtual std::vector<std::uint32_t> BASS_WMA_EncodeGetRates(std::uint32_t frequency, std::uint32_t channels,
                                                               std::uint32_t flags) = 0;

    /// Why the last call failed, as a number for the log; 0 when it did not.
    virtual std::int32_t BASS_ErrorGetCode() = 0;

    /// Begins a file, in place of an older one of that name. 0 when the rate is not offered (an older file stays then)
    /// or the file cannot be made.
    virtual Handle BASS_WMA_EncodeOpenFile(std::uint32_t frequency, std::uint32_t channels, std::uint32_t flags,
                                           std::uint32_t bitrate, std::wstring_view file) = 0;

    /// Adds a tag to a file that has no sound yet. Every character of `text` comes into the file, whatever its script;
    /// what is no character becomes U+FFFD, and what follows the 16000th is left out. An empty `tag` says that the tags
    /// are complete.
    virtual bool BASS_WMA_EncodeSetTag(Handle encoder, std::wstring_view tag, std::wstring_view text,
                                       std::uint32_t form) = 0;

    /// Encodes sound of any length, in whole frames of four bytes. False when it cannot be encoded or written; then
    /// nothing more can be.
    virtual bool BASS_WMA_EncodeWrite(Handle encoder, std::span<const std::byte> sound) = 0;

    /// Finishes the file: its header tells the length of the sound written, to the sample, and a decoder delivers all
    /// of it. False when not everything could be written; what could be plays.
    virtual bool BASS_WMA_EncodeClose(Handle encoder) = 0;

    /// What streams are asked at their end, asked of an encoder. Nothing is to be stopped; freeing one that was left
    /// open closes it.
    virtual bool BASS_ChannelStop(Handle encoder) = 0;
    virtual bool BASS_StreamFree(Handle encoder) = 0;
};

}
