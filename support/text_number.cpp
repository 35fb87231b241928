#include "TAVIX20/support/text_number.h"

#include "TAVIX20/support/text_view.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

#include <locale.h>

namespace tavix {

namespace {

/// False and no change where there is none.
template <typename Integer>
bool QueryInteger(const char *text, Integer &value) {
    std::string_view rest = WithoutLeadingSpace(ViewOf(text));
    const bool negative = rest.starts_with('-');
    if (rest.starts_with('+')) {
        rest.remove_prefix(1);
        if (rest.starts_with('-'))
            return false;
    }
    const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), value);
    if (result.ec == std::errc::result_out_of_range)
        value =
            negative ? std::numeric_limits<Integer>::min() : std::numeric_limits<Integer>::max();
    return result.ec != std::errc::invalid_argument;
}

template <typename Integer>
Integer ReadInteger(const char *text) {
    Integer value = 0;
    QueryInteger(text, value);
    return value;
}

locale_t PlainLocale() {
    static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
    return plain;
}

} // namespace

int ReadInt(const char *text) {
    return ReadInteger<int>(text);
}

long ReadLong(const char *text) {
    return ReadInteger<long>(text);
}

double ReadDouble(const char *text) {
    double value = 0.0;
    QueryDouble(text, value);
    return value;
}

bool QueryInt(const char *text, int &value) {
    return QueryInteger(text, value);
}

bool QueryDouble(const char *text, double &value) {
    if (text == nullptr)
        return false;
    char *end = nullptr;
    const double number = strtod_l(text, &end, PlainLocale());
    if (end == text)
        return false;
    value = number;
    return true;
}

std::string WriteLong(long value) {
    return std::to_string(value);
}

std::string WriteDouble(double value) {
    const double size = std::abs(value);
    const bool plain = size == 0.0 || (size >= 1e-5 && size < 1e17);
    char text[64];
    const auto end =
        std::to_chars(text, text + sizeof text, value,
                      plain ? std::chars_format::fixed : std::chars_format::scientific);
    return std::string(text, end.ptr);
}

std::string WriteFixed(double value) {
    char text[std::numeric_limits<double>::max_exponent10 + 16];
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, 6);
    return std::string(text, end.ptr);
}

} // namespace tavix
