// The decimal places of a floating-point number: those of the shortest text that reads back as the
// number. 0.29 * 100 is a little below 29; its text is not.

#include "TAVIX20/support/stdlib.h"
#include "TAVIX20/support/text_number.h"
#include "TAVIX20/support/text_view.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace {

constexpr int MOST_DECIMALS = 18; // As many as a long holds.

__extension__ typedef unsigned __int128 WideUnsigned;
__extension__ typedef __int128 Wide;

struct Decimal {
    std::string front; ///< With the sign.
    std::string back;  ///< May be empty.
};

Decimal DecimalOf(double value) {
    char text[512]; // The longest is the smallest denormal, with less than 350.
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed);
    const std::string_view all(text, static_cast<std::size_t>(end.ptr - text));
    const std::size_t point = std::min(all.find('.'), all.size());
    return {std::string(all.substr(0, point)),
            std::string(all.substr(std::min(point + 1, all.size())))};
}

} // namespace

double CStdlib::TruncateFloat(double value, int decimals) {
    if (!std::isfinite(value))
        return value;
    const auto [front, back] = DecimalOf(value);
    const auto kept = static_cast<std::size_t>(std::max(decimals, 0));
    return tavix::ReadDouble((front + '.' + back.substr(0, kept)).c_str());
}

long CStdlib::FloatFrontNumber(double value) {
    return std::isfinite(value) ? tavix::ReadLong(DecimalOf(value).front.c_str()) : 0;
}

long CStdlib::FloatBackNumber(double value, int decimals) {
    if (!std::isfinite(value))
        return 0;
    std::string digits = DecimalOf(value).back;
    digits.resize(static_cast<std::size_t>(std::clamp(decimals, 0, MOST_DECIMALS)), '0');
    const long number = tavix::ReadLong(digits.c_str());
    return std::signbit(value) ? -number : number;
}

// The sum is made in integers and rounded once, when its text is read.
double CStdlib::MakeFloat(long front, long back, int decimals) {
    const int places = std::clamp(decimals, 0, MOST_DECIMALS);
    Wide scaled = front;
    for (int i = 0; i < places; ++i)
        scaled *= 10;
    scaled += back;
    auto rest = static_cast<WideUnsigned>(scaled < 0 ? -scaled : scaled);
    std::string digits = "e-" + tavix::WriteLong(places);
    for (; rest > 0; rest /= 10)
        digits.insert(digits.begin(), static_cast<char>('0' + static_cast<int>(rest % 10)));
    digits.insert(0, scaled < 0 ? "-0" : "0");
    return tavix::ReadDouble(digits.c_str());
}
