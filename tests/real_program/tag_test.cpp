#include "host/system/host_file_system.h"
#include "support/fake_diagnostics.h"
#include "support/fake_settings_store.h"
#include "tags/id3v1.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace tonquay {
namespace {

namespace fs = std::filesystem;

std::string outputOf(const std::string& command)
{
    std::string text;
    FILE* const pipe = ::popen(command.c_str(), "r");
    std::array<char, 4096> part{};
    while (pipe != nullptr && std::fgets(part.data(), part.size(), pipe) != nullptr)
        text += part.data();
    return pipe != nullptr && ::pclose(pipe) == 0 ? text : "(failed)";
}

/// Twenty silent frames: MPEG 1, Layer III, 128 kbps, 44100 Hz, stereo.
std::string silentMp3()
{
    std::string frame(417, '\0');
    frame.replace(0, 4, std::string("\xFF\xFB\x90\x00", 4));
    std::string sound;
    for (int i = 0; i < 20; ++i)
        sound += frame;
    return sound;
}

TEST(TagsOnTheRealHost, anotherReaderFindsWhatWasWrittenIntoAReadOnlyFile)
{
    const fs::path file = fs::temp_directory_path() / ("tonquay-tag-" + std::to_string(::getpid()) + ".mp3");
    const std::string sound = silentMp3();
    std::ofstream(file, std::ios::binary) << sound;
    fs::permissions(file, fs::perms::owner_read);

    host::HeldFiles held;
    host::HostFileSystem files({"/", "", {}}, held);
    test::FakeDiagnostics log;
    test::FakeSettingsStore store;
    tags::COptions options(store, L"C:\\CDTONQUAY");
    tags::TagState state;
    const std::wstring path = files.programPath(file.string());
    for (const wchar_t* title : {L"Ärger für Öl in erster Fassung", L"Second"}) {
        state.TagInfo[tags::slot::title] = title;
        state.TagInfo[tags::slot::artist] = L"Ann";
        state.TagInfo[tags::slot::album] = L"An album with a name of more than 30 characters";
        state.TagInfo[tags::slot::year] = L"1999";
        state.TagInfo[tags::slot::comment] = L"said";
        state.TagInfo[tags::slot::track] = L"7";
        state.TagInfo[tags::slot::genre] = L"17";
        tags::WriteId3v1Tag(files, log, options, state, path);
    }
    EXPECT_EQ(outputOf("ffprobe -v error -show_entries format_tags -of default=nw=1 '" + file.string() + "' | sort"),
              "TAG:album=An album with a name of more t\n"
              "TAG:artist=Ann\n"
              "TAG:comment=said\n"
              "TAG:date=1999\n"
              "TAG:genre=Rock\n"
              "TAG:title=Second\n"
              "TAG:track=7\n");
    EXPECT_EQ(fs::file_size(file), sound.size() + 128);
    std::string bytes(sound.size(), '\0');
    std::ifstream(file, std::ios::binary).read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    EXPECT_TRUE(bytes == sound);
    EXPECT_TRUE(log.lines.empty());

    tags::ClearTagInfo(state);
    auto open = files.openForReading(path);
    ASSERT_TRUE(open);
    const auto there = tags::readId3v1Block(**open, files.length(path), state);
    EXPECT_TRUE(there && *there);
    EXPECT_EQ(state.TagInfo[tags::slot::title], L"Second");
    fs::remove(file);
}

}
}
