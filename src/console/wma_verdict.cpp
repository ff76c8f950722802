#include "console/wma_verdict.h"

#include "console/judged_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace tonquay::console {

namespace {

using platform::WmaFile;

std::string fileProblem(const JudgedFile& file, const WmaExpectation& expected)
{
    if (!file.problem().empty())
        return file.problem();
    if (file.length() == 0)
        return "the file is empty";
    if (file.changed() < expected.runBegan)
        return "an older file stands there and was not written";
    return {};
}

std::string soundProblem(const WmaFile& found, double playSeconds)
{
    constexpr double millisecond = 0.001;
    constexpr double block = 2048.0 / 44100;
    if (!found.windowsMediaAudio)
        return "this is no Windows Media Audio file";
    if (!found.finished)
        return fmt::format("its writing was broken off after {:.1f} of {:.1f} seconds", found.heldSeconds, playSeconds);
    if (std::abs(found.toldSeconds - playSeconds) > millisecond)
        return fmt::format("its header tells of {:.3f} seconds, the track has {:.3f}", found.toldSeconds, playSeconds);
    if (found.heldSeconds < playSeconds - millisecond)
        return fmt::format("its sound breaks off after {:.1f} of {:.1f} seconds", found.heldSeconds, playSeconds);
    if (found.heldSeconds > playSeconds + block)
        return fmt::format("its sound lasts {:.1f} seconds, the track {:.1f}", found.heldSeconds, playSeconds);
    return {};
}

/// What is no character cannot stand in a file.
std::wstring tagText(const std::wstring& text)
{
    constexpr wchar_t replacement = 0xFFFD;
    std::wstring clean = text;
    std::ranges::replace_if(
        clean, [](wchar_t c) { return c >= 0xD800 && c < 0xE000; }, replacement);
    return clean;
}

std::string tagProblem(const WmaFile& found, const WmaExpectation& expected)
{
    struct Tag {
        std::string_view name;
        const std::wstring& found;
        const std::wstring& expected;
    };
    const std::array tags{Tag{"title", found.title, expected.title},       Tag{"artist", found.artist, expected.artist},
                          Tag{"album", found.album, expected.album},       Tag{"genre", found.genre, expected.genre},
                          Tag{"comment", found.comment, expected.comment}, Tag{"year", found.year, expected.year}};
    for (const Tag& tag : tags)
        if (const std::wstring wanted = tagText(tag.expected); tag.found != wanted)
            return fmt::format("its tags have {} {}", tag.found.empty() ? "no" : "another", tag.name);
    return {};
}

}

FileVerdict judgeWma(const std::string& hostPath, const WmaExpectation& expected, const WmaReader& read)
{
    const JudgedFile file(hostPath);
    if (std::string problem = fileProblem(file, expected); !problem.empty())
        return {false, std::move(problem)};
    const base::Result<WmaFile> found = read(hostPath);
    if (!found)
        return {false, "the file cannot be judged: " + found.failure().text};
    std::string problem = soundProblem(*found, expected.playSeconds);
    if (problem.empty())
        problem = tagProblem(*found, expected);
    return {problem.empty(), std::move(problem)};
}

}
