#include "tags/id3v2_tag.h"

#include "id3v2_maker.h"
#include "support/fake_clock.h"
#include "support/fake_diagnostics.h"
#include "support/fake_file_system.h"
#include "tags/file_functions.h"
#include "tags/tag_error.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

using namespace tonquay;
using namespace tonquay::tags;
using namespace std::string_literals;
using test::frame;
using test::sized;
using test::text;
using test::zeros;
using Kind = base::Failure::Kind;
using Operation = test::FakeFileSystem::Operation;

/// A body with its zeros, in front of what follows.
std::string padded(const std::string& frames, char flags = 0)
{
    const std::size_t odd = frames.size() % 257;
    return test::tag(frames + zeros(odd == 0 ? 0 : 257 - odd), 3, 0, flags);
}

std::string sound(std::size_t size)
{
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i)
        bytes.push_back(static_cast<char>(i * 31 % 251 + 1));
    return bytes;
}

const std::wstring path = L"C:\\Music\\song.mp3";

/// One file, and an object to work on it with.
struct World {
    explicit World(const std::string& bytes = {}) { files.put(path, bytes); }

    std::optional<Kind> kindOfFailure(const std::function<void()>& action)
    {
        try {
            action();
        } catch (const TagError& error) {
            EXPECT_EQ(error.what(), base::describe(error.failure()));
            return error.failure().kind;
        }
        return std::nullopt;
    }
    std::optional<Kind> write(bool ignoreReadOnly = false)
    {
        return kindOfFailure([&] { tag.WriteTag(path, ignoreReadOnly); });
    }
    std::optional<Kind> remove(bool ignoreReadOnly = false)
    {
        return kindOfFailure([&] { tag.removeTag(path, ignoreReadOnly); });
    }
    std::vector<std::wstring> values() const
    {
        std::vector<std::wstring> all;
        for (int number = 1; number <= 12; ++number)
            all.push_back(tag.GetFrameValue(FrameValueID{number}));
        return all;
    }
    bool isAlone() const { return files.allFiles() == std::vector{path}; }

    test::FakeFileSystem files;
    test::FakeDiagnostics log;
    test::FakeClock clock;
    clsID3v2 tag{files, log, clock};
};

TEST(Id3v2Write, theFramesStandInFrontOfWhatWasBehindTheOldTag)
{
    using enum FrameValueID;
    using Set = std::vector<std::pair<FrameValueID, std::wstring>>;
    const std::string end = sound(600'000);
    const std::string ten = "0123456789";
    const struct {
        const char* what;
        std::string before;
        Set set;
        std::string after;
    } cases[] = {
        {"no tag, no frames: the sixth byte are the flags", "abcdef", {}, test::tag("", 3, 0, 'f') + "abcdef"},
        {"a file of one byte", "x", {}, test::tag("") + "x"},
        {"a title",
         end,
         {{title, L"Abc"}},
         "ID3\3\0"s + end[5] + "\0\0\2\1"s + "TIT2\0\0\0\5\0\0\0Abc\0"s + zeros(242) + end},
        {"in the order that they were set in",
         "sound\0"s,
         {{comment, L"Hi"}, {webLink, L"x"}, {title, L""}, {comment, L"Ho"}},
         padded("COMM\0\0\0\10\0\0\0\0\0\0\0Ho\0"s + "WXXX\0\0\0\4\0\0\0\0x\0"s + "TIT2\0\0\0\2\0\0\0\0"s) +
             "sound\0"s},
        {"200 bytes of body",
         "sound\0"s,
         {{title, std::wstring(198, L'x')}},
         padded("TIT2\0\0\1\x48\0\0\0"s + std::string(198, 'x') + '\0') + "sound\0"s},
        {"257 bytes of frames need no padding",
         "sound\0"s,
         {{title, std::wstring(245, L'x')}},
         "ID3\3\0\0\0\0\2\1"s + text("TIT2", std::string(245, 'x')) + "sound\0"s},
        {"258 need 256",
         "sound\0"s,
         {{title, std::wstring(246, L'x')}},
         "ID3\3\0\0\0\0\4\2"s + text("TIT2", std::string(246, 'x')) + zeros(256) + "sound\0"s},
        {"as long as a value may be",
         "sound\0"s,
         {{title, std::wstring(32766, L'x')}},
         padded(text("TIT2", std::string(32766, 'x'))) + "sound\0"s},
        {"a number without a frame",
         "sound\0"s,
         {{FrameValueID{0}, L"x"}, {FrameValueID{13}, L"x"}},
         test::tag("") + "sound\0"s},
        {"ten bytes of the old tag stay, and its flags",
         test::tag(text("TALB", "B") + ten, 3, 7, '\x60') + end,
         {},
         padded(text("TALB", "B"), '\x60') + ten + end},
        {"a tag of version 4 gives way unread",
         test::tag(text("TALB", "B") + ten, 4) + end,
         {{title, L"T"}},
         padded(text("TIT2", "T")) + ten + end},
        {"what is not served is lost, flags and encodings are kept",
         test::tag(frame("APIC", "x") + frame("TIT2", "\1\xFF\xFEx"s, '\xC0', '\x20') + frame("COMM", "\2engD\0C"s) +
                   ten),
         {{album, L"B"}},
         padded(frame("TIT2", "\1\xFF\xFEx"s, '\xC0', '\x20') + frame("COMM", "\2\0\0\0D\0C"s) + text("TALB", "B")) +
             ten},
        {"the first of two is set",
         test::tag(text("TIT2", "a") + text("TIT2", "b") + ten),
         {{title, L"c"}},
         padded(text("TIT2", "c") + text("TIT2", "b")) + ten},
    };
    for (const auto& c : cases) {
        World w(c.before);
        w.tag.ReadTag(path);
        for (const auto& [id, value] : c.set)
            w.tag.SetFrameValue(id, value);
        const auto values = w.values();
        EXPECT_EQ(w.write(), std::nullopt) << c.what;
        EXPECT_TRUE(*w.files.contents(path) == c.after) << c.what;
        EXPECT_TRUE(w.tag.HasTag()) << c.what;
        EXPECT_TRUE(w.isAlone()) << c.what;
        EXPECT_TRUE(w.log.lines.empty()) << c.what;
        EXPECT_EQ(w.values(), values) << c.what << ", which are kept";
    }
}

TEST(Id3v2Write, aStrippedFileBeginsWithTheLastTenBytesOfItsTag)
{
    const struct {
        const char* what;
        std::string before, after;
        bool tag; ///< afterwards
    } cases[] = {
        {"a tag", test::tag(text("TIT2", "T") + "0123456789") + "sound", "0123456789sound", false},
        {"a tag of less than ten", test::tag("abc") + "sound", "\3\0\0\0\0\0\3"s + "abcsound", false},
        {"a tag of nothing", test::tag("") + "sound", test::tag("") + "sound", false},
        {"a tag of version 4", test::tag(zeros(20), 4) + "sound", zeros(10) + "sound", false},
        {"no tag", "sound without", "sound without", true},
        {"less than a header", "ID", "ID", true},
        {"empty", "", "", true},
    };
    for (const auto& c : cases) {
        World w(test::tag(text("TPE1", "of another file")));
        w.tag.ReadTag(path);
        w.files.put(path, c.before);
        EXPECT_EQ(w.remove(), std::nullopt) << c.what;
        EXPECT_EQ(*w.files.contents(path), c.after) << c.what;
        EXPECT_EQ(w.tag.HasTag(), c.tag) << c.what;
        EXPECT_EQ(w.tag.GetFrameValue(FrameValueID::artist), c.tag ? L"of another file" : L"") << c.what;
        EXPECT_TRUE(w.isAlone()) << c.what;
    }
}

TEST(Id3v2Write, whatCannotBeDoneIsRaisedAndLeavesAllAsItWas)
{
    const std::string whole = test::tag(text("TIT2", "T"));
    const struct {
        const char* what;
        std::string before;
        bool strips; ///< removeTag() fails as well
    } cases[] = {
        {"empty", "", false},
        {"a tag that claims all of the file", "ID3\3\0\0"s + sized(23) + whole.substr(10), true},
        {"a tag that claims more", "ID3\3\0\0\xFF\xFF\xFF\xFF"s + "sound", true},
    };
    for (const auto& c : cases) {
        World w(c.before);
        w.tag.SetFrameValue(FrameValueID::title, L"T");
        EXPECT_EQ(w.write(), Kind::invalid) << c.what;
        EXPECT_EQ(w.remove(), c.strips ? std::optional(Kind::invalid) : std::nullopt) << c.what;
        EXPECT_EQ(*w.files.contents(path), c.before) << c.what;
        EXPECT_FALSE(w.tag.HasTag()) << c.what;
        EXPECT_EQ(w.tag.GetFrameValue(FrameValueID::title), L"T") << c.what;
        EXPECT_TRUE(w.isAlone()) << c.what;
    }
    World w("sound");
    w.tag.SetFrameValue(FrameValueID::title, std::wstring(32767, L'x'));
    EXPECT_EQ(w.write(), Kind::invalid) << "too long a value";
    EXPECT_EQ(*w.files.contents(path), "sound");
    w.tag.SetFrameValue(FrameValueID::title, L"");
    for (const wchar_t* other : {L"C:\\Music\\none.mp3", L"C:\\Music", L""}) {
        EXPECT_EQ(w.kindOfFailure([&] { w.tag.WriteTag(other, true); }), Kind::notFound);
        EXPECT_EQ(w.kindOfFailure([&] { w.tag.removeTag(other, true); }), Kind::notFound);
    }
    w.files.hold(path);
    EXPECT_EQ(w.write(), Kind::refused) << "an encoder is at work on it";
    EXPECT_TRUE(w.isAlone());
}

TEST(Id3v2Write, aReadOnlyFileGivesWayAndIsWritableAfterwards)
{
    for (const bool ignoreReadOnly : {false, true}) {
        World w(test::tag(zeros(10)) + "sound");
        w.files.setReadOnly(path);
        EXPECT_EQ(w.write(ignoreReadOnly), std::nullopt);
        EXPECT_FALSE(w.files.isReadOnly(path));
        w.files.setReadOnly(path);
        EXPECT_EQ(w.remove(ignoreReadOnly), std::nullopt);
        EXPECT_EQ(*w.files.contents(path), test::tag("") + zeros(10) + "sound");
        EXPECT_FALSE(w.files.isReadOnly(path));
    }
}

TEST(Id3v2Write, theTemporaryFileHasANameThatIsFree)
{
    test::FakeFileSystem files;
    test::FakeClock clock; // at 02:46:40
    const auto name = [&](std::wstring_view of) { return MakeTempFileName(files, clock, of); };
    clock.advance(std::chrono::hours(8) - std::chrono::seconds(88)); // 10:45:12
    EXPECT_EQ(name(L"C:\\Music\\song.mp3"), L"C:\\Music\\song.mp3.new");
    for (const wchar_t* taken : {L"C:\\Music\\SONG.mp3.NEW", L"C:\\CDTONQUAY\\song.mp3.new"})
        files.put(taken, "");
    EXPECT_EQ(name(L"C:\\Music\\song.mp3"), L"C:\\Music\\104512-song.mp3");
    EXPECT_EQ(name(L"C:/Music/song.mp3"), L"C:/Music/104512-song.mp3");
    EXPECT_EQ(name(L"C:song.mp3"), L"C:104512-song.mp3");
    EXPECT_EQ(name(L"song.mp3"), L"104512-song.mp3");
    files.put(L"C:\\CDTONQUAY\\104512-song.mp3", "");
    files.put(L"C:\\CDTONQUAY\\104513-song.mp3", "");
    EXPECT_EQ(name(L"song.mp3"), L"104514-song.mp3") << "a moment later";

    World w("sound");
    w.files.put(path + L".new", "somebody's");
    w.tag.WriteTag(path, false);
    EXPECT_EQ(*w.files.contents(path), test::tag("") + "sound");
    EXPECT_EQ(*w.files.contents(path + L".new"), "somebody's");
    EXPECT_EQ(w.files.allFiles().size(), 2u);
}

/// Changes the file when it is asked for the time, which is when its length is known and it is not yet copied.
class MeddlingClock final : public platform::Clock {
public:
    explicit MeddlingClock(std::function<void()> meddle) : meddle_(std::move(meddle)) {}
    Monotonic now() const override { return {}; }
    Wall wallTime() const override
    {
        meddle_();
        return {};
    }
    void delay(std::chrono::milliseconds) override {}

private:
    std::function<void()> meddle_;
};

TEST(Id3v2Write, aFileThatSomebodyElseWritesToIsLeftAlone)
{
    for (const char* meanwhile : {"sound and more", "so", ""}) {
        World w("sound");
        w.files.put(path + L".new", "");
        MeddlingClock clock([&] { w.files.put(path, meanwhile); });
        clsID3v2 tag(w.files, w.log, clock);
        EXPECT_EQ(w.kindOfFailure([&] { tag.WriteTag(path, false); }), Kind::invalid);
        EXPECT_EQ(*w.files.contents(path), meanwhile);
        EXPECT_EQ(w.files.allFiles().size(), 2u);
    }
}

const std::string oldFile = test::tag(text("TALB", "B") + zeros(10)) + sound(1000);

struct Work {
    const char* what;
    std::function<std::optional<Kind>(World&)> work;
    std::string done;
};

const Work works[] = {
    {"write", [](World& w) { return w.write(true); },
     padded(text("TALB", "B") + text("TIT2", "T")) + zeros(10) + sound(1000)},
    {"strip", [](World& w) { return w.remove(true); }, zeros(10) + sound(1000)},
};

/// Does the work in a world that `harm` was done to. True when it succeeded.
bool survives(const Work& work, const std::string& what, bool tidy, const std::function<void(World&)>& harm,
              const std::function<void(World&)>& mend)
{
    World w(oldFile);
    w.files.setReadOnly(path);
    w.tag.ReadTag(path);
    w.tag.SetFrameValue(FrameValueID::title, L"T");
    harm(w);
    const auto failed = work.work(w);
    mend(w);
    const auto bytes = w.files.contents(path);
    EXPECT_TRUE(bytes && (*bytes == work.done || (failed && *bytes == oldFile))) << work.what << ", " << what;
    EXPECT_TRUE(!tidy || w.isAlone()) << work.what << ", " << what;
    if (failed) {
        EXPECT_TRUE(w.tag.HasTag()) << what;
        EXPECT_EQ(w.tag.GetFrameValue(FrameValueID::title), L"T") << what;
    }
    return !failed;
}

TEST(Id3v2Write, whereverItFailsTheOldFileOrTheNewOneIsWhole)
{
    const struct {
        const char* what;
        Operation operation;
        int times; ///< that it is done or asked for; each of them may fail
    } faults[] = {
        {"attributes", Operation::clearAttributes, 1},
        {"open old", Operation::openForReading, 1},
        {"open new", Operation::openBinary, 1},
        {"read", Operation::read, 3},
        {"seek", Operation::seek, 1},
        {"write", Operation::write, 2},
        {"close", Operation::close, 2},
        {"replace, asked for both names", Operation::replace, 2},
        {"remove", Operation::remove, 0},
        {"rename", Operation::rename, 0},
        {"copy", Operation::copy, 0},
        {"write whole", Operation::writeWhole, 0},
    };
    for (const Work& work : works) {
        for (const auto& fault : faults) {
            for (const bool removeFails : {false, true}) {
                int after = 0;
                const auto harm = [&](World& w) {
                    if (removeFails)
                        w.files.fail(Operation::remove, L"");
                    w.files.fail(fault.operation, L"", Kind::other, after);
                };
                const auto mend = [](World&) {};
                while (after < 20 && !survives(work, fault.what, !removeFails, harm, mend))
                    ++after;
                EXPECT_EQ(after, fault.times) << work.what << ", " << fault.what;
            }
        }
        int after = 0;
        while (after < 50 &&
               !survives(
                   work, "cut after " + std::to_string(after), false, [&](World& w) { w.files.failEverything(after); },
                   [](World& w) { w.files.endFailing(); }))
            ++after;
        EXPECT_GT(after, 8) << work.what;
        EXPECT_LT(after, 50) << work.what;
    }
}

TEST(Id3v2Write, aFullDiskLeavesTheOldFile)
{
    for (const Work& work : works) {
        std::int64_t capacity = static_cast<std::int64_t>(oldFile.size());
        const auto harm = [&](World& w) { w.files.capacity = capacity; };
        while (!survives(work, "room for " + std::to_string(capacity), true, harm, [](World&) {}))
            capacity += 13;
        EXPECT_GE(capacity, static_cast<std::int64_t>(oldFile.size() + work.done.size())) << work.what;
        EXPECT_LT(capacity, static_cast<std::int64_t>(oldFile.size() + work.done.size() + 13)) << work.what;
    }
}

}
