#pragma once

#include "controls/form.h"

namespace tonquay::state {

/// The frame behind the setup dialog.
struct CdripbgControls {
    controls::Form form;
};

}
