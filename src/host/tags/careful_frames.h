#pragma once

#include <id3v2framefactory.h>

namespace tonquay::host {

/// The library shows a frame's header to frames only.
struct OpenFrame : TagLib::ID3v2::Frame {
    using TagLib::ID3v2::Frame::Header;
};

/// Makes it a frame without flags, so that nobody unpacks it.
void takeOffFlags(OpenFrame::Header& header);

/// Lets TagLib parse only the ID3v2 frames that are asked for, and of those no more than a sane tag holds. What is left
/// out stays bytes: chapters, which may lie in each other without end; pictures; and frames that would unpack to
/// thousands of times their size.
class CarefulFrames final : public TagLib::ID3v2::FrameFactory {
public:
    bool updateFrame(OpenFrame::Header* header) const override;

private:
    // The library asks a constant factory, one for each tag here.
    mutable int framesLeft_ = 1000;
    mutable unsigned int packedBytesLeft_ = 65536;
};

}
