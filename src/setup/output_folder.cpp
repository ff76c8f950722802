#include "setup/output_folder.h"

#include "base/text.h"

namespace tonquay::setup {

OutputFolder::OutputFolder(state::AppState& state, state::CdriptabControls& form) : state_(state), form_(form)
{
    form_.Drive1.change = [this] { openRoot(form_.Drive1, form_.dir1); };
    form_.dir1.change = [this] { take(); };
}

void OutputFolder::load()
{
    showFolder(form_.Drive1, form_.dir1, state_.settings.outputFolder);
}

void OutputFolder::take()
{
    state_.settings.outputFolder = form_.dir1.path;
    form_.Label3.caption = std::wstring(state::ripLocationLead) + state_.settings.outputFolder;
}

void showFolder(controls::DriveList& drive, controls::FolderTree& tree, std::wstring_view folder)
{
    const std::wstring shown = base::isBlank(folder) ? L"c:\\" : std::wstring(base::trim(folder));
    drive.drive = shown.substr(0, 1) + L":";
    tree.path = shown;
}

void openRoot(const controls::DriveList& drive, controls::FolderTree& tree)
{
    tree.open(drive.drive.get().substr(0, 1) + L":\\");
}

}
