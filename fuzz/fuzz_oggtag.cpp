#include "support/fake_diagnostics.h"
#include "support/fake_file_system.h"
#include "tags/vorbis_comments.h"
#include "tags/vorbis_fields.h"
#include "tags/vorbis_stream.h"
#include "tags/vorbis_tag.h"

#include <algorithm>
#include <cstdlib>

using namespace tonquay;

/// Whatever stands in an Ogg file, it is only read, and what was found makes a comments file of seven lines.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(data, data + size);
    const std::wstring path = L"C:\\song.ogg";
    test::FakeFileSystem files;
    test::FakeDiagnostics log;
    files.put(path, bytes);
    const tags::VorbisTag tag = tags::ReadVorbisTag(files, log, path);
    const bool commented = tags::hasVorbisComments(files, log, path);
    const auto comments = tags::readVorbisComments(files, log, path);
    if (comments && std::ranges::any_of(*comments, [&](const std::string& comment) { return comment.size() > size; }))
        std::abort();
    static_cast<void>(tags::isOneStream(files, log, path));
    static_cast<void>(tags::hasSameVorbisSound(files, log, path, path));
    const std::wstring text = tags::commentsFileText(tags::shownFields(tag));
    const auto lines = std::ranges::count(text, L'\n');
    if (lines != 7 || std::ranges::count(text, L'\r') != lines || text.find(L'\0') != std::wstring::npos)
        std::abort();
    // Comments are seen only in a stream that says what it is.
    if (commented && bytes.find("\1vorbis") == std::string::npos)
        std::abort();
    if (files.contents(path) != bytes || files.allFiles().size() != 1 || !log.lines.empty())
        std::abort();
    return 0;
}
