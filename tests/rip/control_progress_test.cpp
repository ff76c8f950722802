#include "rip/control_progress.h"
#include "support/fake_host.h"

#include <gtest/gtest.h>

namespace tonquay::rip {
namespace {

struct Progress : testing::Test {
    test::FakeHost host;
    state::AppState state;
    state::RipdeckControls main;
    ControlProgress progress{state, main, host.acd};

    void run(int selected, int inHand)
    {
        state.run.selectedCount = selected;
        state.run.rippedCount = inHand;
    }
};

TEST_F(Progress, trackAndTotalFollowTheControl)
{
    struct Case {
        const char* what;
        int selected, inHand;
        std::int32_t tenths;
        std::int16_t track, total;
    };
    const Case cases[] = {
        {"the first of four", 4, 1, 500, 50, 13}, // 12.5
        {"the last of four", 4, 4, 1000, 100, 100},    {"rounded up", 2, 1, 504, 50, 25},
        {"rounded down", 2, 2, 505, 51, 76}, // 50.5 and 75.5
        {"more than the track", 1, 1, 4000, 100, 100}, {"less than nothing", 1, 1, -20, 0, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        run(c.selected, c.inHand);
        main.Label6[state::trackPercentText].caption = L"";
        host.acd.raiseProgress(c.tenths);
        EXPECT_EQ(main.Trackprogress.value.get(), c.track);
        EXPECT_EQ(main.Totalprogress.value.get(), c.total);
        EXPECT_EQ(main.Label6[state::trackPercentText].caption.get(), std::to_wstring(c.track) + L"%");
        EXPECT_EQ(main.Label6[state::totalPercentText].caption.get(), std::to_wstring(c.total) + L"%");
    }
}

TEST_F(Progress, totalIsNotFullBeforeTheTrackIs)
{
    run(3, 3);
    host.acd.raiseProgress(980);
    EXPECT_EQ(main.Totalprogress.value.get(), 99);
    host.acd.raiseProgress(990);
    EXPECT_EQ(main.Trackprogress.value.get(), 99);
    EXPECT_EQ(main.Totalprogress.value.get(), 99) << "99.67 would show as 100";
    host.acd.raiseProgress(1000);
    EXPECT_EQ(main.Totalprogress.value.get(), 100);
}

TEST_F(Progress, sameTextChangesNothingElse)
{
    run(2, 1);
    host.acd.raiseProgress(300);
    run(2, 2);
    host.acd.raiseProgress(301);
    EXPECT_EQ(main.Totalprogress.value.get(), 15);
    host.acd.raiseDone();
    EXPECT_TRUE(state.flags.acdTrackDone);
}

}
}
