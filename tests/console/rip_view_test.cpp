#include "console/rip_view.h"

#include "base/text.h"
#include "console/screen_text.h"
#include "fake_screen.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <sstream>

namespace tonquay::console {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// A run of two tracks, the second of which is broken, with news every 20 ms.
void play(RipView& view, std::wstring_view title = L"Rain")
{
    view.runBegins({.tracks = 3, .playSeconds = 90, .folder = "/out/a\x1b", .format = "wav"});
    for (int number = 1; number <= 2; ++number) {
        view.trackBegins({.number = number,
                          .ordinal = number,
                          .title = std::wstring(title),
                          .path = "/out/Rain.wav",
                          .playSeconds = 30});
        for (int step = 0; step < 100; ++step) {
            const double done = number - 1 + step / 100.0;
            view.progress({.activity = RunProgress::Activity::recording,
                           .trackPart = step / 100.0,
                           .totalPart = done / 3,
                           .playSecondsRead = done * 30,
                           .elapsed = Seconds(done * 2)});
        }
        view.trackEnds({.number = number,
                        .path = "/out/Ra\nin.wav",
                        .playSeconds = 30,
                        .taken = Seconds(2),
                        .crc = number == 1 ? std::optional<std::uint32_t>(0xCBF4) : std::nullopt,
                        .whole = number == 1,
                        .text = number == 1 ? "" : "the disk\n is full"});
    }
    view.trackIsLeftOut({.number = 3, .path = "/out/Sun.wav", .text = "left out"});
    view.runEnds({.whole = 1, .broken = 1, .left = 1, .playSeconds = 30, .taken = Seconds(4)});
}

constexpr const char* leftOut = "tonquay: track 3: /out/Sun.wav: left out";
constexpr const char* problem = "tonquay: track 2: /out/Ra\uFFFDin.wav: the disk\uFFFD is full";

TEST(LineView, oneLineForEachFinishedTrackAndASummary)
{
    FakeScreen screen;
    play(*makeRipView(ViewKind::lines, screen));
    EXPECT_EQ(screen.out, " 1  /out/Ra\uFFFDin.wav  30.0 s  15.0x  0000CBF4  whole\n"
                          " 2  /out/Ra\uFFFDin.wav  30.0 s  15.0x  --------  broken: the disk\uFFFD is full\n"
                          "1 file whole, 1 not, 1 left out; 0:30 of sound in 4.0 s, 7.5x\n");
    EXPECT_THAT(screen.problems, ElementsAre(problem, leftOut));
}

TEST(LineView, quietLeavesTheSummaryAndTheProblems)
{
    FakeScreen screen;
    play(*makeRipView(ViewKind::quiet, screen));
    EXPECT_EQ(screen.out, "1 file whole, 1 not, 1 left out; 0:30 of sound in 4.0 s, 7.5x\n");
    EXPECT_THAT(screen.problems, ElementsAre(problem, leftOut));
}

TEST(JsonView, everyLineIsAnObjectOfAKnownKind)
{
    for (const bool quiet : {false, true}) {
        FakeScreen screen;
        play(*makeRipView(quiet ? ViewKind::jsonQuiet : ViewKind::json, screen), L"R\x1b\xDCFF");
        EXPECT_TRUE(base::isUtf8(screen.out));
        std::map<std::string, int> counts;
        std::istringstream lines(screen.out);
        nlohmann::json verdict;
        for (std::string line; std::getline(lines, line);) {
            const nlohmann::json json = nlohmann::json::parse(line);
            ++counts[json["event"]];
            if (json["event"] == "verdict" && json["number"] == 1)
                verdict = json;
            if (json["event"] == "track") {
                EXPECT_EQ(json["title"], "R\x1b\uFFFD");
            }
        }
        EXPECT_EQ(counts["run"] + counts["end"], 2);
        EXPECT_EQ(counts["track"], 2);
        EXPECT_EQ(counts["verdict"], 3);
        // Four seconds at four lines a second, and each track begins anew.
        EXPECT_GE(counts["progress"], quiet ? 0 : 14);
        EXPECT_LE(counts["progress"], quiet ? 0 : 20);
        EXPECT_EQ(verdict["crc32"], "0000CBF4");
        EXPECT_EQ(verdict["whole"], true);
        EXPECT_EQ(verdict["path"], "/out/Ra\nin.wav");
        EXPECT_DOUBLE_EQ(verdict["speed"].get<double>(), 15);
        EXPECT_THAT(screen.problems, ElementsAre(problem, leftOut));
    }
}

TEST(BarView, leavesTheFinishedTracksAndTheSummaryOnTheTerminal)
{
    FakeScreen screen(80);
    play(*makeRipView(ViewKind::bars, screen));
    Terminal terminal(79);
    terminal.show(screen.out);
    EXPECT_FALSE(terminal.wrapped);
    EXPECT_FALSE(terminal.unknownCode);
    EXPECT_THAT(terminal.lines(),
                ElementsAre("3 tracks to /out/a\uFFFD", " 1  /out/Ra\uFFFDin.wav  30.0 s  15.0x  0000CBF4  whole",
                            " 2  /out/Ra\uFFFDin.wav  30.0 s  15.0x  --------  broken: the disk\uFFFD is full",
                            "1 file whole, 1 not, 1 left out; 0:30 of sound in 4.0 s, 7.5x", ""));
}

TEST(BarView, showsTrackBarsTimesAndSpeed)
{
    FakeScreen screen(80);
    const auto view = makeRipView(ViewKind::bars, screen);
    view->runBegins({.tracks = 2, .playSeconds = 60, .folder = "/out", .format = "wav"});
    view->trackBegins({.number = 5, .ordinal = 2, .title = L"Rain", .path = "/out/Rain.wav", .playSeconds = 30});
    view->progress({.activity = RunProgress::Activity::encoding,
                    .trackPart = 0.5,
                    .totalPart = 0.75,
                    .playSecondsRead = 45,
                    .elapsed = Seconds(9)});
    Terminal terminal(79);
    terminal.show(screen.out);
    const std::vector<std::string> lines = terminal.lines();
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[1], "Encoding  track 5 (2 of 2)  Rain");
    EXPECT_THAT(lines[2], testing::AllOf(testing::StartsWith("Track ██"), HasSubstr("█░"),
                                         testing::EndsWith("  50 %  0:15 / 0:30  5.0x")));
    EXPECT_THAT(lines[3], testing::EndsWith("░  75 %  0:09 gone, 0:03 to go"));
}

TEST(BarView, noLineWrapsOnAnyTerminal)
{
    const std::wstring titles[] = {L"", std::wstring(300, L'x'), std::wstring(300, L'千'), L"\U0001F680\x0301 rocket"};
    for (int columns = 1; columns <= 200; columns += columns < 40 ? 1 : 23)
        for (const std::wstring& title : titles) {
            FakeScreen screen(columns);
            const auto view = makeRipView(ViewKind::bars, screen);
            view->runBegins({.tracks = 99, .playSeconds = 4800, .folder = std::string(300, 'f'), .format = "wav"});
            view->trackBegins({.number = 99, .ordinal = 99, .title = title, .path = {}, .playSeconds = 4800});
            for (const double done : {0.0, 0.5, 1.0, 7.0, -1.0, std::nan(""), std::numeric_limits<double>::infinity()})
                view->progress({.activity = RunProgress::Activity::recording,
                                .trackPart = done,
                                .totalPart = done,
                                .playSecondsRead = 1e9,
                                .elapsed = Seconds(1e6)});
            // Measured without the codes that move the cursor, line by line.
            std::string visible = screen.out;
            for (const char* code : {"\r\x1b[2A", "\x1b[J"})
                for (std::size_t at; (at = visible.find(code)) != std::string::npos;)
                    visible.replace(at, std::string_view(code).size(), "\n");
            std::istringstream lines(visible);
            for (std::string line; std::getline(lines, line);)
                ASSERT_LE(columnsOf(line), std::max(1, columns - 1)) << columns << ": " << line;
        }
}

TEST(BarView, isDrawnTenTimesASecondAtMost)
{
    FakeScreen screen(80);
    const auto view = makeRipView(ViewKind::bars, screen);
    view->runBegins({});
    view->trackBegins({});
    for (int i = 0; i < 10000; ++i)
        view->progress({.activity = RunProgress::Activity::recording,
                        .trackPart = 0,
                        .totalPart = 0,
                        .playSecondsRead = 0,
                        .elapsed = Seconds(i / 10000.0)});
    const auto draws = std::count(screen.out.begin(), screen.out.end(), '\r');
    EXPECT_GE(draws, 8);
    EXPECT_LE(draws, 11);
}

TEST(RipView, barsAreForTerminalsAlone)
{
    const struct {
        const char* what;
        RipOptions options;
        int columns;
        ViewKind kind;
    } cases[] = {
        {"terminal", {}, 80, ViewKind::bars},
        {"pipe", {}, 0, ViewKind::lines},
        {"terminal, diagnostics between the lines", {.verbose = true}, 80, ViewKind::lines},
        {"quiet", {.quiet = true}, 80, ViewKind::quiet},
        {"JSON", {.json = true}, 80, ViewKind::json},
        {"JSON, quiet", {.json = true, .quiet = true}, 0, ViewKind::jsonQuiet},
    };
    for (const auto& c : cases)
        EXPECT_EQ(viewKind(c.options, FakeScreen(c.columns)), c.kind) << c.what;
}

TEST(ScreenText, fitsAndPadsByColumnsAndNotByBytes)
{
    const struct {
        const char* text;
        int columns;
        const char* fitted;
    } cases[] = {
        {"plain", 5, "plain"},  {"plain!", 5, "plai…"}, {"千千千", 6, "千千千"},
        {"千千千", 5, "千千…"}, {"千千千", 4, "千…"},   {"e\u0301e\u0301", 2, "e\u0301e\u0301"},
        {"abc", 1, "…"},        {"abc", 0, ""},         {"", 3, ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(fitted(c.text, c.columns), c.fitted);
        EXPECT_LE(columnsOf(fitted(c.text, c.columns)), c.columns) << c.text;
    }
}

TEST(ScreenText, nothingActsOnTheTerminal)
{
    for (const wchar_t c : {L'\0', L'\a', L'\t', L'\n', L'\r', L'\x1b', L'\x7f', L'\x85', L'\x9b', L'\x202E', L'\x2066',
                            L'\x2028', wchar_t{0xDC9B}})
        EXPECT_EQ(shown(std::wstring(1, c)), "\uFFFD") << static_cast<unsigned>(c);
    EXPECT_EQ(shownBytes("a\xff\x9b"
                         "b"),
              "a\uFFFD\uFFFD"
              "b");
    EXPECT_EQ(jsonBytes("a\xff\n"), "a\uFFFD\n");
}

}
}
