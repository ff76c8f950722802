#pragma once

#include "base/result.h"
#include "tags/tag_state.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Frames of an ID3v2.3 tag as values: a body of bytes in, fields to read and to set, a body of bytes out.
///
/// Texts are one byte a character, in Windows-1252 with its gaps filled (base/text.h), so that every body that was
/// read is written as it was; a character that has no byte is set as "?". The encoding byte of a frame is carried
/// along and changes nothing: a text in UTF-16 shows its byte-order mark and its NULs as characters.
namespace tonquay::tags {

/// One frame. This class itself is an empty one: it takes anything, keeps nothing and gives back nothing.
class clsFrame {
public:
    using Flags = std::array<std::byte, 2>;

    clsFrame() = default;
    virtual ~clsFrame() = default;
    clsFrame(const clsFrame&) = delete;
    clsFrame& operator=(const clsFrame&) = delete;

    /// Return/Set the Frame ID. Four characters: what is shorter is filled up with blanks, what is longer is cut.
    virtual void FrameID(std::wstring_view) {}
    virtual std::wstring_view FrameID() const { return {}; }

    /// Return the Frame Size: the bytes of the body that getBytes() gives, without the ten of the frame's header.
    virtual std::int32_t FrameSize() const { return 0; }

    /// Set the Frame's flags. They mean nothing here and are kept as they are.
    virtual void setFlags(Flags) {}

    /// Return the frame's flags.
    virtual Flags getFlags() const { return {}; }

    /// Parse the frame's content. Fails for a body that ends before its fields do, and for one of more than 32767
    /// bytes; the frame is then not fit for use.
    virtual base::Status parseBytes(std::span<const std::byte>) { return {}; }

    /// Return the frame contents in a byte array. (read to be written to file) Fails when a text has more than 32767
    /// characters.
    virtual base::Result<std::vector<std::byte>> getBytes() const { return std::vector<std::byte>(); }

    virtual std::uint8_t TextEncoding() const { return 0; }

    /// Set the Frame's text encoding field.
    virtual void TextEncoding(std::uint8_t) {}

    virtual std::wstring Data() const { return {}; }

    /// Return/Set the data field. It keeps its terminator: a value that does not end in NUL gets one, which Data()
    /// shows and FrameSize() counts. What parseBytes() has found stays as it is, with a NUL at its end or without.
    virtual void Data(std::wstring_view) {}
};

/// What the three sorts of frames have in common.
class FrameFields : public clsFrame {
public:
    void FrameID(std::wstring_view identifier) final { identifier_ = identifier; }
    std::wstring_view FrameID() const final { return identifier_.text(); }
    void setFlags(Flags flags) final { flags_ = flags; }
    Flags getFlags() const final { return flags_; }
    std::uint8_t TextEncoding() const final { return encoding_; }
    void TextEncoding(std::uint8_t encoding) final { encoding_ = encoding; }
    std::wstring Data() const final;
    void Data(std::wstring_view value) final;

protected:
    /// The encoding and, behind the bytes of `fixed`, the texts, each as it is.
    base::Result<std::vector<std::byte>> body(std::string_view fixed, std::string_view first,
                                              std::string_view second = {}) const;
    /// Takes the encoding. Fails for a body that is too long or has fewer than `fixed` bytes behind it.
    base::Status begin(std::span<const std::byte> bytes, std::size_t fixed);

    std::string data = std::string(1, '\0');

private:
    FixedText<4> identifier_;
    Flags flags_{};
    std::uint8_t encoding_ = 0;
};

/// Encoding (1 byte), text.
class clsText_Frame final : public FrameFields {
public:
    std::int32_t FrameSize() const override;
    base::Status parseBytes(std::span<const std::byte> bytes) override;
    base::Result<std::vector<std::byte>> getBytes() const override;
};

/// A frame that also says what its data is about.
class DescribedFields : public FrameFields {
public:
    /// Return/Set the Description Field. Terminated as Data() is.
    std::wstring Description() const;
    void Description(std::wstring_view value);

protected:
    std::string description = std::string(1, '\0');
};

/// Encoding (1 byte), description up to its NUL, link. In a body without a NUL the same text is both.
class clsWeb_Frame final : public DescribedFields {
public:
    std::int32_t FrameSize() const override;
    base::Status parseBytes(std::span<const std::byte> bytes) override;
    base::Result<std::vector<std::byte>> getBytes() const override;
};

/// Encoding (1 byte), language (3), description up to its NUL, text. In a body without a NUL all is description.
///
/// The language of a body is read past: a frame that was parsed has the language that it had before, three NULs at
/// first.
class clsComment_Frame final : public DescribedFields {
public:
    clsComment_Frame();

    /// Return/Set the Language field. Three characters, filled up with blanks or cut.
    std::wstring_view Language() const { return language_.text(); }
    void Language(std::wstring_view value) { language_ = value; }

    std::int32_t FrameSize() const override;
    base::Status parseBytes(std::span<const std::byte> bytes) override;
    base::Result<std::vector<std::byte>> getBytes() const override;

private:
    FixedText<3> language_;
};

}
