#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Numbers in and out of text, by the rules that the settings files and the screen texts were made with.
namespace tonquay::base {

/// The number at the start of a text: blanks, tabs and line feeds are skipped wherever they stand, then an optional
/// sign, digits with one point, and an exponent (E or D); reading stops at the first character that does not fit.
/// A text without a number is 0. The point is "." in every locale.
double val(std::wstring_view text);

/// Rounded to the nearest whole number, ties to even.
double roundHalfEven(double value);

/// A number for a 16-bit or 32-bit field, ties to even; false and nothing stored when it does not fit or is no number.
bool store(double value, std::int16_t& field);
bool store(double value, std::int32_t& field);

/// The digits of a number, with a "-" before a negative one.
std::wstring digits(std::int64_t number);

/// The digits with the place of the sign kept: a blank before a number of 0 or more.
std::wstring str(std::int64_t number);

}
