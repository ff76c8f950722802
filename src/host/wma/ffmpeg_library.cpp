#include "host/wma/ffmpeg_library.h"

#include <bit>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <optional>
#include <string>

namespace tonquay::host::ffmpeg {

namespace {

/// It has the others with it.
std::string fileName()
{
    return "libavformat.so." + std::to_string(LIBAVFORMAT_VERSION_MAJOR);
}

template <class Call>
bool find(void* library, const char* name, Call& call)
{
    call = std::bit_cast<Call>(dlsym(library, name));
    return call != nullptr;
}

bool findAll(void* from, Library& calls)
{
    return find(from, "av_channel_layout_copy", calls.av_channel_layout_copy) &&
           find(from, "av_channel_layout_default", calls.av_channel_layout_default) &&
           find(from, "av_dict_free", calls.av_dict_free) && find(from, "av_dict_get", calls.av_dict_get) &&
           find(from, "av_dict_set", calls.av_dict_set) && find(from, "av_dict_set_int", calls.av_dict_set_int) &&
           find(from, "av_find_input_format", calls.av_find_input_format) &&
           find(from, "av_frame_alloc", calls.av_frame_alloc) && find(from, "av_frame_free", calls.av_frame_free) &&
           find(from, "av_frame_get_buffer", calls.av_frame_get_buffer) &&
           find(from, "av_frame_make_writable", calls.av_frame_make_writable) &&
           find(from, "av_freep", calls.av_freep) && find(from, "av_log_set_level", calls.av_log_set_level) &&
           find(from, "av_malloc", calls.av_malloc) && find(from, "av_packet_alloc", calls.av_packet_alloc) &&
           find(from, "av_packet_free", calls.av_packet_free) && find(from, "av_packet_unref", calls.av_packet_unref) &&
           find(from, "av_read_frame", calls.av_read_frame) && find(from, "av_rescale", calls.av_rescale) &&
           find(from, "av_rescale_q", calls.av_rescale_q) &&
           find(from, "av_samples_set_silence", calls.av_samples_set_silence) &&
           find(from, "av_strerror", calls.av_strerror) && find(from, "av_write_frame", calls.av_write_frame) &&
           find(from, "av_write_trailer", calls.av_write_trailer) &&
           find(from, "avcodec_alloc_context3", calls.avcodec_alloc_context3) &&
           find(from, "avcodec_find_encoder", calls.avcodec_find_encoder) &&
           find(from, "avcodec_free_context", calls.avcodec_free_context) &&
           find(from, "avcodec_open2", calls.avcodec_open2) &&
           find(from, "avcodec_parameters_from_context", calls.avcodec_parameters_from_context) &&
           find(from, "avcodec_receive_packet", calls.avcodec_receive_packet) &&
           find(from, "avcodec_send_frame", calls.avcodec_send_frame) &&
           find(from, "avformat_alloc_output_context2", calls.avformat_alloc_output_context2) &&
           find(from, "avformat_close_input", calls.avformat_close_input) &&
           find(from, "avformat_free_context", calls.avformat_free_context) &&
           find(from, "avformat_new_stream", calls.avformat_new_stream) &&
           find(from, "avformat_open_input", calls.avformat_open_input) &&
           find(from, "avformat_write_header", calls.avformat_write_header) &&
           find(from, "avio_alloc_context", calls.avio_alloc_context) &&
           find(from, "avio_context_free", calls.avio_context_free) && find(from, "avio_flush", calls.avio_flush);
}

std::optional<Library> loadOnce()
{
    // Never closed: nothing is gained by it, and libraries that it has brought may have left threads.
    void* const opened = dlopen(fileName().c_str(), RTLD_NOW | RTLD_LOCAL);
    Library calls;
    if (opened == nullptr || !findAll(opened, calls))
        return std::nullopt;
    // Its own log would go to the terminal; what matters comes back as an error.
    calls.av_log_set_level(AV_LOG_QUIET);
    return calls;
}

}

const Library* Library::load()
{
    static const std::optional<Library> loaded = loadOnce();
    return loaded ? &*loaded : nullptr;
}

const Library& library()
{
    return *Library::load();
}

bool isInstalled()
{
    // As a rule it lies where the C library does.
    Dl_info found{};
    std::error_code error;
    if (dladdr(std::bit_cast<void*>(&std::malloc), &found) != 0 && found.dli_fname != nullptr &&
        std::filesystem::exists(std::filesystem::path(found.dli_fname).parent_path() / fileName(), error))
        return true;
    return Library::load() != nullptr;
}

}
