#include "host/system/program_folder.h"

#include "host/system/recorded_folder.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <unistd.h>

namespace {

using namespace tonquay;
namespace fs = std::filesystem;
using Kind = base::Failure::Kind;

class ProgramFolder : public ::testing::Test {
protected:
    ProgramFolder()
    {
        for (const char* name : {"one/lame", "one/oggenc", "one/vorbiscomment", "two/lame", "tonquay-oggtool"})
            program(name);
    }

    void program(const std::string& name)
    {
        fs::create_directories(fs::path(folder / name).parent_path());
        test::writeHostFile(folder / name, "#!/bin/sh\n");
        fs::permissions(folder / name, fs::perms(0755));
    }

    platform::MachinePrograms refresh(const std::string& path) const
    {
        return host::ProgramFolder({programs, path, adapter}).refresh();
    }

    std::string target(const std::string& name) const
    {
        std::error_code error;
        return fs::read_symlink(programs + '/' + name, error);
    }

    test::TempFolder folder;
    const std::string programs = folder / "programs";
    std::string adapter = folder / "tonquay-oggtool";
    const std::string one = folder / "one";
    const std::string two = folder / "two";
};

TEST_F(ProgramFolder, linksFollowWhatTheMachineHas)
{
    auto found = refresh("::relative:" + folder / "none:" + one + ':' + two);
    EXPECT_TRUE(found.lame && found.oggenc && found.vorbiscomment);
    EXPECT_EQ(target("lame.exe"), one + "/lame");
    for (const char* name : {"oggtools/oggenc.exe", "oggtools/oggencp4.exe", "oggtools/vorbiscomment.exe"})
        EXPECT_EQ(target(name), adapter) << name;

    program("new place/tonquay-oggtool");
    adapter = folder / "new place/tonquay-oggtool";
    fs::remove(folder / "tonquay-oggtool");
    found = refresh(two + ':' + one);
    EXPECT_TRUE(found.lame && found.oggenc && found.vorbiscomment);
    EXPECT_EQ(target("lame.exe"), two + "/lame") << "moved";
    EXPECT_EQ(target("oggtools/oggenc.exe"), adapter) << "moved";

    fs::remove(folder / "two/lame");
    found = refresh(two);
    EXPECT_EQ(found.lame.failure().kind, Kind::notFound);
    EXPECT_EQ(base::describe(found.oggenc.failure()), "oggenc: no such program on PATH");
    EXPECT_EQ(found.vorbiscomment.failure().kind, Kind::notFound);
    EXPECT_FALSE(fs::exists(fs::symlink_status(programs + "/lame.exe")));
    EXPECT_TRUE(fs::is_empty(programs + "/oggtools"));
}

TEST_F(ProgramFolder, whatAUserPutThereStays)
{
    fs::create_directories(programs + "/oggtools/oggenc.exe");
    program("programs/lame.exe");
    program("mine/vorbiscomment");
    fs::create_symlink(folder / "mine/vorbiscomment", programs + "/oggtools/vorbiscomment.exe");
    for (const std::string& path : {std::string(), one}) {
        const auto found = refresh(path);
        EXPECT_TRUE(found.lame) << "a program of the user's";
        EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(programs + "/lame.exe")));
        EXPECT_FALSE(found.oggenc) << "a folder is in the way";
        EXPECT_TRUE(fs::is_directory(programs + "/oggtools/oggenc.exe"));
        EXPECT_TRUE(found.vorbiscomment);
        EXPECT_EQ(target("oggtools/vorbiscomment.exe"), path.empty() ? folder / "mine/vorbiscomment" : adapter)
            << "a link is the user's only where the machine has no such program";
    }
}

TEST_F(ProgramFolder, launcherAndHelpFollowTheirPlaces)
{
    const host::ProgramFolder programFolder({programs, one, adapter});
    programFolder.refresh();
    fs::create_directories(folder / "help");
    ASSERT_TRUE(programFolder.linkLauncher(one + "/lame"));
    ASSERT_TRUE(programFolder.linkHelp(folder / "help"));
    EXPECT_EQ(target("tqlaunch.exe"), one + "/lame");
    EXPECT_EQ(target("tqhelp"), folder / "help");
    fs::create_directories(folder / "new help");
    ASSERT_TRUE(programFolder.linkLauncher(two + "/lame"));
    ASSERT_TRUE(programFolder.linkHelp(folder / "new help"));
    EXPECT_EQ(target("tqlaunch.exe"), two + "/lame") << "moved";
    EXPECT_EQ(target("tqhelp"), folder / "new help") << "moved";
    ASSERT_TRUE(programFolder.linkHelp(""));
    EXPECT_EQ(target("tqhelp"), folder / "new help") << "nothing better is known";

    fs::remove(programs + "/tqhelp");
    fs::create_directory(programs + "/tqhelp");
    ASSERT_TRUE(programFolder.linkHelp(folder / "help"));
    EXPECT_TRUE(fs::is_directory(fs::symlink_status(programs + "/tqhelp"))) << "the user's own";
}

TEST_F(ProgramFolder, theTagUtilityIsThereAsLongAsItIsInstalled)
{
    const host::ProgramFolder programFolder({programs, one, adapter});
    programFolder.refresh();
    for (const char* place : {"here", "there"})
        program(place + std::string("/tqutil"));
    EXPECT_EQ(programFolder.linkUtility("").failure().kind, Kind::notFound) << "never was";
    EXPECT_FALSE(fs::exists(fs::symlink_status(programs + "/tqutil.exe")));
    for (const char* place : {"here", "there"}) {
        EXPECT_TRUE(programFolder.linkUtility(folder / place + "/tqutil"));
        EXPECT_EQ(target("tqutil.exe"), folder / place + "/tqutil");
    }
    EXPECT_TRUE(programFolder.linkUtility(""));
    EXPECT_EQ(target("tqutil.exe"), folder / "there/tqutil") << "that one is still good";
    fs::remove(folder / "there/tqutil");
    EXPECT_FALSE(programFolder.linkUtility(""));
    EXPECT_FALSE(fs::exists(fs::symlink_status(programs + "/tqutil.exe"))) << "gone";
    program("programs/tqutil.exe");
    EXPECT_TRUE(programFolder.linkUtility(folder / "here/tqutil"));
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(programs + "/tqutil.exe"))) << "the user's own";
}

TEST(RecordedFolder, comesBackAsItWas)
{
    const test::TempFolder home;
    const std::string before = std::getenv("HOME") != nullptr ? std::getenv("HOME") : "";
    setenv("HOME", home.path().c_str(), 1);
    unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(host::recordedProgramFolder(), "");
    host::recordProgramFolder("/home/Ann Lée/\xFFprogram");
    EXPECT_EQ(host::recordedProgramFolder(), "/home/Ann Lée/\xFFprogram");
    setenv("HOME", before.c_str(), 1);
}

TEST_F(ProgramFolder, aPathThatLeadsBackIsNoCircle)
{
    refresh(one);
    fs::create_directory(folder / "back");
    fs::create_symlink(programs + "/lame.exe", folder / "back/lame");
    fs::create_symlink(programs + "/oggtools/oggenc.exe", folder / "back/oggenc");
    EXPECT_TRUE(refresh(folder / "back:" + one).lame);
    EXPECT_EQ(target("lame.exe"), one + "/lame");
    EXPECT_EQ(refresh(folder / "back").oggenc.failure().kind, Kind::notFound) << "only the adapter itself is there";
}

TEST_F(ProgramFolder, withoutAnAdapterThereAreNoOggTools)
{
    for (const char* none : {"", "/nowhere/tonquay-oggtool"}) {
        adapter = none;
        const auto found = refresh(one);
        EXPECT_TRUE(found.lame);
        EXPECT_EQ(base::describe(found.oggenc.failure()),
                  "oggenc: cannot be called, since tonquay-oggtool is not installed");
    }
}

TEST_F(ProgramFolder, aFolderThatTakesNothingIsAFailureForEachProgram)
{
    const auto failsAs = [&](const platform::MachinePrograms& found, Kind kind, const char* what) {
        for (const base::Status& status : {found.lame, found.oggenc, found.vorbiscomment}) {
            ASSERT_FALSE(status) << what;
            EXPECT_EQ(status.failure().kind, kind) << what << base::describe(status.failure());
        }
    };
    test::writeHostFile(programs, "");
    failsAs(refresh(one), Kind::refused, "a file in its place");
    fs::remove(programs);
    const std::string inside = programs + "/deeper";
    failsAs(host::ProgramFolder({inside, one, adapter}).refresh(), Kind::notFound, "no folder above it");

    // Nothing keeps root from writing, so root steps down for a moment.
    const uid_t user = geteuid();
    constexpr uid_t nobody = 65534;
    fs::create_directory(programs);
    fs::permissions(programs, fs::perms(0555));
    fs::permissions(folder.path(), fs::perms(0755));
    ASSERT_TRUE(user != 0 || seteuid(nobody) == 0);
    failsAs(refresh(one), Kind::refused, "read-only");
    ASSERT_EQ(seteuid(user), 0);
    fs::permissions(programs, fs::perms(0755));
}

}
