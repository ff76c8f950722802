#include "setup/mp3_to_wav.h"

#include "base/text.h"
#include "encode/encoder_kind.h"
#include "encode/run_and_wait.h"
#include "platform/diagnostics.h"
#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "setup/output_folder.h"
#include "state/settings_text.h"

#include <algorithm>
#include <vector>

namespace tonquay::setup {

using platform::Dialogs;

namespace {

bool isMp3(const std::wstring& name)
{
    constexpr std::size_t ending = 3;
    return name.size() >= ending && base::upper(name.substr(name.size() - ending)) == L"MP3";
}

}

Mp3ToWav::Mp3ToWav(state::AppState& state, state::CdriptabControls& form, platform::Platform& platform)
    : state_(state),
      form_(form),
      platform_(platform)
{
    form_.Drive3.change = [this] { openRoot(form_.Drive3, form_.dir3); };
    form_.dir3.change = [this] { listFiles(); };
    wireQueue();
}

void Mp3ToWav::wireQueue()
{
    form_.Command14.click = [this] { addSelected(); };
    form_.Command15.click = [this] { addAll(); };
    form_.Command13.click = [this] { form_.List5.deselectAll(); };
    form_.Command16.click = [this] {
        form_.List6.clear();
        queueClicked();
    };
    form_.Command10.click = [this] { removeSelected(); };
    form_.Command17.click = [this] { convert(); };
    form_.List5.doubleClick = [this] { addSelected(); };
    form_.List6.doubleClick = [this] { removeSelected(); };
    form_.List6.dropped = [this] { addSelected(); };
    form_.List6.click = [this] { queueClicked(); };
}

void Mp3ToWav::load()
{
    form_.Command17.caption = L"\n\nConvert";
    showFolder(form_.Drive3, form_.dir3, state_.settings.outputFolder);
    showDecoder();
    listFiles();
}

void Mp3ToWav::listFiles()
{
    constexpr std::size_t driveRoot = 3;
    platform_.dialogs.setPointer(Dialogs::Pointer::busy);
    form_.List5.clear();
    std::wstring folder(base::trim(form_.dir3.path.get()));
    // The root of a drive brings its own backslash.
    if (folder.size() <= driveRoot)
        folder = folder.substr(0, 2);
    const auto names = platform_.files.list(folder + L"\\", L"*.*");
    std::vector<std::wstring> rows;
    if (passOver(platform_.log, names, "List the MP3 files of a folder"))
        for (const std::wstring& name : *names)
            if (isMp3(name))
                rows.push_back(state::Mp3Row{name, folder}.text());
    form_.List5.append(std::move(rows));
    platform_.dialogs.setPointer(Dialogs::Pointer::normal);
}

void Mp3ToWav::addSelected()
{
    if (form_.List5.rowCount() == 0)
        return;
    std::vector<std::wstring> rows;
    for (std::int32_t row = 0; row < form_.List5.rowCount(); ++row)
        if (form_.List5.isSelected(row))
            rows.push_back(form_.List5.row(row));
    form_.List6.append(std::move(rows));
    endAdding();
    form_.List5.deselectAll();
}

void Mp3ToWav::addAll()
{
    constexpr std::int32_t mostRows = 3000;
    if (form_.List5.rowCount() == 0)
        return;
    std::vector<std::wstring> rows;
    for (std::int32_t row = 0; row < form_.List5.rowCount(); ++row)
        if (form_.List6.rowCount() + static_cast<std::int32_t>(rows.size()) < mostRows)
            rows.push_back(form_.List5.row(row));
    form_.List6.append(std::move(rows));
    endAdding();
}

void Mp3ToWav::endAdding()
{
    form_.List6.deselectAll();
    form_.List6.select(form_.List6.rowCount() - 1, true);
    queueClicked();
}

void Mp3ToWav::removeSelected()
{
    if (form_.List6.rowCount() == 0)
        return;
    form_.List6.removeSelected();
    form_.List6.select(form_.List6.cursor(), true);
    queueClicked();
}

void Mp3ToWav::queueClicked()
{
    const bool any = form_.List6.rowCount() > 0;
    form_.Command17.enabled = any && !busy_;
    form_.Image1[0].visible = !any;
    form_.Image1[1].visible = any;
}

void Mp3ToWav::showDecoder()
{
    const std::wstring& appFolder = state_.folders.appFolder;
    const std::wstring lead(state::decoderLead);
    if (encode::pathNames(state_.settings.encoderPath, L"LAME"))
        form_.Label8.caption = lead + state_.settings.encoderPath;
    else if (platform_.files.fileExists(state::inFolder(appFolder, L"lame.exe")))
        form_.Label8.caption = lead + appFolder + L"  (required to decode MP3 to WAV)";
    else
        form_.Label8.caption = L"LAME not setup as your default encoder or not found in your CDTonquay directory "
                               L"(required to decode MP3 to WAV)";
}

std::wstring Mp3ToWav::decoder() const
{
    if (encode::pathNames(state_.settings.encoderPath, L"LAME"))
        return state_.settings.encoderPath;
    const std::wstring own = state::inFolder(state_.folders.appFolder, L"lame.exe");
    return platform_.files.fileExists(own) ? own : std::wstring();
}

void Mp3ToWav::convert()
{
    if (form_.List6.rowCount() == 0 || busy_)
        return;
    const std::wstring program = decoder();
    if (program.empty()) {
        platform_.dialogs.messageBox(L"CD-Tonquay",
                                     L"LAME not setup as your default encoder or not found in your CDTonquay "
                                     L"directory!\n\nThis is required to decode MP3 file(s) to WAV file(s).",
                                     Dialogs::Icon::exclamation);
        return;
    }
    // The queue may be changed, and the dialog closed, while its files are decoded.
    std::vector<std::wstring> rows(static_cast<std::size_t>(form_.List6.rowCount()));
    for (std::size_t row = 0; row < rows.size(); ++row)
        rows[row] = form_.List6.row(static_cast<std::int32_t>(row));
    busy_ = true;
    queueClicked();
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const state::Mp3Row file = state::mp3Row(rows[row]);
        if (file.folder.empty())
            continue;
        form_.converting = state::Mp3InHand{.number = static_cast<std::int32_t>(row) + 1,
                                            .count = static_cast<std::int32_t>(rows.size()),
                                            .row = rows[row]};
        convertRow(program, file);
    }
    form_.converting = state::Mp3InHand{};
    busy_ = false;
    queueClicked();
}

void Mp3ToWav::convertRow(const std::wstring& decoder, const state::Mp3Row& row)
{
    constexpr std::size_t ending = 4;
    const std::wstring wavName = row.name.substr(0, row.name.size() - std::min(ending, row.name.size())) + L".wav";
    const std::wstring mp3 = state::inFolder(state_.folders.windowsFolder, L"TEMP.MP3");
    const std::wstring wav = state::inFolder(state_.folders.windowsFolder, L"TEMP.WAV");
    platform::FileSystem& files = platform_.files;
    platform::Diagnostics& log = platform_.log;
    passOver(log, files.copy(state::inFolder(row.folder, row.name), mp3), "Copy the MP3 file");
    const std::wstring command = decoder + L" --decode " + state::inFolder(state_.folders.windowsFolder, L"temp.mp3") +
                                 L" " + state::inFolder(state_.folders.windowsFolder, L"temp.wav");
    encode::runAndWait(platform_, state_.flags, command);
    passOver(log, files.copy(wav, state::inFolder(row.folder, wavName)), "Copy the decoded WAV file");
    passOver(log, files.remove(mp3), "Delete the copy of the MP3 file");
    passOver(log, files.remove(wav), "Delete the copy of the WAV file");
}

}
