#pragma once

#include "rip/analog_capture.h"
#include "rip/rip_driver.h"
#include "support/fake_host.h"

#include <gtest/gtest.h>

namespace tonquay::rip {

/// Bytes of sound.
inline constexpr std::int32_t second = 176400;

/// The rip driver in the fake host: a disc of three tracks, all selected, to be ripped into C:\Music. No encoder is
/// wanted yet.
struct DiscToRip {
    test::FakeHost host;
    platform::Platform platform = host.platform();
    state::AppState state;
    state::Forms forms;
    engine::EngineForm engine{state, forms, platform};
    AnalogCapture analog{state, forms, platform};
    ProgramFiles programFiles{state, forms, platform};
    encode::EncoderPipeline encoders{state, forms, platform};
    TrackExtraction extraction{state, forms, engine, platform};
    RipDriver driver{state, forms, extraction, encoders, programFiles, platform};
    state::RipdeckControls& main = forms.ripdeck();

    DiscToRip()
    {
        host.engine.insertDisc(0, {2 * second, second, 3 * second});
        host.files.putFolder(L"C:\\Music");
        state.folders.windowsFolder = L"C:\\WINDOWS";
        state.settings.outputFolder = L"C:\\Music";
        state.settings.dirMode = 0;
        state.settings.encodeWanted = 0;
        state.settings.createProgram = 0;
        state.disc.discArtist = L"AC/DC";
        state.disc.trackCount = 3;
        const wchar_t* titles[] = {L"Dawn", L"No?on", L"Dusk"};
        for (int i = 0; i < 3; ++i) {
            state.disc.trackTitles.set(i + 1, titles[i]);
            main.list1.add(titles[i]);
            main.list1.select(i, true);
        }
    }

    std::string file(const wchar_t* name) { return host.files.contents(name).value_or("no file"); }
    bool isWhole(const wchar_t* name, int track, int seconds)
    {
        const std::string bytes = file(name);
        return bytes.size() > 44 && bytes.substr(44) == test::FakeAudioEngine::pattern(track, seconds * second);
    }
};

struct Run : testing::Test, DiscToRip {};

}
