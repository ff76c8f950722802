#include "console/ogg_tag_edit.h"

#include "base/text.h"
#include "platform/clock.h"
#include "platform/diagnostics.h"
#include "platform/event_loop.h"
#include "platform/file_system.h"
#include "platform/processes.h"
#include "state/settings_text.h"
#include "tags/file_functions.h"
#include "tags/vorbis_comments.h"
#include "tags/vorbis_fields.h"
#include "tags/vorbis_stream.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>

namespace tonquay::console {

using base::Failure;

namespace {

/// The keys that readers know a field by, the usual one first.
struct Keys {
    TagField field;
    std::array<std::string_view, 2> keys;
};

constexpr std::array fieldKeys{
    Keys{TagField::title, {"title", ""}},
    Keys{TagField::artist, {"artist", ""}},
    Keys{TagField::album, {"album", ""}},
    Keys{TagField::genre, {"genre", ""}},
    Keys{TagField::year, {"date", "year"}},
    Keys{TagField::track, {"tracknumber", "tracknum"}},
    Keys{TagField::comment, {"comment", "description"}},
};

/// Takes all comments of a field out and puts the new one where the first was, under its key, or at the end.
void change(std::vector<std::string>& comments, const Keys& keys, const std::wstring& value)
{
    const auto says = [&keys](const std::string& comment) {
        const std::wstring key = base::fromHostBytes(std::string_view(comment).substr(0, comment.find('=')));
        return !key.empty() && std::ranges::any_of(keys.keys, [&key](std::string_view known) {
            return base::sameText(key, base::fromHostBytes(known));
        });
    };
    const auto first = std::ranges::find_if(comments, says);
    const auto place = first - comments.begin();
    const std::string key(first == comments.end() ? keys.keys.front()
                                                  : std::string_view(*first).substr(0, first->find('=')));
    std::erase_if(comments, says);
    if (!value.empty())
        comments.insert(comments.begin() + place, key + '=' + base::utf8(value));
}

/// A comment on one line, as vorbiscomment reads it with its escapes.
std::string escaped(std::string_view comment)
{
    std::string line;
    for (const char c : comment) {
        if (c == '\n')
            line += "\\n";
        else if (c == '\r')
            line += "\\r";
        else if (c == '\0')
            line += "\\0";
        else if (c == '\\')
            line += "\\\\";
        else
            line += c;
    }
    return line + '\n';
}

base::Status runAndWait(platform::Platform& platform, const std::wstring& command)
{
    const auto child = platform.processes.start(command, platform::Processes::WindowStyle::hidden);
    if (!child)
        return child.failure();
    std::optional<int> status;
    platform::waitUntil(platform.loop, [&] {
        status = platform.processes.exitCode(*child);
        return status.has_value();
    });
    if (*status != 0)
        return Failure{Failure::Kind::other, "vorbiscomment", fmt::format("ended with status {}", *status)};
    return {};
}

/// The new file, until it has taken the old one's place.
class Draft {
public:
    Draft(platform::Platform& platform, std::wstring_view old)
        : platform_(platform),
          path_(tags::MakeTempFileName(platform.files, platform.clock, old))
    {}
    ~Draft()
    {
        if (platform_.files.fileExists(path_))
            platform::passOver(platform_.log, platform_.files.remove(path_), "Delete what was written of an Ogg file");
    }
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;

    const std::wstring& path() const { return path_; }

private:
    platform::Platform& platform_;
    std::wstring path_;
};

base::Status writeDraft(platform::Platform& platform, std::wstring_view old, const Draft& draft,
                        const std::vector<std::string>& comments)
{
    const std::wstring tools = state::inFolder(platform::programFolder, L"oggtools");
    const std::wstring list = state::inFolder(tools, L"comments.txt");
    std::string text;
    for (const std::string& comment : comments)
        text += escaped(comment);
    if (auto written = platform.files.writeWhole(list, text); !written)
        return written;
    if (auto entered = platform.files.changeFolder(tools); !entered)
        return entered;
    if (auto ran = runAndWait(platform, tags::vorbisCommentDraftCommand(list, old, draft.path())); !ran)
        return ran;
    if (tags::readVorbisComments(platform.files, platform.log, draft.path()) != comments)
        return Failure{Failure::Kind::other, "vorbiscomment", "has not written the comments as they were given"};
    if (!tags::hasSameVorbisSound(platform.files, platform.log, old, draft.path()))
        return Failure{Failure::Kind::other, "vorbiscomment", "has changed the sound"};
    return {};
}

}

std::vector<std::string> changedComments(const std::vector<std::string>& comments, const TagChanges& changes)
{
    std::vector<std::string> changed = comments;
    for (const Keys& keys : fieldKeys)
        if (const auto value = changes.find(keys.field); value != changes.end())
            change(changed, keys, value->second);
    return changed;
}

base::Status editOggTag(platform::Platform& platform, std::wstring_view path, const TagChanges& changes)
{
    platform::FileSystem& files = platform.files;
    const auto refuse = [&](Failure::Kind kind, const char* text) { return Failure{kind, files.hostPath(path), text}; };
    if (files.isReadOnly(path))
        return refuse(Failure::Kind::refused, "is read-only, so its comments stay as they are");
    const auto comments = tags::readVorbisComments(files, platform.log, path);
    if (!comments)
        return refuse(Failure::Kind::unreadable, "has comments that cannot be read, so they stay as they are");
    if (!tags::isOneStream(files, platform.log, path))
        return refuse(Failure::Kind::refused, "has other streams beside its sound, which would be lost");
    const std::vector<std::string> wanted = changedComments(*comments, changes);
    if (wanted == *comments)
        return {};
    const Draft draft(platform, path);
    if (auto written = writeDraft(platform, path, draft, wanted); !written)
        return written;
    return files.replace(draft.path(), path);
}

}
