#include "tags/convert_base.h"

#include "base/text.h"

#include <cmath>

namespace tonquay::tags {

namespace {

constexpr int noDigit = -1;

bool isBase(std::int16_t base)
{
    return base >= 2 && base <= 36;
}

int digitOf(wchar_t character)
{
    if (character >= L'0' && character <= L'9')
        return static_cast<int>(character - L'0');
    if (character >= L'A' && character <= L'Z')
        return static_cast<int>(character - L'A') + 10;
    return noDigit;
}

wchar_t characterOf(int digit)
{
    return static_cast<wchar_t>(digit >= 10 ? digit + 55 : digit + L'0');
}

std::wstring written(double value, double base)
{
    std::wstring text;
    do {
        const double digit = FloatMod(value, base);
        text.insert(text.begin(), characterOf(static_cast<int>(digit)));
        value = std::floor((value - digit) / base);
    } while (value > 0);
    return text;
}

}

std::wstring ConvertBase(std::wstring_view number, std::int16_t from, std::int16_t to)
{
    if (number.empty() || !isBase(from) || !isBase(to))
        return {};
    double value = 0;
    for (const wchar_t character : base::upper(number)) {
        const int digit = digitOf(character);
        if (digit == noDigit)
            return L"Error";
        if (digit >= from)
            return {};
        value = value * from + digit;
    }
    return std::isfinite(value) ? written(value, to) : std::wstring();
}

double FloatMod(double dividend, double divisor)
{
    return divisor == 0 ? 0 : std::fmod(dividend, divisor);
}

}
