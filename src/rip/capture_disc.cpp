#include "rip/capture_disc.h"

#include "base/numbers.h"

#include <algorithm>
#include <array>

namespace tonquay::rip {

namespace {

std::wstring lengthQuery(std::int32_t track)
{
    return L"status cd length track " + base::digits(track);
}

/// Right-aligned in two characters, so that the sorted list is in the order of the tracks.
std::wstring alignedNumber(std::int32_t track)
{
    std::wstring number = base::digits(track);
    return number.size() < 2 ? L" " + number : number;
}

}

std::wstring answerTo(platform::Mci& mci, std::wstring_view command)
{
    std::array<wchar_t, 64> answer{};
    static_cast<void>(mci.mciSendString(command, answer));
    return {answer.begin(), std::ranges::find(answer, L'\0')};
}

void CaptureDisc::refresh()
{
    form_.lblCDID.caption = L"";
    form_.lblNumTracks.caption = L"";
    form_.lstTracks.clear();
    form_.lstRecord.clear();
    if (mci_.mciSendString(L"open cdaudio alias cd") != 0)
        return;
    form_.lblCDID.caption = answerTo(mci_, L"info cd identity");
    form_.txtFile.text = state_.run.analogTempPath;
    form_.lblNumTracks.caption = answerTo(mci_, L"status cd number of tracks");
    const std::int32_t count = trackCount();
    listTracks(count);
    readLengths(count);
    static_cast<void>(mci_.mciSendString(L"close cd"));
    form_.lstTracks.addSorted(std::wstring(state::groupMarker));
}

void CaptureDisc::listTracks(std::int32_t count)
{
    static_cast<void>(mci_.mciSendString(L"set cd time format hms"));
    for (std::int32_t n = 1; n <= count; ++n)
        form_.lstTracks.addSorted(L"Track " + alignedNumber(n) + L" - " + answerTo(mci_, lengthQuery(n)), n);
}

void CaptureDisc::readLengths(std::int32_t count)
{
    trackLengthsMs.assign(static_cast<std::size_t>(count), 0);
    static_cast<void>(mci_.mciSendString(L"set cd time format milliseconds"));
    for (std::int32_t n = 1; n <= count; ++n) {
        std::int32_t& length = trackLengthsMs[static_cast<std::size_t>(n) - 1];
        base::store(base::val(answerTo(mci_, lengthQuery(n))), length);
        constexpr double msPerSecond = 1000;
        state_.analogTrackSeconds.set(n, static_cast<std::int32_t>(base::roundHalfEven(length / msPerSecond)));
    }
}

std::int32_t CaptureDisc::trackCount() const
{
    constexpr double most = 99;
    return static_cast<std::int32_t>(std::clamp(base::val(form_.lblNumTracks.caption.get()), 0.0, most));
}

bool CaptureDisc::hasTrack(std::int32_t number) const
{
    return number >= 1 && static_cast<std::size_t>(number) <= trackLengthsMs.size();
}

std::int32_t CaptureDisc::lengthMs(std::int32_t number) const
{
    return hasTrack(number) ? trackLengthsMs[static_cast<std::size_t>(number) - 1] : 0;
}

}
