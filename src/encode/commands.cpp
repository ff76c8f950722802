#include "encode/commands.h"

#include "base/text.h"
#include "encode/encoder_kind.h"
#include "encode/switches.h"
#include "naming/output_folder.h"

namespace tonquay::encode {

namespace {

std::wstring command(const Job& job)
{
    const std::wstring& program = job.settings.encoderPath;
    if (hasOwnSwitches(job.settings))
        return program + ownArguments(job);
    return program + builtArguments(encoderKind(program), job);
}

/// Without the point. Empty when nothing is known.
std::wstring encodedEnding(const state::RipSettings& settings)
{
    switch (encoderKind(settings.encoderPath)) {
    case EncoderKind::oggenc: return L"ogg";
    case EncoderKind::blade:
        if (!hasOwnSwitches(settings) && !base::isBlank(settings.encoderFileExt))
            return std::wstring(base::trim(settings.encoderFileExt));
        return L"mp3";
    case EncoderKind::lame:
    case EncoderKind::plugger:
    case EncoderKind::mp3enc: return L"mp3";
    case EncoderKind::xing:
    case EncoderKind::generic: break;
    }
    return {};
}

}

std::wstring singleCommand(const state::RipSettings& settings, const state::DiscInfo& disc, const state::RunInHand& run,
                           std::int32_t number)
{
    return command({settings, disc, run, number, Schedule::single});
}

std::wstring batchCommand(const state::RipSettings& settings, const state::DiscInfo& disc, const state::RunInHand& run,
                          std::int32_t number)
{
    return command({settings, disc, run, number, Schedule::batch});
}

std::wstring bladeBatchCommand(const state::RipSettings& settings, std::wstring_view keptWavList)
{
    // No switch of this kind asks for the disc or the track in hand.
    const state::DiscInfo noDisc;
    const state::RunInHand noTrack;
    return settings.encoderPath +
           builtArguments(EncoderKind::blade, {settings, noDisc, noTrack, 0, Schedule::batch, keptWavList});
}

bool hasOwnSwitches(const state::RipSettings& settings)
{
    return !base::isBlank(settings.encoderCmdLine);
}

bool takesWholeBatch(const state::RipSettings& settings)
{
    return !hasOwnSwitches(settings) && encoderKind(settings.encoderPath) == EncoderKind::blade;
}

bool batchIsUnsafe(const state::RipSettings& settings)
{
    return takesWholeBatch(settings) ||
           (!hasOwnSwitches(settings) && encoderKind(settings.encoderPath) == EncoderKind::mp3enc);
}

std::wstring encodedPath(const state::RipSettings& settings, const state::RunInHand& run)
{
    const std::wstring ending = encodedEnding(settings);
    return ending.empty() ? ending : naming::joined(run.destFolder, run.currentName + L'.' + ending);
}

}
