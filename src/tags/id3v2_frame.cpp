#include "tags/id3v2_frame.h"

#include "base/text.h"
#include "tags/tag_bytes.h"

#include <algorithm>
#include <string_view>

namespace tonquay::tags {

using base::Failure;

namespace {

constexpr std::size_t encodingBytes = 1;
constexpr std::size_t languageBytes = 3;
constexpr std::size_t longest = 32767;

std::string terminated(std::wstring_view value)
{
    std::string chars = base::windows1252(value);
    if (chars.empty() || chars.back() != '\0')
        chars.push_back('\0');
    return chars;
}

Failure unfit(std::wstring_view identifier, std::string_view text)
{
    return {Failure::Kind::invalid, base::utf8(identifier), std::string(text)};
}

std::int32_t sizeOf(std::size_t fixed, const std::string& first, const std::string& second = {})
{
    return static_cast<std::int32_t>(fixed + first.size() + second.size());
}

/// The bytes up to the first NUL, it included; all of them when there is none.
std::span<const std::byte> throughNul(std::span<const std::byte> bytes)
{
    const auto nul = std::ranges::find(bytes, std::byte{0});
    return nul == bytes.end() ? bytes : std::span(bytes.begin(), nul + 1);
}

bool endsInNul(std::string_view chars)
{
    return chars.ends_with('\0');
}

}

std::wstring FrameFields::Data() const
{
    return base::fromWindows1252(data);
}

void FrameFields::Data(std::wstring_view value)
{
    data = terminated(value);
}

base::Status FrameFields::begin(std::span<const std::byte> bytes, std::size_t fixed)
{
    if (!bytes.empty())
        encoding_ = std::to_integer<std::uint8_t>(bytes.front());
    if (bytes.size() < encodingBytes + fixed)
        return unfit(FrameID(), "is a frame that is too short for its fields");
    if (bytes.size() > longest)
        return unfit(FrameID(), "is a frame of more than 32767 bytes");
    return {};
}

base::Result<std::vector<std::byte>> FrameFields::body(std::string_view fixed, std::string_view first,
                                                       std::string_view second) const
{
    if (std::max(first.size(), second.size()) > longest)
        return unfit(FrameID(), "has a text of more than 32767 characters");
    std::vector<std::byte> bytes{std::byte{encoding_}};
    for (const std::string_view part : {fixed, first, second})
        std::ranges::copy(std::as_bytes(std::span(part)), std::back_inserter(bytes));
    return bytes;
}

std::int32_t clsText_Frame::FrameSize() const
{
    return sizeOf(encodingBytes, data);
}

base::Status clsText_Frame::parseBytes(std::span<const std::byte> bytes)
{
    if (auto begun = begin(bytes, 0); !begun)
        return begun;
    data = charsOf(bytes.subspan(encodingBytes));
    return {};
}

base::Result<std::vector<std::byte>> clsText_Frame::getBytes() const
{
    return body({}, data);
}

std::wstring DescribedFields::Description() const
{
    return base::fromWindows1252(description);
}

void DescribedFields::Description(std::wstring_view value)
{
    description = terminated(value);
}

std::int32_t clsWeb_Frame::FrameSize() const
{
    return sizeOf(encodingBytes, description, data);
}

base::Status clsWeb_Frame::parseBytes(std::span<const std::byte> bytes)
{
    if (auto begun = begin(bytes, 0); !begun)
        return begun;
    const auto texts = bytes.subspan(encodingBytes);
    description = charsOf(throughNul(texts));
    // Without a NUL nothing tells where the link begins.
    data = charsOf(endsInNul(description) ? texts.subspan(description.size()) : texts);
    return {};
}

base::Result<std::vector<std::byte>> clsWeb_Frame::getBytes() const
{
    return body({}, description, data);
}

clsComment_Frame::clsComment_Frame()
{
    language_ = std::wstring(languageBytes, L'\0');
}

std::int32_t clsComment_Frame::FrameSize() const
{
    return sizeOf(encodingBytes + languageBytes, description, data);
}

base::Status clsComment_Frame::parseBytes(std::span<const std::byte> bytes)
{
    if (auto begun = begin(bytes, languageBytes); !begun)
        return begun;
    const auto texts = bytes.subspan(encodingBytes + languageBytes);
    description = charsOf(throughNul(texts));
    data = charsOf(texts.subspan(description.size()));
    return {};
}

base::Result<std::vector<std::byte>> clsComment_Frame::getBytes() const
{
    return body(base::windows1252(language_.text()), description, data);
}

}
