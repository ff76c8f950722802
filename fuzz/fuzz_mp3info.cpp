#include "base/numbers.h"
#include "base/text.h"
#include "support/fake_diagnostics.h"
#include "support/fake_file_system.h"
#include "support/fake_settings_store.h"
#include "tags/mp3_info.h"
#include "tags/mp3_page.h"

#include <algorithm>
#include <cstdlib>

using namespace tonquay;

namespace {

void check(bool holds)
{
    if (!holds)
        std::abort();
}

tags::TagState read(test::FakeFileSystem& files, const std::string& bytes, std::int16_t mode)
{
    test::FakeDiagnostics log;
    test::FakeSettingsStore store;
    tags::COptions options(store, L"C:");
    tags::TagState state;
    // The texts of an ID3v2 tag may be anything; here they are what the file begins with.
    const std::wstring text = base::fromWindows1252(std::string_view(bytes).substr(0, 200));
    const tags::Id3v2Reader texts = [&](std::wstring_view) {
        return [&](int frame) { return text.substr(std::min(text.size(), static_cast<std::size_t>(frame))); };
    };
    tags::ReadMp3Info(files, log, options, texts, state, L"C:\\song.mp3", mode);
    return state;
}

}

/// Whatever a file holds, it can be read in every mode and is shown, and does not change. The first byte of the input
/// is the mode; a second one of 192 and more has the rest begin near the last place where a frame is looked for.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2)
        return 0;
    const std::size_t before = data[1] < 192 ? 0 : 32704U + (data[1] - 192U);
    const std::string bytes = std::string(before, '\0') + std::string(data + 2, data + size);
    const auto mode = static_cast<std::int16_t>(data[0] % 4);
    test::FakeFileSystem files;
    files.put(L"C:\\song.mp3", bytes);
    const tags::TagState state = read(files, bytes, mode);
    check(files.contents(L"C:\\song.mp3") == bytes);

    const auto& slots = state.TagInfo;
    const std::wstring& bitrate = slots[tags::slot::bitrate];
    check(bitrate.empty() || bitrate == base::digits(state.stream.BitrateKbps));
    check(slots[tags::slot::id3v2].empty() || slots[tags::slot::id3v2] == L"2");
    check(slots[tags::slot::vbr].empty() || (slots[tags::slot::vbr] == L"Yes") == state.stream.IsVbr);
    tags::tagFields(state);
    check(tags::fileInformation(state, static_cast<std::int64_t>(bytes.size()), L"now").ends_with(L"\r\n"));
    return 0;
}
