#include "host/acd/sector_reader.h"

#include "host/acd/paranoia_reader.h"
#include "host/acd/straight_reader.h"

namespace tonquay::host {

std::unique_ptr<SectorReader> makeSectorReader(SectorReader::Mode mode, const ReadingTask& task)
{
    if (mode == SectorReader::Mode::burst)
        return std::make_unique<StraightReader>(task);
    return makeParanoiaReader(mode, task);
}

}
