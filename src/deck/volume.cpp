#include "deck/volume.h"

#include "base/numbers.h"
#include "engine/playback.h"

namespace tonquay::deck {

namespace {

constexpr std::int32_t middleVolume = -50;

}

void wireVolume(state::RipdeckControls& ripdeck, state::Cdrip1Controls& engine)
{
    ripdeck.SliderVolume.change = [&ripdeck, &engine] {
        engine.SliderVolume.setValue(ripdeck.SliderVolume.value());
        ripdeck.SliderVolume.toolTip = base::digits(engine::shownVolume(ripdeck.SliderVolume.value()));
    };
    ripdeck.SliderBalance.change = [&ripdeck, &engine] {
        engine.SliderBalance.setValue(ripdeck.SliderBalance.value());
        ripdeck.SliderBalance.toolTip = base::digits(ripdeck.SliderBalance.value());
    };
    ripdeck.Label2.mouseUp = [&ripdeck](controls::MouseButton) { ripdeck.SliderBalance.setValue(0); };
    ripdeck.SSPanel2.mouseUp = [&ripdeck](controls::MouseButton) { ripdeck.SliderVolume.setValue(middleVolume); };
}

}
