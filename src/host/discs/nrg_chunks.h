#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace tonquay::host {

/// Takes big-endian numbers off a run of bytes; past its end every number is 0 and short() is true.
class BigEndian {
public:
    explicit BigEndian(std::span<const std::byte> bytes) : rest_(bytes) {}

    std::uint64_t take(std::size_t bytes)
    {
        std::uint64_t value = 0;
        for (const std::byte byte : run(bytes))
            value = value << 8 | std::to_integer<std::uint64_t>(byte);
        return value;
    }

    std::span<const std::byte> run(std::size_t bytes)
    {
        if (bytes > rest_.size()) {
            short_ = true;
            rest_ = {};
            return {};
        }
        const auto taken = rest_.first(bytes);
        rest_ = rest_.subspan(bytes);
        return taken;
    }

    std::size_t left() const { return rest_.size(); }
    bool isShort() const { return short_; }

private:
    std::span<const std::byte> rest_;
    bool short_ = false;
};

/// One chunk of a Nero image: four letters, a length, and so many bytes.
struct NrgChunk {
    std::string name;
    std::span<const std::byte> body;
};

/// The next chunk of a chain; nothing when the chain is cut off.
inline std::optional<NrgChunk> takeChunk(BigEndian& chain)
{
    constexpr std::size_t headBytes = 8;
    if (chain.left() < headBytes)
        return std::nullopt;
    NrgChunk chunk;
    for (const std::byte letter : chain.run(4))
        chunk.name.push_back(static_cast<char>(letter));
    const auto length = static_cast<std::size_t>(chain.take(4));
    chunk.body = chain.run(length);
    if (chain.isShort())
        return std::nullopt;
    return chunk;
}

}
