#include "tags/vorbis_comments.h"

#include "support/fake_diagnostics.h"
#include "support/fake_file_system.h"
#include "tags/ogg_bytes.h"

#include <gtest/gtest.h>

namespace {

using namespace tonquay;
using namespace tonquay::tags::test;
using Operation = tonquay::test::FakeFileSystem::Operation;

const std::wstring path = L"C:\\song.ogg";
const std::string head = page(first, 1, identification);

std::string file(const std::string& packet)
{
    return head + page(0, 1, packet);
}

TEST(VorbisComments, areThereWhenOneHasAValue)
{
    const std::string bare = "\3vorbis" + vendor(4);
    const std::string big = comments({"title=Ab"}, 70000);
    const std::string other = page(0, 2, std::string(300, '.'));
    const std::size_t cut = 255 * 255;
    const std::string none(12, '\0');
    const struct {
        const char* what;
        std::string bytes;
        bool there;
    } cases[] = {
        {"one, of any vendor", file(comments({"title=Ab"}, 52)), true},
        {"a note of the encoder", file(comments({"encoder=E 1"})), true},
        {"none", file(comments({})), false},
        {"empty ones", file(comments({"title=", "artist=", "x", ""})), false},
        {"one behind empty ones", file(comments({"title=", "", "artist=A"})), true},
        {"on two pages, with one of another stream between",
         head + page(0, 1, big.substr(0, cut), false) + other + page(continued, 1, big.substr(cut)), true},
        {"a page is missing", head + page(0, 1, big.substr(0, cut), false) + page(0, 1, big.substr(cut)), false},
        {"a page goes on with a packet that has ended",
         head + page(0, 1, bare + littleEndian(1) + littleEndian(3)) + page(continued, 1, "a=b"), false},
        {"no first page", page(0, 1, identification) + page(0, 1, comments({"a=b"})), false},
        {"behind the first page of another stream",
         page(first, 2, "\x80theora") + head + other + page(0, 1, comments({"a=b"})), true},
        {"only in another stream", page(first, 2, "OpusHead") + page(0, 2, comments({"a=b"})), false},
        {"behind other bytes", std::string(70000, 'O') + file(comments({"a=b"})), true},
        {"behind 64 KiB of other bytes, but for two", std::string((1 << 16) - 2, 'O') + file(comments({"a=b"})), true},
        {"other bytes between pages", head + "OggOgg" + page(0, 1, comments({"a=b"})), true},
        {"no comment packet", file("\5vorbis" + std::string(100, '=')), false},
        {"only the identification", head, false},
        {"no Ogg", std::string(200000, 'O'), false},
        {"empty", "", false},
        {"cut in the vendor text", file(comments({"a=b"}).substr(0, 20)), false},
        {"cut in the number of comments", file(bare + "\1"), false},
        {"cut in a length", file(bare + littleEndian(1) + "\3"), false},
        {"cut in a key", file(bare + littleEndian(1) + littleEndian(3) + "a"), false},
        {"cut in a value", file(bare + littleEndian(1) + littleEndian(9) + "a=b"), true},
        {"cut in a page", file(comments({"a=", "c=d"})).substr(0, 140), false},
        {"claims to have more than there is", file(bare + littleEndian(UINT32_MAX) + none), false},
        {"claims a vendor text longer than there is", file("\3vorbis" + littleEndian(UINT32_MAX) + none), false},
    };
    tonquay::test::FakeFileSystem files;
    tonquay::test::FakeDiagnostics log;
    for (const auto& c : cases) {
        files.put(path, c.bytes);
        EXPECT_EQ(tags::hasVorbisComments(files, log, path), c.there) << c.what;
    }
    EXPECT_TRUE(log.lines.empty());
}

TEST(VorbisComments, ofAFileThatCannotBeReadAreNotThere)
{
    tonquay::test::FakeFileSystem files;
    tonquay::test::FakeDiagnostics log;
    EXPECT_FALSE(tags::hasVorbisComments(files, log, path));
    EXPECT_TRUE(log.says("song.ogg"));
    EXPECT_FALSE(files.fileExists(path));
    files.put(path, file(comments({"a=b"})));
    for (const Operation operation : {Operation::seek, Operation::read}) {
        log.lines.clear();
        files.fail(operation, path);
        EXPECT_FALSE(tags::hasVorbisComments(files, log, path));
        files.heal(operation, path);
        EXPECT_TRUE(log.says("song.ogg"));
    }
}

}
