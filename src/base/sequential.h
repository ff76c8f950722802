#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Sequential text files: fields in a fixed order, parted by commas or line ends, strings in double quotes, numbers
/// bare, no keys. Read whole, written whole.
namespace tonquay::base {

/// Takes the fields of such a file one after the other. It works on the text of the file and never fails: each field
/// is a step of its own. A value that does not fit its field is consumed and the old value stays; past the end of the
/// file every field keeps its old value.
///
/// Blanks and line ends behind the last field are no field.
///
/// A quoted field ends at the next double quote; what stands between that and the next comma or line end is skipped.
/// A bare field ends at the next comma or line end, without its leading and trailing blanks.
class SequentialReader {
public:
    /// `text` must outlive the reader.
    explicit SequentialReader(std::wstring_view text) : rest_(text) {}

    bool atEnd() const;

    void read(std::wstring& field);
    void read(std::int16_t& field);
    void read(std::int32_t& field);
    void skip(int fields);

private:
    bool next(std::wstring_view& field, bool& quoted);
    template <class Integer>
    void readNumber(Integer& field);

    std::wstring_view rest_;
};

/// Builds the text of such a file. Records end with CR LF.
class SequentialWriter {
public:
    /// A string field. A character that would break the form is cleaned: a double quote becomes an apostrophe, a line
    /// end a blank.
    SequentialWriter& text(std::wstring_view value);
    SequentialWriter& number(std::int64_t value);
    SequentialWriter& endRecord();

    /// True when a text had to be cleaned.
    bool cleaned() const { return cleaned_; }

    /// UTF-8, for the file.
    std::string bytes() const;

private:
    void separate();

    std::wstring out_;
    bool recordOpen_ = false;
    bool cleaned_ = false;
};

}
