#include "lay_out.h"

#include "host/discs/toc_sheet.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(data, data + size);
    if (const auto sheet = tonquay::host::parseTocSheet(bytes, "fuzz.toc"))
        tonquay::fuzz::layOutAndCheck(*sheet);
    return 0;
}
