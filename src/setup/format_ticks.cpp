#include "setup/format_ticks.h"

#include "state/settings_text.h"

#include <utility>

namespace tonquay::setup {

FormatTicks::FormatTicks(state::AppState& state, state::CdriptabControls& form, SetupState& page,
                         platform::FileSystem& files)
    : state_(state),
      form_(form),
      page_(page),
      files_(files)
{
    for (std::size_t i = 0; i < form_.riptofile.size(); ++i)
        form_.riptofile[i].mouseUp = [this, i] {
            page_.formatsAsLoaded = false;
            act(static_cast<state::FileFormat>(i));
        };
}

void FormatTicks::act(state::FileFormat format)
{
    switch (format) {
    case state::mp3Format: actMp3(); break;
    case state::wavFormat: untick(state::wmaFormat); break;
    case state::oggFormat: actOgg(); break;
    case state::wmaFormat: actWma(); break;
    }
    enableMp3Choices(form_.riptofile[state::mp3Format].value() == 1);
}

void FormatTicks::choose(const std::wstring& encoder)
{
    form_.Text3.text = encoder;
    page_.chosenEncoder = encoder;
}

void FormatTicks::actMp3()
{
    untick(state::oggFormat);
    untick(state::wmaFormat);
    showBitrates(form_);
    form_.Label17.visible = true;
    form_.Text11.visible = true;
    form_.Check5.visible = true;
    if (std::exchange(page_.keepEncoderPath, std::int16_t{0}) == 1)
        return;
    choose(L"");
    const std::wstring lame = state::inFolder(state_.folders.appFolder, L"lame.exe");
    const std::wstring blade = state::inFolder(state_.folders.appFolder, L"bladeenc.exe");
    if (files_.fileExists(lame)) {
        choose(lame);
        form_.Check5.caption = std::wstring(state::vbrCaption);
    } else if (files_.fileExists(blade)) {
        choose(blade);
        form_.Check5.caption = std::wstring(state::highPriorityCaption);
    }
}

void FormatTicks::actOgg()
{
    untick(state::mp3Format);
    untick(state::wmaFormat);
    showOggQualities(form_);
    if (std::exchange(page_.keepEncoderPath, std::int16_t{0}) == 1)
        return;
    const std::wstring name = page_.pentiumDetected == 1 ? L"oggencp4.exe" : L"oggenc.exe";
    const std::wstring encoder = state::inFolder(state_.folders.appFolder, L"oggtools\\" + name);
    choose(files_.fileExists(encoder) ? encoder : std::wstring());
}

void FormatTicks::actWma()
{
    untick(state::mp3Format);
    untick(state::wavFormat);
    untick(state::oggFormat);
    choose(L"");
    showBitrates(form_);
}

void FormatTicks::enableMp3Choices(bool enabled)
{
    form_.SSFrame5.enabled = enabled;
    for (controls::OptionButton& option : form_.Option2)
        option.enabled = enabled;
    form_.Label17.enabled = enabled;
    form_.Text11.enabled = enabled;
    form_.Check5.enabled = enabled;
}

}
