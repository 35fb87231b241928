/// Text of the interface as std::string_view.
#pragma once

#include "TAVIX20/platform/cstring.h"

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

} // namespace tavix
