#include "TAVIX20/support/url_text.h"

#include "TAVIX20/support/stdlib.h"
#include "TAVIX20/support/text_view.h"

#include <QByteArray>

#include <charconv>

namespace tavix {

std::string UrlEncoded(std::string_view text) {
    return QByteArrayView(text).toByteArray().toPercentEncoding().toStdString();
}

std::string UrlDecoded(std::string_view text) {
    std::string decoded;
    decoded.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned char byte = 0;
        const char *const digits = text.data() + i + 1;
        const bool isEscape = text[i] == '%' && text.size() - i > 2 &&
                              std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2;
        if (isEscape) {
            decoded += static_cast<char>(byte);
            i += 2;
        } else {
            decoded += text[i] == '+' ? ' ' : text[i];
        }
    }
    return decoded;
}

} // namespace tavix

CString CStdlib::URLEncode(const char *text) {
    return tavix::UrlEncoded(tavix::ViewOf(text));
}

CString CStdlib::URLDecode(const char *text) {
    return tavix::UrlDecoded(tavix::ViewOf(text));
}
