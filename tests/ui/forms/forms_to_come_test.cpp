#include "ui/forms/forms_to_come.h"

#include "support/fake_host.h"

#include <gtest/gtest.h>

namespace tonquay::ui {
namespace {

TEST(FormsToCome, disableTheirKeysAndGoWhenTheyAreShownAllTheSame)
{
    test::FakeHost host;
    state::Forms forms;
    const FormsToCome toCome(forms, host.dialogs, host.loop);
    EXPECT_FALSE(forms.ripdeck().image10[state::setupKey].enabled);
    EXPECT_TRUE(forms.ripdeck().image10[state::partialKey].enabled) << "it answers for itself";
    EXPECT_FALSE(forms.controlsOf<state::PopaControls>().pop[state::convertEntry].enabled);

    forms.ripdeck().form.windowState = controls::Form::WindowState::minimised;
    forms.controlsOf<state::CdripbgControls>().form.show();
    forms.controlsOf<state::CdriptabControls>().form.show();
    forms.ripdeck().form.enabled = false;
    EXPECT_TRUE(host.dialogs.boxes.empty()) << "whoever shows it is still at it";
    host.loop.pass();
    EXPECT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_FALSE(forms.loaded<state::CdriptabControls>());
    EXPECT_FALSE(forms.loaded<state::CdripbgControls>());
    EXPECT_TRUE(forms.ripdeck().form.enabled);
    EXPECT_EQ(forms.ripdeck().form.windowState.get(), controls::Form::WindowState::normal);
}

}
}
