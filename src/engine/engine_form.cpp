#include "engine/engine_form.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/red_book.h"
#include "base/text.h"
#include "engine/error_reporters.h"
#include "engine/extraction_to_wav.h"
#include "engine/extraction_to_wma.h"

namespace tonquay::engine {

using platform::AudioEngine;

namespace {

std::vector<std::wstring> split(std::wstring_view text, wchar_t separator)
{
    std::vector<std::wstring> parts;
    while (true) {
        const std::size_t end = text.find(separator);
        parts.emplace_back(text.substr(0, end));
        if (end == std::wstring_view::npos)
            return parts;
        text.remove_prefix(end + 1);
    }
}

}

EngineForm::EngineForm(state::AppState& state, state::Forms& forms, platform::Platform& platform)
    : context_{.state = state,
               .form = forms.controlsOf<state::Cdrip1Controls>(),
               .ripdeck = forms.ripdeck(),
               .engine = platform.engine,
               .wma = platform.wma,
               .loop = platform.loop,
               .dialogs = platform.dialogs,
               .files = platform.files,
               .log = platform.log},
      playback_(context_),
      driveInfo_(context_),
      positionTimer_(context_, [this] { driveInfo_.LoadTrackList(); })
{
    context_.form.form.onLoad = [this] { load(); };
    context_.form.form.onQueryUnload = [this] { close(); };
    context_.form.tmrPlaybackPosition.bind(platform.loop);
    wireButtons();
}

EngineForm::~EngineForm()
{
    context_.engine.BASS_StreamFree(context_.stream());
}

void EngineForm::load()
{
    constexpr std::int32_t defaultDevice = 1;
    constexpr std::uint32_t frequency = base::red_book::samplesPerSecond;
    state::Cdrip1Controls& form = context_.form;
    AudioEngine& engine = context_.engine;

    engine.BASS_Init(defaultDevice, frequency, 0, 0, 0);
    listDrives();
    LoadWMAEncoderRates();
    context_.wmaTagKeys = split(L"Title,Author,WM/AlbumTitle,Description,Rating,Copyright,WM/Genre,WM/Year", L',');
    const auto startVolume = [&engine] {
        return -static_cast<std::int32_t>(base::roundHalfEven(static_cast<double>(engine.BASS_GetVolume())));
    };
    form.SliderVolume.setValue(startVolume());
    context_.ripdeck.SliderVolume.setValue(startVolume());
    context_.ripdeck.SliderVolume.visible = true;
    hideSliderToolTips();
    form.form.width = state::Cdrip1Controls::plainWidth;
    SetTrackListTabs();
    form.tmrPlaybackPosition.setEnabled(true);
}

void EngineForm::listDrives()
{
    state::Cdrip1Controls& form = context_.form;
    std::int32_t drives = 0;
    AudioEngine::DriveInfo info;
    for (; context_.engine.BASS_CD_GetInfo(static_cast<std::uint32_t>(drives), info); ++drives) {
        const std::string name = ": " + info.vendor + " " + info.product + " " + info.rev;
        form.cmbCDDrives.add(static_cast<wchar_t>(L'A' + info.letter) + base::fromHostBytes(name), drives);
        info = {};
    }
    if (form.cmbCDDrives.rowCount() > 0)
        form.cmbCDDrives.setIndex(0);
    context_.lastDriveIndex = drives - 1;
}

/// One row for each rate that the encoder offers; the first one is chosen.
void EngineForm::LoadWMAEncoderRates()
{
    constexpr double bitsPerKilobit = 1000;
    const std::vector<std::uint32_t> rates =
        context_.wma.BASS_WMA_EncodeGetRates(base::red_book::samplesPerSecond, base::red_book::channels, 0);
    if (rates.empty()) {
        ReportEngineError(context_.log, L"Error: Can't find a codec", context_.wma.BASS_ErrorGetCode());
        return;
    }
    controls::ComboBox& list = context_.form.cmbWMAEncodingBitrate;
    for (const std::uint32_t rate : rates)
        list.add(base::groupedDigits(static_cast<std::int64_t>(base::roundHalfEven(rate / bitsPerKilobit))) + L" Kbps",
                 static_cast<std::int32_t>(rate));
    list.setIndex(0);
}

void EngineForm::hideSliderToolTips()
{
    for (controls::Slider* slider :
         {&context_.form.SliderBalance, &context_.form.SliderPosition, &context_.form.SliderVolume})
        slider->toolTipShown = false;
}

void EngineForm::close()
{
    for (std::int32_t drive = 0; drive <= context_.lastDriveIndex; ++drive)
        context_.engine.BASS_CD_Door(static_cast<std::uint32_t>(drive), AudioEngine::unlockDoor);
    context_.engine.BASS_Stop();
    context_.engine.BASS_Free();
}

void EngineForm::wireButtons()
{
    state::Cdrip1Controls& form = context_.form;
    const auto door = [this](AudioEngine::DoorAction action) {
        context_.stir();
        context_.engine.BASS_CD_Door(context_.engineDrive, action);
    };
    form.cmdButton[state::enginePlay].click = [this] { playback_.PlayTrack(context_.form.lstTracks.index()); };
    form.cmdButton[state::enginePause].click = [this] { playback_.pauseOrResume(); };
    form.cmdButton[state::engineStop].click = [this] { playback_.stop(); };
    form.cmdButton[state::engineLock].click = [door] { door(AudioEngine::lockDoor); };
    form.cmdButton[state::engineUnlock].click = [door] { door(AudioEngine::unlockDoor); };
    form.cmdButton[state::engineOpen].click = [this, door] {
        context_.form.lstTracks.clear();
        playback_.stop();
        door(AudioEngine::openDoor);
    };
    form.cmdButton[state::engineClose].click = [this, door] {
        door(AudioEngine::closeDoor);
        driveInfo_.ShowDriveInfo();
    };
    form.cmdButton[state::engineExtract].click = [this] { extractChosen(); };
    form.cmdButton[state::engineFadeOut].click = [this] { playback_.FadeOutTrack(); };
    form.cmdButton[state::engineDriveInfo].click = [this] { toggleDriveInfo(); };
    auto& [wavOption, wmaOption] = form.optExtractMode;
    wavOption.click = [&form] {
        form.optExtractMode[1].setValue(false);
        form.picWMAExtractOptionsVisible = false;
    };
    wmaOption.click = [&form] {
        form.optExtractMode[0].setValue(false);
        form.picWMAExtractOptionsVisible = true;
    };
}

void EngineForm::extractChosen()
{
    state::Cdrip1Controls& form = context_.form;
    playback_.stop();
    if (form.optExtractMode[0].value())
        ExtractAudioTrackToWav(form.lstTracks.index());
    else
        ExtractAudioTrackToWMA(form.lstTracks.index(), form.cmbWMAEncodingBitrate.chosen().itemData);
}

void EngineForm::toggleDriveInfo()
{
    state::Cdrip1Controls& form = context_.form;
    const bool wide = form.form.width == state::Cdrip1Controls::driveInfoWidth;
    form.form.width = wide ? state::Cdrip1Controls::plainWidth : state::Cdrip1Controls::driveInfoWidth;
    form.cmdButton[state::engineDriveInfo].caption = wide ? L"&Drive Info >>" : L"&Drive Info <<";
}

void EngineForm::ExtractAudioTrackToWav(std::int32_t track)
{
    engine::ExtractAudioTrackToWav(context_, track);
}

void EngineForm::ExtractAudioTrackToWMA(std::int32_t track, std::int32_t bitrate)
{
    engine::ExtractAudioTrackToWMA(context_, track, bitrate);
}

}
