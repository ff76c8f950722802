#include "launcher/kept_names.h"

#include "base/text.h"
#include "state/settings_text.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace tonquay::launcher {

namespace {

using nlohmann::json;

std::wstring textOf(const json& object, const char* name)
{
    const auto field = object.find(name);
    return field != object.end() && field->is_string() ? base::fromFileBytes(field->get<std::string>())
                                                       : std::wstring();
}

platform::DiscNames namesOf(const json& object)
{
    platform::DiscNames names{.artist = textOf(object, "artist"),
                              .album = textOf(object, "album"),
                              .year = textOf(object, "year"),
                              .genre = textOf(object, "genre"),
                              .comment = textOf(object, "comment"),
                              .titles = {}};
    const auto titles = object.find("titles");
    if (titles == object.end() || !titles->is_array())
        return names;
    constexpr std::size_t mostTitles = 99;
    for (const json& title : *titles) {
        if (names.titles.size() == mostTitles)
            break;
        names.titles.push_back(title.is_string() ? base::fromFileBytes(title.get<std::string>()) : std::wstring());
    }
    return names;
}

}

KeptNames::KeptNames(platform::FileSystem& files, platform::Diagnostics& log, std::wstring folder)
    : files_(files),
      log_(log),
      folder_(std::move(folder))
{}

/// Identifiers use letters, digits, dots, underscores and hyphens.
std::wstring KeptNames::pathOf(std::string_view discId) const
{
    std::wstring name;
    for (const char c : discId) {
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' ||
                           c == '_' || c == '-';
        // A file system may take no notice of case, and this one does not.
        if (c >= 'A' && c <= 'Z')
            name += L'+';
        name += plain ? static_cast<wchar_t>(c) : L'_';
    }
    return state::inFolder(folder_, name + L".json");
}

std::optional<platform::DiscNames> KeptNames::find(std::string_view discId) const
{
    constexpr std::size_t mostBytes = 1 << 20;
    const std::wstring path = pathOf(discId);
    if (discId.empty() || !files_.fileExists(path))
        return std::nullopt;
    const auto bytes = files_.readAll(path, mostBytes);
    if (!passOver(log_, bytes, "Read the names kept for this disc"))
        return std::nullopt;
    const json object = json::parse(*bytes, nullptr, false);
    if (!object.is_object()) {
        log_.line("names", base::utf8(path) + ": does not hold the names of a disc");
        return std::nullopt;
    }
    return namesOf(object);
}

base::Status KeptNames::keep(std::string_view discId, const platform::DiscNames& names)
{
    json titles = json::array();
    for (const std::wstring& title : names.titles)
        titles.push_back(base::utf8(title));
    const json object{{"artist", base::utf8(names.artist)},   {"album", base::utf8(names.album)},
                      {"year", base::utf8(names.year)},       {"genre", base::utf8(names.genre)},
                      {"comment", base::utf8(names.comment)}, {"titles", titles}};
    constexpr int indent = 2;
    return files_.writeWhole(pathOf(discId), object.dump(indent, ' ', false, json::error_handler_t::replace) + '\n');
}

}
