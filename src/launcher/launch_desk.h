#pragma once

#include "launcher/kept_names.h"
#include "platform/discs.h"
#include "platform/machine_programs.h"
#include "platform/platform.h"

#include <optional>
#include <string>
#include <vector>

namespace tonquay::launcher {

/// Where the names of a disc come from.
enum class NameSource {
    nowhere,
    disc,  ///< CD-Text
    sheet, ///< the file that describes the image
    kept,  ///< what a person has given it before
};

/// A disc that was looked at.
struct SeenDisc {
    platform::DriveDescription drive;
    platform::DiscTable table; ///< with the disc's own names
    platform::DiscNames names; ///< those to be used
    NameSource source = NameSource::nowhere;
};

/// What the machine has for the launcher.
struct Machine {
    std::wstring programFolder;         ///< in the program's form
    std::wstring keptNamesFolder;       ///< likewise; it is there
    std::wstring ripper;                ///< the ripper's program file, likewise; empty when it is missing
    std::wstring musicFolder;           ///< likewise; empty without one
    std::wstring mixer;                 ///< a program that sets the system's sound levels; empty for none
    platform::MachinePrograms programs; ///< the encoders in the program folder
};

/// What the launcher does, without its window: finds a disc and its names, prepares what the ripper looks for when it
/// starts, and starts it.
class LaunchDesk {
public:
    LaunchDesk(platform::Platform platform, Machine machine);

    /// Writes the settings that the ripper needs and that are not there yet: the folder for data, which is the music
    /// folder, and the mixer. What the user has stays.
    void writeFirstSettings();

    /// The disc in a drive. Fails with a sentence for people when there is none that can be read.
    base::Result<SeenDisc> look(platform::Discs& discs, const platform::DriveDescription& drive) const;

    /// The drive to start with, of those with an audio disc: the one that was handed over last, unless the ripper's
    /// settings have got another drive since, then theirs, else the first. Nothing when none holds a disc.
    std::optional<platform::DriveDescription> choose(const std::vector<platform::DriveDescription>& drives) const;

    /// Hands the disc over with these names and starts the ripper, which goes on by itself. Names that were changed are
    /// kept for the disc. Fails when the hand-over cannot be written or the ripper does not start.
    base::Status startRipper(const SeenDisc& disc, const platform::DiscNames& names);

    /// Host path of the folder where an image was opened last, else of the music folder; empty for neither.
    std::string imageFolder() const;
    void keepImageFolder(const std::string& hostFolder);

    /// What a person should know about the encoders that are missing; empty when all are there.
    std::string encoderWarning() const;

private:
    std::wstring savedDriveLetter() const;

    platform::Platform platform_;
    Machine machine_;
    KeptNames keptNames_;
};

bool sameNames(const platform::DiscNames& left, const platform::DiscNames& right);

/// No name is known.
bool isEmpty(const platform::DiscNames& names);

}
