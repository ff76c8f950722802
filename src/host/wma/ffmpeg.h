#pragma once

#include <memory>
#include <string>

// The library's headers are C.
extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/samplefmt.h>
}

/// Owners of the things that FFmpeg's libraries hand out.
namespace tonquay::host::ffmpeg {

struct Closer {
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
    void operator()(AVIOContext* stream) const
    {
        av_freep(&stream->buffer);
        avio_context_free(&stream);
    }
};

struct OutputCloser {
    void operator()(AVFormatContext* format) const { avformat_free_context(format); }
};

struct InputCloser {
    void operator()(AVFormatContext* format) const { avformat_close_input(&format); }
};

using Codec = std::unique_ptr<AVCodecContext, Closer>;
using Frame = std::unique_ptr<AVFrame, Closer>;
using Packet = std::unique_ptr<AVPacket, Closer>;
using ByteStream = std::unique_ptr<AVIOContext, Closer>;
using Output = std::unique_ptr<AVFormatContext, OutputCloser>;
using Input = std::unique_ptr<AVFormatContext, InputCloser>;

/// Keeps the libraries' own log off the terminal; what matters comes back as an error.
void silence();

/// An error number of theirs in words.
std::string errorText(int error);

}
