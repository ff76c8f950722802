#include "support/fake_clock.h"
#include "support/fake_diagnostics.h"
#include "support/fake_file_system.h"
#include "tags/id3v2_tag.h"
#include "tags/tag_error.h"

#include <cstdlib>

using namespace tonquay;

namespace {

constexpr std::wstring_view path = L"C:\\song.mp3";

void check(bool holds)
{
    if (!holds)
        std::abort();
}

std::size_t sizeIn(const std::string& file)
{
    std::size_t size = 0;
    for (std::size_t i = 6; i < 10; ++i)
        size = (size << 7) + (i < file.size() ? static_cast<unsigned char>(file[i]) : 0u);
    return size;
}

/// What follows the tag of a file, or its last ten bytes.
std::string restOf(const std::string& file)
{
    return file.starts_with("ID3") ? file.substr(std::min(sizeIn(file), file.size())) : file;
}

struct World {
    test::FakeFileSystem files;
    test::FakeDiagnostics log;
    test::FakeClock clock;
    tags::clsID3v2 tag{files, log, clock};

    std::string file() const { return files.contents(path).value_or(std::string()); }

    /// False for a file that must not be written; it is then as it was.
    bool change(void (tags::clsID3v2::*how)(std::wstring_view, bool))
    {
        const std::string before = file();
        try {
            (tag.*how)(path, false);
        } catch (const tags::TagError&) {
            check(file() == before && restOf(before).empty());
            return false;
        }
        check(files.allFiles().size() == 1);
        return true;
    }

    std::vector<std::wstring> values() const
    {
        std::vector<std::wstring> all;
        for (int number = 1; number <= 12; ++number)
            all.push_back(tag.GetFrameValue(tags::FrameValueID{number}));
        return all;
    }
};

}

/// The first two bytes choose a frame and how long its new value is; the others are a file. It is read, changed and
/// written: what was behind the old tag is behind the new one, and a value that can be read again is the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2)
        return 0;
    World w;
    w.files.put(path, std::string(data + 2, data + size));
    const std::string before = w.file();
    w.tag.ReadTag(path);
    check(w.file() == before);
    w.tag.SetFrameValue(tags::FrameValueID{data[0] % 14}, std::wstring(data[1], L'v'));
    const std::vector<std::wstring> values = w.values();
    if (!w.change(&tags::clsID3v2::WriteTag))
        return 0;
    const std::string after = w.file();
    const std::size_t tagged = 10 + sizeIn(after);
    check(after.starts_with("ID3\3") && (tagged - 10) % 257 == 0);
    check(after.substr(tagged) == restOf(before));
    w.tag.ReadTag(path);
    check(w.tag.HasTag());
    // A text frame without flaws comes back when all of the tag is within what is read.
    const std::vector<std::wstring> again = w.values();
    for (std::size_t i = 0; tagged <= 1011 && i < values.size(); ++i)
        check(values[i] == again[i] || i + 1 == 7 || i + 1 == 11);
    check(w.change(&tags::clsID3v2::removeTag) && w.file() == restOf(after));
    return 0;
}
