/// The one rule by which text is split.
#pragma once

#include <array>
#include <string_view>

namespace tavix {

/// Calls take(std::string_view) for each piece of the text, in order, empty ones included: every
/// character that is one of the delimiters ends a piece, the end of the text ends the last one. So
/// there is one piece more than delimiters met, and without delimiters one piece.
template <typename Take>
void SplitText(std::string_view text, std::string_view delimiters, Take take) {
    std::array<bool, 256> ends{};
    for (const char delimiter : delimiters)
        ends[static_cast<unsigned char>(delimiter)] = true;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (ends[static_cast<unsigned char>(text[i])]) {
            take(text.substr(begin, i - begin));
            begin = i + 1;
        }
    take(text.substr(begin));
}

} // namespace tavix
