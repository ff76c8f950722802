#include "utility/planned_tag.h"

#include "base/numbers.h"
#include "base/text.h"
#include "utility/frame_words.h"

#include <algorithm>
#include <array>
#include <span>

namespace tonquay::utility {

namespace {

using tags::clsFrame;
using tags::FrameKind;

constexpr std::int32_t headerBytes = static_cast<std::int32_t>(tags::id3v2HeaderBytes);

FrameKind kindOf(std::size_t field)
{
    return tags::GetFrameKind(tags::GetFrameIDString(idOf(field)));
}

/// With its terminator.
std::int32_t storedBytes(std::wstring_view value)
{
    return static_cast<std::int32_t>(base::windows1252(value).size()) + 1;
}

/// Of a new frame: the encoding, the language and an empty description are as long as they always are.
std::int32_t newFrameBytes(std::size_t field, std::wstring_view value)
{
    constexpr std::int32_t encoding = 1;
    constexpr std::int32_t description = 1;
    constexpr std::int32_t language = 3;
    switch (kindOf(field)) {
    case FrameKind::web: return encoding + description + storedBytes(value);
    case FrameKind::comment: return encoding + language + description + storedBytes(value);
    default: return encoding + storedBytes(value);
    }
}

std::int32_t changedBytes(const clsFrame& frame, std::size_t field, std::wstring_view value)
{
    if (!isPlain(frame))
        return newFrameBytes(field, value);
    return frame.FrameSize() - static_cast<std::int32_t>(frame.Data().size()) + storedBytes(value);
}

std::size_t fieldOfFrame(const clsFrame& frame)
{
    return fieldOf(base::windows1252(frame.FrameID())).value_or(0);
}

void makePlain(clsFrame& frame, std::size_t field)
{
    frame.TextEncoding(0);
    frame.setFlags({});
    if (kindOf(field) == FrameKind::comment)
        static_cast<tags::clsComment_Frame&>(frame).Description(L"");
    else if (kindOf(field) == FrameKind::web)
        static_cast<tags::clsWeb_Frame&>(frame).Description(L"");
}

std::wstring nameOf(std::size_t field)
{
    return frameName(base::windows1252(tags::GetFrameIDString(idOf(field))));
}

/// The letters of a text that `has` something, each once, and not more than fit into a line.
std::wstring lettersThat(std::wstring_view text, bool (*has)(wchar_t letter))
{
    constexpr std::size_t most = 8;
    std::wstring found;
    for (const wchar_t letter : text)
        if (found.size() < 2 * most && has(letter) && found.find(letter) == std::wstring::npos)
            found.append(found.empty() ? L"" : L" ").push_back(letter);
    return found;
}

bool hasNoByte(wchar_t letter)
{
    return letter != L'?' && base::windows1252(std::wstring_view(&letter, 1)) == "?";
}

/// Windows-1252 has signs where Latin-1, as which other programs take the text, has none.
bool isOfWindowsAlone(wchar_t letter)
{
    const std::string byte = base::windows1252(std::wstring_view(&letter, 1));
    return byte.size() == 1 && static_cast<unsigned char>(byte[0]) >= 0x80 &&
           static_cast<unsigned char>(byte[0]) < 0xA0;
}

void addLongFrames(std::span<const PlannedFrame> frames, std::vector<std::wstring>& lines)
{
    constexpr std::int32_t mostForOthers = 127;
    for (const PlannedFrame& frame : frames)
        if (const std::int32_t more = frame.bytes - mostForOthers; more > 0)
            lines.push_back(nameOf(frame.field) + L": too long for other programs by " + base::digits(more) +
                            (more == 1 ? L" letter" : L" letters") + L"; they misread it and all that follows it.");
}

/// What a later reading by this system finds is what lies in the first thousand bytes.
void addFramesOutOfReach(std::span<const PlannedFrame> frames, std::vector<std::wstring>& lines)
{
    constexpr std::int32_t lastPlace = 1000;
    std::int32_t place = 0;
    std::wstring names;
    for (const PlannedFrame& frame : frames) {
        place += headerBytes + frame.bytes;
        if (place - 1 > lastPlace)
            names += (names.empty() ? L"" : L", ") + nameOf(frame.field);
    }
    if (!names.empty())
        lines.push_back(names + L": all values together are too long; this program reads a tag to its byte 1,000 only, "
                                L"and would not find this again.");
}

void addLetters(const Changes& changes, std::vector<std::wstring>& lines)
{
    for (std::size_t field = 0; field < fieldCount; ++field) {
        const std::wstring value = changes[field].value_or(L"");
        if (const std::wstring letters = lettersThat(value, hasNoByte); !letters.empty())
            lines.push_back(nameOf(field) + L": a ? will stand for " + letters);
        if (const std::wstring letters = lettersThat(value, isOfWindowsAlone); !letters.empty())
            lines.push_back(nameOf(field) + L": other programs may show something else for " + letters);
    }
}

}

bool isPlain(const clsFrame& frame)
{
    constexpr std::byte packedEncryptedGrouped{0xE0};
    return frame.TextEncoding() == 0 && (frame.getFlags()[1] & packedEncryptedGrouped) == std::byte{0};
}

const clsFrame* frameOf(const tags::clsFrames& frames, std::size_t field)
{
    const auto all = frames.NewEnum();
    const auto found = std::ranges::find_if(
        all, [&](const auto& frame) { return frame->FrameID() == tags::GetFrameIDString(idOf(field)); });
    return found == all.end() ? nullptr : found->get();
}

std::wstring descriptionOf(const clsFrame& frame)
{
    switch (tags::GetFrameKind(frame.FrameID())) {
    case FrameKind::comment: return static_cast<const tags::clsComment_Frame&>(frame).Description();
    case FrameKind::web: return static_cast<const tags::clsWeb_Frame&>(frame).Description();
    default: return {};
    }
}

std::vector<PlannedFrame> plannedFrames(const tags::clsFrames& frames, const Changes& changes)
{
    std::vector<PlannedFrame> planned;
    std::array<bool, fieldCount> there{};
    for (const auto& frame : frames.NewEnum()) {
        const std::size_t field = fieldOfFrame(*frame);
        const bool first = !there[field];
        there[field] = true;
        if (!first || !changes[field])
            planned.push_back({field, frame->FrameSize()});
        else if (!changes[field]->empty())
            planned.push_back({field, changedBytes(*frame, field, *changes[field])});
    }
    for (std::size_t field = 0; field < fieldCount; ++field)
        if (!there[field] && changes[field] && !changes[field]->empty())
            planned.push_back({field, newFrameBytes(field, *changes[field])});
    return planned;
}

void applyChanges(tags::clsID3v2& tag, const Changes& changes)
{
    for (std::size_t field = 0; field < fieldCount; ++field) {
        if (!changes[field])
            continue;
        const auto all = tag.frames().NewEnum();
        const clsFrame* const first = frameOf(tag.frames(), field);
        const auto at = std::ranges::find_if(all, [&](const auto& frame) { return frame.get() == first; });
        const auto number = static_cast<std::int32_t>(at - all.begin()) + 1;
        if (changes[field]->empty()) {
            // Of a field without a frame there is nothing to take out.
            static_cast<void>(tag.frames().Remove(number));
            continue;
        }
        if (at != all.end() && !isPlain(**at))
            makePlain(**at, field);
        tag.SetFrameValue(idOf(field), *changes[field]);
    }
}

std::vector<std::wstring> misreadings(const tags::clsFrames& frames, const Changes& changes)
{
    std::vector<std::wstring> lines;
    const std::vector<PlannedFrame> planned = plannedFrames(frames, changes);
    addLongFrames(planned, lines);
    addFramesOutOfReach(planned, lines);
    addLetters(changes, lines);
    return lines;
}

}
