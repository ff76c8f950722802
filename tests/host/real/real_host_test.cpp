#include "host/real/real_host.h"

#include "base/text.h"
#include "platform/event_loop.h"
#include "platform/file_system.h"
#include "platform/processes.h"
#include "support/disc_maker.h"
#include "support/run_program.h"
#include "support/temp_folder.h"

#include <gmock/gmock.h>

#include <cstdlib>

namespace {

using namespace tonquay;
using test::runProgram;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
namespace fs = std::filesystem;

/// A host with a private program folder, and the machine's encoders in it.
class RealHost : public ::testing::Test {
protected:
    RealHost()
    {
        setenv("XDG_STATE_HOME", (folder / "state").c_str(), 1);
        EXPECT_TRUE(host->open({.programFolder = {}, .oggTool = TONQUAY_OGGTOOL}));
        EXPECT_TRUE(host->programs().lame && host->programs().oggenc && host->programs().vorbiscomment);
        fs::create_directory(out);
        EXPECT_EQ(runProgram({"sox", "-n", "-r", "44100", "-c", "2", "-b", "16", folder / "two seconds.wav", "synth",
                              "2", "sine", "440"})
                      .status,
                  0);
        EXPECT_TRUE(files().changeFolder(files().programPath(out)));
    }

    platform::FileSystem& files() { return host->platform().files; }
    std::wstring inOut(std::wstring_view name) { return files().programPath(out) + L'\\' + std::wstring(name); }

    void sound(const std::string& name)
    {
        fs::copy_file(folder / "two seconds.wav", out + '/' + name, fs::copy_options::overwrite_existing);
    }

    int run(const std::wstring& command)
    {
        const auto child = host->platform().processes.start(command, platform::Processes::WindowStyle::normal);
        if (!child)
            return -1;
        std::optional<int> code;
        platform::waitUntil(host->platform().loop, [&] {
            code = host->platform().processes.exitCode(*child);
            return code.has_value();
        });
        return *code;
    }

    /// What ffprobe says of a file, each as "name=value" in a line of its own.
    std::string probe(const std::string& file)
    {
        return '\n' +
               runProgram({"ffprobe", "-v", "error", "-show_entries", "stream=codec_name,bit_rate,duration:stream_tags",
                           "-of", "default=noprint_wrappers=1", out + '/' + file})
                   .out;
    }

    test::TempFolder folder;
    const std::string out = folder / "Önkel $(id) `x` 'y'";
    std::unique_ptr<host::RealHost> host = std::make_unique<host::RealHost>(host::DriveSources{.machine = false});
};

const wchar_t* const names[] = {L"Grün & Жук", L"$(touch hit) `touch hit`", L"it's ; * ? | > x", L"-delete",
                                L"100% #1 !"};

TEST_F(RealHost, lameMakesTheFileThatItsCommandNames)
{
    for (const std::wstring name : names) {
        const std::string stem = base::utf8(name);
        sound(stem + ".wav");
        EXPECT_EQ(run(L"C:\\CDTONQUAY\\LAME.EXE -h -b 64 \"" + inOut(name + L".wav") + L"\" \"" +
                      inOut(name + L".mp3") + L'"'),
                  0)
            << stem;
        EXPECT_THAT(probe(stem + ".mp3"), AllOf(HasSubstr("\ncodec_name=mp3\n"), HasSubstr("\nbit_rate=64000\n"),
                                                HasSubstr("\nduration=2.0")))
            << stem;
    }
    EXPECT_FALSE(fs::exists(out + "/hit"));
}

TEST_F(RealHost, oggencAndVorbiscommentStoreWhatTheirCommandsSay)
{
    for (const std::wstring name : names) {
        const std::string stem = base::utf8(name);
        sound(stem + ".wav");
        EXPECT_EQ(run(L"C:\\CDTONQUAY\\OGGTOOLS\\OGGENC.EXE -q3 -a\"" + name + L"\" -l\"-l=Ä\" -d\"1999\" -c=\"" +
                      name + L" = x\" -N7 -t\"" + name + L"\" -G\"Rock\" \"" + inOut(name + L".wav") + L'"'),
                  0);
        EXPECT_THAT(probe(stem + ".ogg"),
                    AllOf(HasSubstr("\ncodec_name=vorbis\n"), HasSubstr("\nduration=2.0"),
                          HasSubstr("\nTAG:title=" + stem + '\n'), HasSubstr("\nTAG:artist=" + stem + '\n'),
                          HasSubstr("\nTAG:album=-l=Ä\n"), HasSubstr("\nTAG:COMMENT=" + stem + " = x\n"),
                          HasSubstr("\nTAG:track=7\n"), HasSubstr("\nTAG:date=1999\n")));

        EXPECT_TRUE(files().writeWhole(L"C:\\CDTONQUAY\\oggtools\\comments.txt",
                                       "title=New " + stem + "\r\nartist=\r\ncomment=\r\n"));
        EXPECT_TRUE(files().changeFolder(L"C:\\CDTONQUAY\\oggtools"));
        EXPECT_EQ(run(L"vorbiscomment.exe  -w -c \"C:\\CDTONQUAY\\oggtools\\comments.txt\" \"" + inOut(name + L".ogg") +
                      L'"'),
                  0);
        EXPECT_THAT(probe(stem + ".ogg"),
                    AllOf(HasSubstr("\nTAG:title=New " + stem + '\n'), Not(HasSubstr("TAG:album"))));
    }
    EXPECT_FALSE(fs::exists(out + "/hit"));
}

TEST_F(RealHost, thePrivateFolderGoesWithTheHost)
{
    const std::string programs = files().hostPath(L"C:\\CDTONQUAY");
    EXPECT_TRUE(fs::exists(programs + "/lame.exe"));
    const std::string lame = fs::canonical(programs + "/lame.exe");
    {
        const std::unique_ptr<host::RealHost> gone = std::move(host);
    }
    EXPECT_FALSE(fs::exists(programs));
    EXPECT_TRUE(fs::exists(lame));
    EXPECT_TRUE(fs::exists(TONQUAY_OGGTOOL));
}

}
