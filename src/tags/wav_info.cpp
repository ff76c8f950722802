#include "tags/wav_info.h"

#include "base/format.h"
#include "base/numbers.h"
#include "tags/convert_base.h"

#include <array>
#include <cmath>
#include <span>

namespace tonquay::tags {

namespace {

constexpr std::string_view mark = "RIFF";
constexpr std::size_t channelsOffset = 22;
constexpr std::size_t rateOffset = 24;
constexpr std::size_t bitsOffset = 34;
constexpr std::size_t lookedAt = bitsOffset + 2;

struct Rate {
    std::wstring_view lowByte; ///< hexadecimal
    std::wstring_view hertz;
};

constexpr std::array rates{
    Rate{L"40", L"8000"}, Rate{L"11", L"11025"}, Rate{L"22", L"22050"},
    Rate{L"0", L"32000"}, Rate{L"44", L"44100"}, Rate{L"80", L"48000"},
};

/// The first bytes of the file, as many as can be had.
std::string startOf(platform::FileSystem& files, platform::Diagnostics& log, std::wstring_view path)
{
    const auto file = files.openForReading(path);
    if (!platform::passOver(log, file, "Open the WAV file"))
        return {};
    std::string start(lookedAt, '\0');
    const auto count = (*file)->read(std::as_writable_bytes(std::span(start)));
    start.resize(platform::passOver(log, count, "Read the header of the WAV file") ? *count : 0);
    return start;
}

unsigned byteAt(std::string_view start, std::size_t offset)
{
    return static_cast<unsigned char>(start[offset]);
}

void takeNumber(std::string_view start, std::size_t offset, std::int16_t& field)
{
    if (start.size() >= offset + 2)
        field = static_cast<std::int16_t>(byteAt(start, offset) | byteAt(start, offset + 1) << 8);
}

void takeRate(std::string_view start, std::wstring& field)
{
    if (start.size() <= rateOffset)
        return;
    const std::wstring lowByte = ConvertBase(base::digits(byteAt(start, rateOffset)), 10, 16);
    for (const Rate& rate : rates)
        if (rate.lowByte == lowByte)
            field = rate.hertz;
}

double playSeconds(const WavInfo& info)
{
    constexpr double headerBits = 8000;
    return info.WavBitRate == 0 ? 0 : (base::val(info.WavFileSize) * 8 - headerBits) / info.WavBitRate;
}

/// The minutes come from the whole second that is nearest, the rest from what was not rounded: it lies between half a
/// second below 0 and 59 and a half.
std::wstring playTime(double seconds)
{
    std::int32_t nearest = 0;
    base::store(seconds, nearest);
    const std::int32_t minutes = nearest / 60;
    const double rest = seconds - 60.0 * minutes;
    // A half goes away from 0 here, unlike in the step before.
    return base::twoDigits(minutes) + L':' + base::twoDigits(std::llround(rest));
}

std::wstring wholeThousands(double value)
{
    return base::str(std::llround(std::trunc(value / 1000)));
}

}

bool ReadWavInfo(platform::FileSystem& files, platform::Diagnostics& log, WavInfo& info, std::wstring_view path)
{
    info.WavFileSize = base::digits(files.length(path));
    const std::string start = startOf(files, log, path);
    takeNumber(start, channelsOffset, info.WavChannels);
    takeNumber(start, bitsOffset, info.WavBits);
    if (!start.starts_with(mark))
        return false;
    takeRate(start, info.WavSampleRate);
    base::store(base::val(info.WavSampleRate) * info.WavChannels * info.WavBits, info.WavBitRate);
    info.WavPlayTime = playTime(playSeconds(info));
    return true;
}

std::wstring wavInformation(const WavInfo& info)
{
    // Numbers bring the blank that stands in the place of their sign, so two stand behind a colon.
    const std::array lines{
        L"Bit Rate: " + wholeThousands(info.WavBitRate) + L" Kbps",
        L"Audio Sample Size: " + base::str(info.WavBits) + L" bit",
        L"Channels: " + base::str(info.WavChannels) + (info.WavChannels == 1 ? L" (Mono)" : L" (Stereo)"),
        L"Audio Sample Rate: " + wholeThousands(base::val(info.WavSampleRate)) + L" KHz",
        L"File Size: " + base::twoDecimals(std::llround(base::val(info.WavFileSize) * 100 / 1024 / 1024)) + L" MB",
        L"Play Time: " + info.WavPlayTime,
    };
    std::wstring text;
    for (const std::wstring& line : lines)
        text += line + L"\r\n";
    return text;
}

}
