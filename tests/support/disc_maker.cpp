#include "support/disc_maker.h"

#include "support/disc_nrg.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <system_error>

namespace tonquay::test {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t sectorBytes = 2352;
constexpr int silence = -1;
constexpr int data = -2;

/// The program area, sector by sector, as numbers for patternSector().
struct Area {
    std::vector<int> sectors;
    std::vector<int> starts; ///< of index 1, by track
    std::vector<int> ends;   ///< of the track's own data and postgap
};

Area areaOf(const DiscPlan& plan)
{
    const bool byTrack = plan.format == DiscFormat::nrgFirstByTrack || plan.format == DiscFormat::nrgSecondByTrack;
    Area area;
    int next = 0;
    const auto add = [&](int count, int what) {
        for (int i = 0; i < count; ++i)
            area.sectors.push_back(what >= 0 ? next++ : what);
    };
    for (const PlannedTrack& track : plan.tracks) {
        if (byTrack && !area.starts.empty())
            add(nrgGapByTrack, data);
        add(track.silentPregap, track.audio ? silence : data);
        add(track.pregap, track.audio ? 0 : data);
        area.starts.push_back(static_cast<int>(area.sectors.size()));
        add(track.sectors, track.audio ? 0 : data);
        add(track.silentPostgap, track.audio ? silence : data);
        area.ends.push_back(static_cast<int>(area.sectors.size()));
    }
    return area;
}

void append(std::vector<std::byte>& to, const std::vector<std::byte>& from)
{
    to.insert(to.end(), from.begin(), from.end());
}

std::vector<std::byte> swapped(std::vector<std::byte> bytes)
{
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        std::swap(bytes[i], bytes[i + 1]);
    return bytes;
}

std::string timeOf(int sectors)
{
    char text[16];
    std::snprintf(text, sizeof text, "%02d:%02d:%02d", sectors / 75 / 60 % 100, sectors / 75 % 60, sectors % 75);
    return text;
}

std::string twoDigits(int number)
{
    return (number < 10 ? "0" : "") + std::to_string(number);
}

void run(const std::string& command)
{
    ASSERT_EQ(std::system(command.c_str()), 0) << command;
}

std::string quoted(const fs::path& path)
{
    return "'" + path.string() + "'";
}

/// Sectors of a track as they are stored: what the files hold, without the silence of PREGAP and POSTGAP.
std::vector<std::byte> storedTrack(const DiscPlan& plan, std::size_t index, bool withSilence)
{
    const Area area = areaOf(plan);
    const PlannedTrack& track = plan.tracks[index];
    int first = area.starts[index] - track.pregap - (withSilence ? track.silentPregap : 0);
    const int last = area.ends[index] - (withSilence ? 0 : track.silentPostgap);
    std::vector<std::byte> bytes;
    for (; first < last; ++first) {
        if (track.audio)
            append(bytes, patternSector(area.sectors[static_cast<std::size_t>(first)]));
        else
            bytes.resize(bytes.size() + static_cast<std::size_t>(track.dataSectorBytes), std::byte{0x5A});
    }
    return bytes;
}

struct FileKind {
    std::string ending;
    std::string type;
    bool perTrack = false;
    bool highFirst = false;
};

FileKind kindOf(DiscFormat format)
{
    switch (format) {
    case DiscFormat::cueSwapped: return {".bin", "MOTOROLA", false, true};
    case DiscFormat::cueBinPerTrack: return {".bin", "BINARY", true};
    case DiscFormat::cueWave: return {".wav", "WAVE"};
    case DiscFormat::cueWavePerTrack: return {".wav", "WAVE", true};
    case DiscFormat::cueAiff: return {".aiff", "AIFF"};
    case DiscFormat::cueFlac: return {".flac", "WAVE"};
    case DiscFormat::cueFlacPerTrack: return {".flac", "WAVE", true};
    case DiscFormat::tocBin: return {".bin", "", false, true};
    case DiscFormat::tocWavePerTrack: return {".wav", "", true};
    default: return {".bin", "BINARY"};
    }
}

void writeSound(const fs::path& path, const FileKind& kind, const std::vector<std::byte>& bytes)
{
    if (kind.ending == ".bin")
        return writeFile(path, kind.highFirst ? swapped(bytes) : bytes);
    if (kind.ending == ".wav")
        return writeFile(path, waveFile(bytes));
    const fs::path wave = path.string() + ".tmp.wav";
    writeFile(wave, waveFile(bytes));
    if (kind.ending == ".flac")
        run("flac --totally-silent -1 -f -o " + quoted(path) + " " + quoted(wave));
    else
        run("sox -D " + quoted(wave) + " " + quoted(path));
    fs::remove(wave);
}

std::string dataMode(const PlannedTrack& track)
{
    return track.dataSectorBytes == 2336 ? "MODE2/2336" : "MODE1/" + std::to_string(track.dataSectorBytes);
}

fs::path makeCue(const fs::path& folder, const DiscPlan& plan)
{
    const FileKind kind = kindOf(plan.format);
    std::string sheet;
    const auto line = [&](const std::string& text) { sheet += text + "\r\n"; };
    const auto field = [&](const std::string& name, const std::string& text) {
        if (!text.empty())
            line(name + " \"" + text + "\"");
    };
    field("REM GENRE", plan.genre);
    field("REM DATE", plan.year);
    field("REM COMMENT", plan.comment);
    field("PERFORMER", plan.artist);
    field("TITLE", plan.album);

    std::vector<std::byte> bytes;
    int time = 0;
    for (std::size_t i = 0; i < plan.tracks.size(); ++i) {
        const PlannedTrack& track = plan.tracks[i];
        const std::string number = twoDigits(plan.firstNumber + static_cast<int>(i));
        const std::string file = plan.name + (kind.perTrack ? number : "") + kind.ending;
        if (kind.perTrack || i == 0) {
            line("FILE \"" + file + "\" " + kind.type);
            time = 0;
        }
        line("  TRACK " + number + " " + (track.audio ? "AUDIO" : dataMode(track)));
        field("    TITLE", track.title);
        if (track.silentPregap > 0)
            line("    PREGAP " + timeOf(track.silentPregap));
        if (track.pregap > 0)
            line("    INDEX 00 " + timeOf(time));
        line("    INDEX 01 " + timeOf(time + track.pregap));
        if (track.silentPostgap > 0)
            line("    POSTGAP " + timeOf(track.silentPostgap));
        time += track.pregap + track.sectors;
        append(bytes, storedTrack(plan, i, false));
        if (kind.perTrack || i + 1 == plan.tracks.size()) {
            writeSound(folder / file, kind, bytes);
            bytes.clear();
        }
    }
    fs::path path = folder / (plan.name + ".cue");
    writeFile(path, sheet);
    return path;
}

std::string tocText(const std::string& title, const std::string& performer)
{
    if (title.empty() && performer.empty())
        return {};
    return "CD_TEXT { LANGUAGE 0 { TITLE \"" + title + "\" PERFORMER \"" + performer + "\" } }\n";
}

fs::path makeToc(const fs::path& folder, const DiscPlan& plan)
{
    const FileKind kind = kindOf(plan.format);
    std::string sheet = "CD_DA\n// made for a test\n";
    if (plan.firstNumber != 1)
        sheet += "FIRST_TRACK_NO " + std::to_string(plan.firstNumber) + "\n";
    sheet += tocText(plan.album, plan.artist);
    std::vector<std::byte> bytes;
    for (std::size_t i = 0; i < plan.tracks.size(); ++i) {
        const PlannedTrack& track = plan.tracks[i];
        const std::string file = plan.name + (kind.perTrack ? std::to_string(i + 1) : "") + kind.ending;
        const std::string mode = track.dataSectorBytes == 2048 ? "MODE1" : "MODE1_RAW";
        const std::string gap = track.audio ? "SILENCE " : "ZERO ";
        sheet +=
            "TRACK " + (track.audio ? "AUDIO\nNO COPY\nTWO_CHANNEL_AUDIO" : mode) + "\n" + tocText(track.title, "");
        if (track.silentPregap > 0)
            sheet += gap + timeOf(track.silentPregap) + "\n";
        const std::string offset = bytes.empty() ? "" : " #" + std::to_string(bytes.size());
        const std::string length = (track.audio ? " 0 " : " ") + timeOf(track.pregap + track.sectors);
        sheet += track.audio ? "FILE \"" : "DATAFILE \"";
        sheet.append(file).append("\"").append(offset).append(length).append("\n");
        if (track.silentPostgap > 0)
            sheet += gap + timeOf(track.silentPostgap) + "\n";
        if (track.pregap + track.silentPregap > 0)
            sheet += "START " + timeOf(track.pregap + track.silentPregap) + "\n";
        append(bytes, storedTrack(plan, i, false));
        if (kind.perTrack || i + 1 == plan.tracks.size()) {
            writeSound(folder / file, kind, bytes);
            bytes.clear();
        }
    }
    fs::path path = folder / (plan.name + ".toc");
    writeFile(path, sheet);
    return path;
}

fs::path makeNrg(const fs::path& folder, const DiscPlan& plan)
{
    const bool second = plan.format == DiscFormat::nrgSecond || plan.format == DiscFormat::nrgSecondByTrack;
    const bool byTrack = plan.format == DiscFormat::nrgFirstByTrack || plan.format == DiscFormat::nrgSecondByTrack;
    const Area area = areaOf(plan);
    NrgDisc disc{second, byTrack, {}, plan.album, plan.artist, plan.genre};
    for (std::size_t i = 0; i < plan.tracks.size(); ++i) {
        const PlannedTrack& track = plan.tracks[i];
        disc.tracks.push_back({plan.firstNumber + static_cast<int>(i), track.audio,
                               track.audio ? static_cast<int>(sectorBytes) : track.dataSectorBytes, area.starts[i],
                               track.pregap + track.silentPregap, storedTrack(plan, i, true), track.title});
    }
    fs::path path = folder / (plan.name + ".nrg");
    writeFile(path, nrgImage(disc));
    return path;
}

}

DiscFolder::DiscFolder()
{
    std::string name = (fs::temp_directory_path() / "tonquay-disc-XXXXXX").string();
    const char* const made = mkdtemp(name.data());
    EXPECT_NE(made, nullptr);
    path_ = made != nullptr ? name : std::string();
}

DiscFolder::~DiscFolder()
{
    std::error_code error;
    if (!path_.empty())
        fs::remove_all(path_, error);
}

std::vector<std::byte> patternSector(int number)
{
    std::vector<std::byte> bytes(sectorBytes);
    if (number < 0)
        return bytes;
    auto state = static_cast<std::uint32_t>(number) * 2654435761u + 12345u;
    for (std::byte& byte : bytes) {
        state = state * 1664525u + 1013904223u;
        byte = static_cast<std::byte>(state >> 24);
    }
    return bytes;
}

fs::path makeDisc(const fs::path& folder, const DiscPlan& plan)
{
    switch (plan.format) {
    case DiscFormat::tocBin:
    case DiscFormat::tocWavePerTrack: return makeToc(folder, plan);
    case DiscFormat::nrgFirst:
    case DiscFormat::nrgSecond:
    case DiscFormat::nrgFirstByTrack:
    case DiscFormat::nrgSecondByTrack: return makeNrg(folder, plan);
    default: return makeCue(folder, plan);
    }
}

std::vector<platform::DiscTrack> expectedTable(const DiscPlan& plan)
{
    const bool byTrack = plan.format == DiscFormat::nrgFirstByTrack || plan.format == DiscFormat::nrgSecondByTrack;
    const Area area = areaOf(plan);
    std::vector<platform::DiscTrack> table;
    for (std::size_t i = 0; i < plan.tracks.size(); ++i) {
        const bool last = i + 1 == plan.tracks.size();
        const bool ownEnd = last || byTrack || (plan.tracks[i].audio && !plan.tracks[i + 1].audio);
        const int end = ownEnd ? area.ends[i] : area.starts[i + 1];
        table.push_back(
            {plan.firstNumber + static_cast<int>(i), area.starts[i], end - area.starts[i], plan.tracks[i].audio});
    }
    return table;
}

std::vector<std::byte> expectedSound(const DiscPlan& plan, std::size_t track)
{
    const Area area = areaOf(plan);
    const platform::DiscTrack place = expectedTable(plan)[track];
    std::vector<std::byte> bytes;
    const auto first = area.sectors.begin() + place.firstSector;
    std::for_each(first, first + place.sectorCount, [&](int sector) { append(bytes, patternSector(sector)); });
    return bytes;
}

void writeFile(const fs::path& path, const std::vector<std::byte>& bytes)
{
    writeFile(path, std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

void writeFile(const fs::path& path, const std::string& text)
{
    std::ofstream file(path, std::ios::binary);
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
    file.close();
    ASSERT_TRUE(file.good()) << path;
}

std::vector<std::byte> readFile(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.good()) << path;
    const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    std::vector<std::byte> bytes(text.size());
    std::ranges::transform(text, bytes.begin(), [](char c) { return static_cast<std::byte>(c); });
    return bytes;
}

std::vector<std::byte> waveFile(const std::vector<std::byte>& sound)
{
    std::vector<std::byte> file;
    const auto text = [&](const char* letters) {
        for (; *letters != '\0'; ++letters)
            file.push_back(static_cast<std::byte>(*letters));
    };
    const auto number = [&](std::size_t value, int bytes) {
        for (int i = 0; i < bytes; ++i, value >>= 8)
            file.push_back(static_cast<std::byte>(value & 0xFF));
    };
    text("RIFF");
    number(36 + sound.size(), 4);
    text("WAVEfmt ");
    number(16, 4);
    number(1, 2);
    number(2, 2);
    number(44100, 4);
    number(176400, 4);
    number(4, 2);
    number(16, 2);
    text("data");
    number(sound.size(), 4);
    append(file, sound);
    return file;
}

}
