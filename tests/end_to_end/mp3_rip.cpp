#include "end_to_end/mp3_rip.h"

#include "support/run_program.h"

#include <algorithm>
#include <span>
#include <string_view>

namespace tonquay::test {

std::unique_ptr<Child> startMp3Rip(const Sandbox& box, const std::filesystem::path& disc, const Arguments& more,
                                   const Environment& environment)
{
    Arguments arguments{"rip", "--format", "mp3", "--bitrate", "128"};
    if (std::ranges::find(more, "--output") == more.end())
        arguments.insert(arguments.end(), {"--output", box.out().string()});
    arguments.insert(arguments.end(), more.begin(), more.end());
    arguments.push_back(disc.string());
    return box.start(arguments, environment);
}

std::string fakeEncoder(const std::string& body)
{
    return "[ \"$1\" = --version ] && exit 0\nlame='" + machineProgram("lame") + "'\nfor mp3; do :; done\n" + body;
}

std::string whyNoMp3(const Sandbox& box, const std::vector<std::byte>& file, const DiscPlan& plan, std::size_t track)
{
    constexpr std::size_t blockBytes = 128;
    constexpr std::size_t titleAt = 3;
    constexpr std::size_t titleBytes = 30;
    constexpr std::size_t trackAt = 126;
    const std::filesystem::path wav = box.root() / "run" / "wanted.wav";
    const std::filesystem::path mp3 = box.root() / "run" / "wanted.mp3";
    writeFile(wav, ripped(plan, track));
    if (const ProgramEnd end = runProgram({"lame", "--quiet", "-h", "-b", "128", wav.string(), mp3.string()});
        end.status != 0)
        return "the machine's encoder: " + end.out;
    const std::vector<std::byte> sound = readFile(mp3);
    if (file.size() != sound.size() + blockBytes)
        return std::to_string(file.size()) + " bytes instead of " + std::to_string(sound.size() + blockBytes);
    if (!std::ranges::equal(std::span(file).first(sound.size()), sound))
        return "other sound";

    std::string block;
    for (const std::byte byte : std::span(file).last(blockBytes))
        block += std::to_integer<char>(byte);
    if (!block.starts_with("TAG"))
        return "no tag";
    const std::string title = block.substr(titleAt, titleBytes);
    if (title.substr(0, title.find_last_not_of(std::string_view("\0 ", 2)) + 1) != plan.tracks[track].title)
        return "another title: " + title;
    if (block[trackAt] != static_cast<char>(track + 1))
        return "another track number";
    return {};
}

}
