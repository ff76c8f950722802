#pragma once

#include <string>
#include <string_view>

/// Text as this program keeps it: std::wstring, one element per character, whatever the locale says.
///
/// Only this header changes case and trims. Comparison is binary. UTF-8 is what crosses every border to the outside.
namespace tonquay::base {

/// Upper case, character by character, by the program's own table; a character without a single upper-case partner
/// (as the German sharp s) stays. Needs no locale.
wchar_t upper(wchar_t character);
std::wstring upper(std::wstring_view text);

/// Without leading and trailing blanks (U+0020). Tabs, line ends and other white space are text and stay.
std::wstring_view trim(std::wstring_view text);

/// True when nothing but blanks is there.
bool isBlank(std::wstring_view text);

/// Equal without regard to case.
bool sameText(std::wstring_view left, std::wstring_view right);

/// `text` with every `from` replaced by `to`.
std::wstring replaced(std::wstring_view text, wchar_t from, wchar_t to);

/// UTF-8 of a text. What is no character (a lone surrogate, a value past U+10FFFF) becomes U+FFFD; U+DC80 to U+DCFF
/// become the single bytes 80 to FF that fromHostBytes() made them from.
std::string utf8(std::wstring_view text);

/// A host name, argument or other text whose bytes must survive: UTF-8 where it is, and each byte that is not part of
/// a well-formed sequence as U+DC80 to U+DCFF, so that utf8() gives the same bytes back.
std::wstring fromHostBytes(std::string_view bytes);

/// True when the bytes are well-formed UTF-8 (RFC 3629: no overlong forms, no surrogates).
bool isUtf8(std::string_view bytes);

/// The contents of a text file: UTF-8 when the whole is well-formed (a byte-order mark at its start is dropped),
/// otherwise Windows-1252.
std::wstring fromFileBytes(std::string_view bytes);

/// Windows-1252 with its five gaps mapped to the C1 controls of the same number, so that all 256 bytes go round.
std::wstring fromWindows1252(std::string_view bytes);

/// The other way; a character that has no byte becomes "?".
std::string windows1252(std::wstring_view text);

}
