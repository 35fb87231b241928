/// The one rule by which text is split.
#pragma once

#include <array>
#include <string_view>

namespace tavix {

/// A set of characters that pieces of text are split at.
class Delimiters {
public:
    explicit Delimiters(std::string_view characters) {
        for (const char character : characters)
            m_isOne[static_cast<unsigned char>(character)] = true;
    }
    bool Contains(char character) const { return m_isOne[static_cast<unsigned char>(character)]; }

private:
    std::array<bool, 256> m_isOne{};
};

/// Calls take(std::string_view) for each piece of the text, in order, empty ones included: every
/// delimiter ends a piece, the end of the text ends the last one. So there is one piece more than
/// delimiters in the text.
template <typename Take>
void SplitText(std::string_view text, const Delimiters &delimiters, Take take) {
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (delimiters.Contains(text[i])) {
            take(text.substr(begin, i - begin));
            begin = i + 1;
        }
    take(text.substr(begin));
}

} // namespace tavix
