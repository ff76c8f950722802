#include "lay_out.h"

#include "host/discs/nrg_image.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tonquay::host;
    const std::span<const std::byte> image = std::as_bytes(std::span(data, size));
    const std::size_t footer = std::min(size, nrgFooterBytes);
    const auto chain = nrgChain(image.last(footer), static_cast<std::int64_t>(size), "fuzz.nrg");
    if (!chain)
        return 0;
    const auto chunks = image.subspan(static_cast<std::size_t>(chain->offset), static_cast<std::size_t>(chain->bytes));
    if (const auto sheet = parseNrg(chunks, *chain, "fuzz.nrg"))
        tonquay::fuzz::layOutAndCheck(*sheet);
    // The same chunks behind sectors that need not be there: most of what matters is past the first checks.
    NrgChain far = *chain;
    far.offset += std::int64_t{700} << 20;
    if (const auto sheet = parseNrg(chunks, far, "fuzz.nrg"))
        tonquay::fuzz::layOutAndCheck(*sheet);
    return 0;
}
