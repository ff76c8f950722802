#pragma once

#include "engine/engine_context.h"

namespace tonquay::engine {

/// What the drive in use can do, and the tracks of the disc in it.
class DriveInfo {
public:
    explicit DriveInfo(EngineContext& context);

    /// The chosen row of cmbCDDrives becomes the drive in use.
    void cmbCDDrives_Click();

    /// Fills the display of the drive's abilities and enables the door keys that it can serve.
    void ShowDriveInfo();

    /// Lists the audio tracks in lstTracks, with titles as the disc's names stand, and takes their lengths over into
    /// the disc's table. A data track gets no row. Without a disc the list stays empty.
    void LoadTrackList();

private:
    EngineContext& c_;
};

}
