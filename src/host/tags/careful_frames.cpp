#include "host/tags/careful_frames.h"

#include <array>
#include <string_view>

namespace tonquay::host {

namespace {

constexpr std::array<std::string_view, 8> wanted{"TIT2", "TPE1", "TALB", "TDRC", "TCON", "COMM", "TRCK", "TYER"};

bool isWanted(const TagLib::ByteVector& identifier)
{
    for (const std::string_view name : wanted)
        if (identifier.size() == name.size() && std::string_view(identifier.data(), identifier.size()) == name)
            return true;
    return false;
}

}

void takeOffFlags(OpenFrame::Header& header)
{
    const unsigned int size = header.frameSize();
    const TagLib::ByteVector plain = TagLib::ByteVector(header.frameID()).resize(4) + TagLib::ByteVector(6, '\0');
    header.setData(plain, 4U);
    header.setFrameSize(size);
}

bool CarefulFrames::updateFrame(OpenFrame::Header* header) const
{
    // A frame without bytes ends a tag.
    if (framesLeft_-- <= 0) {
        header->setFrameSize(0);
        return false;
    }
    const bool known = FrameFactory::updateFrame(header);
    const bool packed = header->compression();
    if (known && isWanted(header->frameID()) && (!packed || header->frameSize() <= packedBytesLeft_)) {
        if (packed)
            packedBytesLeft_ -= header->frameSize();
        return true;
    }
    if (packed)
        takeOffFlags(*header);
    return false;
}

}
