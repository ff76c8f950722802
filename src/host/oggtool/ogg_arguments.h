#pragma once

#include "base/result.h"
#include "host/posix/descriptor.h"

#include <string>
#include <string_view>
#include <vector>

namespace tonquay::host {

/// The adapter's arguments without its own name: from the form that the program's command texts have to the form that
/// the machine's tools read.
using Arguments = std::vector<std::string>;

/// The machine's program that a call by this path stands for, by its last name without regard to case: "oggenc" for
/// oggenc.exe and oggencp4.exe, "vorbiscomment" for vorbiscomment.exe. Empty for any other.
std::string_view machineProgramFor(std::string_view calledAs);

/// For `oggenc`: "-c=TEXT" becomes the two arguments "-c" and "COMMENT=TEXT", since the text itself would be taken for
/// a comment without a name. All others stay as they are, and all behind "--".
Arguments encoderArguments(Arguments arguments);

/// For `vorbiscomment`: a file of comments may end its lines with CR LF, of which the tool would keep the CR as a part
/// of each value.
struct CommentArguments {
    Arguments arguments; ///< these name a copy with LF alone, where there is a file
    Descriptor copy;     ///< what they name: no file of any folder, gone with the last process that has it
};

/// Fails when the copy cannot be made. A file that cannot be read is left to the tool, which knows how to say so.
base::Result<CommentArguments> commentArguments(Arguments arguments);

}
