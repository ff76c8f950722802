#include "console/encoded_verdict.h"

#include "base/text.h"
#include "console/judged_file.h"
#include "tags/id3v1.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

namespace tonquay::console {

namespace {

using platform::FileTags;

/// What sets the two formats apart, for a verdict.
struct FormatFacts {
    FileTags::Kind kind;
    std::string_view name;
    double mostTooShort; ///< seconds
    double mostTooLong;
};

constexpr FormatFacts mp3{FileTags::Kind::mp3, "MP3", 0.04, 0.3};
constexpr FormatFacts ogg{FileTags::Kind::oggVorbis, "Ogg Vorbis", 0.02, 0.02};

std::string fileProblem(const JudgedFile& file, const EncodedExpectation& expected)
{
    if (!file.problem().empty())
        return file.problem();
    if (file.length() == 0)
        return "the file is empty; --verbose shows what its encoder says";
    if (expected.unwritten || file.changed() < expected.runBegan)
        return "an older file stands there and was not written; --verbose shows what its encoder says";
    return {};
}

std::string soundProblem(const FileTags& found, const FormatFacts& format, double playSeconds)
{
    if (found.kind != format.kind)
        return fmt::format("this is no {} file; choose an encoder that writes {}", format.name, format.name);
    const double seconds = found.stream.seconds;
    if (seconds < playSeconds - format.mostTooShort)
        return fmt::format("its sound breaks off after {:.1f} of {:.1f} seconds", seconds, playSeconds);
    if (seconds > playSeconds + format.mostTooLong)
        return fmt::format("its sound lasts {:.1f} seconds, the track {:.1f}", seconds, playSeconds);
    if (!found.stream.complete)
        return "the end of its sound is missing";
    return {};
}

std::string otherTrack(int found, int expected)
{
    if (found == 0)
        return "its tag has no track number";
    return fmt::format("its tag is that of track {} instead of {}", found, expected);
}

std::string blockProblem(const JudgedFile& file, std::wstring_view title, int track)
{
    constexpr std::size_t marker = 0;
    constexpr std::size_t markerBytes = 3;
    constexpr std::size_t titleBytes = 30;
    constexpr std::size_t zero = 125;
    constexpr std::size_t number = 126;

    tags::Id3v1Block found{};
    const bool read = file.readAt(file.length() - std::ssize(found), found);
    tags::Id3v1Fields fields;
    fields.Title = title;
    fields.Track = static_cast<std::uint8_t>(track);
    const tags::Id3v1Block wanted = tags::id3v1Block(fields);

    const auto part = [](const tags::Id3v1Block& block, std::size_t offset, std::size_t bytes) {
        return std::span(block).subspan(offset, bytes);
    };
    if (!read || !std::ranges::equal(part(found, marker, markerBytes), part(wanted, marker, markerBytes)))
        return "it carries no ID3v1 tag";
    const std::byte foundTrack = found[zero] == std::byte{0} ? found[number] : std::byte{0};
    if (foundTrack != wanted[number])
        return otherTrack(std::to_integer<int>(foundTrack), track);
    const auto foundTitle = part(found, markerBytes, titleBytes);
    const auto blank = [](std::byte byte) { return byte == std::byte{0} || byte == std::byte{' '}; };
    if (title.size() > titleBytes)
        return std::ranges::all_of(foundTitle, blank) ? "its tag has no title" : "";
    if (!std::ranges::equal(foundTitle, part(wanted, markerBytes, titleBytes)))
        return "its tag has another title";
    return {};
}

/// A byte of a name that is no UTF-8: it goes to the encoder as it is, which writes something else in its place.
bool holdsStrayBytes(std::wstring_view text)
{
    return std::ranges::any_of(text, [](wchar_t c) { return c >= 0xD800 && c < 0xE000; });
}

std::string commentProblem(const FileTags& found, std::wstring_view title, int track)
{
    if (found.title.empty() && found.track == 0)
        return "it carries no tag";
    if (found.track != track)
        return otherTrack(found.track, track);
    if (holdsStrayBytes(title))
        return found.title.empty() ? "its tag has no title" : "";
    if (found.title != title)
        return "its tag has another title";
    return {};
}

}

EncodedVerdict judgeEncoded(const std::string& hostPath, const EncodedExpectation& expected, const TagReader& readTags)
{
    const JudgedFile file(hostPath);
    if (std::string problem = fileProblem(file, expected); !problem.empty())
        return {false, std::move(problem)};

    const base::Result<FileTags> found = readTags(hostPath);
    if (!found)
        return {false, "the file cannot be judged: " + found.failure().text};
    const bool isMp3 = expected.format == Format::mp3;
    if (std::string problem = soundProblem(*found, isMp3 ? mp3 : ogg, expected.playSeconds); !problem.empty())
        return {false, std::move(problem)};

    if (!expected.tagged)
        return {true, {}};
    const std::wstring_view title = base::trim(expected.title);
    std::string problem =
        isMp3 ? blockProblem(file, title, expected.track) : commentProblem(*found, title, expected.track);
    return {problem.empty(), std::move(problem)};
}

}
