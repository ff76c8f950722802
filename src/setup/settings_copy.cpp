#include "setup/settings_copy.h"

#include "base/numbers.h"
#include "base/text.h"
#include "state/rip_settings_file.h"

namespace tonquay::setup {

namespace {

std::int16_t flag(bool value)
{
    return value ? std::int16_t{1} : std::int16_t{0};
}

void takeChosen(std::int16_t& field, std::int32_t chosen)
{
    if (chosen >= 0)
        field = static_cast<std::int16_t>(chosen);
}

/// "Drive root" of three characters is kept as its first two, so that names can be joined to it.
void cutDriveRoot(std::wstring& folder)
{
    constexpr std::size_t driveRoot = 3;
    if (base::trim(folder).size() == driveRoot)
        folder = base::trim(folder).substr(0, 2);
}

void takeFormats(const state::CdriptabControls& form, const SetupState& page, state::RipSettings& settings)
{
    // A run with an Ogg encoder encodes whatever the flag says, and has set it; looking at the page is no reason to
    // take that back.
    if (!page.formatsAsLoaded || form.riptofile[state::oggFormat].value() != 1)
        settings.encodeWanted = form.riptofile[state::mp3Format].value();
    settings.deleteWav = flag(form.riptofile[state::wavFormat].value() != 1);
}

void takeFolders(const state::CdriptabControls& form, state::RipSettings& settings)
{
    settings.dirMode = 0;
    if (form.Check8.value() == 1)
        settings.dirMode = 1;
    if (form.Check9.value() == 1)
        settings.dirMode = 2;
}

}

void cacdset(const state::AppState& state, state::CdriptabControls& form)
{
    const state::RipSettings& settings = state.settings;
    form.Label3.caption = std::wstring(state::ripLocationLead) + settings.outputFolder;
    form.Check1.setValue(settings.createProgram);
    form.Option1.choose(settings.nameFormat);
    form.Text3.text = settings.encoderPath;
    form.riptofile[state::mp3Format].setValue(settings.encodeWanted);
    form.riptofile[state::wavFormat].setValue(flag(settings.deleteWav != 1));
    form.riptofile[state::wmaFormat].setValue(settings.ripToWma);
    form.Check4.setValue(settings.crcCheck);
    form.Check5.setValue(settings.highPriority);
    form.Option2.choose(settings.stereo);
    form.Option3.choose(settings.bitrateIndex);
    form.Text11.text = base::digits(settings.vbrQuality);
    form.Text1.text = settings.encoderCmdLine;
    form.Check6.setValue(flag(!base::isBlank(settings.encoderCmdLine)));
    form.Text2.text = settings.encoderFileExt;
    form.Check7.setValue(flag(!base::isBlank(settings.encoderFileExt)));
    form.List4.setIndex(settings.ripMethod);
    form.Check8.setValue(flag(settings.dirMode == 1));
    form.Check9.setValue(flag(settings.dirMode == 2));
    form.Option4.choose(settings.encodeSingle);
    form.Check12.setValue(settings.minimizeWhileEncoding);
    form.Check2.setValue(settings.turboMode);
    form.Check3.setValue(settings.autoSelectAll);
    form.Check13.setValue(settings.autoClose);
}

void saveset(platform::FileSystem& files, platform::Diagnostics& log, const SetupState& page,
             state::CdriptabControls& form, state::AppState& state)
{
    state::RipSettings& settings = state.settings;
    state.path.ripEngineMode = flag(settings.ripMethod != state::engineMethod);
    state::writeRipType(files, log, state.folders, state.path.ripEngineMode);

    cutDriveRoot(settings.outputFolder);
    settings.createProgram = form.Check1.value();
    takeChosen(settings.nameFormat, form.Option1.chosen());
    settings.encoderPath = page.chosenEncoder;
    takeFormats(form, page, settings);
    settings.crcCheck = form.Check4.value();
    settings.highPriority = form.Check5.value();
    takeChosen(settings.stereo, form.Option2.chosen());
    takeChosen(settings.bitrateIndex, form.Option3.chosen());
    settings.encoderCmdLine = form.Check6.value() == 1 ? form.Text1.text.get() : std::wstring();
    settings.encoderFileExt = form.Check7.value() == 1 ? form.Text2.text.get() : std::wstring();
    takeFolders(form, settings);
    takeChosen(settings.encodeSingle, form.Option4.chosen());
    if (!base::isBlank(form.Text11.text.get()))
        base::store(base::val(form.Text11.text.get()), settings.vbrQuality);
    settings.minimizeWhileEncoding = form.Check12.value();
    settings.turboMode = form.Check2.value();
    settings.autoSelectAll = form.Check3.value();
    settings.autoClose = form.Check13.value();

    settings.ripToWma = flag(form.riptofile[state::wmaFormat].value() == 1);
    if (settings.ripToWma == 1) {
        // The file that was written above catches up at the next save, or at the restart that follows.
        state.path.ripEngineMode = 0;
        settings.ripMethod = state::engineMethod;
    }
    state::writeRipSettings(files, log, state.folders, settings);
}

}
