#include "setup/drive_list.h"

namespace tonquay::setup {

DriveList::DriveList(state::AppState& state, state::Forms& forms, platform::AcdControl& acd)
    : state_(state),
      forms_(forms),
      acd_(acd)
{
    forms_.controlsOf<state::CdriptabControls>().form.onLoad = [this] { fill(); };
}

void DriveList::fill()
{
    state::CdriptabControls& setup = forms_.controlsOf<state::CdriptabControls>();
    setup.List2.clear();
    if (state_.path.ripEngineMode == 0) {
        const controls::ComboBox& drives = forms_.cdrip1().cmbCDDrives;
        for (std::int32_t i = 0; i < drives.rowCount(); ++i)
            setup.List2.add(drives.row(i).text);
        return;
    }
    for (std::int16_t drive = 1; drive <= acd_.GetDriveCount(); ++drive)
        setup.List2.add(acd_.GetDriveName(drive));
}

}
