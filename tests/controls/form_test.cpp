#include "controls/form.h"

#include <gtest/gtest.h>

#include <vector>

namespace tonquay::controls {
namespace {

struct Recorded : Form {
    std::vector<std::string> events;

    Recorded()
    {
        onLoad = [this] { events.emplace_back("load"); };
        onQueryUnload = [this] { events.emplace_back("query"); };
        design = [this] { events.emplace_back("design"); };
    }
};

TEST(Form, loadsOnceAndAfreshAfterAnUnload)
{
    Recorded form;
    form.show();
    form.load();
    form.show();
    EXPECT_EQ(form.state(), Form::State::shown);
    form.unload();
    form.unload();
    form.load();
    const std::vector<std::string> events{"load", "query", "design", "load"};
    EXPECT_EQ(form.events, events);
    EXPECT_EQ(form.state(), Form::State::loaded);
}

TEST(Form, unloadedByItsOwnLoadHandlerGoesWhenTheHandlerIsThrough)
{
    Recorded form;
    bool loadedInside = false;
    form.onLoad = [&] {
        form.unload();
        loadedInside = form.isLoaded();
    };
    form.show();
    EXPECT_TRUE(loadedInside);
    EXPECT_FALSE(form.isLoaded());
    EXPECT_EQ(form.events.back(), "design");
}

}
}
