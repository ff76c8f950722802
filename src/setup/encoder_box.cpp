#include "setup/encoder_box.h"

#include "base/numbers.h"
#include "base/text.h"
#include "encode/encoder_kind.h"
#include "platform/file_system.h"
#include "state/settings_text.h"

namespace tonquay::setup {

using platform::Dialogs;

EncoderBox::EncoderBox(state::AppState& state, state::CdriptabControls& form, SetupState& page,
                       platform::Platform& platform)
    : state_(state),
      form_(form),
      page_(page),
      platform_(platform)
{
    form_.Label12.doubleClick = [this] { chooseByDialog(); };
    form_.Text3.enter = [this] { enterPath(); };
    form_.Check6.click = [this] { switchesTicked(); };
    form_.Check7.click = [this] { extensionTicked(); };
    form_.Text1.enter = [this] { enterSwitches(); };
    form_.Text2.enter = [this] { enterExtension(); };
    form_.Text11.enter = [this] { enterQuality(); };
    form_.Label17.doubleClick = [this] {
        tell(L"0=highest quality / biggest file size, 9=lowest quality / smallest file size",
             Dialogs::Icon::information);
    };
}

void EncoderBox::tell(std::wstring_view text, Dialogs::Icon icon) const
{
    platform_.dialogs.messageBox(L"CD-Tonquay", text, icon);
}

void EncoderBox::followName(const std::wstring& encoder)
{
    const bool lame = encode::pathNames(encoder, L"LAME");
    form_.Check5.caption = std::wstring(lame ? state::vbrCaption : state::highPriorityCaption);
    if (lame)
        form_.Text11.text = base::digits(state_.settings.vbrQuality);
    form_.Label17.visible = lame;
    form_.Text11.visible = lame;
}

void EncoderBox::take(const std::wstring& encoder)
{
    constexpr std::wstring_view blade = L"BLADEENC.EXE";
    state_.settings.encoderPath = encoder;
    page_.chosenEncoder = encoder;
    if (base::upper(encoder).ends_with(blade))
        form_.Check5.setValue(1);
    followName(encoder);
}

void EncoderBox::chooseByDialog()
{
    const bool mp3 = form_.riptofile[state::mp3Format].value() == 1;
    const bool ogg = form_.riptofile[state::oggFormat].value() == 1;
    if (form_.riptofile[state::wmaFormat].value() == 1) {
        tell(L"External encoder not required for WMA files", Dialogs::Icon::information);
        return;
    }
    if (form_.riptofile[state::wavFormat].value() == 1 && !mp3 && !ogg) {
        tell(L"External encoder not required for WAV files", Dialogs::Icon::information);
        return;
    }
    const std::wstring& appFolder = state_.folders.appFolder;
    Dialogs::FileQuestion question;
    if (ogg)
        question = {.title = L"Select Ogg Encoder Application",
                    .folder = state::inFolder(appFolder, L"oggtools"),
                    .filterName = L"Ogg Encoder (*.exe)",
                    .pattern = L"*.exe",
                    .fileName = page_.pentiumDetected == 1 ? L"oggencp4.exe" : L"oggenc.exe"};
    else
        question = {.title = L"Select MP3 Encoder Application",
                    .folder = appFolder,
                    .filterName = L"MP3 Encoder (*.exe)",
                    .pattern = L"*.exe",
                    .fileName = {}};
    const auto chosen = platform_.dialogs.openFile(question);
    if (!chosen || chosen->empty())
        return;
    form_.Text3.text = *chosen;
    if (!platform_.files.fileExists(*chosen))
        return;
    page_.keepEncoderPath = 1;
    mp3enabled();
    take(*chosen);
}

void EncoderBox::enterPath()
{
    const std::wstring typed = form_.Text3.text.get();
    if (base::isBlank(typed)) {
        mp3disabled();
        return;
    }
    if (platform_.files.fileExists(typed))
        take(typed);
    else
        tell(L"MP3 Encoder File:  " + typed + L"  Not Found!", Dialogs::Icon::none);
}

void EncoderBox::switchesTicked()
{
    const bool ticked = form_.Check6.value() == 1;
    form_.Text1.enabled = ticked;
    if (!form_.form.isLoaded())
        return;
    if (ticked) {
        form_.focusWanted = state::SetupFocus::commandLine;
        mp3disabled();
    } else if (!base::isBlank(form_.Text3.text.get())) {
        mp3enabled();
    }
}

void EncoderBox::extensionTicked()
{
    const bool ticked = form_.Check7.value() == 1;
    form_.Text2.enabled = ticked;
    if (ticked && form_.form.isLoaded())
        form_.focusWanted = state::SetupFocus::fileExtension;
}

void EncoderBox::enterSwitches()
{
    const std::wstring text = form_.Text1.text.get();
    if (base::isBlank(text)) {
        mp3enabled();
        form_.Check6.setValue(0);
        state_.settings.encoderCmdLine.clear();
        return;
    }
    state_.settings.encoderCmdLine = text;
    mp3disabled();
    form_.focusWanted = state::SetupFocus::advanced;
}

void EncoderBox::enterExtension()
{
    const std::wstring text = form_.Text2.text.get();
    if (base::isBlank(text)) {
        form_.Text2.text = L"MP3";
        form_.Check7.setValue(0);
        return;
    }
    state_.settings.encoderFileExt = text;
    form_.focusWanted = state::SetupFocus::advanced;
}

void EncoderBox::enterQuality()
{
    constexpr std::int16_t worst = 9;
    const std::wstring text = form_.Text11.text.get();
    if (base::isBlank(text))
        return;
    std::int16_t& quality = state_.settings.vbrQuality;
    base::store(base::val(text), quality);
    // The number stays as it is: only this key asks.
    if (quality >= 0 && quality <= worst)
        return;
    tell(L"Please select a VBR quality setting between 0 (highest quality) and 9 (lowest quality)!",
         Dialogs::Icon::exclamation);
    form_.focusWanted = state::SetupFocus::quality;
}

void EncoderBox::mp3enabled()
{
    setMp3Enabled(true);
}

void EncoderBox::mp3disabled()
{
    setMp3Enabled(false);
}

void EncoderBox::setMp3Enabled(bool enabled)
{
    form_.Label17.enabled = enabled;
    form_.Text11.enabled = enabled;
    form_.Check4.enabled = enabled;
    form_.Check5.enabled = enabled;
    for (controls::OptionButton& option : form_.Option2)
        option.enabled = enabled;
    for (controls::OptionButton& option : form_.Option3)
        option.enabled = enabled;
    form_.SSFrame1.enabled = enabled;
}

}
