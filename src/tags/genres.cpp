#include "tags/genres.h"

#include "base/numbers.h"
#include "base/text.h"

#include <algorithm>
#include <array>

namespace tonquay::tags {

namespace {

// The spellings are the ones that files and users know; none of them is corrected.
constexpr std::array<std::wstring_view, genreCount> names{
    L"Blues",
    L"Classic Rock",
    L"Country",
    L"Dance",
    L"Disco",
    L"Funk",
    L"Grunge",
    L"Hip-Hop",
    L"Jazz",
    L"Metal",
    L"New Age",
    L"Oldies",
    L"Other",
    L"Pop",
    L"R&B",
    L"Rap",
    L"Reggae",
    L"Rock",
    L"Techno",
    L"Industrial",
    L"Alternative",
    L"Ska",
    L"Death Metal",
    L"Pranks",
    L"Soundtrack",
    L"Euro-Techno",
    L"Ambient",
    L"Trip-Hop",
    L"Vocal",
    L"Jazz+Funk",
    L"Fusion",
    L"Trance",
    L"Classical",
    L"Instrumental",
    L"Acid",
    L"House",
    L"Game",
    L"Sound Clip",
    L"Gospel",
    L"Noise",
    L"Alternative Rock",
    L"Bass",
    L"Soul",
    L"Punk",
    L"Space",
    L"Meditative",
    L"Instrumental Pop",
    L"Instrumental Rock",
    L"Ethnic",
    L"Gothic",
    L"Darkwave",
    L"Techno-Industrial",
    L"Electronic",
    L"Pop-Folk",
    L"Eurodance",
    L"Dream",
    L"Southern Rock",
    L"Comedy",
    L"Cult",
    L"Gangsta",
    L"Top 40",
    L"Christian Rap",
    L"Pop / Funk",
    L"Jungle",
    L"Native American",
    L"Cabaret",
    L"New Wave",
    L"Psychadelic",
    L"Rave",
    L"Showtunes",
    L"Trailer",
    L"Lo-Fi",
    L"Tribal",
    L"Acid Punk",
    L"Acid Jazz",
    L"Polka",
    L"Retro",
    L"Musical",
    L"Rock & Roll",
    L"Hard Rock",
    L"Folk",
    L"Folk/Rock",
    L"National Folk",
    L"Swing",
    L"Fast Fusion",
    L"Bebob",
    L"Latin",
    L"Revival",
    L"Celtic",
    L"Bluegrass",
    L"Avantgarde",
    L"Gothic Rock",
    L"Progressive Rock",
    L"Psychedelic Rock",
    L"Symphonic Rock",
    L"Slow Rock",
    L"Big Band",
    L"Chorus",
    L"Easy Listening",
    L"Acoustic",
    L"Humour",
    L"Speech",
    L"Chanson",
    L"Opera",
    L"Chamber Music",
    L"Sonata",
    L"Symphony",
    L"Booty Bass",
    L"Primus",
    L"Porn Groove",
    L"Satire",
    L"Slow Jam",
    L"Club",
    L"Tango",
    L"Samba",
    L"Folklore",
    L"Ballad",
    L"Power Ballad",
    L"Rhythmic Soul",
    L"Freestyle",
    L"Duet",
    L"Punk Rock",
    L"Drum Solo",
    L"A Cappella",
    L"Euro-House",
    L"Dance Hall",
    L"Goa",
    L"Drum & Bass",
    L"Club-House",
    L"Hardcore",
    L"Terror",
    L"Indie",
    L"Brit Pop",
    L"Negerpunk",
    L"Polsk Punk",
    L"Beat",
    L"Christian Gangsta Rap",
    L"Heavy Metal",
    L"Black Metal",
    L"Crossover",
    L"Contemporary Christian",
    L"Christian Rock",
    L"Merengue",
    L"Salsa",
    L"Trash Metal",
    L"Anime",
    L"JPop",
    L"Synth Pop",
};

struct Difference {
    std::size_t number;
    std::wstring_view shown;
};

constexpr Difference differences[] = {
    {84, L"Fast-Fusion"}, {87, L"Celtic"}, {88, L"Revival"}, {89, L"Blue Grass"}, {90, L"Avantegarde"},
};

}

std::wstring GenreNameFromNumber(std::wstring_view number)
{
    std::int16_t index = 0;
    if (base::isBlank(number) || !base::store(base::val(number), index))
        return {};
    if (index < 0 || static_cast<std::size_t>(index) >= genreCount)
        return {};
    return std::wstring(names[static_cast<std::size_t>(index)]);
}

std::int16_t GenreNumberFromName(std::wstring_view name)
{
    return isGenreName(name) ? static_cast<std::int16_t>(std::ranges::find(names, name) - names.begin())
                             : std::int16_t{0};
}

bool isGenreName(std::wstring_view name)
{
    return std::ranges::find(names, name) != names.end();
}

std::wstring_view shownGenre(std::size_t index)
{
    const auto* const other = std::ranges::find(differences, index, &Difference::number);
    if (other != std::end(differences))
        return other->shown;
    return index < genreCount ? names[index] : std::wstring_view();
}

}
