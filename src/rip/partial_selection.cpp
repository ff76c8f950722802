#include "rip/partial_selection.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "platform/acd_control.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace tonquay::rip {

namespace {

constexpr double msPerSecond = 1000;
constexpr std::int32_t secondsPerMinute = 60;

/// A whole number and nothing else.
std::optional<std::int32_t> wholeNumber(std::wstring_view typed)
{
    const std::wstring_view text = base::trim(typed);
    const auto isDigit = [](wchar_t c) { return c >= L'0' && c <= L'9'; };
    std::int32_t number = 0;
    if (text.empty() || !std::ranges::all_of(text, isDigit) || !base::store(base::val(text), number))
        return std::nullopt;
    return number;
}

/// `otherwise` stands for what is no number.
std::int32_t upTo59(std::wstring_view digits, std::int32_t otherwise)
{
    constexpr std::int32_t most = 59;
    return std::min(wholeNumber(digits).value_or(otherwise), most);
}

}

std::wstring partialTimeText(double milliseconds)
{
    const auto seconds = static_cast<std::int64_t>(milliseconds / msPerSecond);
    return base::digits(seconds / secondsPerMinute) + L":" + base::twoDigits(seconds % secondsPerMinute);
}

std::int32_t partialSeconds(std::wstring_view typed)
{
    constexpr std::size_t secondsDigits = 2;
    const std::wstring_view text = base::trim(typed);
    std::int32_t minutes = 0;
    for (const std::size_t colon : {std::size_t{1}, std::size_t{2}})
        if (text.size() > colon && text[colon] == L':')
            minutes = upTo59(text.substr(0, colon), minutes);
    const std::wstring_view seconds = text.substr(text.size() - std::min(text.size(), secondsDigits));
    return minutes * secondsPerMinute + upTo59(seconds, 0);
}

PartialSelection::PartialSelection(state::AppState& state, state::Forms& forms, platform::Platform& platform)
    : state_(state),
      form_(forms.controlsOf<state::TrkcustControls>()),
      main_(forms.ripdeck()),
      platform_(platform)
{
    form_.form.onLoad = [this] { load(); };
    form_.form.keyDown = [this](controls::Key key) {
        if (key == controls::Key::escape)
            close();
    };
    form_.form.mouseDown = [this](controls::MouseButton) { takeOverPending(); };
    for (controls::Label& caption : form_.captions)
        caption.mouseUp = [this](controls::MouseButton) { takeOverPending(); };
    form_.ListView1.pick = [this] { pickRow(); };
    form_.Text1.keyDown = [this] { editingStart = true; };
    form_.Text2.keyDown = [this] { editingEnd = true; };
    form_.Text1.enter = [this] { enterStart(); };
    form_.Text2.enter = [this] { enterEnd(); };
    form_.Text1.leave = [this] { takeOverPending(); };
    form_.Text2.leave = [this] { takeOverPending(); };
    form_.Text4.enter = [this] { enterTrack(); };
    form_.Command1.click = [this] { ok(); };
    form_.Command2.click = [this] { close(); };
}

void PartialSelection::load()
{
    state::DiscInfo& disc = state_.disc;
    editingStart = false;
    editingEnd = false;
    if (disc.trackCount < 1)
        disc.trackCount = platform_.acd.GetTrackCount();
    for (std::int32_t n = 1; n <= disc.trackCount; ++n)
        state_.partial.partialEndMs.set(n, disc.trackSeconds(n) * msPerSecond);
    fillList();
    main_.form.enabled = false;
}

void PartialSelection::fillList()
{
    std::vector<controls::ListView::Row> rows;
    for (std::int32_t n = 1; n <= state_.disc.trackCount && state::hasTrackSlot(n); ++n)
        rows.push_back({.key = L"Row" + base::digits(n),
                        .cells = {L"Track " + base::twoDigits(n), partialTimeText(state_.partial.partialStartMs(n)),
                                  partialTimeText(state_.partial.partialEndMs(n)), state_.disc.trackTitles(n)}});
    form_.ListView1.fill({L"Track     ", L"Start Time", L"End Time", L"Track Title"}, std::move(rows));
    form_.ListView1.select(0);
}

void PartialSelection::pickRow()
{
    constexpr std::size_t numberCharacters = 3;
    takeOverPending();
    const controls::ListView::Row row = form_.ListView1.row(form_.ListView1.selected());
    if (row.cells.empty())
        return;
    const std::wstring& text = row.cells.front();
    const std::wstring_view last =
        std::wstring_view(text).substr(text.size() - std::min(text.size(), numberCharacters));
    const auto number = wholeNumber(last);
    if (!number)
        return;
    form_.Text4.text = base::digits(*number);
    showTimes(*number);
}

void PartialSelection::showTimes(std::int32_t number)
{
    form_.Text1.text = partialTimeText(state_.partial.partialStartMs(number));
    form_.Text2.text = partialTimeText(state_.partial.partialEndMs(number));
}

/// The end before the start: so a start is tested against an end that was typed with it.
void PartialSelection::takeOverPending()
{
    if (editingEnd)
        enterEnd();
    if (editingStart)
        enterStart();
}

/// -1 when the field holds no number of a track, which has no place in the tables.
std::int32_t PartialSelection::trackInWork() const
{
    return wholeNumber(form_.Text4.text.get()).value_or(-1);
}

void PartialSelection::enterStart()
{
    // First, since giving the keyboard to the list leaves this field and would take it over again.
    editingStart = false;
    const std::int32_t n = trackInWork();
    double seconds = partialSeconds(form_.Text1.text.get());
    form_.Text1.text = partialTimeText(seconds * msPerSecond);
    if (n >= 1 && state::hasTrackSlot(n)) {
        // The length is the one that OK has stored last, whatever the end is now.
        if (seconds + state_.partial.partialLengthMs(n) / msPerSecond >= state_.disc.trackSeconds(n)) {
            seconds = 0;
            form_.Text1.text = L"0:00";
        }
        state_.partial.partialStartMs.set(n, seconds * msPerSecond);
    }
    fillList();
    form_.focused = state::PartialFocus::list;
}

void PartialSelection::enterEnd()
{
    editingEnd = false;
    const std::int32_t n = trackInWork();
    const std::int32_t seconds = partialSeconds(form_.Text2.text.get());
    if (n >= 1 && state::hasTrackSlot(n)) {
        const std::int32_t end = std::min(seconds, state_.disc.trackSeconds(n));
        state_.partial.partialEndMs.set(n, end * msPerSecond);
        form_.Text2.text = partialTimeText(end * msPerSecond);
    } else {
        form_.Text2.text = partialTimeText(seconds * msPerSecond);
    }
    fillList();
    form_.focused = state::PartialFocus::list;
}

void PartialSelection::enterTrack()
{
    const std::int32_t n = trackInWork();
    if (n >= 1 && state::hasTrackSlot(n))
        showTimes(n);
    form_.focused = state::PartialFocus::list;
}

void PartialSelection::ok()
{
    constexpr double wholeTrackMargin = 1000;
    takeOverPending();
    state::PartialTracks& partial = state_.partial;
    for (std::int32_t n = 1; n <= state_.disc.trackCount; ++n) {
        const double start = partial.partialStartMs(n);
        const double end = partial.partialEndMs(n);
        const bool whole = state_.disc.trackSeconds(n) * msPerSecond - end <= wholeTrackMargin && start <= 0;
        partial.partialLengthMs.set(n, whole ? 0 : end - start);
    }
    close();
}

void PartialSelection::close()
{
    // What is not taken over by now is not meant to be: unloading moves the keyboard too.
    editingStart = false;
    editingEnd = false;
    main_.form.enabled = true;
    form_.form.unload();
}

}
