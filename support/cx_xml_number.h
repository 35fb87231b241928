/// Numbers as the text of attribute values.
#pragma once

#include <cstdio>
#include <limits>
#include <string>

namespace tavix {

/// printf's "%f".
inline std::string FixedText(double value) {
    char text[std::numeric_limits<double>::max_exponent10 + 16];
    std::snprintf(text, sizeof text, "%f", value);
    return text;
}

} // namespace tavix
