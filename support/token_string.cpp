#include "TAVIX20/support/token_string.h"

#include "TAVIX20/support/stdlib.h"
#include "TAVIX20/support/text_view.h"

namespace tavix {

std::string TokenValue(std::string_view text, std::string_view key) {
    const std::size_t found = text.find(key);
    if (found == std::string_view::npos || found + key.size() >= text.size())
        return {};
    const std::string_view value = text.substr(found + key.size() + 1);
    return std::string(value.substr(0, value.find(';')));
}

std::string WithoutToken(std::string_view text, std::string_view key) {
    const std::size_t found = text.find(key);
    std::string rest(text.substr(0, found));
    if (found == std::string_view::npos)
        return rest;
    const std::size_t end = text.find(';', found + key.size());
    if (end != std::string_view::npos)
        rest += text.substr(end + 1);
    return rest;
}

std::string WithToken(std::string_view text, std::string_view key, std::string_view value) {
    std::string result =
        TokenValue(text, key).empty() ? std::string(text) : WithoutToken(text, key);
    if (!result.empty() && result.back() != ';')
        result += ';';
    return result.append(key).append(1, '=').append(value);
}

} // namespace tavix

CString CStdlib::GetTokenValue(const char *text, const char *key) {
    return tavix::TokenValue(tavix::ViewOf(text), tavix::ViewOf(key));
}

CString CStdlib::SetTokenValue(const char *text, const char *key, const char *value) {
    return tavix::WithToken(tavix::ViewOf(text), tavix::ViewOf(key), tavix::ViewOf(value));
}

CString CStdlib::RemoveTokenValue(const char *text, const char *key) {
    return tavix::WithoutToken(tavix::ViewOf(text), tavix::ViewOf(key));
}
