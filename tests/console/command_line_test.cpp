#include "console/command_line.h"
#include "console/rip_arguments.h"

#include "base/text.h"

#include <gmock/gmock.h>

namespace tonquay::console {
namespace {

using testing::HasSubstr;

TEST(CommandLine, whatMakesNoSenseIsRefusedWithOneLineThatNamesIt)
{
    const struct {
        std::vector<std::string> arguments;
        const char* names;
    } cases[] = {
        {{}, "name a command"},
        {{"-x"}, "name a command"},
        {{"frob"}, "\"frob\" is no command"},
        {{"list", "a", "b"}, "b"},
        {{"list", "--set"}, "--set"},
        {{"rip", "-t", "3-1"}, "--tracks: \"3-1\""},
        {{"rip", "-t"}, "--tracks"},
        {{"rip", "-o", ""}, "--output"},
        {{"rip", "-f", "flac"}, "mp3, ogg, wav, wma"},
        {{"rip", "-f", "WAV"}, "--format"},
        {{"rip", "-n", "title"}, "--names"},
        {{"rip", "-d", "year"}, "--folders"},
        {{"rip", "-s", "now"}, "--schedule"},
        {{"rip", "-b", "127"}, "--bitrate"},
        {{"rip", "-b", "11"}, "--bitrate"},
        {{"rip", "-b", "-1"}, "--bitrate"},
        {{"rip", "--vbr", "10"}, "--vbr"},
        {{"rip", "--vbr", "1x"}, "--vbr"},
        {{"rip", "--method", "fast"}, "--method"},
        {{"rip", "--from", "1:60"}, "--from"},
        {{"rip", "--to", "90"}, "--to"},
        {{"rip", "--to", "99999:00"}, "--to"},
        {{"rip", "--title", "Rain"}, "--title"},
        {{"rip", "--title", "0=Rain"}, "--title"},
        {{"rip", "--title", "100=Rain"}, "--title"},
        {{"rip", "-t", "1", "-t", "2"}, "--tracks"},
        {{"rip", "--n\x1b[2J\nope"}, "not expected"},
    };
    for (const auto& c : cases) {
        const base::Result<Command> command = parseCommandLine(c.arguments);
        ASSERT_FALSE(command) << c.names;
        EXPECT_THAT(command.failure().text, HasSubstr(c.names));
        EXPECT_EQ(command.failure().text.find_first_of("\n\x1b"), std::string::npos) << c.names;
    }
}

TEST(CommandLine, filesToDecodeArriveAndOneIsNeeded)
{
    const base::Result<Command> command = parseCommandLine({"towav", "a.mp3", "-", "b c.MP3"});
    ASSERT_TRUE(command) << command.failure().text;
    EXPECT_THAT(std::get<ToWavOptions>(*command).files, testing::ElementsAre("a.mp3", "-", "b c.MP3"));
    EXPECT_THAT(parseCommandLine({"towav"}).failure().text, HasSubstr("towav: name one MP3 file at least"));
    EXPECT_FALSE(parseCommandLine({"towav", "--loud", "a.mp3"}));
}

TEST(CommandLine, tagChangesArriveAsTheyGoIntoTags)
{
    const auto changesOf = [](const std::vector<std::string>& texts) {
        std::vector<std::string> arguments{"tags"};
        for (const std::string& text : texts)
            arguments.insert(arguments.end(), {"--set", text});
        arguments.emplace_back("a.mp3");
        const base::Result<Command> command = parseCommandLine(arguments);
        EXPECT_TRUE(command) << command.failure().text;
        return std::get<TagsOptions>(*command).changes;
    };
    EXPECT_EQ(changesOf({}), TagChanges{});
    EXPECT_EQ(changesOf({"title=A = Ä", "year=0042", "track=7", "genre=synth pop", "comment="}),
              (TagChanges{{TagField::title, L"A = Ä"},
                          {TagField::year, L"42"},
                          {TagField::track, L"7"},
                          {TagField::genre, L"Synth Pop"},
                          {TagField::comment, L""}}));
    EXPECT_EQ(changesOf({"album=one", "album=two", "genre="}),
              (TagChanges{{TagField::album, L"two"}, {TagField::genre, L""}}));

    const base::Result<Command> command =
        parseCommandLine({"tags", "--json", "--set", "title=x", "a.mp3", "-", "b c.ogg"});
    ASSERT_TRUE(command) << command.failure().text;
    EXPECT_THAT(std::get<TagsOptions>(*command).files, testing::ElementsAre("a.mp3", "-", "b c.ogg"));
    EXPECT_TRUE(std::get<TagsOptions>(*command).json);
    EXPECT_THAT(parseCommandLine({"tags", "--json"}).failure().text, HasSubstr("tags: name one file at least"));

    for (const char* wrong : {"year=0", "year=3001", "year=2001-05", "year=x", "track=0", "track=100", "track=1/9",
                              "track= 1", "genre=Krautrock", "title", "=x", "Title=x", "composer=x", ""}) {
        const base::Result<Command> refused = parseCommandLine({"tags", "--set", wrong, "a.mp3"});
        ASSERT_FALSE(refused) << wrong;
        EXPECT_THAT(refused.failure().text, HasSubstr("--set")) << wrong;
    }
}

TEST(CommandLine, everyRipOptionArrives)
{
    const base::Result<Command> command = parseCommandLine({"rip",
                                                            "-o",
                                                            "/tmp/a b",
                                                            "-t",
                                                            "2-",
                                                            "-f",
                                                            "wav",
                                                            "-n",
                                                            "artist-album",
                                                            "-d",
                                                            "artist",
                                                            "-s",
                                                            "turbo",
                                                            "-b",
                                                            "320",
                                                            "--vbr",
                                                            "0",
                                                            "--mono",
                                                            "--crc",
                                                            "--keep-wav",
                                                            "--encoder",
                                                            "/x/lame",
                                                            "--encoder-options",
                                                            "-h -b 1",
                                                            "--method",
                                                            "digital2",
                                                            "--artist",
                                                            "[Ä, ö]",
                                                            "--album",
                                                            "",
                                                            "--year",
                                                            "1999",
                                                            "--genre",
                                                            "Rock",
                                                            "--comment=-x",
                                                            "--title",
                                                            "3=a=b,c",
                                                            "--json",
                                                            "-q",
                                                            "-v",
                                                            "--title",
                                                            "12=[x]",
                                                            "Disc.CUE"});
    ASSERT_TRUE(command) << command.failure().text;
    const auto* rip = std::get_if<RipOptions>(&*command);
    ASSERT_NE(rip, nullptr);
    EXPECT_EQ(rip->disc, "Disc.CUE");
    EXPECT_EQ(rip->output, "/tmp/a b");
    EXPECT_TRUE(rip->tracks);
    EXPECT_EQ(rip->format, Format::wav);
    EXPECT_EQ(rip->names, Names::artistAlbum);
    EXPECT_EQ(rip->folders, Folders::artist);
    EXPECT_EQ(rip->schedule, Schedule::turbo);
    EXPECT_EQ(rip->bitrate, 320);
    EXPECT_EQ(rip->vbrQuality, 0);
    EXPECT_TRUE(rip->mono && rip->crc && rip->keepWav && rip->json && rip->quiet && rip->verbose);
    EXPECT_EQ(rip->encoder, "/x/lame");
    EXPECT_EQ(rip->encoderOptions, "-h -b 1");
    EXPECT_EQ(rip->given.artist, L"[Ä, ö]");
    EXPECT_EQ(rip->given.album, L"");
    EXPECT_EQ(rip->given.year, L"1999");
    EXPECT_EQ(rip->given.genre, L"Rock");
    EXPECT_EQ(rip->given.comment, L"-x");
    EXPECT_EQ(rip->given.titles, (std::map<int, std::wstring>{{3, L"a=b,c"}, {12, L"[x]"}}));
}

TEST(CommandLine, withoutOptionsNothingIsDecided)
{
    const base::Result<Command> command = parseCommandLine({"rip"});
    ASSERT_TRUE(command);
    const auto& rip = std::get<RipOptions>(*command);
    EXPECT_TRUE(rip.disc.empty());
    EXPECT_FALSE(rip.tracks || rip.format || rip.names || rip.folders || rip.schedule || rip.bitrate || rip.output);
    EXPECT_EQ(rip.method, Method::digital2);
}

TEST(CommandLine, bitratesFitTheirFormat)
{
    for (const int rate : {32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320})
        EXPECT_TRUE(bitrateFits(rate, Format::mp3) && bitrateFits(rate, Format::wma) &&
                    !bitrateFits(rate, Format::ogg));
    for (const int quality : {0, 10})
        EXPECT_TRUE(bitrateFits(quality, Format::ogg) && !bitrateFits(quality, Format::mp3));
}

TEST(CommandLine, helpNamesEveryCommandAndOption)
{
    const auto textOf = [](const std::vector<std::string>& arguments) {
        const base::Result<Command> command = parseCommandLine(arguments);
        return command ? std::get<Answer>(*command).text : std::string{};
    };
    for (const char* word : {"rip", "list", "drives", "tags", "towav", "--version"})
        EXPECT_THAT(textOf({"--help"}), HasSubstr(word));
    for (const char* word :
         {"--output", "--tracks",  "--format",   "--names",   "--folders",         "--schedule", "--bitrate", "--vbr",
          "--mono",   "--crc",     "--keep-wav", "--encoder", "--encoder-options", "--method",   "--from",    "--to",
          "--artist", "--album",   "--year",     "--genre",   "--comment",         "--title",    "--program", "--json",
          "--quiet",  "--verbose", "DISC"})
        EXPECT_THAT(textOf({"rip", "--help"}), HasSubstr(word));
    EXPECT_THAT(textOf({"--version"}), testing::MatchesRegex("tonquay [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

}
}
