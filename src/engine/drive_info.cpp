#include "engine/drive_info.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/red_book.h"

#include <array>

namespace tonquay::engine {

namespace {

/// The bits of the drive's abilities, in the order of chkRWFlags.
constexpr std::array<std::uint32_t, state::abilityFlags> abilityBits{
    0x1, 0x2, 0x4, 0x8, 0x10, 0x20, 0x100000, 0x200000, 0x400000, 0x1000000, 0x2000000};

std::wstring kbps(std::uint32_t value)
{
    return base::grouped(value) + L" Kbps";
}

}

DriveInfo::DriveInfo(EngineContext& context) : c_(context)
{
    c_.form.cmbCDDrives.click = [this] { cmbCDDrives_Click(); };
}

void DriveInfo::cmbCDDrives_Click()
{
    c_.stir();
    c_.engineDrive = static_cast<std::uint32_t>(c_.form.cmbCDDrives.chosen().itemData);
    ShowDriveInfo();
    LoadTrackList();
}

void DriveInfo::ShowDriveInfo()
{
    platform::AudioEngine::DriveInfo info;
    c_.engine.BASS_CD_GetInfo(c_.engineDrive, info);
    state::Cdrip1Controls& form = c_.form;
    for (std::size_t i = 0; i < abilityBits.size(); ++i)
        form.chkRWFlags[i].setValue((info.rwflags & abilityBits[i]) != 0 ? 1 : 0);
    form.chkRWFlags[state::canOpenFlag].setValue(static_cast<std::int16_t>(info.canopen));
    form.chkRWFlags[state::canLockFlag].setValue(static_cast<std::int16_t>(info.canlock));

    form.cmdButton[state::engineOpen].enabled = info.canopen != 0;
    form.cmdButton[state::engineClose].enabled = info.canopen != 0;

    const bool locked = info.canlock != 0 && c_.engine.BASS_CD_DoorIsLocked(c_.engineDrive);
    form.chkRWFlags[state::lockedFlag].setValue(locked ? 1 : 0);
    form.cmdButton[state::engineLock].enabled = info.canlock != 0;
    form.cmdButton[state::engineUnlock].enabled = info.canlock != 0;

    form.lblMaxReadSpeed.caption = kbps(info.maxspeed);
    // Kilobytes by nature; the display has always called them Kbps.
    form.lblCacheSize.caption = kbps(info.cache);
}

void DriveInfo::LoadTrackList()
{
    state::Cdrip1Controls& form = c_.form;
    form.lstTracks.clear();
    if (!c_.engine.BASS_CD_IsReady(c_.engineDrive))
        return;
    const std::int32_t tracks = c_.engine.BASS_CD_GetTracks(c_.engineDrive);
    if (tracks == -1)
        return;
    // The names that are shown are the disc's as they were handed over, so the answer is not used.
    c_.engine.BASS_CD_GetID(c_.engineDrive, platform::AudioEngine::BASS_CDID_TEXT);
    state::DiscInfo& disc = c_.state.disc;
    form.txtCDArtist.text = disc.discArtist;
    form.txtCDAlbum.text = disc.discAlbum;
    for (std::int32_t i = 0; i < tracks && state::hasTrackSlot(i + 1); ++i) {
        const std::int32_t length = c_.engine.BASS_CD_GetTrackLength(c_.engineDrive, static_cast<std::uint32_t>(i));
        if (length <= 0)
            continue;
        const auto seconds = static_cast<std::int32_t>(
            base::roundHalfEven(static_cast<double>(length) / base::red_book::bytesPerSecond));
        disc.trackSeconds.set(i + 1, seconds);
        form.lstTracks.add(base::twoDigits(i + 1) + L'\t' + disc.trackTitles(i + 1) + L"\t[" + Seconds2HMS(seconds) +
                           L']');
    }
}

}
