#include "TAVIX20/support/text_number.h"

#include "TAVIX20/support/text_view.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

#include <locale.h>

namespace tavix {

namespace {

template <typename Integer>
Integer ReadInteger(const char *text) {
    std::string_view rest = WithoutLeadingSpace(ViewOf(text));
    const bool negative = rest.starts_with('-');
    if (rest.starts_with('+')) {
        rest.remove_prefix(1);
        if (rest.starts_with('-'))
            return 0;
    }
    Integer value = 0;
    const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), value);
    if (result.ec == std::errc::result_out_of_range)
        return negative ? std::numeric_limits<Integer>::min() : std::numeric_limits<Integer>::max();
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
    return text ? strtod_l(text, nullptr, PlainLocale()) : 0.0;
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

} // namespace tavix
