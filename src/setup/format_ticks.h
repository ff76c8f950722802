#pragma once

#include "platform/file_system.h"
#include "setup/setup_state.h"
#include "state/app_state.h"
#include "state/cdriptab_controls.h"

#include <cstddef>
#include <string>

namespace tonquay::setup {

/// The ticks of the file formats. Several may be on; what excludes each other is unticked, and each brings the encoder
/// of its own from the program folder, when there is one.
class FormatTicks {
public:
    FormatTicks(state::AppState& state, state::CdriptabControls& form, SetupState& page, platform::FileSystem& files);

    /// What a release of the mouse on the box of a format does; the tick itself is set by then.
    void act(state::FileFormat format);

private:
    void actMp3();
    void actOgg();
    void actWma();
    void untick(state::FileFormat format) { form_.riptofile[format].setValue(0); }
    void choose(const std::wstring& encoder);
    void enableMp3Choices(bool enabled);

    state::AppState& state_;
    state::CdriptabControls& form_;
    SetupState& page_;
    platform::FileSystem& files_;
};

}
