#include "base/sequential.h"

#include "base/numbers.h"
#include "base/text.h"

#include <algorithm>

namespace tonquay::base {

namespace {

constexpr std::wstring_view separators = L",\r\n";

bool isNumber(std::wstring_view text)
{
    constexpr std::wstring_view starts = L"+-.0123456789";
    return text.empty() || starts.find(text.front()) != std::wstring_view::npos;
}

}

bool SequentialReader::atEnd() const
{
    return rest_.find_first_not_of(L" \r\n") == std::wstring_view::npos;
}

bool SequentialReader::next(std::wstring_view& field, bool& quoted)
{
    if (atEnd())
        return false;
    rest_.remove_prefix(std::min(rest_.find_first_not_of(L' '), rest_.size()));
    quoted = rest_.starts_with(L'"');
    if (quoted) {
        rest_.remove_prefix(1);
        const std::size_t close = std::min(rest_.find(L'"'), rest_.size());
        field = rest_.substr(0, close);
        rest_.remove_prefix(std::min(close + 1, rest_.size()));
    }
    const std::size_t end = std::min(rest_.find_first_of(separators), rest_.size());
    if (!quoted)
        field = trim(rest_.substr(0, end));
    rest_.remove_prefix(end);
    if (rest_.starts_with(L"\r\n"))
        rest_.remove_prefix(2);
    else if (!rest_.empty())
        rest_.remove_prefix(1);
    return true;
}

void SequentialReader::read(std::wstring& field)
{
    std::wstring_view found;
    bool quoted = false;
    if (next(found, quoted))
        field = found;
}

template <class Integer>
void SequentialReader::readNumber(Integer& field)
{
    std::wstring_view found;
    bool quoted = false;
    if (!next(found, quoted))
        return;
    const std::wstring_view number = trim(found);
    // A bare empty field is the number 0; a text that begins like no number is a bad value.
    if (quoted ? number.empty() || !isNumber(number) : !isNumber(number))
        return;
    store(val(number), field);
}

void SequentialReader::read(std::int16_t& field)
{
    readNumber(field);
}

void SequentialReader::read(std::int32_t& field)
{
    readNumber(field);
}

void SequentialReader::skip(int fields)
{
    std::wstring_view found;
    bool quoted = false;
    for (int i = 0; i < fields; ++i)
        next(found, quoted);
}

void SequentialWriter::separate()
{
    if (recordOpen_)
        out_ += L',';
    recordOpen_ = true;
}

SequentialWriter& SequentialWriter::text(std::wstring_view value)
{
    separate();
    std::wstring clean = replaced(replaced(replaced(value, L'"', L'\''), L'\r', L' '), L'\n', L' ');
    cleaned_ = cleaned_ || clean != value;
    out_ += L'"' + clean + L'"';
    return *this;
}

SequentialWriter& SequentialWriter::number(std::int64_t value)
{
    separate();
    out_ += digits(value);
    return *this;
}

SequentialWriter& SequentialWriter::endRecord()
{
    out_ += L"\r\n";
    recordOpen_ = false;
    return *this;
}

std::string SequentialWriter::bytes() const
{
    return utf8(out_);
}

}
