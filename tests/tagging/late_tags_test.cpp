#include "support/fake_host.h"
#include "tagging/late_tags.h"

#include <gtest/gtest.h>

namespace tonquay::tagging {
namespace {

using namespace std::chrono_literals;

constexpr const wchar_t* dawnPath = L"C:\\m\\Dawn.mp3";

/// A run of one track in row 1, whose encoder takes two seconds.
struct LateTag : testing::Test {
    test::FakeHost host;
    platform::Platform platform = host.platform();
    state::AppState state;
    LateTags late{state, platform};

    LateTag()
    {
        state.disc.discArtist = L"Ann";
        state.disc.trackTitles.set(2, L"Dawn");
        state.flags.ripBusy = 1;
        host.files.putFolder(L"C:\\m");
    }

    platform::Processes::Child startEncoder()
    {
        host.processes.scripts = {
            {.named = L"lame", .lasts = 2s, .atEnd = [this](const auto&) { host.files.put(dawnPath, "sound"); }}};
        const auto child = *host.processes.start(L"lame", platform::Processes::WindowStyle::normal);
        late.encoderStarted(1, child, dawnPath);
        return child;
    }

    std::string file() { return *host.files.readAll(dawnPath); }
    int linesOfTags() const
    {
        return static_cast<int>(
            std::ranges::count_if(host.log.lines, [](const auto& l) { return l.starts_with("tags"); }));
    }
};

TEST_F(LateTag, isWrittenWhenTheEncoderHasEndedAndTheRunIsOver)
{
    startEncoder();
    state.disc.trackTitles.set(2, L"Another disc's");
    host.loop.runFor(3s);
    EXPECT_EQ(file(), "sound") << "the run is on, and its own tagger has not had its turn";
    EXPECT_TRUE(late.pending());
    state.flags.ripBusy = 0;
    host.loop.runFor(1s);
    ASSERT_EQ(file().size(), 5 + 128u);
    EXPECT_EQ(file().substr(5, 8), std::string("TAGDawn\0", 8));
    EXPECT_EQ(file().substr(5 + 33, 4), std::string("Ann\0", 4));
    EXPECT_EQ(file().substr(5 + 126, 1), "\x02");
    EXPECT_FALSE(late.pending());
}

TEST_F(LateTag, waitsForAnEncoderThatOutlivesItsRunAlsoThroughTheNextOne)
{
    startEncoder();
    state.flags.ripBusy = 0;
    host.loop.runFor(1s);
    EXPECT_FALSE(host.files.fileExists(dawnPath));
    state.flags.ripBusy = 1;
    host.loop.runFor(2s);
    EXPECT_EQ(file().size(), 5 + 128u);
}

TEST_F(LateTag, makesNoFileAndFollowsNothingThatNeedsNoTag)
{
    host.processes.scripts = {{.named = L"lame"}};
    late.encoderStarted(1, *host.processes.start(L"lame", platform::Processes::WindowStyle::normal), dawnPath);
    late.encoderStarted(1, 0, L"C:\\m\\not started.mp3");
    late.encoderStarted(1, 77, L"C:\\m\\Dawn.ogg");
    state.flags.ripBusy = 0;
    host.loop.runFor(1s);
    EXPECT_FALSE(late.pending());
    EXPECT_FALSE(host.files.fileExists(dawnPath));
}

TEST_F(LateTag, doesNotTouchAFileThatCarriesItAlready)
{
    startEncoder();
    host.loop.runFor(3s);
    state.flags.ripBusy = 0;
    host.loop.runFor(1s);
    const std::string tagged = file();
    ASSERT_EQ(linesOfTags(), 1);
    state.flags.ripBusy = 1;
    host.processes.scripts = {{.named = L"lame", .atEnd = [&](const auto&) { host.files.put(dawnPath, tagged); }}};
    late.encoderStarted(1, *host.processes.start(L"lame", platform::Processes::WindowStyle::normal), dawnPath);
    state.flags.ripBusy = 0;
    host.loop.runFor(1s);
    EXPECT_FALSE(late.pending());
    EXPECT_EQ(linesOfTags(), 1);
    EXPECT_EQ(file(), tagged);
}

}
}
