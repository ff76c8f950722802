#include "base/text.h"
#include "disc/handover_file.h"
#include "disc/handover_writer.h"
#include "naming/nonasc.h"

#include <cstdlib>

using namespace tonquay;

namespace {

/// A name that a run makes a folder of.
void checkFolder(std::wstring_view name)
{
    const std::wstring folder = naming::nonasc(name);
    if (folder.find_first_not_of(L". ") == std::wstring::npos || base::utf8(folder).size() > 255)
        std::abort();
}

}

/// Broken hand-over files on the way in; names of every kind on the way out and in again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::wstring text = base::fromFileBytes(std::string(data, data + size));
    state::DiscInfo broken;
    disc::parseHandover(text, broken);
    disc::applyUnknownDiscNames(broken);

    platform::DiscTable table;
    table.discId = "id";
    table.tracks.resize(3);
    const std::size_t third = text.size() / 3;
    table.names.artist = text.substr(0, third);
    table.names.album = text.substr(third, third);
    table.names.titles = {text.substr(2 * third), table.names.album};
    state::DiscInfo taken;
    disc::parseHandover(base::fromFileBytes(disc::makeHandOver(table, L'D').bytes), taken);
    if (taken.trackCount != 3 || taken.handoverDriveLetter != L"D")
        std::abort();
    const std::wstring artist = taken.discArtist;
    disc::applyUnknownDiscNames(taken);
    if (taken.discArtist != artist)
        std::abort();
    checkFolder(taken.discArtist);
    checkFolder(taken.discAlbum);
    return 0;
}
