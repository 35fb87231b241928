/// Token strings: entries of a key, "=" and a value, separated by ";".
///
/// A key is searched as plain text, anywhere in the string: it is not bound to the start of an
/// entry, so "A" is found in "XA=1;A=2" at "XA". Programs rely on that. The empty key is found at
/// the start of every text.
#pragma once

#include "TAVIX20/platform/export.h"

#include <string>
#include <string_view>

namespace tavix {

/// What stands behind the key and one more character (the "=") up to the next ";"; "" for none.
TAVIX_API std::string TokenValue(std::string_view text, std::string_view key);

/// The text without what goes from the key through the next ";" behind it, or through the end.
TAVIX_API std::string WithoutToken(std::string_view text, std::string_view key);

/// The text with the entry "key=value" at its end and no ";" behind it. An entry with a value that
/// is not empty is removed first; one with an empty value stays, so the key then stands twice.
TAVIX_API std::string WithToken(std::string_view text, std::string_view key,
                                std::string_view value);

} // namespace tavix
