#include "setup/drive_list.h"

#include "base/text.h"
#include "platform/acd_control.h"
#include "platform/dialogs.h"

namespace tonquay::setup {

namespace {

/// The drive is a device of the system here, and what keeps it away is a cable or a permission.
constexpr std::wstring_view noDriveText =
    L"Drive detection error, ASPI manager not loaded onto your system!\n\n"
    L"Linux reads drives without one. A drive that is connected and not listed may not be yours to read: it belongs to "
    L"a group of the system, mostly \"cdrom\". Have yourself added to that group (sudo usermod -aG cdrom YOURNAME) and "
    L"log in anew. \"tonquay drives\" in a terminal tells for each drive what is in the way, and which group has it.";

std::wstring firstLetter(std::wstring_view text)
{
    return std::wstring(base::trim(text).substr(0, 1));
}

}

DriveList::DriveList(state::AppState& state, state::Forms& forms, disc::DiscTable& discTable,
                     platform::Platform& platform)
    : state_(state),
      forms_(forms),
      form_(forms.controlsOf<state::CdriptabControls>()),
      discTable_(discTable),
      platform_(platform)
{
    form_.List2.doubleClick = [this] { choose(); };
}

void DriveList::fill()
{
    form_.List2.clear();
    form_.List3.clear();
    if (state_.settings.ripMethod == state::engineMethod)
        state_.path.ripEngineMode = 0;
    if (state_.path.ripEngineMode == 0)
        listEngineDrives();
    else
        listControlDrives();
}

void DriveList::listEngineDrives()
{
    state_.settings.ripMethod = state::engineMethod;
    controls::ComboBox& drives = forms_.cdrip1().cmbCDDrives;
    for (std::int32_t i = 0; i < drives.rowCount(); ++i)
        form_.List2.add(drives.row(i).text);
    const std::int32_t selected = rowOfSelected();
    if (selected < 0)
        return;
    form_.List3.add(form_.List2.row(selected).text);
    state_.engine.selectedDriveIndex = selected;
    drives.setIndex(selected);
}

void DriveList::listControlDrives()
{
    for (std::int16_t drive = 1; drive <= platform_.acd.GetDriveCount(); ++drive)
        form_.List2.add(platform_.acd.GetDriveName(drive));
    form_.riptofile[state::wmaFormat].setValue(0);
    if (form_.List2.rowCount() == 0)
        platform_.dialogs.messageBox(L"CD-Tonquay", noDriveText, platform::Dialogs::Icon::exclamation);
    else if (const std::int32_t selected = rowOfSelected(); selected >= 0)
        form_.List3.add(form_.List2.row(selected).text);
}

std::int32_t DriveList::rowOfSelected() const
{
    const std::wstring wanted = base::upper(firstLetter(state_.settings.driveLetter));
    if (wanted.empty())
        return -1;
    for (std::int32_t row = 0; row < form_.List2.rowCount(); ++row)
        if (base::upper(firstLetter(form_.List2.row(row).text)) == wanted)
            return row;
    return -1;
}

void DriveList::choose()
{
    const std::int32_t row = form_.List2.index();
    if (row < 0)
        return;
    form_.List3.clear();
    form_.List3.add(form_.List2.row(row).text);
    if (state_.path.ripEngineMode == 0) {
        chooseEngineDrive(row);
        return;
    }
    state_.engine.pendingDriveLetter = firstLetter(form_.List2.row(row).text);
    discTable_.select_drive();
}

void DriveList::chooseEngineDrive(std::int32_t row)
{
    state_.settings.driveLetter = firstLetter(form_.List2.row(row).text);
    state_.engine.selectedDriveIndex = row;
    forms_.cdrip1().cmbCDDrives.setIndex(row);
}

}
