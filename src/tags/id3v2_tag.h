#pragma once

#include "platform/clock.h"
#include "platform/diagnostics.h"
#include "platform/file_system.h"
#include "tags/frame_ids.h"
#include "tags/id3v2_frames.h"
#include "tags/id3v2_headers.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tonquay::tags {

/// The ID3v2.3 tag at the start of a file: read it, take values out and set them, write it back or strip it away.
///
///     clsID3v2 tag(files, log, clock);
///     tag.ReadTag(path);
///     tag.SetFrameValue(FrameValueID::title, L"Title");
///     tag.WriteTag(path, false);
///
/// Twelve frames are served (frame_ids.h). All others are dropped when a tag is read, pictures and lyrics too, and so
/// are those that reach past the first 1001 bytes of the tag: a tag that is read and written back has lost them. The
/// sizes of frames are written in this system's own form (id3v2_headers.h); a frame of 128 bytes or more from another
/// program is not read as it was meant, nor is ours there.
///
/// Neither an extended header nor unsynchronisation is known; the flags of tag and frames are carried along.
class clsID3v2 {
public:
    /// All of them outlive this. The clock gives the time in the name of a temporary file.
    clsID3v2(platform::FileSystem& files, platform::Diagnostics& log, platform::Clock& clock);
    clsID3v2(const clsID3v2&) = delete;
    clsID3v2& operator=(const clsID3v2&) = delete;

    /// Return a flag indicating whether or not the MP3 file contains an ID3v2.3.x Tag. As the last ReadTag, WriteTag or
    /// removeTag left it; at first false.
    bool HasTag() const { return hasTag_; }

    /// Read the contains for an MP3 file. What was read before is forgotten.
    ///
    /// The file is opened for reading, and of the tag not more than 1011 bytes are read. Nothing fails: of a file that
    /// is missing or cannot be read there is no tag, a frame that makes no sense is left out, and what the file does
    /// not have of a tag that claims more is zeros. A tag of version 2 or 4 counts as none. Each step that is passed
    /// over leaves a line.
    void ReadTag(std::wstring_view path);

    /// The same from a file that is open; the place in it is another one afterwards. `where` is its name in the log.
    void ReadTag(platform::BinaryFile& file, std::string_view where);

    /// Write the tag to an MP3 file: its old tag, of whatever version, is replaced by the frames that are here,
    /// wherever they were read. A frame is as long as its text; zeros fill the tag up to a multiple of 257 bytes.
    ///
    /// A new file takes the place of the old one in one step (FileSystem::replace), so at any moment one of them is
    /// there as a whole. It keeps no dates, and is writable. A read-only file is replaced with `ignoreReadOnly` and
    /// without. Of the old tag the last ten bytes stay between the new tag and the sound. The flags are those of the
    /// old tag or, in a file without one, its sixth byte.
    ///
    /// Raises a TagError when the file is missing or empty, when its tag claims all of it, when a value has more than
    /// 32767 characters, and for every step that fails. The file and this object are then as they were.
    void WriteTag(std::wstring_view path, bool ignoreReadOnly);

    /// Strip away an ID3v2 tag. A file that does not begin with one stays, and so does what this object holds;
    /// otherwise all frames are gone from here too. The file then begins with the last ten bytes of the tag; one that
    /// is nothing but its header stays for that reason. Everything else is as for WriteTag.
    void removeTag(std::wstring_view path, bool ignoreReadOnly);

    /// Return a specified frames data value: of the first such frame, without any NUL; of a comment its text, of a web
    /// frame its link. Empty when there is none, and for a number that names no frame.
    std::wstring GetFrameValue(FrameValueID id) const;

    /// Set a Frames text data: of the first such frame, or of a new one behind all others. The encoding of a frame that
    /// was read stays what it was. A character that Windows-1252 does not have becomes "?". Nothing happens for a
    /// number that names no frame.
    void SetFrameValue(FrameValueID id, std::wstring_view value);

    /// What stands here to be written, for whoever has to know more of a frame than its value, or to take one out.
    clsFrames& frames() { return frames_; }
    const clsFrames& frames() const { return frames_; }

private:
    void parseFrames(std::span<const std::byte> body, std::int32_t bodySize, std::string_view where);
    base::Status addParsedFrame(const FrameHeader& header, std::span<const std::byte> body);
    base::Status AddParsedTextFrame(const FrameHeader& header, std::span<const std::byte> body);
    base::Status AddParsedCommentFrame(const FrameHeader& header, std::span<const std::byte> body);
    base::Status AddParsedWebFrame(const FrameHeader& header, std::span<const std::byte> body);
    void AddNewTextFrame(std::wstring_view identifier, std::wstring_view value);
    void AddNewCommentFrame(std::wstring_view identifier, std::wstring_view value);
    void AddNewWebFrame(std::wstring_view identifier, std::wstring_view value);
    base::Result<std::vector<std::byte>> tagBytes(std::byte flags) const;

    platform::FileSystem& files_;
    platform::Diagnostics& log_;
    platform::Clock& clock_;
    clsFrames frames_;
    bool hasTag_ = false;
};

}
