#pragma once

#include "host/wma/ffmpeg_library.h"

#include <memory>
#include <string>

/// Owners of the things that FFmpeg's libraries hand out.
namespace tonquay::host::ffmpeg {

struct Closer {
    void operator()(AVCodecContext* context) const { library().avcodec_free_context(&context); }
    void operator()(AVFrame* frame) const { library().av_frame_free(&frame); }
    void operator()(AVPacket* packet) const { library().av_packet_free(&packet); }
    void operator()(AVIOContext* stream) const
    {
        library().av_freep(&stream->buffer);
        library().avio_context_free(&stream);
    }
};

struct OutputCloser {
    void operator()(AVFormatContext* format) const { library().avformat_free_context(format); }
};

struct InputCloser {
    void operator()(AVFormatContext* format) const { library().avformat_close_input(&format); }
};

using Codec = std::unique_ptr<AVCodecContext, Closer>;
using Frame = std::unique_ptr<AVFrame, Closer>;
using Packet = std::unique_ptr<AVPacket, Closer>;
using ByteStream = std::unique_ptr<AVIOContext, Closer>;
using Output = std::unique_ptr<AVFormatContext, OutputCloser>;
using Input = std::unique_ptr<AVFormatContext, InputCloser>;

/// An error number of theirs in words.
std::string errorText(int error);

}
