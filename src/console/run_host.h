#pragma once

#include "base/result.h"
#include "platform/decode_report.h"
#include "platform/file_tags.h"
#include "platform/machine_programs.h"
#include "platform/platform.h"
#include "platform/wma_file.h"

#include <functional>
#include <string>
#include <string_view>

namespace tonquay::console {

/// Whom the host tells of what happens in a run. All calls on the logic's thread but diagnose.
struct RunListener {
    std::function<void(std::string line)> say;                                  ///< a message box
    std::function<void(std::string_view area, std::string_view text)> diagnose; ///< any thread; empty: nobody listens
    std::function<void()> interrupt;                                            ///< Ctrl-C
    std::function<void(const platform::DecodeReport&)> decodeEnd;
};

/// What a run needs beside the discs.
class RunHost {
public:
    virtual ~RunHost() = default;

    /// The world with a new program folder of this run's own, C:\CDTONQUAY, in which nothing is but links to the
    /// machine's programs. To be called once.
    virtual base::Result<platform::Platform> open(RunListener listener) = 0;

    /// Which of those programs there are. After open().
    virtual platform::MachinePrograms programs() = 0;

    /// Host path of the first program of that bare name where the machine looks for programs. Fails without one.
    virtual base::Result<std::string> findProgram(const std::string& name) = 0;

    /// Puts a link to a program of the user's into the run's program folder, under `name`, and answers its path there
    /// in the program's form. After open().
    virtual base::Result<std::wstring> linkEncoder(const std::string& program, const std::string& name) = 0;

    /// Host path of the file that the started programs write to. After open().
    virtual std::string programOutput() = 0;

    /// Ends the encoders that the run has started and that still live, and what they have started. Takes a second at
    /// most; files that they were writing stay unfinished. After open().
    virtual void endChildren() = 0;

    virtual std::string savedSettingsFolder() = 0; ///< host path of the user's own program folder
    virtual std::string musicFolder() = 0;         ///< host path; empty when the user has none

    /// What a sound file says of itself. Fails when it is no plain file or cannot be read.
    virtual base::Result<platform::FileTags> readTags(const std::string& hostPath, platform::SoundReading reading) = 0;

    /// What a WMA file says of itself. Fails when there is none or it cannot be read.
    virtual base::Result<platform::WmaFile> readWma(const std::string& hostPath) = 0;
};

}
