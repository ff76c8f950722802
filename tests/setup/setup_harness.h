#pragma once

#include "setup/setup_page.h"
#include "support/fake_host.h"

#include <gtest/gtest.h>

namespace tonquay::setup {

/// The setup dialog in the fake host, not loaded yet. The way of reading is the drive control unless a test says
/// otherwise, and D: is the chosen drive.
struct Setup : testing::Test {
    test::FakeHost host;
    platform::Platform platform = host.platform();
    state::AppState state;
    state::Forms forms;
    disc::DiscTable table{state, forms, host.acd, host.loop};
    SetupPage page{state, forms, table, platform};
    state::CdriptabControls& form = forms.controlsOf<state::CdriptabControls>();
    state::RipSettings& settings = state.settings;

    std::vector<std::wstring> engineDrives{L"D: Maker Model 1.0"}; ///< as the engine's form lists them

    Setup()
    {
        state::Cdrip1Controls& engine = forms.controlsOf<state::Cdrip1Controls>();
        engine.form.onLoad = [this, &engine] {
            for (const std::wstring& drive : engineDrives)
                engine.cmbCDDrives.add(drive);
        };
        state.folders.appFolder = L"C:\\CDTONQUAY";
        state.folders.windowsFolder = L"C:\\WINDOWS";
        state.path.ripEngineMode = 1;
        settings.ripMethod = 0;
        settings.driveLetter = L"D";
        settings.outputFolder = L"C:\\Music";
        settings.encoderPath = L"C:\\CDTONQUAY\\lame.exe";
        host.files.put(L"C:\\CDTONQUAY\\lame.exe", "program");
        host.files.put(L"C:\\CDTONQUAY\\oggtools\\oggenc.exe", "program");
    }

    void open() { form.form.show(); }

    /// What the user's mouse does with a box.
    static void tick(controls::CheckBox& box, bool on = true)
    {
        box.setValue(on ? 1 : 0);
        box.mouseUp();
    }

    /// The titles and texts of the boxes that were shown, and forgets them.
    std::wstring told()
    {
        std::wstring text;
        for (const auto& box : host.dialogs.boxes)
            text += box.title + L": " + box.text + L"\n";
        host.dialogs.boxes.clear();
        return text;
    }

    void takeAway(std::wstring_view path) { ASSERT_TRUE(host.files.remove(path)); }

    std::string written(std::wstring_view name)
    {
        return host.files.contents(L"C:\\CDTONQUAY\\" + std::wstring(name)).value_or("missing");
    }
};

}
