#include "deck/volume.h"

#include "base/numbers.h"

namespace tonquay::deck {

namespace {

constexpr std::int32_t middleVolume = -50;

}

void wireVolume(state::RipdeckControls& ripdeck, engine::Playback& playback)
{
    ripdeck.SliderVolume.change = [&ripdeck, &playback] {
        playback.applyVolume(ripdeck.SliderVolume.value());
        ripdeck.SliderVolume.toolTip = base::digits(engine::shownVolume(ripdeck.SliderVolume.value()));
    };
    ripdeck.SliderBalance.change = [&ripdeck, &playback] {
        playback.applyBalance(ripdeck.SliderBalance.value());
        ripdeck.SliderBalance.toolTip = base::digits(ripdeck.SliderBalance.value());
    };
    ripdeck.Label2.mouseUp = [&ripdeck](controls::MouseButton) { ripdeck.SliderBalance.setValue(0); };
    ripdeck.SSPanel2.mouseUp = [&ripdeck](controls::MouseButton) { ripdeck.SliderVolume.setValue(middleVolume); };
}

}
