#include "console/track_list.h"

#include "console/screen_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <optional>

namespace tonquay::console {

namespace {

constexpr int mostTracks = 99;

std::optional<int> trackNumber(std::string_view text)
{
    int number = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
    if (end.ec != std::errc{} || end.ptr != text.data() + text.size() || number < 1 || number > mostTracks)
        return std::nullopt;
    return number;
}

base::Failure invalid(std::string text)
{
    return {base::Failure::Kind::invalid, {}, std::move(text)};
}

std::string tracksOf(const std::vector<platform::DiscTrack>& tracks)
{
    const auto [first, last] = std::minmax_element(tracks.begin(), tracks.end(),
                                                   [](const auto& a, const auto& b) { return a.number < b.number; });
    return fmt::format("the disc has tracks {} to {}", first->number, last->number);
}

}

base::Result<TrackList> TrackList::parse(std::string_view text)
{
    TrackList list;
    for (std::string_view rest = text;;) {
        const std::size_t comma = std::min(rest.find(','), rest.size());
        const std::string_view place = rest.substr(0, comma);
        const std::size_t dash = std::min(place.find('-'), place.size());
        const std::optional<int> first = trackNumber(place.substr(0, dash));
        std::optional<int> last = first;
        if (dash < place.size())
            last = dash + 1 == place.size() ? openEnd : trackNumber(place.substr(dash + 1));
        if (!first || !last || (*last != openEnd && *last < *first))
            return invalid(fmt::format("\"{}\" is no list of tracks like 1,3-5,8-", shownBytes(text)));
        list.spans_.push_back({*first, *last});
        if (comma == rest.size())
            return list;
        rest.remove_prefix(comma + 1);
    }
}

base::Result<std::vector<std::size_t>> TrackList::on(const std::vector<platform::DiscTrack>& tracks) const
{
    if (tracks.empty())
        return invalid("the disc has no tracks");
    int lastOnDisc = 0;
    for (const platform::DiscTrack& track : tracks)
        lastOnDisc = std::max(lastOnDisc, track.number);

    std::vector<bool> selected(tracks.size());
    for (const Span& span : spans_) {
        for (int number = span.first; number <= std::max(span.first, span.last == openEnd ? lastOnDisc : span.last);
             ++number) {
            const auto track = std::find_if(tracks.begin(), tracks.end(),
                                            [number](const auto& candidate) { return candidate.number == number; });
            if (track == tracks.end())
                return invalid(fmt::format("track {} is not there; {}", number, tracksOf(tracks)));
            if (!track->audio)
                return invalid(fmt::format("track {} is a data track; it holds no sound to rip", number));
            selected[static_cast<std::size_t>(track - tracks.begin())] = true;
        }
    }
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < selected.size(); ++i)
        if (selected[i])
            places.push_back(i);
    return places;
}

base::Result<std::vector<std::size_t>> allAudioTracks(const std::vector<platform::DiscTrack>& tracks)
{
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < tracks.size(); ++i)
        if (tracks[i].audio)
            places.push_back(i);
    if (places.empty())
        return invalid("the disc has no audio track");
    return places;
}

}
