#include "lay_out.h"

#include "host/discs/cue_sheet.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(data, data + size);
    if (const auto sheet = tonquay::host::parseCueSheet(bytes, "fuzz.cue"))
        tonquay::fuzz::layOutAndCheck(*sheet);
    return 0;
}
