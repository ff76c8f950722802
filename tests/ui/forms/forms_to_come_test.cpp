#include "ui/forms/forms_to_come.h"

#include "support/fake_host.h"

#include <gtest/gtest.h>

namespace tonquay::ui {
namespace {

TEST(FormsToCome, goWhenTheyAreShown)
{
    test::FakeHost host;
    state::Forms forms;
    const FormsToCome toCome(forms, host.dialogs, host.loop);
    forms.controlsOf<state::CdrecaltControls>().form.show();
    EXPECT_TRUE(host.dialogs.boxes.empty()) << "whoever shows it is still at it";
    host.loop.pass();
    EXPECT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_FALSE(forms.loaded<state::CdrecaltControls>());
}

}
}
