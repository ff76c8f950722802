#include "rip/program_files.h"

#include "base/sequential.h"
#include "base/text.h"
#include "naming/file_name.h"
#include "naming/output_folder.h"
#include "platform/diagnostics.h"
#include "platform/dialogs.h"
#include "platform/file_system.h"

namespace tonquay::rip {

namespace {

std::wstring programName(const state::DiscInfo& disc)
{
    const std::wstring artist(base::trim(disc.discArtist));
    const std::wstring album(base::trim(disc.discAlbum));
    if (artist.empty() && album.empty())
        return L"Untitled.pg1";
    const std::wstring_view between = artist.empty() || album.empty() ? L"" : L" - ";
    return artist + std::wstring(between) + album + L".pg1";
}

}

void ProgramFiles::savepgm(std::int16_t showMessage)
{
    if (main_.list1.selectedCount() == 0) {
        platform_.dialogs.messageBox(L"CD-Tonquay", L"No track(s) selected!", platform::Dialogs::Icon::exclamation);
        return;
    }
    // Not the run's: from the menu this may come in the middle of one, which keeps its folder and its track.
    const std::wstring outputFolder =
        naming::makeOutputFolder(platform_.files, platform_.log, state_.settings, state_.disc);
    const std::wstring& folder = state_.folders.dataFolder;
    passOver(platform_.log, platform_.files.changeDrive(folder), "Change to the data folder's drive");
    passOver(platform_.log, platform_.files.changeFolder(folder), "Change to the data folder");
    programFileName_ = programName(state_.disc);
    // The full path: after a change of folder that failed a bare name would be another folder's file.
    const std::wstring path = naming::joined(folder, programFileName_);
    if (platform_.files.fileExists(path))
        passOver(platform_.log, platform_.files.clearAttributes(path), "Make the program file writable");
    passOver(platform_.log, platform_.files.writeWhole(path, records(outputFolder)), "Write the program file");
    if (showMessage == 1)
        platform_.dialogs.messageBox(L"CD-Tonquay",
                                     L"Media Tonquay program saved as: " + folder + L"\\" + programFileName_,
                                     platform::Dialogs::Icon::information);
}

std::string ProgramFiles::records(std::wstring_view outputFolder) const
{
    const std::wstring_view ending = state_.settings.encodeWanted == 1 ? L".MP3" : L".WAV";
    base::SequentialWriter file;
    for (std::int32_t row = 0; row < main_.list1.rowCount(); ++row) {
        if (!main_.list1.isSelected(row))
            continue;
        const std::wstring name =
            naming::fileName(state_.settings.nameFormat, state_.disc, row + 1, naming::shortestRebuiltName);
        file.text(base::trim(state_.disc.trackTitles(row + 1)));
        file.text(outputFolder);
        file.text(name + std::wstring(ending)).endRecord();
    }
    if (file.cleaned())
        platform_.log.line("program", "Double quotes and line ends were taken out of the program file");
    return file.bytes();
}

}
