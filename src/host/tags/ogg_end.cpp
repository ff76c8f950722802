#include "host/tags/ogg_end.h"

#include "host/posix/descriptor.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <span>
#include <string_view>
#include <vector>

namespace tonquay::host {

namespace {

constexpr std::size_t headBytes = 27;
constexpr std::size_t mostSegments = 255;
constexpr std::size_t largestPage = headBytes + mostSegments + mostSegments * 255;

std::vector<unsigned char> tailOf(int descriptor, std::int64_t length)
{
    const auto bytes = static_cast<std::size_t>(std::clamp<std::int64_t>(length, 0, std::int64_t{largestPage}));
    std::vector<unsigned char> tail(bytes);
    const std::int64_t start = length - static_cast<std::int64_t>(bytes);
    if (readWhatIsThere(descriptor, std::as_writable_bytes(std::span(tail)), start) != bytes)
        return {};
    return tail;
}

/// `page` begins with a page's head and goes on to the end of the file.
bool isWholeLastPage(std::span<const unsigned char> page)
{
    constexpr std::string_view mark = "OggS";
    constexpr std::size_t flagsAt = 5;
    constexpr std::size_t segmentsAt = 26;
    constexpr unsigned lastOfStream = 4;
    if (page.size() < headBytes || !std::ranges::equal(page.first(mark.size()), mark, {}, {},
                                                       [](char c) { return static_cast<unsigned char>(c); }))
        return false;
    const std::size_t segments = page[segmentsAt];
    if ((page[flagsAt] & lastOfStream) == 0 || page.size() < headBytes + segments)
        return false;
    const auto sizes = page.subspan(headBytes, segments);
    return page.size() == std::accumulate(sizes.begin(), sizes.end(), headBytes + segments);
}

std::int64_t placeOf(std::span<const unsigned char> page)
{
    constexpr std::size_t placeAt = 6;
    std::uint64_t place = 0;
    for (std::size_t i = 8; i > 0; --i)
        place = place << 8 | page[placeAt + i - 1];
    return static_cast<std::int64_t>(place);
}

}

std::optional<std::int64_t> endOfLastPage(int descriptor, std::int64_t length)
{
    const std::vector<unsigned char> tail = tailOf(descriptor, length);
    for (std::size_t at = tail.size(); at-- > 0;)
        if (const auto page = std::span(tail).subspan(at); isWholeLastPage(page))
            return placeOf(page);
    return std::nullopt;
}

}
