#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// ID3v2 bytes, made by hand.
namespace tonquay::test {

/// Four groups of seven bits.
inline std::string sized(std::size_t size)
{
    std::string bytes;
    for (const int below : {21, 14, 7, 0})
        bytes.push_back(static_cast<char>(size >> below & 127));
    return bytes;
}

inline std::string frame(std::string_view id, const std::string& body, char flags0 = 0, char flags1 = 0)
{
    return std::string(id) + sized(body.size()) + flags0 + flags1 + body;
}

inline std::string text(std::string_view id, const std::string& value)
{
    return frame(id, '\0' + value + '\0');
}

inline std::string tag(const std::string& body, char version = 3, char revision = 0, char flags = 0)
{
    return std::string("ID3") + version + revision + flags + sized(body.size()) + body;
}

inline std::string zeros(std::size_t count)
{
    return std::string(count, '\0');
}

inline std::vector<std::byte> bytesOf(std::string_view chars)
{
    std::vector<std::byte> bytes;
    for (const char c : chars)
        bytes.push_back(static_cast<std::byte>(c));
    return bytes;
}

}
