#include "TAVIX20/support/std_string.h"

#include "TAVIX20/platform/collections.h"
#include "TAVIX20/support/path_text.h"
#include "TAVIX20/support/text_number.h"
#include "TAVIX20/support/text_split.h"
#include "TAVIX20/support/text_view.h"
#include "TAVIX20/support/token_string.h"
#include "TAVIX20/support/url_text.h"
#include "TAVIX20/support/variant_array.h"

using tavix::StringOf;
using tavix::ViewOf;

CStdString::CStdString(const char *text) : m_text(text) {}

CStdString::CStdString(CString text) : m_text(std::move(text)) {}

CStdString::CStdString(int number) : CStdString(long{number}) {}

CStdString::CStdString(long number) : m_text(tavix::WriteLong(number)) {}

CStdString::CStdString(double number) : m_text(tavix::WriteDouble(number)) {}

CStdString::~CStdString() = default;

CStdString CStdString::Format(const char *format, ...) {
    CStdString result;
    va_list arguments;
    va_start(arguments, format);
    result.m_text.FormatV(format, arguments);
    va_end(arguments);
    return result;
}

int CStdString::ToInt() const {
    return tavix::ReadInt(m_text);
}

long CStdString::ToLong() const {
    return tavix::ReadLong(m_text);
}

double CStdString::ToDouble() const {
    return tavix::ReadDouble(m_text);
}

CString CStdString::ToCurrencyString() const {
    const std::string_view text = ViewOf(m_text);
    const std::size_t point = std::min(text.find('.'), text.size());
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool beginsGroup = i > 0 && i < point && (point - i) % 3 == 0;
        if (beginsGroup && text[i] != ',')
            result += ',';
        result += text[i];
    }
    return result;
}

int CStdString::IsEqualNoCase(const char *other) const {
    return m_text.CompareNoCase(other) == 0 ? 1 : 0;
}

int CStdString::IsEqualNoCase(const char *other, int count) const {
    return m_text.Left(count).CompareNoCase(CString(other).Left(count)) == 0 ? 1 : 0;
}

int CStdString::IsEqualReservedNoCase(const char *other, int count) const {
    return m_text.Right(count).CompareNoCase(other) == 0 ? 1 : 0;
}

int CStdString::IsNumeric() const {
    return tavix::IsDigitsOnly(ViewOf(m_text)) ? 1 : 0;
}

int CStdString::IsAlphabetics() const {
    return tavix::IsLettersOnly(ViewOf(m_text)) ? 1 : 0;
}

CStdString &CStdString::TrimAll() {
    m_text.Trim();
    return *this;
}

int CStdString::Split(const char *delimiters, CStringArray &target) const {
    if (m_text.IsEmpty())
        return 0;
    tavix::SplitText(ViewOf(m_text), tavix::Delimiters(ViewOf(delimiters)),
                     [&](std::string_view piece) { target.Add(StringOf(piece)); });
    return target.GetSize();
}

int CStdString::Split(const char *delimiters, CVariantArray &target) const {
    return target.AddPieces(ViewOf(m_text), ViewOf(delimiters));
}

CString CStdString::GetPath() const {
    return StringOf(tavix::PathOf(ViewOf(m_text)));
}

CString CStdString::GetFileName() const {
    return StringOf(tavix::FileNameOf(ViewOf(m_text)));
}

CString CStdString::GetFileNameNoExt() const {
    return StringOf(tavix::FileNameNoExtOf(ViewOf(m_text)));
}

CString CStdString::GetExt() const {
    return StringOf(tavix::ExtOf(ViewOf(m_text)));
}

CString CStdString::GetAddExt(const char *extension) const {
    return tavix::WithExt(ViewOf(m_text), ViewOf(extension));
}

CString CStdString::ToUnixPath() const {
    return tavix::UnixPathOf(ViewOf(m_text));
}

CString CStdString::ToWindowsPath() const {
    return tavix::WindowsPathOf(ViewOf(m_text));
}

CString CStdString::URLEncode() const {
    return tavix::UrlEncoded(ViewOf(m_text));
}

CString CStdString::URLDecode() const {
    return tavix::UrlDecoded(ViewOf(m_text));
}

CString CStdString::GetTokenValue(const char *key) const {
    return tavix::TokenValue(ViewOf(m_text), ViewOf(key));
}

CStdString &CStdString::SetTokenValue(const char *key, const char *value) {
    m_text = tavix::WithToken(ViewOf(m_text), ViewOf(key), ViewOf(value));
    return *this;
}

CStdString &CStdString::RemoveTokenValue(const char *key) {
    m_text = tavix::WithoutToken(ViewOf(m_text), ViewOf(key));
    return *this;
}

int CStdString::Zip() {
    return 1;
}

int CStdString::UnZip() {
    return 1;
}
