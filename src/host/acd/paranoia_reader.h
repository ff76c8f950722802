#pragma once

#include "host/acd/sector_reader.h"

namespace tonquay::host {

/// Normal and Synchronous, by the rules of libcdio's paranoia; the only place that knows that library.
///
/// What it reads is a Disc of ours, so drives and images are read alike. `mode` is not burst.
std::unique_ptr<SectorReader> makeParanoiaReader(SectorReader::Mode mode, const ReadingTask& task);

}
