#include "console/file_report.h"

#include "console/play_time.h"
#include "console/screen_text.h"
#include "console/tag_changes.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

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
    const TagChanges fields = fieldsOf(tags);
    for (const auto& [field, name] : tagFieldNames) {
        const std::wstring& value = fields.at(field);
        if (value.empty())
            continue;
        std::string caption(name);
        caption.front() = static_cast<char>(caption.front() - 'a' + 'A');
        text += fmt::format("  {:<9}{}\n", caption, shown(value));
    }
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
        const TagChanges fields = fieldsOf(tags);
        for (const auto& [field, name] : tagFieldNames)
            json["fields"][std::string(name)] = jsonText(fields.at(field));
        json["stream"] = {{"bitrate_kbps", tags.stream.bitrateKbps},
                          {"sample_rate_hz", tags.stream.sampleRateHz},
                          {"channels", tags.stream.channels},
                          {"seconds", std::round(tags.stream.seconds * 1000) / 1000}};
    }
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}
