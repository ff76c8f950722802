#include "console/rip_settings.h"

#include "console/command_line.h"

#include <gtest/gtest.h>

namespace tonquay::console {
namespace {

RipOptions optionsOf(std::vector<std::string> words)
{
    words.insert(words.begin(), "rip");
    const base::Result<Command> command = parseCommandLine(words);
    EXPECT_TRUE(command) << words.back();
    return command ? std::get<RipOptions>(*command) : RipOptions{};
}

TEST(RipSettings, optionsStandInPlaceOfTheSavedOnes)
{
    state::RipSettings saved;
    saved.outputFolder = L"C:\\music";
    saved.bitrateIndex = 10;
    saved.vbrQuality = 7;
    saved.highPriority = 1;
    saved.crcCheck = 1;
    saved.stereo = 0;
    saved.encodeSingle = 1;
    saved.turboMode = 1;
    saved.encoderPath = L"C:\\elsewhere\\bladeenc.exe";
    saved.encoderCmdLine = L"-saved";
    saved.encoderFileExt = L"mpg";
    struct Case {
        const char* what;
        std::vector<std::string> options;
        std::int16_t encodeWanted, deleteWav, encodeSingle, turboMode, bitrateIndex, highPriority, stereo, crcCheck;
    };
    const Case cases[] = {
        {"nothing said", {}, 1, 1, 1, 1, 10, 0, 1, 0},
        {"plain WAV", {"-f", "wav"}, 0, 0, 1, 1, 10, 0, 1, 0},
        {"batch", {"-s", "batch"}, 1, 1, 0, 0, 10, 0, 1, 0},
        {"single", {"-s", "single"}, 1, 1, 1, 0, 10, 0, 1, 0},
        {"the WAV files too", {"--keep-wav"}, 1, 0, 1, 1, 10, 0, 1, 0},
        {"the lowest rate", {"-b", "32"}, 1, 1, 1, 1, 0, 0, 1, 0},
        {"the highest rate, mono, checksums", {"-b", "320", "--mono", "--crc"}, 1, 1, 1, 1, 13, 0, 0, 1},
        {"variable", {"--vbr", "2"}, 1, 1, 1, 1, 0, 1, 1, 0},
        {"variable above a floor", {"--vbr", "2", "-b", "128"}, 1, 1, 1, 1, 8, 1, 1, 0},
        {"an Ogg quality", {"-f", "ogg", "-b", "6"}, 1, 1, 1, 1, 6, 0, 1, 0},
    };
    for (const Case& c : cases) {
        const auto settings = settingsForRun(saved, optionsOf(c.options), {.output = {}, .encoder = L"C:\\E\\lame"});
        ASSERT_TRUE(settings) << c.what;
        const state::RipSettings& s = *settings;
        EXPECT_EQ(std::tuple(s.encodeWanted, s.deleteWav, s.encodeSingle, s.turboMode),
                  std::tuple(c.encodeWanted, c.deleteWav, c.encodeSingle, c.turboMode))
            << c.what;
        EXPECT_EQ(std::tuple(s.bitrateIndex, s.highPriority, s.stereo, s.crcCheck),
                  std::tuple(c.bitrateIndex, c.highPriority, c.stereo, c.crcCheck))
            << c.what;
        EXPECT_EQ(s.outputFolder, L"C:\\music") << c.what;
        EXPECT_EQ(s.encoderPath, L"C:\\E\\lame") << c.what;
        EXPECT_EQ(s.encoderCmdLine, L"") << c.what;
        EXPECT_EQ(s.encoderFileExt, L"") << c.what;
    }
    saved.encodeSingle = 0;
    EXPECT_EQ(settingsForRun(saved, {}, {})->turboMode, 0) << "Turbo without Single would delete and never encode";
    const auto own = settingsForRun(saved, optionsOf({"--encoder-options", "-V 2 --noreplaygain"}), {});
    EXPECT_EQ(own->encoderCmdLine, L"-V 2 --noreplaygain");
}

TEST(RipSettings, theFormatIsTheSavedOneUntilItIsGiven)
{
    state::RipSettings saved;
    EXPECT_EQ(formatOf(saved, {}), Format::mp3);
    EXPECT_EQ(formatOf(saved, optionsOf({"-f", "ogg"})), Format::ogg);
    saved.encodeWanted = 0;
    EXPECT_EQ(formatOf(saved, {}), Format::wav);
    saved.encoderPath = L"C:\\CDTONQUAY\\oggtools\\oggenc.exe";
    EXPECT_EQ(formatOf(saved, {}), Format::ogg);
    saved.ripToWma = 1;
    EXPECT_EQ(formatOf(saved, {}), Format::wma);
    EXPECT_EQ(settingsForRun(saved, {}, {})->ripToWma, 1);
    EXPECT_EQ(settingsForRun(saved, optionsOf({"-f", "mp3"}), {})->ripToWma, 0);
}

TEST(RipSettings, aRunToWmaTakesARateAndNothingOfEncodersAndOtherWaysOfReading)
{
    state::RipSettings saved;
    saved.deleteWav = 1;
    const auto settings = settingsForRun(saved, optionsOf({"-f", "wma", "-b", "192"}), {});
    ASSERT_TRUE(settings);
    EXPECT_EQ(settings->bitrateIndex, 10);
    EXPECT_EQ(settings->encodeWanted, 0);
    const std::vector<std::string> refused[] = {
        {"-s", "single"},
        {"--encoder", "lame"},
        {"--encoder-options", "-h"},
        {"--keep-wav"},
        {"--vbr", "2"},
        {"--method", "burst"},
        {"--program"},
        {"--mono"},
        {"-b", "6"},
    };
    for (std::vector<std::string> options : refused) {
        const std::string name = options.front();
        options.insert(options.end(), {"-f", "wma"});
        const auto given = settingsForRun(saved, optionsOf(options), {});
        ASSERT_FALSE(given) << name;
        EXPECT_NE(given.failure().text.find(name == "-s"   ? "--schedule"
                                            : name == "-b" ? "--bitrate"
                                                           : name),
                  std::string::npos)
            << given.failure().text;
    }
    saved.bitrateIndex = 14;
    EXPECT_FALSE(settingsForRun(saved, optionsOf({"-f", "wma"}), {})) << "an edited settings file";
    EXPECT_TRUE(settingsForRun(saved, optionsOf({"-f", "wma", "-b", "32"}), {}));
}

}
}
