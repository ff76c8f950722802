#include "naming/file_name.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"

namespace tonquay::naming {

namespace {

std::wstring ruled(std::int16_t nameFormat, const state::DiscInfo& disc, std::int32_t number)
{
    std::wstring title(base::trim(disc.trackTitles(number)));
    switch (NameFormat{nameFormat}) {
    case NameFormat::trackName: return title;
    case NameFormat::trackNumber: return L"Track" + base::digits(number);
    case NameFormat::artist: return disc.discArtist + base::str(number);
    case NameFormat::album: return disc.discAlbum + base::str(number);
    case NameFormat::artistAlbum: return disc.discArtist + L" - " + disc.discAlbum + base::str(number);
    case NameFormat::artistTrackName: return disc.discArtist + L" - " + title;
    case NameFormat::numberTrackName: return base::lastTwoDigits(number) + L" - " + title;
    }
    return {};
}

}

std::wstring fileName(std::int16_t nameFormat, const state::DiscInfo& disc, std::int32_t number, std::size_t shortest)
{
    std::wstring name = ruled(nameFormat, disc, number);
    if (base::trim(name).size() < shortest)
        return L"Track" + base::digits(number);
    return name;
}

}
