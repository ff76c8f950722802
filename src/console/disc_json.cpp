#include "console/disc_json.h"

#include "console/abilities.h"
#include "console/play_time.h"
#include "console/screen_text.h"

#include <nlohmann/json.hpp>

namespace tonquay::console {

namespace {

using Json = nlohmann::ordered_json;

std::string document(const Json& json)
{
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

/// "no-permission: what it is and what to do"; null without a problem. The word before the colon is for programs.
Json problemJson(const platform::DriveDescription& drive)
{
    if (drive.problem == platform::DriveProblem::none)
        return nullptr;
    return std::string(word(drive.problem)) + ": " + jsonBytes(drive.problemText);
}

}

std::string_view word(platform::DriveProblem problem)
{
    switch (problem) {
    case platform::DriveProblem::none: return {};
    case platform::DriveProblem::noDevice: return "no-device";
    case platform::DriveProblem::noPermission: return "no-permission";
    case platform::DriveProblem::busy: return "busy";
    case platform::DriveProblem::trayOpen: return "tray-open";
    case platform::DriveProblem::noDisc: return "no-disc";
    case platform::DriveProblem::dataDisc: return "data-disc";
    case platform::DriveProblem::unreadable: return "unreadable";
    }
    return "unreadable";
}

std::string listJson(const platform::DiscTable& table)
{
    const platform::DiscNames& names = table.names;
    Json json{{"artist", jsonText(names.artist)}, {"album", jsonText(names.album)},     {"year", jsonText(names.year)},
              {"genre", jsonText(names.genre)},   {"comment", jsonText(names.comment)}, {"tracks", Json::array()}};
    for (std::size_t i = 0; i < table.tracks.size(); ++i) {
        const platform::DiscTrack& track = table.tracks[i];
        json["tracks"].push_back(Json{{"number", track.number},
                                      {"seconds", wholeSeconds(track.sectorCount)},
                                      {"title", i < names.titles.size() ? jsonText(names.titles[i]) : std::string{}},
                                      {"audio", track.audio},
                                      {"first_sector", track.firstSector},
                                      {"sectors", track.sectorCount}});
    }
    return document(json);
}

std::string drivesJson(const std::vector<platform::DriveDescription>& drives)
{
    Json json = Json::array();
    for (const platform::DriveDescription& drive : drives) {
        Json capabilities = Json::object();
        for (const Ability& ability : abilities)
            capabilities[std::string(ability.key)] = (drive.abilities & ability.bit) != 0;
        capabilities["open_close"] = drive.canOpen;
        capabilities["lock"] = drive.canLock;
        json.push_back(Json{{"letter", jsonText(std::wstring(drive.letter == 0 ? 0u : 1u, drive.letter))},
                            {"vendor", jsonBytes(drive.vendor)},
                            {"product", jsonBytes(drive.product)},
                            {"revision", jsonBytes(drive.revision)},
                            {"path", jsonBytes(drive.hostPath)},
                            {"image", drive.image},
                            {"disc", drive.disc},
                            {"capabilities", std::move(capabilities)},
                            {"max_speed_kbps", drive.maxSpeedKbps},
                            {"cache_kb", drive.cacheKb},
                            {"problem", problemJson(drive)}});
    }
    return document(json);
}

}
