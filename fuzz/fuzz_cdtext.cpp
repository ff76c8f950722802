#include "engine/cd_text_list.h"

#include <cstdlib>

using namespace tonquay;

/// The first byte is the number of tracks; the rest is the block.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const std::string block(data + 1, data + size);
    std::int32_t last = -1;
    engine::CdTextNames names;
    engine::readCdText(block, data[0] % 101 - 1, names, [&](std::int32_t place, const std::wstring&) {
        if (place <= last || static_cast<std::size_t>(place) > block.size())
            std::abort();
        last = place;
    });
    for (const auto& [number, text] : names.titles)
        if (number < 0 || number > data[0] % 101 - 1 || text.size() > block.size())
            std::abort();
    return 0;
}
