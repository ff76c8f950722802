#pragma once

#include "platform/id3v2_contents.h"
#include "tags/id3v2_maker.h"

#include <string>
#include <utility>

namespace tonquay::test {

/// An MP3 file with an ID3v2.3 tag, and what a reader of all frames would say of it.
struct MadeFile {
    using Frame = platform::Id3v2Contents::Frame;

    std::string frames;
    platform::Id3v2Contents contents;
    std::string padding = zeros(20);

    /// `size` is what another program writes there: a plain number.
    MadeFile& add(const std::string& identifier, const std::string& body, Frame fields = {}, char flags = 0)
    {
        for (const int below : {24, 16, 8, 0})
            size_.push_back(static_cast<char>(body.size() >> below & 255));
        frames += identifier + std::exchange(size_, {}) + '\0' + flags + body;
        fields.identifier = identifier;
        fields.bytes = body.size();
        fields.start = body.substr(0, platform::Id3v2Contents::startBytes);
        contents.frames.push_back(std::move(fields));
        return *this;
    }
    MadeFile& text(const std::string& identifier, const std::string& value)
    {
        return add(identifier, '\0' + value + '\0', {.text = std::wstring(value.begin(), value.end())});
    }

    std::string bytes(char flags = 0, char version = 3) const
    {
        return tag(frames + padding, version, 0, flags) + "sound of some length";
    }

private:
    std::string size_;
};

}
