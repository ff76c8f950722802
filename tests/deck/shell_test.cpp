#include "deck/caption_size.h"
#include "deck/pressed_looks.h"
#include "deck/volume.h"
#include "deck_harness.h"

#include <gmock/gmock.h>

namespace tonquay::deck {
namespace {

using controls::MouseButton;
using platform::Dialogs;
using testing::ElementsAre;

TEST_F(Deck, mixerIsStartedFromEachOfItsPlacesAndMissedInWords)
{
    state.window.mixerPath = L"C:\\usr\\bin\\mixer";
    host.processes.scripts = {{.named = L"mixer"}};
    main.Image15.mouseDown(MouseButton::left);
    EXPECT_EQ(main.Image15.picture.get(), state::pressedLook);
    main.Image15.mouseUp(MouseButton::left);
    EXPECT_EQ(main.Image15.picture.get(), state::idleLook);
    main.mixicon.mouseUp(MouseButton::left);
    main.SSPanel1.mouseUp(MouseButton::left);
    main.SSPanel1.mouseUp(MouseButton::right);
    EXPECT_EQ(host.processes.started.size(), 3U) << "the left button on the panel is for its sliders";
    EXPECT_THAT(host.dialogs.boxes, testing::IsEmpty());

    state.window.mixerPath = L"C:\\gone.exe";
    main.mixicon.mouseUp(MouseButton::left);
    EXPECT_THAT(host.dialogs.boxes,
                ElementsAre(test::FakeDialogs::Box{
                    L"CD-Tonquay", L"            Audio Mixer Application NOT FOUND!\n\nUse the Setup command to "
                                   L"enter the mixer application."}));
}

TEST_F(Deck, keysAndBackgroundOfTheWindow)
{
    state.folders.appFolder = L"C:\\CDTONQUAY";
    int held = 0;
    const auto following = main.form.heldByPointer.add([&held] { ++held; });
    main.form.mouseDown(MouseButton::left);
    EXPECT_EQ(held, 1);
    main.form.left = 5;
    main.form.doubleClick();
    EXPECT_EQ(main.form.left.get(), (1920 * 15 - main.form.width) / 2);
    main.form.keyDown(controls::Key::f1);
    EXPECT_THAT(host.help.shown, ElementsAre(testing::Pair(L"C:\\CDTONQUAY\\tqhelp\\cdtonquay.chm", 1008)));
    EXPECT_THROW(main.form.keyDown(controls::Key::escape), test::ProgramEnded);
    EXPECT_TRUE(host.files.fileExists(L"C:\\CDTONQUAY\\RIPPOS.DAT")) << "the place is kept";
}

TEST_F(Deck, captionsGrowAndShrinkTogetherAndTheTitleKeepsItsDistance)
{
    wireCaptionSize(main);
    main.Label12.left = 100;
    main.Label12.width = 3000;
    main.Label12.mouseDown(MouseButton::right);
    main.Label13.mouseDown(MouseButton::right);
    EXPECT_EQ(main.Label12.fontSize.get(), 16);
    EXPECT_EQ(main.Label13.fontSize.get(), 16);
    EXPECT_EQ(main.Label13.left.get(), 3150);
    for (int i = 0; i < 40; ++i)
        main.Label13.mouseDown(MouseButton::left);
    EXPECT_EQ(main.Label12.fontSize.get(), 6) << "can still be read";
    for (int i = 0; i < 80; ++i)
        main.Label12.mouseDown(MouseButton::right);
    EXPECT_EQ(main.Label13.fontSize.get(), 36);
}

TEST_F(Deck, captionsOfVolumeAndBalancePutThemInTheirMiddle)
{
    wireVolume(main, forms.controlsOf<state::Cdrip1Controls>());
    main.SliderVolume.drag(-7);
    main.SliderBalance.drag(80);
    main.SSPanel2.mouseUp(MouseButton::left);
    main.Label2.mouseUp(MouseButton::left);
    EXPECT_EQ(main.SliderVolume.value(), -50);
    EXPECT_EQ(main.SliderVolume.toolTip.get(), L"5");
    EXPECT_EQ(main.SliderBalance.value(), 0);
    EXPECT_EQ(main.SliderBalance.toolTip.get(), L"0");
}

TEST_F(Deck, keysShowAsPressedWhileTheyAreHeld)
{
    wirePressedLooks(main);
    for (controls::Image* key : {&main.icntla[state::stopButton], &main.icntla[state::startButton],
                                 &main.icntla[state::nextButton], &main.image10[state::clearAllKey]}) {
        key->mouseDown(MouseButton::left);
        EXPECT_EQ(key->picture.get(), state::pressedLook);
        key->mouseUp(MouseButton::left);
        EXPECT_EQ(key->picture.get(), state::idleLook);
    }
}

TEST_F(Deck, menuOpensFromEachOfItsPlacesAndClosesWithItsForm)
{
    state::PopaControls& popa = forms.controlsOf<state::PopaControls>();
    int opened = 0;
    const auto following = popa.popopt.opened.add([&opened] { ++opened; });
    const std::vector<std::function<void()>> places{[this] { main.tqtxt.mouseUp(MouseButton::left); },
                                                    [this] { main.Image95.mouseUp(MouseButton::left); },
                                                    [this] { main.form.mouseDown(MouseButton::right); }};
    for (const auto& open : places)
        open();
    EXPECT_EQ(opened, 3);
    EXPECT_TRUE(popa.form.isLoaded());
    popa.popopt.closed();
    EXPECT_FALSE(popa.form.isLoaded());
}

}
}
