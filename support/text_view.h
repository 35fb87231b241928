/// Text of the interface as std::string_view.
#pragma once

#include "TAVIX20/platform/cstring.h"

#include <algorithm>
#include <string_view>

namespace tavix {

/// Null counts as the empty text.
inline std::string_view ViewOf(const char *text) {
    return text ? std::string_view(text) : std::string_view();
}

/// All bytes, zeros included; valid until the string changes.
inline std::string_view ViewOf(const CString &text) {
    return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

inline CString StringOf(std::string_view text) {
    return CString(std::string(text));
}

/// White space is that of ASCII.
inline constexpr std::string_view WHITE_SPACE = " \t\n\v\f\r";

inline std::string_view WithoutLeadingSpace(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(WHITE_SPACE), text.size()));
}

/// "0" to "9" only; true for the empty text.
inline bool IsDigitsOnly(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char ch) { return ch >= '0' && ch <= '9'; });
}

/// "A" to "Z" and "a" to "z" only; true for the empty text.
inline bool IsLettersOnly(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char ch) {
        return (ch >= 'A' && ch <= 'Z') || (ch >= 'a' && ch <= 'z');
    });
}

} // namespace tavix
