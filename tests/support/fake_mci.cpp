#include "support/fake_mci.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"

#include <algorithm>
#include <numeric>

namespace tonquay::test {

namespace {

bool isQuestionForThePlace(std::wstring_view command)
{
    return command == L"status cd position" || command == L"status cd current track";
}

}

std::uint32_t FakeMci::mciSendString(std::wstring_view command, std::span<wchar_t> answer)
{
    if (before)
        before(command);
    if (!isQuestionForThePlace(command))
        commands.emplace_back(command);
    std::wstring text;
    std::uint32_t code = driverRefused;
    if (std::ranges::none_of(failing, [&](const std::wstring& lead) { return command.starts_with(lead); }))
        code = carryOut(std::wstring(command), text);
    std::ranges::fill(answer, L'?');
    if (!answer.empty())
        answer[text.copy(answer.data(), answer.size() - 1)] = L'\0';
    return code;
}

std::uint32_t FakeMci::carryOut(const std::wstring& command, std::wstring& answer)
{
    const auto rest = [&](std::wstring_view lead) { return command.substr(lead.size()); };
    if (command == L"open cdaudio alias cd")
        return trackMs.empty() ? deviceNotReady : openDevice(L"cd");
    if (command == L"open new type waveaudio alias capture")
        return openDevice(L"capture");
    const std::wstring device = command.find(L" capture") != std::wstring::npos ? L"capture" : L"cd";
    if (!open.contains(device))
        return unknownDevice;
    if (command == L"info cd identity")
        answer = L"a disc";
    else if (command == L"status cd number of tracks")
        answer = base::digits(static_cast<std::int64_t>(trackMs.size()));
    else if (command.starts_with(L"status cd length track "))
        answer = trackLength(static_cast<std::int32_t>(base::val(rest(L"status cd length track "))));
    else if (command == L"status cd position")
        answer = base::digits(position());
    else if (command == L"set cd time format hms")
        hms_ = true;
    else if (command == L"set cd time format milliseconds")
        hms_ = false;
    else if (command.starts_with(L"play cd")) {
        from_ = static_cast<std::int64_t>(base::val(rest(L"play cd").substr(command == L"play cd" ? 0 : 6)));
        since_ = clock_.elapsed();
        playing_ = true;
        if (recording_)
            recordedFrom_ = from_;
    } else if (command == L"record capture overwrite") {
        recording_ = true;
        recordedFrom_ = position();
        recordedTo_ = -1;
    } else if (command == L"stop capture")
        endRecording();
    else if (command == L"stop cd") {
        from_ = position();
        playing_ = false;
    } else if (command.starts_with(L"save capture "))
        return save(rest(L"save capture "));
    else if (command.starts_with(L"close ")) {
        open.erase(device);
        if (device == L"cd") {
            playing_ = false;
            from_ = 0;
        } else {
            recording_ = false;
            recordedFrom_ = -1;
        }
    }
    return 0;
}

std::uint32_t FakeMci::openDevice(const std::wstring& name)
{
    return open.insert(name).second ? 0 : std::uint32_t{nameInUse};
}

std::uint32_t FakeMci::save(const std::wstring& path)
{
    endRecording();
    if (recordedFrom_ < 0 || path.empty())
        return fileNotSaved;
    files_.put(path, base::utf8(base::digits(recordedFrom_) + L"-" + base::digits(recordedTo_)));
    return 0;
}

std::wstring FakeMci::trackLength(std::int32_t track) const
{
    if (track < 1 || track > std::ssize(trackMs))
        return {};
    const std::int32_t length = trackMs[static_cast<std::size_t>(track) - 1];
    return hms_ ? L"00:" + base::hoursMinutesSeconds(length / 1000) : base::digits(length);
}

std::int64_t FakeMci::position() const
{
    if (!playing_ || stuck)
        return from_;
    const auto played = std::chrono::duration_cast<std::chrono::milliseconds>(clock_.elapsed() - since_).count();
    return std::min(from_ + played, std::accumulate(trackMs.begin(), trackMs.end(), std::int64_t{0}));
}

void FakeMci::endRecording()
{
    if (!recording_)
        return;
    recordedTo_ = position();
    recording_ = false;
}

}
