#pragma once

#include <string>

namespace tonquay::host {

/// The program folder that the installation of this user has recorded, for a program that is started without one: a
/// host path, empty when there is none.
std::string recordedProgramFolder();

/// Records it; a failure is passed over.
void recordProgramFolder(const std::string& folder);

}
