#include "disc/disc_table.h"

#include "base/text.h"
#include "disc/row_builder.h"

#include <algorithm>
#include <utility>

namespace tonquay::disc {

namespace {

/// The search over drives looks at no more than this many.
constexpr std::int32_t searchedDrives = 10;

/// Whether the control's name of a drive is that of the settings.
bool sameDrive(std::wstring_view left, std::wstring_view right)
{
    return base::upper(base::trim(left)) == base::upper(base::trim(right));
}

/// The engine's list has the drive's letter with its maker and model behind it.
bool sameFirstLetter(std::wstring_view left, std::wstring_view right)
{
    const std::wstring_view a = base::trim(left);
    const std::wstring_view b = base::trim(right);
    return !a.empty() && !b.empty() && base::upper(a.front()) == base::upper(b.front());
}

}

void DiscTable::buildFromControl()
{
    std::wstring& driveLetter = state_.settings.driveLetter;
    const std::int16_t drives = std::min<std::int16_t>(acd_.GetDriveCount(), searchedDrives);
    std::int16_t chosen = 1;
    bool found = false;
    for (std::int16_t drive = 1; drive <= drives && !found; ++drive) {
        found = sameDrive(acd_.GetDriveName(drive), driveLetter);
        if (found)
            chosen = drive;
    }
    if (!found)
        driveLetter = acd_.GetDriveName(1);
    state_.TagClipboard.fill(L"");
    if (base::isBlank(driveLetter))
        return;
    // Lengths are asked of the current drive, so the one that was found has to be it.
    acd_.SelectDrive(chosen);
    forms_.ripdeck().list1.clear();
    const std::int16_t rows = state_.disc.trackCount >= 1 ? state_.disc.trackCount : acd_.GetTrackCount();
    for (std::int16_t number = 1; number <= rows && state::hasTrackSlot(number); ++number)
        addControlTrack(forms_.ripdeck().list1, state_.disc, acd_, number);
}

void DiscTable::buildFromEngine()
{
    std::wstring& driveLetter = state_.settings.driveLetter;
    driveLetter = state_.disc.handoverDriveLetter;
    state::Cdrip1Controls& engine = forms_.cdrip1();
    engine.form.show();

    const std::int32_t drives = std::min(engine.cmbCDDrives.rowCount(), searchedDrives + 1);
    bool found = false;
    for (std::int32_t i = 0; i < drives && !found; ++i) {
        if (!sameFirstLetter(engine.cmbCDDrives.row(i).text, driveLetter))
            continue;
        engine.cmbCDDrives.setIndex(i);
        state_.engine.selectedDriveIndex = i;
        found = true;
    }
    if (!found) {
        state_.engine.selectedDriveIndex = 0;
        if (engine.cmbCDDrives.rowCount() > 0)
            driveLetter = engine.cmbCDDrives.row(0).text;
    }

    const state::DiscInfo& disc = state_.disc;
    engine.txtCDArtist.text = disc.discArtist;
    engine.txtCDAlbum.text = disc.discAlbum;
    const std::array tags{std::wstring(), disc.discArtist, disc.discAlbum, disc.discComment,
                          std::wstring(), std::wstring(),  disc.discGenre, disc.discYear};
    for (std::size_t i = 0; i < tags.size(); ++i)
        engine.txtWMATags[i].text = tags[i];
    for (std::int32_t number = 1; number <= disc.trackCount && state::hasTrackSlot(number); ++number)
        addTrackRow(forms_.ripdeck().list1, disc, number, disc.trackSeconds(number));
}

void DiscTable::analogtrks()
{
    // In the middle of a run the table is there, and the capture form is the run's.
    if (state_.flags.ripBusy == 1)
        return;
    platform::waitUntil(loop_, [this] { return state_.flags.analogBusy != 1; });
    // Without a track the form reads the disc, and nothing is recorded.
    state_.run.analogTrack = 0;
    controls::Form& capture = forms_.controlsOf<state::CdrecaltControls>().form;
    capture.unload();
    capture.show();
    platform::waitUntil(loop_, [this] { return state_.flags.analogBusy != 1; });
    capture.unload();
    forms_.ripdeck().list1.clear();
    for (std::int32_t number = 1; number <= state_.disc.trackCount && state::hasTrackSlot(number); ++number)
        addTrackRow(forms_.ripdeck().list1, state_.disc, number, state_.analogTrackSeconds(number));
}

void DiscTable::select_drive()
{
    if (state_.path.ripEngineMode != 1)
        return;
    state::CdriptabControls& setup = forms_.cdriptab();
    std::int32_t index = setup.List2.index();
    const bool chosenByHand = base::isBlank(state_.engine.pendingDriveLetter);
    if (!chosenByHand) {
        state_.settings.driveLetter = std::exchange(state_.engine.pendingDriveLetter, {});
        index = 0;
        for (std::int32_t row = 0; row < setup.List2.rowCount(); ++row) {
            if (sameDrive(setup.List2.row(row).text, state_.settings.driveLetter)) {
                index = row;
                break;
            }
        }
    }
    const auto drive = static_cast<std::int16_t>(index + 1);
    acd_.SelectDrive(drive);
    if (chosenByHand)
        state_.settings.driveLetter = acd_.GetDriveName(drive);
    setup.List3.clear();
    setup.List3.add(state_.settings.driveLetter);
    forms_.ripdeck().list1.clear();
    const std::int16_t tracks = acd_.GetTrackCount();
    for (std::int16_t number = 1; number <= tracks && state::hasTrackSlot(number); ++number)
        addControlTrack(forms_.ripdeck().list1, state_.disc, acd_, number);
}

std::wstring firstTrackName(std::wstring_view driveLetter)
{
    return std::wstring(driveLetter) + L":\\track01.cda";
}

void selalltrks(controls::MultiSelectList& list)
{
    for (std::int32_t row = 0; row < list.rowCount(); ++row)
        list.select(row, true);
    // The cursor goes along, or Play would begin with the last track.
    if (list.rowCount() > 0)
        list.setCursor(0);
    list.scrollTo(0);
}

}
