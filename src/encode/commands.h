#pragma once

#include "state/disc_info.h"
#include "state/run_flags.h"
#include "state/settings.h"

#include <cstdint>
#include <string>
#include <string_view>

/// The command texts of the encoders: the program's path as the settings hold it, never quoted, then the switches and
/// file arguments, each with its leading blank. They are made from what they are given alone and start nothing.
///
/// The user's own switches (`encoderCmdLine`), when there are any, stand in place of all built ones and for every kind
/// of encoder. Quoted texts are put between double quotes as they are.
///
/// `number` is the track's, from 1. Of `run` the commands read `destFolder` and `currentName`.
namespace tonquay::encode {

/// The command for one track right after its extraction, all files named with their folder. For an encoder with its
/// own window (`EncoderKind::xing`) the bare program.
std::wstring singleCommand(const state::RipSettings& settings, const state::DiscInfo& disc, const state::RunInHand& run,
                           std::int32_t number);

/// The command for one track of a batch. It is made to be started with `destFolder` as the current folder: some forms
/// name their input without a folder. For an encoder with its own window the bare program, which is for the whole
/// batch. Not for what takesWholeBatch() answers true for.
std::wstring batchCommand(const state::RipSettings& settings, const state::DiscInfo& disc, const state::RunInHand& run,
                          std::int32_t number);

/// The command with which an encoder of the kind `blade` takes a whole batch, in `destFolder` as the current folder.
/// `keptWavList` holds the quoted WAV names of the run, a blank before each. It is used when WAV files stay; else the
/// encoder is handed every WAV file in the folder, whoever made it, and told to delete it.
std::wstring bladeBatchCommand(const state::RipSettings& settings, std::wstring_view keptWavList);

/// True when the user's own switches are used.
bool hasOwnSwitches(const state::RipSettings& settings);

/// True when the batch is the one bladeBatchCommand(): a `blade` without own switches.
bool takesWholeBatch(const state::RipSettings& settings);

/// True for encoders whose batch may cost files: a `blade` is handed every WAV file of the folder, whoever made it; an
/// `mp3enc` gets folder and name without a separator, which only a folder that ends in one makes right.
bool batchIsUnsafe(const state::RipSettings& settings);

/// Where the encoded file of the track in hand comes to be: beside its WAV file, with the ending that the encoder is
/// told, or makes by itself: ".ogg" for `oggenc`, the user's own ending for a `blade` that is told it, ".mp3" for the
/// other MP3 encoders. Empty for `xing` and `generic`, of which nothing is known. Own switches that name another
/// output are not looked into.
std::wstring encodedPath(const state::RipSettings& settings, const state::RunInHand& run);

}
