#include "tagging/late_tags.h"

#include "base/numbers.h"
#include "base/text.h"
#include "platform/diagnostics.h"
#include "platform/file_system.h"
#include "tags/id3v1.h"

#include <algorithm>
#include <utility>

namespace tonquay::tagging {

namespace {

/// Encoders of a run write none, so one that is there is the tagger's, with values that may be newer than ours.
bool isTagged(platform::FileSystem& files, std::wstring_view path)
{
    const auto file = files.openForReading(path);
    tags::TagState found;
    if (!file)
        return false;
    const auto read = tags::readId3v1Block(**file, files.length(path), found);
    return read && *read;
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
    if (!platform_.files.fileExists(file.path) || isTagged(platform_.files, file.path))
        return;
    tags::TagState tags;
    fillTagInfo(tags, file.values, file.title, base::digits(file.track));
    tags::COptions options(platform_.settings, state_.folders.appFolder);
    platform_.log.line("tags", platform_.files.hostPath(file.path) + ": tagged after its encoder has ended");
    tags::WriteId3v1Tag(platform_.files, platform_.log, options, tags, file.path);
}

}
