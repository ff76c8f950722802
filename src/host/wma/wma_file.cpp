#include "host/wma/wma_file.h"

#include "base/red_book.h"
#include "base/text.h"
#include "host/wma/block_encoder.h"
#include "host/wma/ffmpeg.h"

#include <algorithm>
#include <cerrno>

namespace tonquay::host {

namespace {

using platform::WmaFile;

std::wstring tag(const AVFormatContext& file, const char* key)
{
    const AVDictionaryEntry* entry = ffmpeg::library().av_dict_get(file.metadata, key, nullptr, 0);
    return entry == nullptr ? std::wstring() : base::fromFileBytes(entry->value);
}

/// The tags under the reader's own names for them, of which it has none for the year.
void takeTags(WmaFile& facts, const AVFormatContext& file)
{
    facts.title = tag(file, "title");
    facts.artist = tag(file, "artist");
    facts.album = tag(file, "album");
    facts.genre = tag(file, "genre");
    facts.comment = tag(file, "comment");
    facts.year = tag(file, "WM/Year");
}

std::int64_t blocksIn(AVFormatContext& file, int blockBytes)
{
    std::int64_t blocks = 0;
    const ffmpeg::Packet packet(ffmpeg::library().av_packet_alloc());
    while (packet && ffmpeg::library().av_read_frame(&file, packet.get()) >= 0) {
        blocks += packet->size / blockBytes;
        ffmpeg::library().av_packet_unref(packet.get());
    }
    return blocks;
}

double secondsOf(std::int64_t blocks)
{
    const std::int64_t whole = std::max<std::int64_t>(blocks - BlockEncoder::blocksBeforeSound, 0);
    return static_cast<double>(whole * BlockEncoder::framesPerBlock) / base::red_book::samplesPerSecond;
}

}

base::Result<WmaFile> readWmaFile(const std::string& hostPath)
{
    if (ffmpeg::Library::load() == nullptr)
        return base::Failure{base::Failure::Kind::unavailable, hostPath,
                             "FFmpeg's libraries, which read it, are not installed"};
    AVFormatContext* opened = nullptr;
    const int error = ffmpeg::library().avformat_open_input(&opened, ("file:" + hostPath).c_str(),
                                                            ffmpeg::library().av_find_input_format("asf"), nullptr);
    const ffmpeg::Input file(opened);
    for (const int lack : {ENOENT, EACCES, EIO, EISDIR})
        if (error == AVERROR(lack))
            return base::Failure{base::Failure::Kind::unreadable, hostPath, ffmpeg::errorText(error)};
    WmaFile facts;
    if (error < 0 || file->nb_streams != 1)
        return facts;
    const AVStream& stream = *file->streams[0];
    if (stream.codecpar->codec_id != AV_CODEC_ID_WMAV2 || stream.codecpar->block_align <= 0)
        return facts;
    facts.windowsMediaAudio = true;
    facts.finished = stream.duration != AV_NOPTS_VALUE;
    if (facts.finished)
        facts.toldSeconds = static_cast<double>(stream.duration) * av_q2d(stream.time_base);
    takeTags(facts, *file);
    facts.heldSeconds = secondsOf(blocksIn(*file, stream.codecpar->block_align));
    return facts;
}

}
