#pragma once

#include "deck/disc_watch.h"
#include "deck/popup_menu.h"
#include "deck/run_commands.h"
#include "deck/start_up.h"
#include "engine/engine_form.h"
#include "rip/analog_capture.h"
#include "support/fake_host.h"

#include <gtest/gtest.h>

namespace tonquay::deck {

/// Bytes of sound.
inline constexpr std::int32_t second = 176400;

/// The deck in the fake host: a disc of three tracks in the drive, nothing started yet.
struct Deck : testing::Test {
    test::FakeHost host;
    platform::Platform platform = host.platform();
    state::AppState state;
    state::Forms forms;
    engine::EngineForm engine{state, forms, platform};
    disc::DiscTable table{state, forms, host.acd, host.loop};
    ProgramEnd programEnd{state, forms.ripdeck(), platform};
    CommandKeys keys{state, forms, programEnd, platform};
    StartUp startUp{state, forms, table, platform};
    DiscWatch watch{state, forms.ripdeck(), programEnd, platform};
    Shell shell{state, forms, platform};
    Preview preview{state, forms, engine.playback(), platform};
    rip::AnalogCapture analog{state, forms, platform};
    rip::ProgramFiles programFiles{state, forms, platform};
    encode::EncoderPipeline encoders{state, forms, platform};
    rip::TrackExtraction extraction{state, forms, engine, platform};
    rip::RipDriver driver{state, forms, extraction, encoders, programFiles, platform};
    RunCommands runCommands{state, forms, driver, preview, platform};
    PopupMenu menu{state, forms, {keys, programEnd, shell, driver, programFiles}};
    state::RipdeckControls& main = forms.ripdeck();

    Deck() { host.engine.insertDisc(0, {20 * second, 30 * second, 40 * second}); }

    void handOver(const std::string& album = "First Light")
    {
        std::string text = "\"Ann Lee\",\"" + album + "\",3,\"Dawn\",\"Noon\",\"Dusk\"";
        for (int i = 4; i <= 100; ++i)
            text += ",\"\"";
        host.files.put(L"C:\\CDTONQUAY\\audiocd.dat", text + ",\"at home\",\"Rock\",\"\",\"D\"\r\n");
        host.files.discTracks[L'D'] = 3;
    }
};

}
