#include "setup/page_choices.h"

namespace tonquay::setup {

PageChoices::PageChoices(state::AppState& state, state::CdriptabControls& form) : state_(state), form_(form)
{
    keepOptions();
    keepTicks();
    for (controls::OptionButton& option : form_.Option4)
        option.click = [this] { scheduleChosen(); };
    form_.List4.click = [this] {
        if (form_.form.isLoaded())
            state_.settings.ripMethod = static_cast<std::int16_t>(form_.List4.index());
    };
    form_.Command12.click = [this] { flipAdvanced(); };
}

void PageChoices::keepOptions()
{
    const auto keep = [this](auto& options, std::int16_t& field) {
        for (std::size_t i = 0; i < static_cast<std::size_t>(options.size()); ++i)
            options[i].click = [this, &field, i] {
                if (form_.form.isLoaded())
                    field = static_cast<std::int16_t>(i);
            };
    };
    keep(form_.Option1, state_.settings.nameFormat);
    keep(form_.Option2, state_.settings.stereo);
    keep(form_.Option3, state_.settings.bitrateIndex);
}

void PageChoices::keepTicks()
{
    state::RipSettings& settings = state_.settings;
    const auto keep = [this](controls::CheckBox& box, std::int16_t& field) {
        box.click = [this, &box, &field] {
            if (form_.form.isLoaded())
                field = box.value();
        };
    };
    keep(form_.Check1, settings.createProgram);
    keep(form_.Check3, settings.autoSelectAll);
    keep(form_.Check4, settings.crcCheck);
    keep(form_.Check5, settings.highPriority);
    keep(form_.Check13, settings.autoClose);

    const auto folders = [this](controls::CheckBox& box, controls::CheckBox& other, std::int16_t mode) {
        box.click = [this, &box, &other, mode] {
            if (!form_.form.isLoaded() || box.value() != 1)
                return;
            state_.settings.dirMode = mode;
            other.setValue(0);
        };
    };
    folders(form_.Check8, form_.Check9, 1);
    folders(form_.Check9, form_.Check8, 2);
}

/// Encoders in the background are for files that are encoded one by one.
void PageChoices::scheduleChosen()
{
    const bool single = form_.Option4[1].value();
    form_.Check2.enabled = single;
    if (!single)
        form_.Check2.setValue(0);
    else if (state_.settings.turboMode == 1)
        form_.Check2.setValue(1);
}

void PageChoices::flipAdvanced()
{
    const bool advanced = form_.Command12.caption.get() == state::advancedCaption;
    form_.SSFrame4.visible = advanced;
    form_.SSFrame1.visible = !advanced;
    form_.Command12.caption = std::wstring(advanced ? state::basicCaption : state::advancedCaption);
}

}
