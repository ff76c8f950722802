#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tonquay::tags {

/// A number that is written in the base `from`, written in the base `to`; both are from 2 to 36, with the digits 0 to 9
/// and A to Z in any case. Exact up to 2^53. ConvertBase(L"68", 10, 16) is "44".
///
/// "Error" for a character that is no such digit. Empty for an empty text, a base that is out of range, a digit that
/// the first base does not have (of several faults the first counts), and a number past the largest double.
std::wstring ConvertBase(std::wstring_view number, std::int16_t from, std::int16_t to);

/// The remainder of a division that is carried out to a whole number; it has the sign of the dividend. 0 when the
/// divisor is 0.
double FloatMod(double dividend, double divisor);

}
