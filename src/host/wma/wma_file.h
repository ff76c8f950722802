#pragma once

#include "base/result.h"
#include "platform/wma_file.h"

#include <string>

namespace tonquay::host {

/// Reads the header of a WMA file and counts its blocks; decodes nothing. What is no such file, or broken in its
/// header, is no failure but no Windows Media Audio. A file that is a good deal shorter or longer than its header says
/// counts as not finished. Fails when there is no such file or it cannot be read. Reads the
/// file once.
base::Result<platform::WmaFile> readWmaFile(const std::string& hostPath);

}
