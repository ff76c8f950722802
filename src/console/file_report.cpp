#include "console/file_report.h"

#include "base/numbers.h"
#include "console/play_time.h"
#include "console/screen_text.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <array>
#include <cmath>

namespace tonquay::console {

namespace {

using platform::FileTags;

std::string_view kindWord(FileTags::Kind kind)
{
    switch (kind) {
    case FileTags::Kind::mp3: return "mp3";
    case FileTags::Kind::oggVorbis: return "ogg";
    case FileTags::Kind::wav: return "wav";
    case FileTags::Kind::none: break;
    }
    return {};
}

std::string_view kindName(FileTags::Kind kind)
{
    switch (kind) {
    case FileTags::Kind::mp3: return "MP3";
    case FileTags::Kind::oggVorbis: return "Ogg Vorbis";
    case FileTags::Kind::wav: return "WAV";
    case FileTags::Kind::none: break;
    }
    return {};
}

std::wstring number(int value)
{
    return value > 0 ? base::digits(value) : std::wstring();
}

std::string channelWords(int channels)
{
    return channels == 1 ? "mono" : channels == 2 ? "stereo" : fmt::format("{} channels", channels);
}

}

std::string reportText(const FileReport& report)
{
    const FileTags& tags = report.tags;
    const FileTags::Stream& stream = tags.stream;
    std::string text = fmt::format("{}\n  {}, {} kbps, {} Hz, {}, {}\n", shownBytes(report.file), kindName(tags.kind),
                                   stream.bitrateKbps, stream.sampleRateHz, channelWords(stream.channels),
                                   clockText(std::llround(stream.seconds)));
    const auto add = [&text](std::string_view caption, const std::wstring& value) {
        if (!value.empty())
            text += fmt::format("  {:<9}{}\n", caption, shown(value));
    };
    add("Title", tags.title);
    add("Artist", tags.artist);
    add("Album", tags.album);
    add("Genre", tags.genre);
    add("Year", number(tags.year));
    add("Track", number(tags.track));
    add("Comment", tags.comment);
    return text;
}

std::string reportJson(const FileReport& report)
{
    using Json = nlohmann::ordered_json;
    Json json{{"file", jsonBytes(report.file)}};
    if (!report.problem.empty()) {
        json["error"] = jsonBytes(report.problem);
    } else {
        const FileTags& tags = report.tags;
        json["kind"] = kindWord(tags.kind);
        json["info"] = jsonText(report.information);
        json["fields"] = {{"title", jsonText(tags.title)},        {"artist", jsonText(tags.artist)},
                          {"album", jsonText(tags.album)},        {"year", jsonText(number(tags.year))},
                          {"genre", jsonText(tags.genre)},        {"comment", jsonText(tags.comment)},
                          {"track", jsonText(number(tags.track))}};
        json["stream"] = {{"bitrate_kbps", tags.stream.bitrateKbps},
                          {"sample_rate_hz", tags.stream.sampleRateHz},
                          {"channels", tags.stream.channels},
                          {"seconds", std::round(tags.stream.seconds * 1000) / 1000}};
    }
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}
