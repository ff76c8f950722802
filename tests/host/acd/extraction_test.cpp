#include "faulty_disc.h"

#include "host/acd/extraction.h"
#include "support/fake_file_system.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>

namespace tonquay::host::test {
namespace {

using platform::DecodeReport;
using testing::HasSubstr;

/// One extraction of a whole disc of one track, without a control above it.
struct OneExtraction : testing::Test {
    std::shared_ptr<DiscContents> contents = std::make_shared<DiscContents>(std::vector<int>{400});
    std::shared_ptr<Faults> faults = std::make_shared<Faults>();
    tonquay::test::FakeFileSystem files;
    TestLog log;
    ThreadReaper reaper;
    std::promise<DecodeReport> ended;

    std::unique_ptr<Extraction> start()
    {
        Extraction::Job job;
        job.disc = std::make_shared<FaultyDisc>(contents, faults);
        job.bytes = 400 * 2352;
        job.allowed = {0, 400};
        job.mode = SectorReader::Mode::normal;
        job.file = std::move(*files.openBinary(L"C:\\a.wav"));
        job.name = "drive D, track 1";
        job.patience = std::chrono::milliseconds(20);
        Extraction::Calls calls{.progress = [](std::int32_t) {},
                                .ended = [this](const DecodeReport& report) { ended.set_value(report); }};
        return std::make_unique<Extraction>(std::move(job), std::move(calls), log, reaper);
    }

    bool eventuallySays(const char* words)
    {
        const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (log.lines().find(words) == std::string::npos && std::chrono::steady_clock::now() < limit)
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        return log.lines().find(words) != std::string::npos;
    }
};

TEST_F(OneExtraction, aDriveThatHangsIsInTheLogAndCanBeLeft)
{
    contents->hold(true);
    auto extraction = start();
    EXPECT_TRUE(eventuallySays("no sound for 0 s behind second 0 of the track; the drive does not answer"));
    extraction->abort();
    EXPECT_EQ(ended.get_future().get().end, DecodeReport::End::stopped);
    extraction.reset();
    EXPECT_EQ(reaper.waiting(), 1U) << "its reader is still inside the drive";
    contents->hold(false);
}

TEST_F(OneExtraction, aDriveThatTriesAgainIsNotTakenForOneThatHangs)
{
    faults->slowMs = 4;
    for (int sector = 0; sector < 400; ++sector)
        faults->bad.insert(sector);
    const auto extraction = start();
    EXPECT_TRUE(eventuallySays("the drive tries again"));
}

TEST_F(OneExtraction, aSlowDriveOnlyTakesLonger)
{
    faults->slowMs = 2;
    const auto extraction = start();
    EXPECT_EQ(ended.get_future().get().end, DecodeReport::End::complete);
    EXPECT_EQ(files.length(L"C:\\a.wav"), 44 + 400 * 2352);
}

}
}
