#pragma once

#include "platform/clock.h"
#include "platform/file_system.h"

#include <string>
#include <string_view>

/// What the writing of a tag asks of the file's surroundings.
namespace tonquay::tags {

/// True for a file that is there and read-only.
inline bool IsReadOnly(platform::FileSystem& files, std::wstring_view path)
{
    return files.isReadOnly(path);
}

inline bool FileExists(platform::FileSystem& files, std::wstring_view path)
{
    return files.fileExists(path);
}

/// A name in the same folder that no file has yet: with ".new" behind it or, when that is taken, with the time of day
/// before it ("104512-song.mp3" at 10:45:12). Names are tried until one is free, a new one each second.
std::wstring MakeTempFileName(platform::FileSystem& files, platform::Clock& clock, std::wstring_view path);

}
