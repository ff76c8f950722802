#include "host/wma/ffmpeg.h"

#include <array>

namespace tonquay::host::ffmpeg {

std::string errorText(int error)
{
    std::array<char, AV_ERROR_MAX_STRING_SIZE> text{};
    if (library().av_strerror(error, text.data(), text.size()) < 0)
        return "error " + std::to_string(error);
    return text.data();
}

}
