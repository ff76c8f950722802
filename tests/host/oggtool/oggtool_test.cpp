// The built adapter and the machine's own tools.

#include "support/run_program.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace tonquay;
using test::runProgram;
namespace fs = std::filesystem;

/// A folder with the adapter under the names that it is called by, and a second of sound.
class OggTool : public ::testing::Test {
protected:
    OggTool()
    {
        for (const char* name : {"oggenc.exe", "oggencp4.exe", "vorbiscomment.exe"})
            fs::create_symlink(TONQUAY_OGGTOOL, folder / name);
        EXPECT_EQ(
            runProgram({"sox", "-n", "-r", "44100", "-c", "2", "-b", "16", sound, "synth", "1", "sine", "440"}).status,
            0);
    }

    void script(const std::string& name, const std::string& body)
    {
        fs::create_directories(fs::path(folder / name).parent_path());
        test::writeHostFile(folder / name, "#!/bin/sh\n" + body + '\n');
        fs::permissions(folder / name, fs::perms(0755));
    }

    /// All comments of a file, one a line, line ends in them as \n and so on.
    static std::string commentsOf(const std::string& file)
    {
        return runProgram({"vorbiscomment", "-R", "-e", "-l", file}).out;
    }

    test::TempFolder folder;
    const std::string sound = folder / "in.wav";
    const std::string ogg = folder / "in.ogg";
    const std::map<std::string, std::string> utf8{{"LC_ALL", "C.UTF-8"}};
};

TEST_F(OggTool, aCommentArrivesAsItWasGiven)
{
    const struct {
        const char* what;
        const char* text;
        const char* stored;
    } cases[] = {
        {"plain", "ripped at home", "ripped at home"},
        {"empty", "", ""},
        {"signs of its own", "a=b=c", "a=b=c"},
        {"like a switch", "-c=--help", "-c=--help"},
        {"letters", "Größe, Жук ♫", "Größe, Жук ♫"},
        {"quotes", "\"so\" 'it' is", "\"so\" 'it' is"},
        {"line ends", "one\ntwo\r\nthree", "one\\ntwo\\r\\nthree"},
        {"what a shell would read", "$(id) `id` ; * $HOME", "$(id) `id` ; * $HOME"},
        {"backslashes", "C:\\new\\", "C:\\\\new\\\\"},
    };
    for (const auto& c : cases)
        for (const char* encoder : {"oggenc.exe", "oggencp4.exe"}) {
            fs::remove(ogg);
            const auto end =
                runProgram({folder / encoder, "-q1", "-aAnn", std::string("-c=") + c.text, "-N7", sound}, utf8);
            EXPECT_EQ(end.status, 0) << c.what << end.out;
            EXPECT_EQ(commentsOf(ogg), std::string("COMMENT=") + c.stored + "\nartist=Ann\ntracknumber=7\n") << c.what;
        }
}

TEST_F(OggTool, commentsOfAFileWithCarriageReturnsHaveNone)
{
    ASSERT_EQ(runProgram({folder / "oggenc.exe", "-Q", "-tOld", sound}).status, 0);
    const std::string comments = folder / "comments.txt";
    test::writeHostFile(comments, "title=Ä -b=c\r\nartist=\r\ncomment=\"x\" `y`\r\n");
    const auto end = runProgram({folder / "vorbiscomment.exe", "-w", "-c", comments, ogg}, utf8);
    EXPECT_EQ(end.status, 0) << end.out;
    EXPECT_EQ(commentsOf(ogg), "title=Ä -b=c\nartist=\ncomment=\"x\" `y`\n");
    EXPECT_EQ(test::readHostFile(comments).substr(0, 15), "title=Ä -b=c\r\n") << "the file itself stays as it is";
    int files = 0;
    for (const auto& entry : fs::directory_iterator(folder.path()))
        files += entry.is_symlink() ? 0 : 1;
    EXPECT_EQ(files, 3) << "sound, song and comments";
    EXPECT_NE(runProgram({folder / "vorbiscomment.exe", "-w", "-c", folder / "none", ogg}).status, 0);
}

TEST_F(OggTool, itBecomesTheMachinesProgramWhateverStandsOnPath)
{
    script("tools/oggenc", "echo $$ \"$@\"; exit 7");
    script("around/oggenc", "exec '" + folder / "oggenc.exe" + "' \"$@\"");
    fs::create_directories(folder / "links");
    fs::create_symlink(folder / "oggenc.exe", folder / "links/oggenc");
    fs::create_directories(folder / "folders/oggenc");
    fs::create_directories(folder / "copies");
    fs::copy(TONQUAY_OGGTOOL, folder / "copies/oggenc");
    test::writeHostFile(folder / "plain", "x");
    script("broken/oggenc", "");
    test::writeHostFile(folder / "broken/oggenc", "no program");
    const struct {
        const char* what;
        std::string path;
        int status;
        const char* says;
    } cases[] = {
        {"its own links, folders and what is gone are no programs",
         "::relative:" + folder.path() + ':' + folder / "links" + ':' + folder / "folders" + ':' +
             folder / "none:" + folder / "tools:/usr/bin",
         7, "-x COMMENT=y"},
        {"what cannot be started is passed over", folder / "broken:" + folder / "tools", 7, "-x"},
        {"nothing there", folder / "links", 127, "oggenc: no such program on PATH"},
        {"only what cannot be started", folder / "broken", 126, "broken/oggenc: cannot be started"},
        {"a script that leads back", folder / "around:/bin", 126, "leads back"},
        {"a copy of itself", folder / "copies", 126, "leads back"},
    };
    for (const auto& c : cases) {
        const auto end = runProgram({folder / "oggenc.exe", "-c=y", "-x"}, {{"PATH", c.path}});
        EXPECT_EQ(end.status, c.status) << c.what << end.out;
        if (c.status != 7)
            EXPECT_NE(end.out.find(c.says), std::string::npos) << c.what << end.out;
        else
            EXPECT_NE(end.out.find("-c COMMENT=y -x\n"), std::string::npos) << c.what << end.out;
    }
    EXPECT_EQ(runProgram({TONQUAY_OGGTOOL, "x"}).status, 127) << "under its own name";
}

TEST_F(OggTool, theProcessStaysTheSameAndTakesSignals)
{
    for (const char* name : {"oggenc.exe", "vorbiscomment.exe"}) {
        const std::string program = fs::path(name).stem();
        script("tools/" + program, "echo $$ > '" + folder / "pid'; exec sleep 30");
        test::writeHostFile(folder / "comments", "a=b\r\n");
        setenv("PATH", (folder / "tools:/usr/bin:/bin").c_str(), 1);
        const pid_t child = test::startProgram({folder / name, "-c", folder / "comments"});
        for (int i = 0; i < 5000 && test::readHostFile(folder / "pid").empty(); ++i)
            usleep(1000);
        EXPECT_EQ(test::readHostFile(folder / "pid"), std::to_string(child) + '\n');
        kill(child, SIGTERM);
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status)) << name;
        fs::remove(folder / "pid");
    }
}

}
