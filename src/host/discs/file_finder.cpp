#include "host/discs/file_finder.h"

#include "host/discs/sheet.h"

#include "base/text.h"

#include <string>
#include <system_error>

namespace tonquay::host {

namespace {

namespace fs = std::filesystem;

bool isThere(const fs::path& path)
{
    std::error_code error;
    return fs::exists(path, error);
}

std::wstring_view stem(std::wstring_view name)
{
    return name.substr(0, name.rfind(L'.'));
}

/// The first file of a folder, by its bytes, whose name the predicate takes.
template <class Predicate>
fs::path firstIn(const fs::path& folder, Predicate takes)
{
    std::error_code error;
    fs::path best;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const std::string bytes = entry->path().filename().string();
        // Names in the file system may be as old as the sheet, and in its encoding.
        if (takes(base::fromFileBytes(bytes)) && (best.empty() || bytes < best.filename().string()))
            best = entry->path();
    }
    return best;
}

}

base::Result<std::filesystem::path> findFile(const fs::path& sheet, std::wstring_view name, bool sound)
{
    const fs::path folder = sheet.has_parent_path() ? sheet.parent_path() : fs::path(".");
    const std::wstring slashed = base::replaced(name, L'\\', L'/');
    const bool drive = slashed.size() > 1 && slashed[1] == L':';
    const std::wstring last = slashed.substr(slashed.find_last_of(L"/:") + 1);
    if (last.empty())
        return base::Failure{base::Failure::Kind::notFound, sheet.string(), "a file name ends with a slash"};

    // An absolute name replaces the folder.
    if (const fs::path path = folder / base::utf8(name); isThere(path))
        return path;
    if (const fs::path path = folder / base::utf8(slashed); !drive && isThere(path))
        return path;
    if (const fs::path path = folder / base::utf8(last); isThere(path))
        return path;
    fs::path found = firstIn(folder, [&](const std::wstring& other) { return base::sameText(other, last); });
    if (found.empty() && sound)
        found = firstIn(folder, [&](const std::wstring& other) {
            return hasSoundEnding(other) && base::sameText(stem(other), stem(last));
        });
    if (found.empty())
        return base::Failure{base::Failure::Kind::notFound, sheet.string(),
                             "the file \"" + shown(name) + "\" is not there"};
    return found;
}

}
