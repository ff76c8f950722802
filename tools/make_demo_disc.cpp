#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <numeric>
#include <span>
#include <string>
#include <system_error>
#include <vector>

/// make_demo_disc FOLDER: writes demo.bin and demo.cue, three short pieces of synthesised music. The same bytes on
/// every run of the same machine.
namespace {

constexpr int rate = 44100;
constexpr std::size_t sectorFrames = 588;
constexpr std::size_t sectorsPerSecond = 75;
constexpr float twoPi = 2 * std::numbers::pi_v<float>;

struct Note {
    float beat; ///< from the start of the piece
    float beats;
    int key; ///< as on a keyboard: 69 is A at 440 Hz
    float loudness = 0.5f;
    float place = 0.5f; ///< 0 is left, 1 is right
};

class Piece {
public:
    explicit Piece(float seconds) : left_(frames(seconds)), right_(left_.size()) {}

    /// A plucked string: a burst of noise that runs round in a line of one period and loses its brightness.
    void pluck(float at, float seconds, const Note& note, float brightness)
    {
        // The filter in the loop holds the sound back by a sample of its own.
        const float period = rate / frequency(note.key) - 1;
        const auto whole = static_cast<std::size_t>(period);
        const float part = period - static_cast<float>(whole);
        std::vector<float> line(whole + 2);
        float smooth = 0;
        for (float& value : line) {
            smooth += brightness * (noise() - smooth);
            value = smooth;
        }
        // A burst with a mean would ring on at 0 Hz, where nothing dies away; and all strings are plucked as hard.
        const float mean = std::accumulate(line.begin(), line.end(), 0.0f) / static_cast<float>(line.size());
        float peak = 1e-6f;
        for (float& value : line) {
            value -= mean;
            peak = std::max(peak, std::abs(value));
        }
        for (float& value : line)
            value /= peak;
        std::size_t now = 0;
        float held = 0;
        run(at, seconds, 0.001f, 0.08f, note, [&](float) {
            const std::size_t next = now + 1 == line.size() ? 0 : now + 1;
            const std::size_t behind = next + 1 == line.size() ? 0 : next + 1;
            const float sound = line[next] + (1 - part) * (line[behind] - line[next]);
            held = 0.997f * (0.5f * sound + 0.5f * held);
            line[now] = held;
            now = next;
            return sound;
        });
    }

    /// A soft tone of a few partials, each weaker and fading sooner than the one below.
    void sing(float at, float seconds, const Note& note, std::span<const float> partials, float attack, float fade)
    {
        const float step = twoPi * frequency(note.key) / rate;
        std::array<float, 8> phases{};
        run(at, seconds, attack, 0.25f, note, [&](float time) {
            float sound = 0;
            for (std::size_t i = 0; i < partials.size(); ++i) {
                const float number = static_cast<float>(i + 1);
                sound += partials[i] * std::sin(phases[i]) * std::exp(-fade * number * time);
                phases[i] = std::fmod(phases[i] + step * number, twoPi);
            }
            return sound;
        });
    }

    /// A little room: each ear hears the other side again, later and weaker.
    void echo(float seconds, float strength)
    {
        const std::size_t delay = frames(seconds);
        for (std::size_t i = delay; i < left_.size(); ++i) {
            left_[i] += strength * right_[i - delay];
            right_[i] += strength * left_[i - delay];
        }
    }

    /// Whole sectors, 16 bits little-endian, with the loudest sample a little under full scale.
    std::string sectors() const
    {
        float peak = 1e-6f;
        for (const auto* const side : {&left_, &right_})
            for (const float value : *side)
                peak = std::max(peak, std::abs(value));
        std::string bytes;
        bytes.reserve(left_.size() * 4);
        for (std::size_t i = 0; i < left_.size(); ++i)
            for (const float value : {left_[i], right_[i]}) {
                const auto sample = static_cast<std::int16_t>(std::lround(value / peak * 28000));
                const auto word = static_cast<std::uint16_t>(sample);
                bytes.push_back(static_cast<char>(word & 0xFF));
                bytes.push_back(static_cast<char>(word >> 8));
            }
        return bytes;
    }

private:
    static std::size_t frames(float seconds)
    {
        const auto count = static_cast<std::size_t>(seconds * rate);
        return (count + sectorFrames - 1) / sectorFrames * sectorFrames;
    }

    static float frequency(int key) { return 440 * std::exp2(static_cast<float>(key - 69) / 12); }

    float noise()
    {
        state_ = state_ * 1664525u + 1013904223u;
        return static_cast<float>(state_ >> 8) / 8388608.0f - 1;
    }

    template <class Source>
    void run(float at, float seconds, float attack, float release, const Note& note, Source source)
    {
        const auto first = static_cast<std::size_t>(at * rate);
        const std::size_t last = std::min(left_.size(), first + static_cast<std::size_t>(seconds * rate));
        const float toLeft = std::cos(note.place * twoPi / 4) * note.loudness;
        const float toRight = std::sin(note.place * twoPi / 4) * note.loudness;
        for (std::size_t i = first; i < last; ++i) {
            const float time = static_cast<float>(i - first) / rate;
            const float left = static_cast<float>(last - i) / rate;
            const float sound = source(time) * std::min({1.0f, time / attack, left / release});
            left_[i] += toLeft * sound;
            right_[i] += toRight * sound;
        }
    }

    std::vector<float> left_;
    std::vector<float> right_;
    std::uint32_t state_ = 20011123;
};

/// Broken chords on a plucked string over a low one: C, A minor, F, G, and home again.
std::string brook()
{
    constexpr float beat = 0.25f;
    constexpr std::array<std::array<int, 4>, 7> chords{{{48, 64, 67, 72},
                                                        {45, 60, 64, 69},
                                                        {41, 60, 65, 69},
                                                        {43, 59, 62, 67},
                                                        {40, 59, 64, 67},
                                                        {41, 57, 60, 65},
                                                        {48, 60, 64, 67}}};
    constexpr std::array<int, 8> order{1, 2, 3, 2, 1, 3, 2, 1};
    Piece piece(14.5f);
    for (std::size_t bar = 0; bar < chords.size(); ++bar) {
        const float at = static_cast<float>(bar) * 8 * beat;
        piece.pluck(at, 2.4f, {0, 0, chords[bar][0], 0.9f, 0.45f}, 0.4f);
        for (std::size_t i = 0; i < order.size(); ++i) {
            if (bar + 1 == chords.size() && i > 3)
                break;
            const float place = 0.25f + 0.5f * static_cast<float>(i) / 7;
            piece.pluck(at + static_cast<float>(i) * beat, 1.6f,
                        {0, 0, chords[bar][static_cast<std::size_t>(order[i])], 0.6f, place}, 0.6f);
        }
    }
    piece.echo(0.19f, 0.22f);
    return piece.sectors();
}

/// A slow tune of soft tones over held chords, in three.
std::string lantern()
{
    constexpr float beat = 0.6f;
    constexpr std::array<Note, 14> tune{{{0, 2, 74},
                                         {2, 1, 76},
                                         {3, 2, 78},
                                         {5, 1, 81},
                                         {6, 2, 79},
                                         {8, 1, 78},
                                         {9, 3, 76},
                                         {12, 2, 74},
                                         {14, 1, 73},
                                         {15, 2, 71},
                                         {17, 1, 73},
                                         {18, 1, 74},
                                         {19, 2, 76},
                                         {21, 3, 74}}};
    constexpr std::array<std::array<int, 3>, 8> chords{{{50, 57, 66},
                                                        {50, 59, 66},
                                                        {43, 59, 62},
                                                        {45, 57, 61},
                                                        {47, 54, 62},
                                                        {43, 55, 62},
                                                        {45, 55, 61},
                                                        {50, 57, 66}}};
    constexpr std::array<float, 4> flute{0.6f, 0.18f, 0.08f, 0.03f};
    constexpr std::array<float, 3> pad{0.35f, 0.1f, 0.05f};
    Piece piece(15.4f);
    for (const Note& note : tune)
        piece.sing(note.beat * beat, note.beats * beat + 0.3f, {0, 0, note.key, 0.7f, 0.6f}, flute, 0.06f, 0.25f);
    for (std::size_t bar = 0; bar < chords.size(); ++bar)
        for (std::size_t i = 0; i < 3; ++i)
            piece.sing(static_cast<float>(bar) * 3 * beat, 3 * beat + 0.4f,
                       {0, 0, chords[bar][i], 0.6f, 0.25f + 0.25f * static_cast<float>(i)}, pad, 0.25f, 0.12f);
    piece.echo(0.27f, 0.25f);
    return piece.sectors();
}

/// A quick dance: bells on top, plucked strings between, a bass that walks.
std::string weathercock()
{
    constexpr float beat = 0.2f;
    constexpr std::array<int, 32> tune{69, 72, 76, 72, 74, 71, 67, 71, 72, 69, 65, 69, 71, 68, 64, 0,
                                       69, 72, 76, 81, 79, 76, 72, 76, 77, 74, 71, 68, 69, 0,  69, 0};
    constexpr std::array<int, 8> bass{45, 43, 41, 40, 45, 48, 38, 45};
    constexpr std::array<float, 5> bell{0.5f, 0.05f, 0.22f, 0.02f, 0.1f};
    Piece piece(13.6f);
    for (std::size_t round = 0; round < 2; ++round) {
        const float start = static_cast<float>(round) * 32 * beat;
        for (std::size_t i = 0; i < tune.size(); ++i) {
            if (tune[i] == 0)
                continue;
            const float at = start + static_cast<float>(i) * beat;
            if (round == 1)
                piece.sing(at, 0.9f, {0, 0, tune[i] + 12, 0.35f, 0.7f}, bell, 0.004f, 1.6f);
            piece.pluck(at, 0.7f, {0, 0, tune[i], 0.6f, 0.4f}, 0.75f);
        }
        for (std::size_t bar = 0; bar < bass.size(); ++bar) {
            const float at = start + static_cast<float>(bar) * 4 * beat;
            piece.pluck(at, 0.8f, {0, 0, bass[bar], 0.9f, 0.5f}, 0.35f);
            piece.pluck(at + 2 * beat, 0.5f, {0, 0, bass[bar] + 12, 0.5f, 0.55f}, 0.35f);
        }
    }
    piece.echo(0.13f, 0.2f);
    return piece.sectors();
}

std::string timeOf(std::size_t bytes)
{
    const std::size_t sectors = bytes / 4 / sectorFrames;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%02zu:%02zu:%02zu", sectors / sectorsPerSecond / 60,
                  sectors / sectorsPerSecond % 60, sectors % sectorsPerSecond);
    return text.data();
}

bool writeWhole(const std::filesystem::path& path, const std::string& bytes)
{
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        std::fprintf(stderr, "make_demo_disc: %s cannot be written\n", path.c_str());
    return static_cast<bool>(file);
}

}

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "Usage: make_demo_disc FOLDER\n");
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    std::error_code error;
    std::filesystem::create_directories(folder, error);

    struct Track {
        const char* title;
        std::string (*play)();
    };
    constexpr std::array tracks{Track{"Bäcken i maj", brook}, Track{"Lantern Waltz", lantern},
                                Track{"The Weathercock", weathercock}};
    std::string sound;
    std::string sheet = "REM GENRE Rock\r\nREM DATE 2024\r\nREM COMMENT \"Made by make_demo_disc\"\r\n"
                        "PERFORMER \"The Synthetic Three\"\r\nTITLE \"Små stycken\"\r\nFILE \"demo.bin\" BINARY\r\n";
    int number = 0;
    for (const Track& track : tracks) {
        sheet += "  TRACK 0" + std::to_string(++number) + " AUDIO\r\n    TITLE \"" + track.title +
                 "\"\r\n    INDEX 01 " + timeOf(sound.size()) + "\r\n";
        sound += track.play();
    }
    return writeWhole(folder / "demo.bin", sound) && writeWhole(folder / "demo.cue", sheet) ? 0 : 1;
}
