#include "TAVIX20/platform/cstring.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <utility>

#include <langinfo.h>
#include <locale.h>

namespace {

constexpr const char *kWhiteSpace = " \t\n\v\f\r";

char Upper(char ch) {
    return ch >= 'a' && ch <= 'z' ? static_cast<char>(ch - 'a' + 'A') : ch;
}

char Lower(char ch) {
    return ch >= 'A' && ch <= 'Z' ? static_cast<char>(ch - 'A' + 'a') : ch;
}

std::size_t CountOf(int count) {
    return static_cast<std::size_t>(std::max(count, 0));
}

int IndexOf(std::size_t position) {
    return position == std::string::npos ? -1 : static_cast<int>(position);
}

/// As long as one lives, the numbers of its thread are written as in the "C" locale.
class PlainNumbers {
public:
    PlainNumbers() {
        if (std::strcmp(nl_langinfo(RADIXCHAR), ".") == 0 && *nl_langinfo(THOUSEP) == '\0')
            return;
        const locale_t other = duplocale(uselocale(nullptr));
        m_plain = newlocale(LC_NUMERIC_MASK, "C", other);
        if (m_plain == nullptr)
            m_plain = other;
        if (m_plain != nullptr)
            m_before = uselocale(m_plain);
    }
    ~PlainNumbers() {
        if (m_plain == nullptr)
            return;
        uselocale(m_before);
        freelocale(m_plain);
    }
    PlainNumbers(const PlainNumbers &) = delete;
    PlainNumbers &operator=(const PlainNumbers &) = delete;

private:
    locale_t m_plain = nullptr;
    locale_t m_before = nullptr;
};

/// Appends what printf would write; on an error it appends nothing and returns false.
__attribute__((format(printf, 2, 0))) bool AppendPrinted(std::string &text, const char *format,
                                                         va_list arguments) {
    const PlainNumbers plain;
    va_list measured;
    va_copy(measured, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    if (length < 0) {
        return false;
    }
    std::string printed(CountOf(length), '\0');
    std::vsnprintf(printed.data(), printed.size() + 1, format, arguments);
    text += printed;
    return true;
}

} // namespace

CString::CString(const char *text) : m_text(TextOf(text)) {}

CString::CString(const char *text, int length)
    : m_text(TextOf(text), text != nullptr ? CountOf(length) : 0) {}

CString::CString(std::string text) : m_text(std::move(text)) {}

CString::CString(char ch, int repeat) : m_text(CountOf(repeat), ch) {}

CString &CString::operator=(const char *text) {
    m_text = TextOf(text);
    return *this;
}

CString &CString::operator=(char ch) {
    m_text = ch;
    return *this;
}

std::size_t CString::ClampIndex(int index) const {
    return std::min(CountOf(index), m_text.size());
}

char CString::GetAt(int index) const {
    return index >= 0 && index < GetLength() ? m_text[CountOf(index)] : '\0';
}

void CString::SetAt(int index, char value) {
    if (index >= 0 && index < GetLength()) {
        m_text[CountOf(index)] = value;
    }
}

CString &CString::operator+=(const CString &other) {
    m_text += other.m_text;
    return *this;
}

CString &CString::operator+=(const char *text) {
    m_text += TextOf(text);
    return *this;
}

CString &CString::operator+=(char ch) {
    m_text += ch;
    return *this;
}

int CString::CompareNoCase(const CString &other) const {
    return CString(*this).MakeLower().Compare(CString(other).MakeLower());
}

CString CString::Left(int count) const {
    return m_text.substr(0, CountOf(count));
}

CString CString::Right(int count) const {
    return m_text.substr(m_text.size() - ClampIndex(count));
}

CString CString::Mid(int first) const {
    return m_text.substr(ClampIndex(first));
}

CString CString::Mid(int first, int count) const {
    return m_text.substr(ClampIndex(first), CountOf(count));
}

CString CString::SpanIncluding(const char *set) const {
    return m_text.substr(0, m_text.find_first_not_of(TextOf(set)));
}

CString CString::SpanExcluding(const char *set) const {
    return m_text.substr(0, m_text.find_first_of(TextOf(set)));
}

CString &CString::MakeUpper() {
    std::transform(m_text.begin(), m_text.end(), m_text.begin(), Upper);
    return *this;
}

CString &CString::MakeLower() {
    std::transform(m_text.begin(), m_text.end(), m_text.begin(), Lower);
    return *this;
}

CString &CString::MakeReverse() {
    std::reverse(m_text.begin(), m_text.end());
    return *this;
}

CString &CString::Trim() {
    return Trim(kWhiteSpace);
}

CString &CString::Trim(char ch) {
    return TrimRight(ch).TrimLeft(ch);
}

CString &CString::Trim(const char *set) {
    const std::string characters(TextOf(set));
    return TrimRight(characters.c_str()).TrimLeft(characters.c_str());
}

CString &CString::TrimLeft() {
    return TrimLeft(kWhiteSpace);
}

CString &CString::TrimLeft(char ch) {
    m_text.erase(0, m_text.find_first_not_of(ch));
    return *this;
}

CString &CString::TrimLeft(const char *set) {
    m_text.erase(0, m_text.find_first_not_of(TextOf(set)));
    return *this;
}

CString &CString::TrimRight() {
    return TrimRight(kWhiteSpace);
}

CString &CString::TrimRight(char ch) {
    m_text.erase(m_text.find_last_not_of(ch) + 1);
    return *this;
}

CString &CString::TrimRight(const char *set) {
    m_text.erase(m_text.find_last_not_of(TextOf(set)) + 1);
    return *this;
}

int CString::Find(char ch, int start) const {
    return start < 0 ? -1 : IndexOf(m_text.find(ch, CountOf(start)));
}

int CString::Find(const char *text, int start) const {
    return start < 0 ? -1 : IndexOf(m_text.find(TextOf(text), CountOf(start)));
}

int CString::ReverseFind(char ch) const {
    return IndexOf(m_text.rfind(ch));
}

int CString::FindOneOf(const char *set) const {
    return IndexOf(m_text.find_first_of(TextOf(set)));
}

int CString::Replace(char oldChar, char newChar) {
    if (oldChar == newChar) {
        return 0;
    }
    const auto count = std::count(m_text.begin(), m_text.end(), oldChar);
    std::replace(m_text.begin(), m_text.end(), oldChar, newChar);
    return static_cast<int>(count);
}

int CString::Replace(const char *oldText, const char *newText) {
    const std::string sought(TextOf(oldText));
    if (sought.empty()) {
        return 0;
    }
    std::string result;
    int count = 0;
    std::size_t copied = 0;
    for (std::size_t found = m_text.find(sought); found != std::string::npos;
         found = m_text.find(sought, copied)) {
        result.append(m_text, copied, found - copied).append(TextOf(newText));
        copied = found + sought.size();
        ++count;
    }
    result.append(m_text, copied);
    m_text = std::move(result);
    return count;
}

int CString::Remove(char ch) {
    return static_cast<int>(std::erase(m_text, ch));
}

int CString::Insert(int index, char ch) {
    m_text.insert(ClampIndex(index), 1, ch);
    return GetLength();
}

int CString::Insert(int index, const char *text) {
    m_text.insert(ClampIndex(index), TextOf(text));
    return GetLength();
}

int CString::Delete(int index, int count) {
    m_text.erase(ClampIndex(index), CountOf(count));
    return GetLength();
}

void CString::Truncate(int length) {
    m_text.resize(ClampIndex(length));
}

void CString::Format(const char *format, ...) {
    va_list arguments;
    va_start(arguments, format);
    FormatV(format, arguments);
    va_end(arguments);
}

void CString::AppendFormat(const char *format, ...) {
    va_list arguments;
    va_start(arguments, format);
    AppendPrinted(m_text, TextOf(format), arguments);
    va_end(arguments);
}

void CString::FormatV(const char *format, va_list arguments) {
    std::string printed;
    if (AppendPrinted(printed, TextOf(format), arguments)) {
        m_text = std::move(printed);
    }
}

CString CString::Tokenize(const char *separators, int &start) const {
    const std::size_t first = start < 0
                                  ? std::string::npos
                                  : m_text.find_first_not_of(TextOf(separators), CountOf(start));
    if (first == std::string::npos) {
        start = -1;
        return {};
    }
    const std::size_t end =
        std::min(m_text.find_first_of(TextOf(separators), first), m_text.size());
    start = static_cast<int>(end) + 1;
    return m_text.substr(first, end - first);
}

char *CString::GetBuffer(int minLength) {
    m_text.resize(std::max(m_text.size(), CountOf(minLength)));
    return m_text.data();
}

void CString::ReleaseBuffer(int newLength) {
    m_text.resize(newLength < 0 ? std::min(m_text.find('\0'), m_text.size())
                                : ClampIndex(newLength));
}
