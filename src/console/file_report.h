#pragma once

#include "platform/file_tags.h"

#include <string>

namespace tonquay::console {

/// What `tonquay tags` says of one file.
struct FileReport {
    std::string file{};         ///< as the user wrote it
    std::string problem{};      ///< why there is nothing to say; empty when the rest is there
    std::wstring information{}; ///< the text that the tag page shows of it
    platform::FileTags tags{};
};

/// As lines for people: the file, its sound, and the fields that are there.
std::string reportText(const FileReport& report);

/// As a JSON object on one line, UTF-8, without a line end. Its keys are a promise: they are only ever added to.
std::string reportJson(const FileReport& report);

}
