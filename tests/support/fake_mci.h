#pragma once

#include "platform/mci.h"
#include "support/fake_clock.h"
#include "support/fake_file_system.h"

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace tonquay::test {

/// A disc that plays on fake time, and a recorder whose files hold the stretch that was recorded, as "2000-3010"
/// milliseconds. It knows the commands of analog capture with their devices "cd" and "capture"; each is noted but the
/// questions for the place.
class FakeMci final : public platform::Mci {
public:
    FakeMci(FakeClock& clock, FakeFileSystem& files) : clock_(clock), files_(files) {}

    std::uint32_t mciSendString(std::wstring_view command, std::span<wchar_t> answer = {}) override;

    std::vector<std::int32_t> trackMs; ///< empty: no disc
    std::set<std::wstring> failing;    ///< beginnings of commands that fail
    bool stuck = false;                ///< the place does not move
    std::function<void(std::wstring_view command)> before;
    std::vector<std::wstring> commands;
    std::set<std::wstring> open;

private:
    std::uint32_t carryOut(const std::wstring& command, std::wstring& answer);
    std::uint32_t openDevice(const std::wstring& name);
    std::uint32_t save(const std::wstring& path);
    std::wstring trackLength(std::int32_t track) const;
    std::int64_t position() const;
    void endRecording();

    FakeClock& clock_;
    FakeFileSystem& files_;
    bool hms_ = false;
    bool playing_ = false;
    bool recording_ = false;
    std::int64_t from_ = 0;
    std::int64_t recordedFrom_ = -1;
    std::int64_t recordedTo_ = -1;
    std::chrono::nanoseconds since_{};
};

}
