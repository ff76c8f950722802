#pragma once

// The library's headers are C.
extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/samplefmt.h>
}

namespace tonquay::host::ffmpeg {

/// The calls of FFmpeg's libraries that this program makes, by their own names. The libraries are loaded with the first
/// WMA file and not before: they bring a hundred others along, which a look at a disc or any other rip would wait for
/// in vain.
struct Library {
    decltype(&::av_channel_layout_copy) av_channel_layout_copy = nullptr;
    decltype(&::av_channel_layout_default) av_channel_layout_default = nullptr;
    decltype(&::av_dict_free) av_dict_free = nullptr;
    decltype(&::av_dict_get) av_dict_get = nullptr;
    decltype(&::av_dict_set) av_dict_set = nullptr;
    decltype(&::av_dict_set_int) av_dict_set_int = nullptr;
    decltype(&::av_find_input_format) av_find_input_format = nullptr;
    decltype(&::av_frame_alloc) av_frame_alloc = nullptr;
    decltype(&::av_frame_free) av_frame_free = nullptr;
    decltype(&::av_frame_get_buffer) av_frame_get_buffer = nullptr;
    decltype(&::av_frame_make_writable) av_frame_make_writable = nullptr;
    decltype(&::av_freep) av_freep = nullptr;
    decltype(&::av_log_set_level) av_log_set_level = nullptr;
    decltype(&::av_malloc) av_malloc = nullptr;
    decltype(&::av_packet_alloc) av_packet_alloc = nullptr;
    decltype(&::av_packet_free) av_packet_free = nullptr;
    decltype(&::av_packet_unref) av_packet_unref = nullptr;
    decltype(&::av_read_frame) av_read_frame = nullptr;
    decltype(&::av_rescale) av_rescale = nullptr;
    decltype(&::av_rescale_q) av_rescale_q = nullptr;
    decltype(&::av_samples_set_silence) av_samples_set_silence = nullptr;
    decltype(&::av_strerror) av_strerror = nullptr;
    decltype(&::av_write_frame) av_write_frame = nullptr;
    decltype(&::av_write_trailer) av_write_trailer = nullptr;
    decltype(&::avcodec_alloc_context3) avcodec_alloc_context3 = nullptr;
    decltype(&::avcodec_find_encoder) avcodec_find_encoder = nullptr;
    decltype(&::avcodec_free_context) avcodec_free_context = nullptr;
    decltype(&::avcodec_open2) avcodec_open2 = nullptr;
    decltype(&::avcodec_parameters_from_context) avcodec_parameters_from_context = nullptr;
    decltype(&::avcodec_receive_packet) avcodec_receive_packet = nullptr;
    decltype(&::avcodec_send_frame) avcodec_send_frame = nullptr;
    decltype(&::avformat_alloc_output_context2) avformat_alloc_output_context2 = nullptr;
    decltype(&::avformat_close_input) avformat_close_input = nullptr;
    decltype(&::avformat_free_context) avformat_free_context = nullptr;
    decltype(&::avformat_new_stream) avformat_new_stream = nullptr;
    decltype(&::avformat_open_input) avformat_open_input = nullptr;
    decltype(&::avformat_write_header) avformat_write_header = nullptr;
    decltype(&::avio_alloc_context) avio_alloc_context = nullptr;
    decltype(&::avio_context_free) avio_context_free = nullptr;
    decltype(&::avio_flush) avio_flush = nullptr;

    /// All calls, or null on a system without the libraries, of the version that this program was built for. The same
    /// for the life of the process.
    static const Library* load();
};

/// The calls, when load() has answered them.
const Library& library();

/// Whether load() would find the libraries. Loads them only where that cannot be told without.
bool isInstalled();

}
