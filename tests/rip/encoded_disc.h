#pragma once

#include "base/text.h"
#include "run_harness.h"

#include <array>
#include <map>

namespace tonquay::rip {

enum class Mode { single, turbo, batch };

inline constexpr Mode everyMode[] = {Mode::single, Mode::turbo, Mode::batch};

/// An encoder as the setup holds it.
struct Encoder {
    const char* what;
    const wchar_t* path;
    const wchar_t* switches; ///< the user's own
    bool tagged;             ///< afterwards, by the automatic tagger
};

inline constexpr Encoder lame{"LAME", L"C:\\lame.exe", L"", true};
inline constexpr Encoder oggenc{"OGGENC", L"C:\\oggenc.exe", L"", false};
inline constexpr Encoder plugger{"PLUGGER", L"C:\\plugger.exe", L"", true};
inline constexpr Encoder mp3enc{"MP3ENC", L"C:\\mp3enc.exe", L"", true};
inline constexpr Encoder generic{"generic", L"C:\\enc.exe", L"", true};
inline constexpr Encoder xing{"XING", L"C:\\xmcode.exe", L"", false};
inline constexpr Encoder blade{"BLADE", L"C:\\bladeenc.exe", L"", true};
inline constexpr Encoder ownXing{"own switches", L"C:\\xmcode.exe", L"-x", true};
inline constexpr Encoder ownBlade{"own switches", L"C:\\bladeenc.exe", L"-x", true};

/// A run with an encoder that takes 5 ms, less than any track's extraction, and then makes an MP3 file beside each WAV
/// file that its command names. It deletes when it is told to.
struct EncodedDisc : DiscToRip {
    static constexpr std::int32_t trackBytes = 13 * 2352; ///< a few blocks, and passes of the loop

    std::size_t starts = 0;
    std::function<void()> onStart; ///< when an encoder was started, `starts` counts it already
    bool tagged = false;
    std::string course;     ///< of the status, a word for each
    std::string afterTrack; ///< what was left when the status went back to Recording

    EncodedDisc(const Encoder& encoder, Mode mode, std::int16_t deleteWav)
    {
        host.engine.insertDisc(0, std::vector<std::int32_t>(3, trackBytes));
        host.loop.passTime = std::chrono::milliseconds{5};
        state.settings.encodeWanted = 1;
        state.settings.encoderPath = encoder.path;
        state.settings.encoderCmdLine = encoder.switches;
        state.settings.encodeSingle = mode == Mode::batch ? 0 : 1;
        state.settings.turboMode = mode == Mode::turbo ? 1 : 0;
        state.settings.deleteWav = deleteWav;
        host.processes.scripts = {{.named = L"C:\\",
                                   .lasts = std::chrono::milliseconds{5},
                                   .atStart = [this](const std::wstring& command) { start(command); },
                                   .atEnd = [this](const std::wstring& command) { encode(command); }}};
        forms.controlsOf<state::Id3autoControls>().form.onLoad = [this] { tagged = state.flags.autoTagMode == 2; };
    }

    /// A letter for each track and for another disc's Other: W its WAV file is there, E the encoded one, B both, -
    /// none; then every other file.
    std::string left() const
    {
        const std::array<std::wstring, 4> names{L"Dawn", L"Noon", L"Dusk", L"Other"};
        std::string letters(names.size(), '-');
        std::string others;
        for (const std::wstring& file : host.files.allFiles()) {
            const std::wstring bare = file.substr(0, file.rfind(L'.'));
            std::size_t place = 0;
            while (place < names.size() && bare != L"C:\\Music\\" + names[place])
                ++place;
            if (place == names.size())
                others += ' ' + base::utf8(file);
            else if (file.ends_with(L".mp3"))
                letters[place] = 'E';
            else
                letters[place] = letters[place] == 'E' ? 'B' : 'W';
        }
        return letters + others;
    }

    std::vector<std::wstring> commands() const
    {
        std::vector<std::wstring> texts;
        for (const auto& one : host.processes.started)
            texts.push_back(one.command);
        return texts;
    }

    /// What the Stop key does to a run.
    void stop()
    {
        state.flags.stopRequested = 1;
        main.list1.deselectAll();
    }

private:
    void start(const std::wstring& command)
    {
        folders_[command] = host.processes.started.back().folder;
        ++starts;
        course += state.flags.encodeBusy == 1 ? "busy " : "idle ";
        if (onStart)
            onStart();
    }

    void encode(const std::wstring& command)
    {
        for (const std::wstring& wav : inputs(command)) {
            if (!host.files.fileExists(wav))
                continue;
            host.files.put(wav.substr(0, wav.size() - 3) + L"mp3", "encoded");
            if (command.find(L" -delete ") != std::wstring::npos) {
                EXPECT_TRUE(host.files.remove(wav));
            }
        }
    }

    std::vector<std::wstring> inputs(const std::wstring& command)
    {
        const std::wstring folder = folders_[command] + L'\\';
        std::vector<std::wstring> paths;
        const auto wavs = host.files.list(folder, L"*.wav");
        if (command.ends_with(L" *.wav") && wavs)
            for (const std::wstring& name : *wavs)
                paths.push_back(folder + name);
        for (std::size_t from = command.find(L'"'); from != std::wstring::npos;) {
            const std::size_t to = command.find(L'"', from + 1);
            const std::wstring text = command.substr(from + 1, to - from - 1);
            if (text.ends_with(L".wav"))
                paths.push_back(text.starts_with(L"C:") ? text : folder + text);
            from = command.find(L'"', to + 1);
        }
        return paths;
    }

    std::map<std::wstring, std::wstring> folders_; ///< the current one at a command's start
    controls::Following status_ = main.Label6[state::statusLabel].caption.follow([this](const std::wstring& text) {
        course += base::utf8(text) + ' ';
        if (text == L"Recording")
            afterTrack = left();
    });
};

}
