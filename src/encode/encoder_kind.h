#pragma once

#include <string_view>

namespace tonquay::encode {

/// The families of encoders whose switches are known here. `generic` is any other program: it gets the WAV file and
/// nothing else. A `xing` is a program with a window of its own, which gets nothing at all.
enum class EncoderKind { generic, lame, blade, plugger, mp3enc, xing, oggenc };

/// Told from the words in the path, folders included and without regard to case. A later word of the table beats an
/// earlier one, wherever they stand: C:\LAME\BLADEENC.EXE is a `blade`.
EncoderKind encoderKind(std::wstring_view encoderPath);

/// True when the path, folders included, holds `word`, which is upper case. The path's own case does not matter.
bool pathNames(std::wstring_view encoderPath, std::wstring_view word);

}
