#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tonquay::state {

/// A file in the queue of MP3 to WAV, or in the list that it is chosen from. A row of both lists is one text, of which
/// only the name is seen: the name, 150 blanks, the folder.
struct Mp3Row {
    std::wstring name;
    std::wstring folder; ///< in the program's form, a root without its backslash

    std::wstring text() const;
};

/// Splits a row at its first run of five blanks, and trims both parts. Without one there is no folder. So a name with
/// such a run, or with blanks at its ends, does not come back as it went in.
Mp3Row mp3Row(std::wstring_view text);

/// The file of a queue that is being decoded.
struct Mp3InHand {
    std::int32_t number = 0; ///< from 1; 0 for none
    std::int32_t count = 0;  ///< of the files that were in the queue when the work began
    std::wstring row;        ///< of the queue then

    bool operator==(const Mp3InHand&) const = default;
};

}
