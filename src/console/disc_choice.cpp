#include "console/disc_choice.h"

#include "console/screen_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <filesystem>

namespace tonquay::console {

namespace {

using platform::DriveDescription;

constexpr std::array<std::string_view, 3> imageEndings{".cue", ".toc", ".nrg"};

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isLetter(char c)
{
    return lower(c) >= 'a' && lower(c) <= 'z';
}

bool endsAsImage(std::string_view path)
{
    return std::any_of(imageEndings.begin(), imageEndings.end(), [path](std::string_view ending) {
        return path.size() > ending.size() &&
               std::equal(ending.begin(), ending.end(), path.end() - static_cast<std::ptrdiff_t>(ending.size()),
                          [](char wanted, char is) { return wanted == lower(is); });
    });
}

bool samePlace(const std::string& left, const std::string& right)
{
    std::error_code ignored;
    return left == right || std::filesystem::equivalent(left, right, ignored);
}

base::Failure problemOf(const DriveDescription& drive)
{
    const std::string text =
        drive.problemText.empty() ? std::string("there is no audio disc in this drive") : drive.problemText;
    // What is wrong with an image mostly begins with its path, and its line.
    return {base::Failure::Kind::notFound, text.starts_with(drive.hostPath) ? std::string{} : drive.hostPath, text};
}

}

DiscChoice discChoice(std::string_view disc)
{
    if (disc.empty())
        return {};
    const std::string_view tail = disc.substr(1);
    if (isLetter(disc.front()) && (tail.empty() || tail == ":" || tail == ":\\" || tail == ":/"))
        return {DiscChoice::Kind::letter, static_cast<wchar_t>(lower(disc.front()) - 'a' + L'A'), {}};
    return {endsAsImage(disc) ? DiscChoice::Kind::image : DiscChoice::Kind::device, 0, std::string(disc)};
}

base::Status checkChoice(const DiscChoice& choice)
{
    using base::Failure;
    if (choice.kind != DiscChoice::Kind::image && choice.kind != DiscChoice::Kind::device)
        return {};
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(choice.path, error);
    switch (status.type()) {
    case std::filesystem::file_type::regular:
        if (choice.kind == DiscChoice::Kind::image)
            return {};
        return Failure{Failure::Kind::invalid, choice.path, "no disc image; known are .cue, .toc and .nrg"};
    case std::filesystem::file_type::block:
    case std::filesystem::file_type::character:
        if (choice.kind == DiscChoice::Kind::device)
            return {};
        return Failure{Failure::Kind::invalid, choice.path, "a device with the name of an image"};
    case std::filesystem::file_type::not_found:
        return Failure{Failure::Kind::notFound, choice.path, "there is no such file or device"};
    case std::filesystem::file_type::directory:
        return Failure{Failure::Kind::invalid, choice.path, "this is a folder; name the .cue, .toc or .nrg file in it"};
    default:
        return Failure{Failure::Kind::refused, choice.path,
                       error ? error.message() : std::string("neither a disc image nor a drive")};
    }
}

base::Result<DriveDescription> chooseDrive(const std::vector<DriveDescription>& drives, const DiscChoice& choice)
{
    using base::Failure;
    if (choice.kind == DiscChoice::Kind::any) {
        const auto withDisc =
            std::find_if(drives.begin(), drives.end(), [](const DriveDescription& drive) { return drive.disc; });
        if (withDisc != drives.end())
            return *withDisc;
        if (drives.size() == 1)
            return problemOf(drives.front());
        return Failure{Failure::Kind::notFound,
                       {},
                       drives.empty() ? "no drive was found; name a disc image (.cue, .toc, .nrg) or a device"
                                      : "no drive holds an audio disc; 'tonquay drives' tells why"};
    }

    const auto chosen = std::find_if(drives.begin(), drives.end(), [&choice](const DriveDescription& drive) {
        return choice.kind == DiscChoice::Kind::letter ? drive.letter == choice.letter
                                                       : samePlace(drive.hostPath, choice.path);
    });
    if (chosen == drives.end()) {
        const bool letter = choice.kind == DiscChoice::Kind::letter;
        return Failure{Failure::Kind::notFound, letter ? std::string(1, static_cast<char>(choice.letter)) : choice.path,
                       letter ? "there is no drive of this letter; 'tonquay drives' lists them"
                              : "this is no drive that discs can be read with"};
    }
    if (!chosen->disc)
        return problemOf(*chosen);
    return *chosen;
}

}
