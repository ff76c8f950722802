#include "state/popa_controls.h"

#include <initializer_list>

namespace tonquay::state {

PopaControls::PopaControls()
{
    constexpr std::array captions{L"Previous Track",
                                  L"Next Track",
                                  L"Play",
                                  L"Pause",
                                  L"Stop",
                                  L"Eject",
                                  L"Rip (Record)",
                                  L"Mixer",
                                  L"Go to Audio CD Tonquay",
                                  L"CD Ripper Setup",
                                  L"MP3 ID3 Utilities",
                                  L"Rip Partial Track(s)",
                                  L"Select All Tracks",
                                  L"Clear All Selected Tracks",
                                  L"MP3 ID3 Tags for this CD",
                                  L"Edit Track Name (of Highlighted Track)",
                                  L"Save Selected Track(s) as Media Tonquay Program",
                                  L"Encode (WAV to MP3) Selected Track(s)",
                                  L"Center CD Ripper",
                                  L"Convert MP3 File(s) to WAV File(s)"};
    for (std::size_t i = 0; i < captions.size(); ++i)
        pop[i].caption = captions[i];
    popp.caption = L"Playback";
    popO.caption = L"Options";
    refreshcdx.caption = L"Refresh CD Info";
    poph.caption = L"Help";

    const auto entries = [this](std::initializer_list<PopupEntry> indices) {
        std::vector<controls::MenuLine> lines;
        for (const PopupEntry index : indices)
            lines.push_back({&pop[index]});
        return lines;
    };
    const controls::MenuLine separator;
    std::vector<controls::MenuLine> options = entries({ejectEntry, ripEntry, mixerEntry});
    const auto append = [&options](const std::vector<controls::MenuLine>& lines) {
        options.insert(options.end(), lines.begin(), lines.end());
    };
    append({separator, {&pop[playerEntry]}, {&refreshcdx}});
    append(entries(
        {setupEntry, tagUtilityEntry, partialEntry, convertEntry, selectAllEntry, clearAllEntry, discTagsEntry}));
    append({separator});
    append(entries({editTitleEntry, saveProgramEntry, encodeEntry}));
    append({separator, {&pop[centerEntry]}, {&poph}});
    popopt.lines = {{&popp, entries({previousEntry, nextEntry, playEntry, pauseEntry, stopEntry})}, {&popO, options}};
}

}
