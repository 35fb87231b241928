/// Percent-encoding of text in addresses, RFC 3986.
#pragma once

#include <string>
#include <string_view>

namespace tavix {

/// Every byte that is not a letter, a digit or one of "-._~" becomes "%" and two capital
/// hexadecimal digits.
std::string UrlEncoded(std::string_view text);

/// "%" and two hexadecimal digits become their byte and "+" a blank, as forms send it. A "%" that
/// no two such digits follow stays.
std::string UrlDecoded(std::string_view text);

} // namespace tavix
