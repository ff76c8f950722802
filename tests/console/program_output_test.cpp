#include "console/program_output.h"

#include "fake_screen.h"
#include "support/temp_folder.h"

#include <gmock/gmock.h>

#include <fstream>

namespace tonquay::console {
namespace {

using testing::ElementsAre;

TEST(ProgramOutput, showsWholeLinesAsTheyStandAtTheEnd)
{
    const test::TempFolder folder;
    const std::string file = folder.path() + "/out";
    std::ofstream(file) << "of an earlier run\n";
    FakeScreen screen;
    ProgramOutput output(screen, file);
    std::ofstream out(file, std::ios::app);
    out << "first\n\n10 %\r20 %\r\nhalf" << std::flush;
    output.showNew();
    EXPECT_THAT(screen.problems, ElementsAre("first", "20 %"));
    out << " a line\x1b[K\x1b[2;3Hend\x1b[\n" << std::flush;
    output.showNew();
    output.showNew();
    EXPECT_THAT(screen.problems, ElementsAre("first", "20 %", "half a lineend"));
    std::ofstream(file) << "new\n";
    output.showNew();
    EXPECT_THAT(screen.problems, ElementsAre("first", "20 %", "half a lineend", "new"));
}

}
}
