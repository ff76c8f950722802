#include "tagging/late_tags.h"

#include "base/text.h"
#include "platform/diagnostics.h"
#include "platform/file_system.h"
#include "tags/id3v1.h"

#include <algorithm>
#include <utility>

namespace tonquay::tagging {

namespace {

bool carries(platform::FileSystem& files, std::wstring_view path, const tags::Id3v1Block& wanted)
{
    const auto file = files.openForReading(path);
    const std::int64_t start = files.length(path) - std::ssize(wanted);
    if (!file || start < 0 || !(*file)->seek(start))
        return false;
    tags::Id3v1Block found{};
    const auto got = (*file)->read(found);
    return got && *got == found.size() && found == wanted;
}

}

void LateTags::encoderStarted(std::int32_t row, platform::Processes::Child child, const std::wstring& encodedPath)
{
    constexpr std::chrono::milliseconds interval{100};
    if (child == 0 || !base::upper(encodedPath).ends_with(L".MP3"))
        return;
    waiting_.push_back({.child = child,
                        .path = encodedPath,
                        .values = tagValuesOf(state_.disc),
                        .title = state_.disc.trackTitles(row + 1),
                        .track = row + 1});
    if (!looking_)
        looking_ = platform_.loop.every(interval, [this] { look(); });
}

void LateTags::look()
{
    if (state_.flags.ripBusy != 1)
        for (Waiting& file : waiting_)
            file.runIsOver = true;
    std::erase_if(waiting_, [this](const Waiting& file) {
        // The code of an encoder that the run waits for is the run's.
        if (!file.runIsOver || !platform_.processes.exitCode(file.child))
            return false;
        tag(file);
        return true;
    });
    if (waiting_.empty())
        looking_.reset();
}

void LateTags::tag(const Waiting& file)
{
    if (!platform_.files.fileExists(file.path))
        return;
    tags::TagState tags;
    fillTagInfo(tags, file.values, file.title, file.track);
    tags::COptions options(platform_.settings, state_.folders.appFolder);
    if (!tags::fieldsFromTagInfo(tags, options) || carries(platform_.files, file.path, tags::id3v1Block(tags.id3v1)))
        return;
    platform_.log.line("tags", platform_.files.hostPath(file.path) + ": tagged after its encoder has ended");
    tags::WriteId3v1Tag(platform_.files, platform_.log, options, tags, file.path);
}

}
