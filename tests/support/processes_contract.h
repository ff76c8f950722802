#pragma once

#include "platform/event_loop.h"
#include "platform/file_system.h"
#include "platform/processes.h"

#include <gtest/gtest.h>

#include <string>

/// What every Processes must do, run on the fake one and on the real one.
///
/// A `World` is default-constructible and has
///     platform::Processes& processes();
///     platform::EventLoop& loop();
///     platform::FileSystem& files();
///     std::wstring command();     of a child that lives for a moment with C:\out.mp3 as its output, then ends with 3
namespace tonquay::test {

template <class World>
class ProcessesContract : public ::testing::Test {
protected:
    static constexpr auto style = platform::Processes::WindowStyle::normal;

    int waitFor(platform::Processes::Child child)
    {
        std::optional<int> code;
        platform::waitUntil(world_.loop(), [&] {
            code = world_.processes().exitCode(child);
            return code.has_value();
        });
        return *code;
    }

    World world_;
};

TYPED_TEST_SUITE_P(ProcessesContract);

TYPED_TEST_P(ProcessesContract, aChildTellsItsExitCodeOnceAfterItsEnd)
{
    auto& processes = this->world_.processes();
    const auto child = processes.start(this->world_.command(), this->style);
    ASSERT_TRUE(child);
    EXPECT_NE(*child, 0u);
    EXPECT_EQ(processes.exitCode(*child), std::nullopt);
    EXPECT_EQ(this->waitFor(*child), 3);
    EXPECT_EQ(processes.exitCode(*child), 0);
}

TYPED_TEST_P(ProcessesContract, childrenRunSideBySide)
{
    const auto one = this->world_.processes().start(this->world_.command(), this->style);
    const auto two = this->world_.processes().start(this->world_.command(), this->style);
    ASSERT_TRUE(one && two);
    EXPECT_NE(*one, *two);
    EXPECT_EQ(this->waitFor(*two), 3);
    EXPECT_EQ(this->waitFor(*one), 3);
}

TYPED_TEST_P(ProcessesContract, whatIsNoChildAnswersZeroAndAMissingProgramDoesNotStart)
{
    auto& processes = this->world_.processes();
    EXPECT_EQ(processes.exitCode(0), 0);
    EXPECT_EQ(processes.exitCode(4711), 0);
    for (const wchar_t* command : {L"C:\\no\\such\\program.exe \"x\"", L"nosuchprogram -h", L""}) {
        const auto child = processes.start(command, this->style);
        ASSERT_FALSE(child);
        EXPECT_EQ(child.failure().kind, base::Failure::Kind::notFound);
    }
}

TYPED_TEST_P(ProcessesContract, theOutputOfALivingChildCannotBeOpenedForWriting)
{
    auto& files = this->world_.files();
    const auto child = this->world_.processes().start(this->world_.command(), this->style);
    ASSERT_TRUE(child);
    EXPECT_FALSE(files.openBinary(L"C:\\OUT.mp3"));
    EXPECT_FALSE(files.writeWhole(L"C:\\out.MP3", "x"));
    EXPECT_EQ(this->waitFor(*child), 3);
    EXPECT_TRUE(files.openBinary(L"C:\\out.mp3"));
}

REGISTER_TYPED_TEST_SUITE_P(ProcessesContract, aChildTellsItsExitCodeOnceAfterItsEnd, childrenRunSideBySide,
                            whatIsNoChildAnswersZeroAndAMissingProgramDoesNotStart,
                            theOutputOfALivingChildCannotBeOpenedForWriting);

}
