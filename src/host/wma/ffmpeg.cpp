#include "host/wma/ffmpeg.h"

#include <array>

namespace tonquay::host::ffmpeg {

void silence()
{
    av_log_set_level(AV_LOG_QUIET);
}

std::string errorText(int error)
{
    std::array<char, AV_ERROR_MAX_STRING_SIZE> text{};
    if (av_strerror(error, text.data(), text.size()) < 0)
        return "error " + std::to_string(error);
    return text.data();
}

}
