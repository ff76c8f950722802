#include "state/settings_text.h"

#include "base/text.h"

namespace tonquay::state {

std::optional<std::wstring> settingsText(platform::FileSystem& files, platform::Diagnostics& log,
                                         std::wstring_view path)
{
    // The largest of these files is the hand-over of 100 titles; what is larger is none of them.
    constexpr std::size_t largest = 1u << 20;
    if (!files.fileExists(path))
        return std::nullopt;
    const auto bytes = files.readAll(path, largest);
    if (!passOver(log, bytes, "Read " + base::utf8(path)))
        return std::nullopt;
    return base::fromFileBytes(*bytes);
}

std::wstring inFolder(std::wstring_view folder, std::wstring_view name)
{
    return std::wstring(folder) + L'\\' + std::wstring(name);
}

}
