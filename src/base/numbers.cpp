#include "base/numbers.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace tonquay::base {

namespace {

bool isSkipped(wchar_t c)
{
    return c == L' ' || c == L'\t' || c == L'\n';
}

bool isDigit(wchar_t c)
{
    return c >= L'0' && c <= L'9';
}

template <class Integer>
bool storeWhole(double value, Integer& field)
{
    const double whole = roundHalfEven(value);
    if (!(whole >= std::numeric_limits<Integer>::min() && whole <= std::numeric_limits<Integer>::max()))
        return false;
    field = static_cast<Integer>(whole);
    return true;
}

}

double val(std::wstring_view text)
{
    // Longer than any number that a double tells apart; it bounds the work on a hostile field.
    constexpr std::size_t longest = 400;
    std::string number;
    enum class Place { sign, whole, fraction, exponentSign, exponent } place = Place::sign;
    for (const wchar_t c : text) {
        if (isSkipped(c))
            continue;
        if (number.size() == longest)
            break;
        const bool takesSign = place == Place::sign || place == Place::exponentSign;
        if (takesSign && (c == L'+' || c == L'-')) {
            if (c == L'-')
                number.push_back('-');
            place = place == Place::sign ? Place::whole : Place::exponent;
        } else if (isDigit(c)) {
            number.push_back(static_cast<char>(c));
            if (takesSign)
                place = place == Place::sign ? Place::whole : Place::exponent;
        } else if (c == L'.' && (place == Place::sign || place == Place::whole)) {
            number.push_back('.');
            place = Place::fraction;
        } else if ((c == L'e' || c == L'E' || c == L'd' || c == L'D') &&
                   (place == Place::whole || place == Place::fraction)) {
            number.push_back('e');
            place = Place::exponentSign;
        } else {
            break;
        }
    }
    double value = 0;
    const auto end = std::from_chars(number.data(), number.data() + number.size(), value);
    return end.ec == std::errc{} ? value : 0;
}

double roundHalfEven(double value)
{
    const double below = std::floor(value);
    const double part = value - below;
    if (part < 0.5)
        return below;
    if (part > 0.5)
        return below + 1;
    return std::fmod(below, 2) == 0 ? below : below + 1;
}

bool store(double value, std::int16_t& field)
{
    return storeWhole(value, field);
}

bool store(double value, std::int32_t& field)
{
    return storeWhole(value, field);
}

std::wstring digits(std::int64_t number)
{
    constexpr std::size_t longest = 20;
    char text[longest];
    const char* const end = std::to_chars(text, text + longest, number).ptr;
    return {static_cast<const char*>(text), end};
}

std::wstring str(std::int64_t number)
{
    return number < 0 ? digits(number) : L' ' + digits(number);
}

}
