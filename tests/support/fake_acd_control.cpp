#include "support/fake_acd_control.h"

#include "base/text.h"

namespace tonquay::test {

namespace {

std::string quoted(std::wstring_view text)
{
    return '"' + base::utf8(text) + '"';
}

}

const FakeAcdControl::Drive* FakeAcdControl::current() const
{
    const auto index = static_cast<std::size_t>(selected) - 1;
    return selected >= 1 && index < drives.size() ? &drives[index] : nullptr;
}

base::Result<std::int16_t> FakeAcdControl::Probe()
{
    calls.emplace_back("Probe()");
    if (probeFails)
        return base::Failure{base::Failure::Kind::unavailable, "", "the drive cannot deliver audio"};
    return probeAnswer;
}

void FakeAcdControl::SelectDrive(std::int16_t drive)
{
    calls.push_back("SelectDrive(" + std::to_string(drive) + ")");
    selected = drive;
}

std::int16_t FakeAcdControl::RipTrack(std::int16_t track, std::wstring_view path)
{
    calls.push_back("RipTrack(" + std::to_string(track) + ", " + quoted(path) + ")");
    if (onRip)
        onRip(track, path);
    return ripAnswer;
}

std::int16_t FakeAcdControl::GetDriveCount()
{
    return static_cast<std::int16_t>(drives.size());
}

std::wstring FakeAcdControl::GetDriveName(std::int16_t drive)
{
    const auto index = static_cast<std::size_t>(drive) - 1;
    return drive >= 1 && index < drives.size() ? drives[index].name : std::wstring();
}

std::int16_t FakeAcdControl::GetTrackCount()
{
    return current() != nullptr ? static_cast<std::int16_t>(current()->trackMs.size()) : std::int16_t{0};
}

std::int16_t FakeAcdControl::RipPartial(std::int16_t track, std::wstring_view path, std::int32_t startMs,
                                        std::int32_t lengthMs)
{
    calls.push_back("RipPartial(" + std::to_string(track) + ", " + quoted(path) + ", " + std::to_string(startMs) +
                    ", " + std::to_string(lengthMs) + ")");
    if (onRip)
        onRip(track, path);
    return ripAnswer;
}

base::Result<std::int32_t> FakeAcdControl::GetTrackLength(std::int16_t track)
{
    const Drive* drive = current();
    const auto index = static_cast<std::size_t>(track) - 1;
    if (drive == nullptr || track < 1 || index >= drive->trackMs.size())
        return base::Failure{base::Failure::Kind::notFound, "", "no such track"};
    return drive->trackMs[index];
}

std::int16_t FakeAcdControl::PlayTrack(std::int16_t track, std::int32_t start, std::int32_t end)
{
    calls.push_back("PlayTrack(" + std::to_string(track) + ", " + std::to_string(start) + ", " + std::to_string(end) +
                    ")");
    return playAnswer;
}

void FakeAcdControl::SetRipMode(std::int16_t mode)
{
    calls.push_back("SetRipMode(" + std::to_string(mode) + ")");
}

void FakeAcdControl::raiseProgress(std::int32_t tenthsOfPercent) const
{
    if (events_.ripProgress)
        events_.ripProgress(tenthsOfPercent);
}

void FakeAcdControl::raiseDone() const
{
    if (events_.ripDone)
        events_.ripDone();
}

}
