#pragma once

#include "controls/form.h"

namespace tonquay::state {

/// The frame behind the setup dialog.
struct CdripbgControls {
    controls::Form form;
};

/// Analog capture.
struct CdrecaltControls {
    controls::Form form;
    controls::Handler<> cmdCancel;
};

}
