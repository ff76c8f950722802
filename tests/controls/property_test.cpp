#include "controls/property.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace tonquay::controls {
namespace {

TEST(Property, tellsFollowersOfChangesOnlyAndOnlyWhileTheyFollow)
{
    Property<int> property(1);
    std::vector<int> told;
    std::optional<Following> following = property.follow([&](int value) { told.push_back(value); });
    property = 1;
    property = 2;
    following.reset();
    property = 3;
    EXPECT_EQ(told, std::vector{2});
}

TEST(Property, followersMayComeAndGoWhileOthersAreTold)
{
    Property<int> property(0);
    std::vector<std::string> told;
    std::optional<Following> second;
    std::optional<Following> late;
    const Following first = property.follow([&](int) {
        told.emplace_back("first");
        second.reset();
        if (!late)
            late = property.follow([&](int) { told.emplace_back("late"); });
    });
    second = property.follow([&](int) { told.emplace_back("second"); });
    property = 1;
    const std::vector<std::string> once{"first", "late"};
    EXPECT_EQ(told, once);
}

TEST(Property, followerMaySetTheValueAgain)
{
    Property<int> property(0);
    std::vector<int> told;
    const Following clamp = property.follow([&](int value) {
        if (value > 10)
            property = 10;
    });
    const Following watch = property.follow([&](int value) { told.push_back(value); });
    property = 99;
    EXPECT_EQ(property.get(), 10);
    EXPECT_EQ(told.back(), 10);
}

}
}
