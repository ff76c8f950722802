#pragma once

#include "platform/platform.h"
#include "support/fake_acd_control.h"
#include "support/fake_audio_engine.h"
#include "support/fake_clock.h"
#include "support/fake_diagnostics.h"
#include "support/fake_dialogs.h"
#include "support/fake_discs.h"
#include "support/fake_event_loop.h"
#include "support/fake_file_system.h"
#include "support/fake_help_viewer.h"
#include "support/fake_mci.h"
#include "support/fake_processes.h"
#include "support/fake_settings_store.h"
#include "support/fake_system_info.h"
#include "support/fake_wma_encoder.h"

namespace tonquay::test {

/// A whole world for a test, in memory and on fake time. Each part can be scripted and looked into by itself.
struct FakeHost {
    FakeClock clock;
    FakeDiagnostics log;
    FakeEventLoop loop{clock};
    FakeFileSystem files;
    FakeProcesses processes{loop, files};
    FakeDialogs dialogs;
    FakeAudioEngine engine{clock, loop};
    FakeWmaEncoder wma;
    FakeAcdControl acd;
    FakeMci mci{clock, files};
    FakeSettingsStore settings;
    FakeSystemInfo system;
    FakeHelpViewer help;
    FakeDiscs discs;

    platform::Platform platform()
    {
        return {files, processes, loop, clock, dialogs, engine, wma, acd, mci, settings, system, help, log};
    }
};

}
