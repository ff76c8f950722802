#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tonquay::host {

/// True for an ordinary file, or a link to one, that we may execute.
bool isProgramFile(const std::string& path);

/// The programs of this very name in the folders of a $PATH, in its order. Folders that are empty or relative are left
/// out: they would mean the folder that is current by chance, often one full of somebody's music.
std::vector<std::string> programsOnPath(std::string_view name, std::string_view searchPath);

/// $PATH, or where programs usually are when there is none.
std::string searchPath();

/// The file of the running program, with no link in its path; empty when the system does not tell.
std::string ownProgramFile();

/// Another program of this suite: beside the running one, else on the search path; empty when it is at neither place.
std::string siblingProgram(std::string_view name);

/// What our adapter for the Ogg tools is called.
inline constexpr std::string_view oggToolName = "tonquay-oggtool";

/// True when a path leads to an adapter of ours, through links too.
bool isOggTool(const std::string& path);

}
