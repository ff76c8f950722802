#include "console/genre_byte.h"

#include "base/numbers.h"
#include "base/text.h"
#include "console/screen_text.h"
#include "tagging/tag_values.h"
#include "tags/genres.h"
#include "tags/id3v1.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <span>

namespace tonquay::console {

std::optional<std::uint8_t> genreNumber(std::wstring_view genre)
{
    const std::wstring_view wanted = base::trim(genre);
    const auto find = [wanted](const auto& nameOf) -> std::optional<std::uint8_t> {
        for (std::size_t number = 0; number < tags::genreCount; ++number)
            if (base::sameText(wanted, nameOf(number)))
                return static_cast<std::uint8_t>(number);
        return std::nullopt;
    };
    // Two names have changed places in the list that users are shown: where both lists have a name, this one holds.
    const auto number =
        find([](std::size_t at) { return tags::GenreNameFromNumber(base::digits(static_cast<std::int64_t>(at))); });
    return number ? number : find(tags::shownGenre);
}

std::optional<std::string> genreRemark(std::wstring_view genre)
{
    if (base::isBlank(genre) || genreNumber(genre))
        return std::nullopt;
    const std::int16_t number = tags::GenreNumberFromName(tagging::genreForCategory(genre));
    return fmt::format("genre \"{}\": MP3 tags know a fixed list of genres only; these files say \"{}\"", shown(genre),
                       shown(tags::GenreNameFromNumber(base::digits(number))));
}

base::Status setGenreByte(platform::FileSystem& files, std::wstring_view path, std::uint8_t genre)
{
    if (!files.fileExists(path))
        return base::Failure{base::Failure::Kind::notFound, files.hostPath(path), "there is no such file"};
    const std::int64_t start = files.length(path) - static_cast<std::int64_t>(tags::id3v1Bytes);
    auto file = files.openBinary(path);
    if (!file)
        return file.failure();
    tags::Id3v1Block block{};
    if (const auto sought = (*file)->seek(std::max<std::int64_t>(start, 0)); !sought)
        return sought.failure();
    if (const auto got = (*file)->read(block); !got)
        return got.failure();
    const std::array<std::byte, 3> mark{std::byte{'T'}, std::byte{'A'}, std::byte{'G'}};
    if (start < 0 || !std::ranges::equal(std::span(block).first(mark.size()), mark))
        return base::Failure{base::Failure::Kind::invalid, files.hostPath(path), "it has no tag at its end"};
    if (block.back() == std::byte{genre})
        return {};
    if (const auto sought = (*file)->seek(start + std::ssize(block) - 1); !sought)
        return sought.failure();
    if (const auto written = (*file)->write(std::array{std::byte{genre}}); !written)
        return written.failure();
    return (*file)->close();
}

}
