#include "support/fake_diagnostics.h"
#include "support/fake_file_system.h"
#include "tags/convert_base.h"
#include "tags/wav_info.h"

#include <algorithm>
#include <cstdlib>

using namespace tonquay;

namespace {

/// A number that was written in a base is the same when it is written in that base once more.
void checkBases(std::wstring_view number, std::int16_t from, std::int16_t to)
{
    const std::wstring once = tags::ConvertBase(number, from, to);
    if (!once.empty() && once != L"Error" && once.size() < 10 && tags::ConvertBase(once, to, to) != once)
        std::abort();
}

}

/// Two files, one after the other with the same state, as the first half of the bytes and the second.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(data, data + size);
    test::FakeFileSystem files;
    test::FakeDiagnostics log;
    tags::WavInfo info;
    for (const std::string& half : {bytes.substr(0, size / 2), bytes.substr(size / 2)}) {
        files.put(L"C:\\song.wav", half);
        if (tags::ReadWavInfo(files, log, info, L"C:\\song.wav") != half.starts_with("RIFF"))
            std::abort();
        const std::wstring text = tags::wavInformation(info);
        if (std::ranges::count(text, L'\n') != 6 || (half.starts_with("RIFF") && info.WavPlayTime.size() < 5))
            std::abort();
    }
    if (size >= 2)
        checkBases(std::wstring(data + 2, data + size), static_cast<std::int16_t>(data[0] % 40),
                   static_cast<std::int16_t>(data[1] % 40));
    return 0;
}
