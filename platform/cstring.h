/// A string of bytes with a 32-bit length, for the interfaces that take and return text. Bytes are
/// never converted; case and white space are those of ASCII, whatever the locale.
#pragma once

#include <cstdarg>
#include <string>

#include "TAVIX20/platform/export.h"

/// A null pointer given for text, or for a set of characters, counts as the empty string.
class TAVIX_API CString {
public:
    CString() = default;
    CString(const char *text);
    CString(const char *text, int length); ///< The first length bytes, which may include zeros.
    CString(std::string text);
    explicit CString(char ch, int repeat = 1);

    CString &operator=(const char *text);
    CString &operator=(char ch);

    int GetLength() const { return static_cast<int>(m_text.size()); }
    bool IsEmpty() const { return m_text.empty(); }
    void Empty() { m_text.clear(); }
    char GetAt(int index) const;       ///< '\0' outside the string.
    void SetAt(int index, char value); ///< Does nothing outside the string.
    char operator[](int index) const { return GetAt(index); }
    /// The zero-terminated text, valid until the string changes.
    const char *GetString() const { return m_text.c_str(); }
    operator const char *() const { return GetString(); }

    CString &operator+=(const CString &other);
    CString &operator+=(const char *text);
    CString &operator+=(char ch);

    /// Negative, zero or positive as this string sorts before, with or after the other.
    int Compare(const CString &other) const { return m_text.compare(other.m_text); }
    int CompareNoCase(const CString &other) const;

    /// The part functions clamp what is asked for to what is there; negative counts give nothing.
    CString Left(int count) const;
    CString Right(int count) const;
    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString SpanIncluding(const char *set) const; ///< The leading bytes that are in the set.
    CString SpanExcluding(const char *set) const; ///< The leading bytes that are not in the set.

    CString &MakeUpper();
    CString &MakeLower();
    CString &MakeReverse();
    CString &Trim();
    CString &Trim(char ch);
    CString &Trim(const char *set);
    CString &TrimLeft();
    CString &TrimLeft(char ch);
    CString &TrimLeft(const char *set);
    CString &TrimRight();
    CString &TrimRight(char ch);
    CString &TrimRight(const char *set);

    /// The find functions return an index, or -1 when there is none or start is outside the string.
    int Find(char ch, int start = 0) const;
    int Find(const char *text, int start = 0) const;
    int ReverseFind(char ch) const;
    int FindOneOf(const char *set) const;

    /// Returns how many were replaced; equal characters and an empty oldText replace nothing.
    int Replace(char oldChar, char newChar);
    int Replace(const char *oldText, const char *newText);
    int Remove(char ch); ///< Returns how many were removed.
    /// Returns the new length; an index outside the string means its nearer end.
    int Insert(int index, char ch);
    int Insert(int index, const char *text);
    int Delete(int index, int count = 1); ///< Returns the new length; clamps like Mid.
    void Truncate(int length);            ///< Never lengthens; a negative length empties.

    /// printf's formats, with numbers as in the "C" locale; the arguments may be this string's own
    /// text. An error leaves it unchanged.
    __attribute__((format(printf, 2, 3))) void Format(const char *format, ...);
    __attribute__((format(printf, 2, 3))) void AppendFormat(const char *format, ...);
    __attribute__((format(printf, 2, 0))) void FormatV(const char *format, va_list arguments);

    /// The next run of non-separators from start, which moves past it; start is -1 after the last.
    CString Tokenize(const char *separators, int &start) const;

    /// Room for minLength bytes and a terminating zero; call ReleaseBuffer before any other member.
    char *GetBuffer(int minLength = 0);
    /// Ends writing to the buffer with a length of at most its room; -1 means up to the first zero.
    void ReleaseBuffer(int newLength = -1);

    friend bool operator==(const CString &left, const CString &right) = default;
    friend bool operator==(const CString &left, const char *right) {
        return left.m_text == TextOf(right);
    }
    friend std::strong_ordering operator<=>(const CString &left, const CString &right) = default;
    friend std::strong_ordering operator<=>(const CString &left, const char *right) {
        return left.m_text <=> TextOf(right);
    }

private:
    static const char *TextOf(const char *text) { return text != nullptr ? text : ""; }
    std::size_t ClampIndex(int index) const;

    std::string m_text;
};

inline CString operator+(CString left, const CString &right) {
    left += right;
    return left;
}
inline CString operator+(CString left, const char *right) {
    left += right;
    return left;
}
inline CString operator+(const char *left, const CString &right) {
    return CString(left) += right;
}
inline CString operator+(CString left, char right) {
    left += right;
    return left;
}
inline CString operator+(char left, const CString &right) {
    return CString(left) += right;
}
