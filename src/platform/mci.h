#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace tonquay::platform {

/// A disc that is played and a recorder of what is heard meanwhile, driven by command texts: a verb, the name of an
/// open device, and words behind it, parted by blanks. Case means nothing. A path stands as it is and so can hold no
/// blank, unless it is put between double quotes.
///
/// `cdaudio` plays the disc through the sound device of the system, at the speed of listening. Of its drives it takes
/// the one that the drive control has selected, else the first that holds an audio disc.
///
/// - `open cdaudio alias NAME`: takes the disc that is in. Fails without an audio disc.
/// - `info NAME identity`: 28 characters that tell this disc from others.
/// - `set NAME time format hms`: times are told as "00:03:25" from now on, parts of a second left out.
/// - `set NAME time format milliseconds`: or in whole milliseconds, as they are after the opening.
/// - `status NAME number of tracks`: 1 to 99, data tracks included.
/// - `status NAME length track N`: in the time format.
/// - `status NAME position`: what is heard just now, in the time format; where it stopped, once it was stopped.
/// - `status NAME current track`: its number.
/// - `play NAME`: from the start of the disc to its end. Returns at once.
/// - `play NAME from T`: from there on, in the time format; milliseconds stand for the first sector that begins
///   there or later.
/// - `stop NAME`: silence; the place stays.
/// - `close NAME`: stops, and lets go of the device.
///
/// Places on the disc count from its first track, one track after the other: the length of all tracks before a track is
/// the very place where it begins. Data tracks are silent, and so is what cannot be read. When nothing more can come -
/// the disc has ended, was taken out or gives no data, or nothing has moved for half a minute - the position is that of
/// the end of the disc, so that nobody waits for a place that is never reached.
///
/// `waveaudio` records.
///
/// - `open new type waveaudio alias NAME`: gets ready. Opens no sound device yet. Fails where a recording has
///   no place to lie.
/// - `set NAME WORD NUMBER ...`: samplespersec 44100, channels 2, bitspersample 16, alignment 4, bytespersec 176400, in
/// any number and order. No other sound is recorded, so other numbers fail.
/// - `record NAME overwrite`: drops what was recorded, opens the system's capture device and records from now on. On a
/// system without one it records what `cdaudio` plays, sample by sample.
/// - `stop NAME`: ends the recording and closes the device.
/// - `save NAME PATH`: ends it too and writes a canonical RIFF WAVE file in place of an older one. Fails before a
/// recording.
/// - `close NAME`: ends it and drops what was not saved.
///
/// A recording lies on the disk and takes 10 MB a minute there. A capture device that dies gives silence; a disk that
/// is full ends the recording, and what was recorded until then can be saved.
class Mci {
public:
    /// What a command answers beside 0, by the numbers of the media control interface.
    enum Error : std::uint32_t {
        unknownDevice = 257,     ///< no open device has that name
        unknownCommand = 261,    ///< no such verb, or not with these words
        unknownDeviceType = 263, ///< neither cdaudio nor waveaudio
        noCommand = 267,
        badNumber = 270,
        missingWord = 273,
        deviceNotReady = 276, ///< no audio disc, or no sound device
        driverRefused = 278,  ///< the sound system or the drive
        outOfRange = 282,     ///< a track or a place that the disc does not have
        fileNotSaved = 286,
        nameInUse = 289,   ///< another open device has that name
        deviceInUse = 291, ///< one of that type is open already
        formatNotRecorded = 327,
    };

    /// Areas of the lines that are left of a recording: what it is made from, what is missing of it, and that it was
    /// saved. All come during a command, so on the logic's thread.
    static constexpr std::string_view sourceArea = "recording source";
    static constexpr std::string_view troubleArea = "recording";
    static constexpr std::string_view savedArea = "recording saved";

    virtual ~Mci() = default;

    /// Carries out one command; 0 when that went well. A text that is asked for is cut to what `answer` holds, with a
    /// character 0 behind it; a failed command leaves an empty one. Never waits for a drive; a save may take a second.
    /// On the logic's thread.
    virtual std::uint32_t mciSendString(std::wstring_view command, std::span<wchar_t> answer = {}) = 0;
};

}
