#include "console/encoder_choice.h"

#include "base/text.h"
#include "console/command_line.h"
#include "encode/encoder_kind.h"
#include "platform/clock.h"
#include "platform/event_loop.h"
#include "platform/file_system.h"
#include "platform/processes.h"

#include <fmt/format.h>

#include <filesystem>
#include <string_view>
#include <system_error>

#include <unistd.h>

namespace tonquay::console {

namespace {

namespace fs = std::filesystem;
using base::Failure;

constexpr std::wstring_view lamePath = L"C:\\CDTONQUAY\\lame.exe";
constexpr std::wstring_view oggencPath = L"C:\\CDTONQUAY\\oggtools\\oggenc.exe";

bool isProgram(const fs::path& path)
{
    std::error_code ignored;
    return fs::is_regular_file(path, ignored) && ::access(path.c_str(), X_OK) == 0;
}

/// The host path of a program that the user named; a bare name is looked for as the shell does.
base::Result<std::string> findAsked(const std::string& asked, RunHost& host)
{
    if (asked.find('/') == std::string::npos) {
        auto found = host.findProgram(asked);
        return found ? found
                     : Failure{Failure::Kind::notFound, "--encoder", asked + ": no program of this name is on PATH"};
    }
    std::error_code error;
    const fs::path path = fs::absolute(asked, error);
    if (error || !fs::exists(path, error))
        return Failure{Failure::Kind::notFound, "--encoder", asked + ": there is no such file"};
    if (!isProgram(path))
        return Failure{Failure::Kind::invalid, "--encoder", asked + ": this is no program that you may run"};
    return path.string();
}

/// The name under which a program is linked: its own, with what could part a command text or a path taken out.
std::string linkName(const std::string& path)
{
    std::string name = fs::path(path).filename().string();
    for (char& c : name)
        if ((c < 'a' || c > 'z') && (c < 'A' || c > 'Z') && (c < '0' || c > '9') && c != '.' && c != '-')
            c = '_';
    return name;
}

std::optional<std::string> remarkOnFolder(const std::string& path, const std::string& name)
{
    const std::wstring whole = base::fromHostBytes(path);
    const std::wstring own = base::fromHostBytes(name);
    const bool misleads = encode::encoderKind(whole) != encode::encoderKind(own) ||
                          encode::pathNames(whole, L"OGG") != encode::pathNames(own, L"OGG") ||
                          encode::pathNames(whole, L"LAME") != encode::pathNames(own, L"LAME");
    if (!misleads)
        return std::nullopt;
    return fmt::format("--encoder: {}: a folder in this path looks like another encoder; the program is taken by its "
                       "own name, {}",
                       path, name);
}

/// Only programs that are known to answer such a question are asked.
bool answersVersion(std::wstring_view path)
{
    const encode::EncoderKind kind = encode::encoderKind(path);
    return kind == encode::EncoderKind::lame || kind == encode::EncoderKind::oggenc;
}

/// `name` is what people call it.
base::Status tryStart(const std::wstring& encoder, const std::string& name, RunHost& host, platform::Platform& platform)
{
    constexpr std::chrono::seconds patience{5};
    if (!answersVersion(encoder))
        return {};
    const auto child = platform.processes.start(encoder + L" --version", platform::Processes::WindowStyle::normal);
    if (!child)
        return Failure{child.failure().kind, name, "the encoder does not start: " + child.failure().text};
    const auto limit = platform.clock.now() + patience;
    std::optional<int> code;
    platform::waitUntil(platform.loop, [&] {
        code = platform.processes.exitCode(*child);
        return code || platform.clock.now() > limit;
    });
    if (!code) {
        host.endChildren();
        return Failure{Failure::Kind::unavailable, name,
                       fmt::format("the encoder does not work: asked for its version it has not answered in {} s",
                                   patience.count())};
    }
    // A script around an encoder may know nothing of versions; these say that nothing was run, or that it crashed.
    constexpr int cannotRun = 126;
    if (*code >= cannotRun)
        return Failure{Failure::Kind::unavailable, name,
                       fmt::format("the encoder does not work: asked for its version it ends with status {}", *code)};
    return {};
}

base::Status isInstalled(Format format, const platform::MachinePrograms& programs)
{
    const bool ogg = format == Format::ogg;
    const base::Status& status = ogg ? programs.oggenc : programs.lame;
    if (status || status.failure().kind != Failure::Kind::notFound)
        return status;
    return Failure{Failure::Kind::notFound, ogg ? "oggenc" : "lame",
                   fmt::format("there is no such encoder on PATH; install the package {}, or name another one with "
                               "--encoder",
                               ogg ? "vorbis-tools" : "lame")};
}

bool isMachinesOggenc(const std::string& program, RunHost& host)
{
    const base::Result<std::string> machines = host.findProgram("oggenc");
    std::error_code error;
    return machines && fs::equivalent(program, *machines, error) && !error;
}

}

base::Result<EncoderChoice> chooseEncoder(Format format, const std::optional<std::string>& asked, RunHost& host,
                                          platform::Platform& platform)
{
    EncoderChoice choice{std::wstring(format == Format::ogg ? oggencPath : lamePath)};
    if (!usesEncoder(format))
        return choice;
    std::string name = format == Format::ogg ? "oggenc" : "lame";
    if (asked) {
        const base::Result<std::string> found = findAsked(*asked, host);
        if (!found)
            return found.failure();
        name = *found;
        const std::string linked = linkName(*found);
        const bool makesOgg = encode::pathNames(base::fromHostBytes(linked), L"OGG");
        if (makesOgg != (format == Format::ogg))
            return Failure{Failure::Kind::invalid, "--encoder",
                           makesOgg ? *found + ": makes Ogg files; use --format ogg"
                                    : *found + ": the name of an Ogg encoder holds \"ogg\"; use --format mp3"};
        if (encode::encoderKind(base::fromHostBytes(linked)) == encode::EncoderKind::xing)
            return Failure{Failure::Kind::invalid, "--encoder",
                           *found + ": this encoder has a window of its own and takes no files from others"};
        choice.remark = remarkOnFolder(*found, linked);
        // The machine's own oggenc has to be called by way of the adapter that is there for it.
        if (format != Format::ogg || !host.programs().oggenc || !isMachinesOggenc(*found, host)) {
            const base::Result<std::wstring> path = host.linkEncoder(*found, linked);
            if (!path)
                return path.failure();
            choice.path = *path;
        }
    } else if (const base::Status installed = isInstalled(format, host.programs()); !installed) {
        return installed.failure();
    }
    if (const base::Status starts = tryStart(choice.path, name, host, platform); !starts)
        return starts.failure();
    return choice;
}

}
