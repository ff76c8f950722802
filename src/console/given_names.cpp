#include "console/given_names.h"

#include <fmt/format.h>

#include <algorithm>

namespace tonquay::console {

base::Result<platform::DiscNames> withGivenNames(const platform::DiscTable& table, const GivenNames& given)
{
    platform::DiscNames names = table.names;
    names.artist = given.artist.value_or(names.artist);
    names.album = given.album.value_or(names.album);
    names.year = given.year.value_or(names.year);
    names.genre = given.genre.value_or(names.genre);
    names.comment = given.comment.value_or(names.comment);
    names.titles.resize(table.tracks.size());
    for (const auto& [number, title] : given.titles) {
        const auto track = std::find_if(table.tracks.begin(), table.tracks.end(),
                                        [number = number](const auto& t) { return t.number == number; });
        if (track == table.tracks.end())
            return base::Failure{base::Failure::Kind::invalid, "--title",
                                 fmt::format("track {} is not on this disc", number)};
        names.titles[static_cast<std::size_t>(track - table.tracks.begin())] = title;
    }
    return names;
}

}
