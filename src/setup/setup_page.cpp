#include "setup/setup_page.h"

#include "base/text.h"
#include "encode/encoder_kind.h"
#include "platform/diagnostics.h"
#include "platform/dialogs.h"
#include "platform/processes.h"
#include "platform/system_info.h"
#include "setup/settings_copy.h"
#include "state/help.h"
#include "state/rip_settings_file.h"
#include "state/settings_text.h"

#include <array>
#include <utility>

namespace tonquay::setup {

using platform::Dialogs;

namespace {

/// The rip modes by their number.
constexpr std::array ripModes{L"Normal", L"Synchronous", L"Burst", L"Analog", L"Digital 2 (default)"};

}

SetupPage::SetupPage(state::AppState& state, state::Forms& forms, disc::DiscTable& discTable,
                     platform::Platform& platform, std::function<void()> loadTagPage)
    : state_(state),
      forms_(forms),
      form_(forms.controlsOf<state::CdriptabControls>()),
      discTable_(discTable),
      platform_(platform),
      loadTagPage_(std::move(loadTagPage)),
      drives_(state, forms, discTable, platform),
      outputFolder_(state, form_),
      encoder_(state, form_, page_, platform),
      formats_(state, form_, page_, platform.files),
      choices_(state, form_),
      toWav_(state, form_, platform)
{
    form_.form.onLoad = [this] { load(); };
    form_.form.keyDown = [this](controls::Key key) { keyPressed(key); };
    form_.cmdOK.click = [this] { accept(); };
    form_.cmdCancel.click = [this] { close(); };
}

void SetupPage::load()
{
    page_ = {};
    toWav_.load();
    outputFolder_.load();
    if (loadTagPage_)
        loadTagPage_();
    drives_.fill();
    for (const wchar_t* mode : ripModes)
        form_.List4.add(mode);
    cacdset(state_, form_);
    page_.chosenEncoder = state_.settings.encoderPath;
    showEncoder();
    testProcessor();
    // A tick that sends the keyboard somewhere has done so before there was a window.
    form_.focusWanted = state::SetupFocus::none;
}

void SetupPage::showEncoder()
{
    const std::wstring& encoder = state_.settings.encoderPath;
    if (!encode::pathNames(encoder, L"LAME") && encode::pathNames(encoder, L"OGG")) {
        // The user's own Ogg encoder stays where the tick would bring the one of the program folder.
        page_.keepEncoderPath = 1;
        form_.riptofile[state::oggFormat].setValue(1);
        formats_.act(state::oggFormat);
    }
    encoder_.followName(encoder);
}

void SetupPage::testProcessor()
{
    const bool pentium = base::upper(platform_.system.processorName()).find(L"PENTIUM") != std::wstring::npos;
    page_.pentiumDetected = pentium ? 1 : 0;
    form_.Label13.visible = pentium;
}

void SetupPage::accept()
{
    if (lacksEncoder(state::mp3Format, L"Please select a MP3 encoder above!") ||
        lacksEncoder(state::oggFormat, L"Please select an OGG encoder above!"))
        return;
    const std::int16_t modeBefore = state_.path.ripEngineMode;
    saveset(platform_.files, platform_.log, page_, form_, state_);
    if (state_.path.ripEngineMode != modeBefore)
        return restart();
    const std::int16_t method = state_.settings.ripMethod;
    if (base::isBlank(state_.settings.driveLetter) && method != state::analogMethod) {
        platform_.dialogs.messageBox(L"CD-Tonquay", L"Please select a CD-ROM/DVD drive above!",
                                     Dialogs::Icon::exclamation);
        form_.focusWanted = state::SetupFocus::drives;
        return;
    }
    if (method == state::analogMethod)
        discTable_.analogtrks();
    close();
}

bool SetupPage::lacksEncoder(state::FileFormat format, std::wstring_view complaint)
{
    if (form_.riptofile[format].value() != 1 || !base::isBlank(form_.Text3.text.get()))
        return false;
    platform_.dialogs.messageBox(L"CD-Tonquay", complaint, Dialogs::Icon::exclamation);
    form_.focusWanted = state::SetupFocus::encoder;
    return true;
}

void SetupPage::restart()
{
    state::writeRipType(platform_.files, platform_.log, state_.folders, state_.path.ripEngineMode);
    platform_.dialogs.messageBox(L"CD-Tonquay", L"Restarting CD Ripper with new rip method",
                                 Dialogs::Icon::information);
    const std::wstring command = state::inFolder(state_.folders.appFolder, L"Tqlaunch.exe RUNRIPPER");
    passOver(platform_.log, platform_.processes.start(command, platform::Processes::WindowStyle::normal),
             "Start the launcher");
    platform_.processes.endProgram();
}

void SetupPage::close()
{
    forms_.ripdeck().form.enabled = true;
    form_.form.unload();
    forms_.controlsOf<state::CdripbgControls>().form.unload();
}

void SetupPage::keyPressed(controls::Key key)
{
    if (key != controls::Key::f1)
        return form_.cmdCancel.press();
    const std::int32_t topic = form_.tab == state::toWavTab        ? state::toWavTopic
                               : form_.tab == state::tagUtilityTab ? state::tagUtilityTopic
                                                                   : state::setupTopic;
    state::helpOpen(platform_.help, state_.folders, topic);
}

}
