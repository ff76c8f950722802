#pragma once

#include "platform/machine_programs.h"

#include <string>

namespace tonquay::host {

/// The programs that a program folder is expected to hold, as links to what this machine has: lame.exe to the `lame` on
/// the search path, and in oggtools the encoders and vorbiscomment.exe to our adapter, which finds the machine's own.
///
/// Links are ours: one that leads elsewhere than it should is made anew, and a dead one, or an adapter without its
/// program, is taken away where the machine has none. A file or folder of that name is the user's and stays. Files
/// beside them are not touched.
class ProgramFolder {
public:
    struct Settings {
        std::string folder;     ///< host path; made when it is not there, but not what is above it
        std::string searchPath; ///< $PATH
        std::string oggTool;    ///< host path of the adapter; empty or gone: there is none, so no Ogg tools either
    };

    explicit ProgramFolder(Settings settings) : settings_(std::move(settings)) {}

    /// Puts the links right, as often as asked. What one link fails of costs the others nothing.
    platform::MachinePrograms refresh() const;

    /// Puts a link to one more program into the folder `encoder`, under `name`, and answers the link's host path. A
    /// link of that name is replaced. The program folder is there already.
    base::Result<std::string> linkEncoder(const std::string& program, const std::string& name) const;

    /// Puts a link to the launcher there, for a ripper that restarts through it. `program` is its file.
    base::Status linkLauncher(const std::string& program) const;

    /// Puts a link to the tag utility there, for a tag page that hands a file to it. Without a `program` a link that
    /// leads nowhere is taken away, so that the page does not offer it; one that leads to a program stays.
    base::Status linkUtility(const std::string& program) const;

    /// Puts a link to the help pages there. `folder` holds them; without one nothing is done.
    base::Status linkHelp(const std::string& folder) const;

private:
    base::Status refreshLame() const;
    base::Status refreshOggTool(const std::string& program, std::initializer_list<const char*> names) const;

    Settings settings_;
};

/// Where our adapter is: beside the running program, as where it was built, or in libexec/cd-tonquay of the tree that
/// the program was installed to. Empty when it is at neither place.
std::string oggToolOfThisProgram();

/// Where the help pages are: beside the running program, as where it was built, or in share/cd-tonquay/help of the tree
/// that it was installed to. Empty when they are at neither place.
std::string helpOfThisProgram();

}
