#include "console/rip_settings.h"

#include "base/text.h"
#include "console/command_line.h"

namespace tonquay::console {

namespace {

template <class Choice>
void take(std::int16_t& field, const std::optional<Choice>& choice)
{
    if (choice)
        field = static_cast<std::int16_t>(*choice);
}

}

Format formatOf(const state::RipSettings& saved, const RipOptions& options)
{
    if (options.format)
        return *options.format;
    if (saved.ripToWma == 1)
        return Format::wma;
    if (base::upper(saved.encoderPath).find(L"OGG") != std::wstring::npos)
        return Format::ogg;
    return saved.encodeWanted == 1 ? Format::mp3 : Format::wav;
}

base::Result<state::RipSettings> settingsForRun(const state::RipSettings& saved, const RipOptions& options,
                                                const std::wstring& output)
{
    const Format format = formatOf(saved, options);
    if (std::string missing = whyNotAvailable(format); !missing.empty())
        return base::Failure{base::Failure::Kind::unavailable, "rip", std::move(missing)};

    state::RipSettings settings = saved;
    if (!output.empty())
        settings.outputFolder = output;
    take(settings.nameFormat, options.names);
    take(settings.dirMode, options.folders);
    settings.ripMethod = static_cast<std::int16_t>(options.method);
    settings.createProgram = options.program ? 1 : 0;
    settings.autoClose = 0;
    settings.autoSelectAll = 0;
    settings.minimizeWhileEncoding = 0;
    settings.encodeWanted = 0;
    settings.ripToWma = 0;
    settings.deleteWav = 0;
    settings.encodeSingle = 0;
    settings.turboMode = 0;
    // An empty path would have start-up look for an encoder and want it used.
    settings.encoderPath = L"C:\\CDTONQUAY\\lame.exe";
    return settings;
}

}
