#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tonquay::platform {

/// All that the ID3v2 tag at the start of a file holds, as a reader of every version and encoding sees it.
struct Id3v2Contents {
    struct Frame {
        std::string identifier{};   ///< as the file has it: three characters in version 2.2, four later
        std::size_t bytes = 0;      ///< of its body
        std::string start{};        ///< the first of these bytes, startBytes at most
        std::string language{};     ///< three characters, for comments and lyrics
        std::wstring description{}; ///< also the owner of what is private to a program
        std::wstring text{};        ///< the first one, or a link
        std::string mime{};         ///< of a picture or file; of version 2.2 "PNG" and the like
        int pictureType = -1;       ///< 0 to 255 for a picture: 3 is the front cover
        std::size_t dataBytes = 0;  ///< of the body behind all of these: of the picture itself
    };

    static constexpr std::size_t startBytes = 1024;

    std::vector<Frame> frames{};
    std::size_t unreadBytes = 0; ///< behind the last frame that makes sense, without the padding of a tag
};

}
