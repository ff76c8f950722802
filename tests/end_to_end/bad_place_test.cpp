#include "end_to_end/sandbox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <sys/mount.h>
#include <unistd.h>

namespace tonquay::test {

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;

/// A file system of a few megabytes of its own, at a folder.
class SmallDisk {
public:
    SmallDisk(fs::path folder, int kibibytes) : folder_(std::move(folder))
    {
        fs::create_directories(folder_);
        const std::string options = "size=" + std::to_string(kibibytes) + "k";
        mounted_ = ::mount("tmpfs", folder_.c_str(), "tmpfs", 0, options.c_str()) == 0;
        error_ = errno;
    }
    ~SmallDisk()
    {
        if (mounted_)
            ::umount2(folder_.c_str(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool mounted() const { return mounted_; }
    std::string problem() const { return std::string("no small disk can be mounted here: ") + std::strerror(error_); }

    /// Takes all room but so many KiB.
    void fill(int kibibytesLeft) const
    {
        const auto left = static_cast<std::uintmax_t>(kibibytesLeft) * 1024;
        const auto free = fs::space(folder_).available;
        const int file = ::open((folder_ / "filler").c_str(), O_WRONLY | O_CREAT, 0600);
        EXPECT_EQ(::posix_fallocate(file, 0, static_cast<off_t>(free > left ? free - left : 0)), 0);
        ::close(file);
    }

private:
    fs::path folder_;
    bool mounted_ = false;
    int error_ = 0;
};

}

TEST(BadPlace, outputFoldersThatCannotBeMade)
{
    struct Case {
        const char* what;
        std::string folder;
    };
    const Sandbox box;
    writeFile(box.root() / "run" / "file", std::string("mine"));
    fs::create_symlink("nowhere/at/all", box.root() / "run" / "link");
    const fs::path disc = makeDisc(box.discs(), plainDisc(1, 10));
    const std::vector<Case> cases{
        {"a file", "run/file"},
        {"under a file", "run/file/music"},
        {"where nothing can be made", "/proc/music"},
        {"a device", "/dev/null"},
        {"under a device", "/dev/null/music"},
        {"a link to nowhere", "run/link"},
        {"a name of 300 characters", std::string(300, 'x')},
        {"a path of 5000 characters",
         [] {
             std::string path;
             while (path.size() < 5000)
                 path += "folder/";
             return path;
         }()},
    };
    for (const Case& c : cases) {
        const Ended ended = box.rip(disc, {"--output", c.folder});
        EXPECT_EQ(ended.status, 2) << c.what << ended.all();
        EXPECT_TRUE(isProblemLines(ended.err) || c.folder.size() > 2000) << c.what << ended.err;
        EXPECT_EQ(std::count(ended.err.begin(), ended.err.end(), '\n'), 1) << c.what << ended.err;
        EXPECT_EQ(ended.out, "") << c.what;
        EXPECT_EQ(box.strays(), "") << c.what;
    }
    EXPECT_EQ(readFile(box.root() / "run" / "file").size(), 4u);
}

TEST(BadPlace, aFolderOfThatNameCostsItsTrackOnly)
{
    const Sandbox box;
    const DiscPlan plan = plainDisc(3, 10);
    const fs::path disc = makeDisc(box.discs(), plan);
    fs::create_directories(box.out() / "Ann Lee/First Light/Song 2.wav");
    const Ended ended = box.rip(disc);
    EXPECT_EQ(ended.status, 1) << ended.all();
    EXPECT_THAT(ended.err, HasSubstr("track 2"));
    EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
    EXPECT_EQ(difference(treeOf(box.out()), {{"Ann Lee/First Light/Song 1.wav", ripped(plan, 0)},
                                             {"Ann Lee/First Light/Song 2.wav/", {}},
                                             {"Ann Lee/First Light/Song 3.wav", ripped(plan, 2)}}),
              "");
}

TEST(BadPlace, aFileInTheWayOfTheArtistsFolderIsRefused)
{
    const Sandbox box;
    const fs::path disc = makeDisc(box.discs(), plainDisc(1, 10));
    fs::create_directories(box.out());
    writeFile(box.out() / "Ann Lee", std::string("mine"));
    const Ended ended = box.rip(disc);
    EXPECT_EQ(ended.status, 2) << ended.all();
    EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
    EXPECT_EQ(treeOf(box.out()).size(), 1u);
}

TEST(BadPlace, aFullDiskIsSeenBeforeTheRun)
{
    const Sandbox box;
    const SmallDisk disk(box.out(), 1024);
    if (!disk.mounted())
        GTEST_SKIP() << disk.problem();
    const fs::path disc = makeDisc(box.discs(), plainDisc(3, 300));
    const Ended ended = box.rip(disc);
    EXPECT_EQ(ended.status, 2) << ended.all();
    EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
    EXPECT_THAT(ended.err, AllOf(HasSubstr("MB are needed"), HasSubstr("make room")));
    EXPECT_TRUE(treeOf(box.out()).empty());

    EXPECT_EQ(box.rip(disc, {"--tracks", "2"}).status, 0) << "one track has room";
}

TEST(BadPlace, aDiskThatFillsUpWhileTracksAreWritten)
{
    const Sandbox box;
    const SmallDisk disk(box.out(), 30 << 10);
    if (!disk.mounted())
        GTEST_SKIP() << disk.problem();
    const DiscPlan plan = plainDisc(4, 3000);
    const fs::path disc = makeDisc(box.discs(), plan);
    const auto rip = box.stoppedInFirstTrack(disc, "Ann Lee/First Light");
    disk.fill(8 << 10);
    rip->send(SIGCONT);
    const Ended ended = rip->wait();
    ASSERT_EQ(ended.status, 1) << ended.all();
    EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
    const Tree files = treeOf(box.out());
    int whole = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        const std::string name = "Ann Lee/First Light/" + plan.tracks[i].title + ".wav";
        const auto found = files.find(name);
        const bool good = found != files.end() && found->second == ripped(plan, i);
        whole += good ? 1 : 0;
        EXPECT_EQ(ended.err.find(name) == std::string::npos, good) << name << ended.all();
    }
    EXPECT_LT(whole, 4);
    EXPECT_THAT(ended.out, HasSubstr("\"whole\":" + std::to_string(whole) + ","));
}

TEST(BadPlace, aFullDiskForItsOwnFolderIsSaid)
{
    const Sandbox box;
    const SmallDisk disk(box.root() / "tmp", 4);
    if (!disk.mounted())
        GTEST_SKIP() << disk.problem();
    disk.fill(0);
    const DiscPlan plan = plainDisc(1, 10);
    const Ended ended = box.rip(makeDisc(box.discs(), plan));
    EXPECT_EQ(ended.status, 2) << ended.all();
    EXPECT_TRUE(isProblemLines(ended.err)) << ended.err;
    EXPECT_TRUE(treeOf(box.out()).empty());
}

TEST(BadPlace, withoutAHomeOrATemporaryFolder)
{
    const Sandbox box;
    const DiscPlan plan = plainDisc(1, 10);
    const fs::path disc = makeDisc(box.discs(), plan);
    const Ended lost =
        box.rip(disc, {}, {{"HOME", ""}, {"XDG_DATA_HOME", "/dev/null/x"}, {"XDG_STATE_HOME", "/dev/null/x"}});
    EXPECT_EQ(lost.status, 0) << "neither settings nor a log are needed: " << lost.all();
    EXPECT_EQ(difference(treeOf(box.out()), {{"Ann Lee/First Light/Song 1.wav", ripped(plan, 0)}}), "");

    const Ended noTemp = box.rip(disc, {"--names", "number"}, {{"TMPDIR", "/dev/null"}});
    EXPECT_EQ(noTemp.status, 2) << noTemp.all();
    EXPECT_TRUE(isProblemLines(noTemp.err)) << noTemp.err;
}

}
