#include "tags/file_functions.h"

#include "base/format.h"

namespace tonquay::tags {

namespace {

using namespace std::chrono_literals;

std::wstring timeStamp(const platform::Clock& clock)
{
    const auto time = clock.timeOfDay();
    return base::twoDigits(time.hours().count()) + base::twoDigits(time.minutes().count()) +
           base::twoDigits(time.seconds().count()) + L"-";
}

}

std::wstring MakeTempFileName(platform::FileSystem& files, platform::Clock& clock, std::wstring_view path)
{
    const std::size_t separator = path.find_last_of(L"\\/:");
    const std::size_t nameAt = separator == std::wstring_view::npos ? 0 : separator + 1;
    const std::wstring folder(path.substr(0, nameAt));
    const std::wstring name(path.substr(nameAt));
    std::wstring candidate = folder + name + L".new";
    for (bool first = true; FileExists(files, candidate); first = false) {
        if (!first)
            clock.delay(100ms);
        candidate = std::wstring(folder).append(timeStamp(clock)).append(name);
    }
    return candidate;
}

}
