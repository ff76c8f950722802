#include "utility/losses.h"

#include "base/text.h"
#include "utility/frame_words.h"
#include "utility/planned_tag.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>

namespace tonquay::utility {

namespace {

using platform::Id3v2Contents;
using tags::clsFrame;

constexpr std::size_t languageAt = 1;
constexpr std::size_t languageBytes = 3;

std::string identifierOf(const clsFrame& frame)
{
    return base::windows1252(frame.FrameID());
}

bool isComment(const Id3v2Contents::Frame& frame)
{
    return frame.identifier == "COMM";
}

/// The same bytes, but for the language of a comment, which is never read.
bool isSame(const Id3v2Contents::Frame& inFile, const clsFrame& inMemory)
{
    const auto body = inMemory.getBytes();
    if (!body || body->size() != inFile.bytes || inFile.bytes > inFile.start.size())
        return false;
    std::string kept;
    for (const std::byte byte : *body)
        kept.push_back(static_cast<char>(byte));
    if (isComment(inFile) && inFile.start.size() >= languageAt + languageBytes)
        kept.replace(languageAt, languageBytes, inFile.start, languageAt, languageBytes);
    return kept == inFile.start;
}

bool hasLanguage(const Id3v2Contents::Frame& frame)
{
    return frame.language.find_first_not_of('\0') != std::string::npos;
}

/// Goes through the frames of a file, and says of each what becomes of it.
class Losses {
public:
    Losses(const tags::clsFrames& frames, const Changes& changes) : frames_(frames), changes_(changes) {}

    void take(const Id3v2Contents::Frame& frame)
    {
        const clsFrame* same = nullptr;
        const clsFrame* alike = nullptr;
        for (const auto& kept : frames_.NewEnum()) {
            if (identifierOf(*kept) != frame.identifier || taken_.contains(kept.get()))
                continue;
            alike = alike == nullptr ? kept.get() : alike;
            if (isSame(frame, *kept)) {
                same = kept.get();
                break;
            }
        }
        if (const clsFrame* const found = same != nullptr ? same : alike)
            taken_.insert(found);
        if (same != nullptr)
            takeKept(frame, *same);
        else if (alike != nullptr)
            takeCut(frame, *alike);
        else
            takeLost(frame);
    }

    std::vector<std::wstring> lines;

private:
    /// The change that a person has made to the very frame; null when there is none.
    const std::wstring* changeOf(const clsFrame& frame) const
    {
        const std::size_t field = fieldOf(identifierOf(frame)).value_or(0);
        return changes_[field] && frameOf(frames_, field) == &frame ? &*changes_[field] : nullptr;
    }

    void takeKept(const Id3v2Contents::Frame& inFile, const clsFrame& frame)
    {
        const std::wstring* const change = changeOf(frame);
        if (change != nullptr && change->empty())
            return;
        const std::wstring name = frameName(inFile.identifier);
        if (isComment(inFile) && hasLanguage(inFile))
            lines.push_back(name + L": its language, \"" + tidy(base::fromWindows1252(inFile.language)) + L"\"");
        if (change != nullptr && !isPlain(frame) && !inFile.description.empty())
            lines.push_back(name + L": its description, \"" + tidy(inFile.description) + L"\"");
    }

    void takeCut(const Id3v2Contents::Frame& inFile, const clsFrame& frame)
    {
        if (changeOf(frame) == nullptr)
            lines.push_back(frameLine(inFile) + L" (only a part of it can be kept)");
    }

    void takeLost(const Id3v2Contents::Frame& inFile)
    {
        const auto field = fieldOf(inFile.identifier);
        // Typed anew as it was.
        if (field && !retyped_[*field] && changes_[*field] && *changes_[*field] == inFile.text) {
            retyped_[*field] = true;
            return;
        }
        lines.push_back(frameLine(inFile));
    }

    const tags::clsFrames& frames_;
    const Changes& changes_;
    std::set<const clsFrame*> taken_;
    std::array<bool, fieldCount> retyped_{};
};

void addUnread(const Id3v2Contents& contents, std::vector<std::wstring>& lines)
{
    if (contents.unreadBytes > 0)
        lines.push_back(sizeText(contents.unreadBytes) + L" at the end of the tag that make no sense here");
}

}

const Id3v2Contents::Frame* sourceOf(const Id3v2Contents& contents, const clsFrame& frame)
{
    const auto found = std::ranges::find_if(contents.frames, [&](const Id3v2Contents::Frame& candidate) {
        return candidate.identifier == identifierOf(frame) && isSame(candidate, frame);
    });
    return found == contents.frames.end() ? nullptr : &*found;
}

std::vector<std::wstring> lossesOfWriting(const Id3v2Contents& contents, const tags::clsFrames& frames,
                                          const Changes& changes)
{
    Losses losses(frames, changes);
    for (const Id3v2Contents::Frame& frame : contents.frames)
        losses.take(frame);
    addUnread(contents, losses.lines);
    return losses.lines;
}

std::vector<std::wstring> lossesOfRemoving(const Id3v2Contents& contents)
{
    std::vector<std::wstring> lines;
    for (const Id3v2Contents::Frame& frame : contents.frames)
        if (frame.start.find_first_not_of('\0') != std::string::npos)
            lines.push_back(frameLine(frame));
    addUnread(contents, lines);
    return lines;
}

}
