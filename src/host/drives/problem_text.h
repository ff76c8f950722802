#pragma once

#include "platform/discs.h"

#include <string>

namespace tonquay::host {

/// One sentence for people, without a final stop, that says why a drive gives no disc and what to do about it.
/// `path` is its node or image. Empty for no problem. For `noPermission` it looks up which group owns the node.
std::string problemText(platform::DriveProblem problem, const std::string& path);

/// The same for a drive that has just taken a disc and is still spinning up; it counts as busy.
std::string gettingReadyText(const std::string& path);

}
