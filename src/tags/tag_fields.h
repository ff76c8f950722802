#pragma once

#include <string>

namespace tonquay::tags {

/// The texts that the tag of an MP3 or Ogg file is shown and edited in. Each may be empty.
struct TagFields {
    std::wstring title{};
    std::wstring artist{};
    std::wstring album{};
    std::wstring genre{};
    std::wstring year{}; ///< of an Ogg file its date, however long
    std::wstring track{};
    std::wstring comment{};
};

}
