#include "encode/encoder_pipeline.h"

#include "encode/commands.h"
#include "encode/encoder_kind.h"
#include "encode/run_and_wait.h"
#include "naming/file_name.h"
#include "naming/output_folder.h"
#include "platform/diagnostics.h"
#include "platform/file_system.h"

#include <optional>
#include <utility>

namespace tonquay::encode {

namespace {

using platform::Processes;

/// Nothing for the user's own switches: whoever writes them says that the program needs no knowledge of the encoder.
std::optional<EncoderKind> knownKind(const state::RipSettings& settings)
{
    if (hasOwnSwitches(settings))
        return std::nullopt;
    return encoderKind(settings.encoderPath);
}

/// Whether a track's WAV file goes right after its encoder, which was waited for. What stays then is the sweep's, and
/// this encoder deletes by itself.
bool goesAfterEncoder(std::optional<EncoderKind> kind, const state::RipSettings& settings)
{
    if (settings.deleteWav != 1 || kind == EncoderKind::blade)
        return false;
    const bool leftToTurboSweep = !kind || kind == EncoderKind::oggenc || kind == EncoderKind::plugger;
    return !leftToTurboSweep || settings.turboMode != 1;
}

}

EncoderPipeline::EncoderPipeline(state::AppState& state, state::Forms& forms, platform::Platform& platform,
                                 std::function<void(const StartedEncoder&)> started)
    : state_(state),
      main_(forms.ripdeck()),
      platform_(platform),
      started_(std::move(started))
{}

EncoderPipeline::Next EncoderPipeline::encodeTrack(std::int32_t row)
{
    const state::RipSettings& settings = state_.settings;
    enterOutputFolder();
    showEncoding();
    const std::optional<EncoderKind> kind = knownKind(settings);
    // Before the wait: another command that names files may change the name in hand meanwhile. The full path, since
    // after a change of folder that failed a bare name would be another folder's file.
    const std::wstring wav = naming::joined(state_.run.destFolder, state_.run.currentName + L".wav");
    const std::wstring command = singleCommand(settings, state_.disc, state_.run, row + 1);
    if (settings.turboMode == 1 && row != state_.run.lastSelected) {
        tell(settings, row, startInBackground(platform_, command));
    } else {
        runAndWait(platform_, state_.flags, command, [&](Processes::Child child) { tell(settings, row, child); });
        // The encoder may have failed: the WAV file goes all the same.
        if (goesAfterEncoder(kind, settings))
            passOver(platform_.log, platform_.files.remove(wav), "Delete a WAV file");
    }
    return kind == EncoderKind::xing ? Next::finish : Next::track;
}

EncoderPipeline::Next EncoderPipeline::encodeBatch(std::wstring_view keptWavList)
{
    const state::RipSettings& settings = state_.settings;
    showEncoding();
    const bool entered = enterOutputFolder();
    const std::optional<EncoderKind> kind = knownKind(settings);
    if (settings.minimizeWhileEncoding == 1 && kind != EncoderKind::xing)
        main_.form.windowState = controls::Form::WindowState::minimised;
    if (kind == EncoderKind::xing) {
        runAndWait(platform_, state_.flags, settings.encoderPath);
        return Next::finish;
    }
    if (kind == EncoderKind::blade) {
        encodeWholeFolder(keptWavList, entered);
        return Next::tag;
    }
    encodeSelectedRows();
    return settings.deleteWav == 1 ? Next::sweep : Next::tag;
}

void EncoderPipeline::encodeSelectedRows()
{
    // The switches are those of the batch's start. Only what is the track's own is asked for when its turn comes.
    const state::RipSettings settings = state_.settings;
    state::DiscInfo disc = state_.disc;
    const std::int32_t rows = main_.list1.rowCount();
    for (std::int32_t row = 0; row < rows; ++row) {
        // Asked for each row anew: the Stop command clears the selection while an encoder before it works.
        if (!main_.list1.isSelected(row))
            continue;
        disc.trackTitles = state_.disc.trackTitles;
        state_.run.currentName =
            naming::fileName(state_.settings.nameFormat, state_.disc, row + 1, naming::shortestRebuiltName);
        runAndWait(platform_, state_.flags, batchCommand(settings, disc, state_.run, row + 1),
                   [&](Processes::Child child) { tell(settings, row, child); });
    }
}

void EncoderPipeline::encodeWholeFolder(std::wstring_view keptWavList, bool entered)
{
    // By wildcard this encoder would take, and delete, whatever lies in the folder that it happens to be in.
    if (!entered && state_.settings.deleteWav == 1) {
        platform_.log.line("encoder", "The batch is not started outside of the output folder: it would encode and "
                                      "delete another folder's WAV files");
        return;
    }
    runAndWait(platform_, state_.flags, bladeBatchCommand(state_.settings, keptWavList));
}

/// Makes the output folder current; false when it cannot be. Its drive and the folder are two steps that fail apart.
bool EncoderPipeline::enterOutputFolder()
{
    const std::wstring& folder = state_.run.destFolder;
    const bool drive =
        passOver(platform_.log, platform_.files.changeDrive(folder), "Change to the output folder's drive");
    return passOver(platform_.log, platform_.files.changeFolder(folder), "Change to the output folder") && drive;
}

void EncoderPipeline::showEncoding()
{
    main_.Label6[state::statusLabel].caption = L"Encoding";
    state_.flags.encodeBusy = 1;
}

void EncoderPipeline::tell(const state::RipSettings& settings, std::int32_t row, Processes::Child child)
{
    if (!started_)
        return;
    std::wstring path = encodedPath(settings, state_.run);
    // The tagger looks for an MP3 file whatever the encoder is called, so its follower does too.
    if (path.empty() && encoderKind(settings.encoderPath) == EncoderKind::generic)
        path = naming::joined(state_.run.destFolder, state_.run.currentName + L".mp3");
    started_({.row = row, .child = child, .encodedPath = std::move(path)});
}

}
