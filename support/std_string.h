/// CStdString: a string with conversions, path, token and splitting helpers.
#pragma once

#include "TAVIX20/platform/cstring.h"
#include "TAVIX20/platform/export.h"

class CStringArray;
class CVariantArray;

/// Holds one CString. Null text counts as the empty text. Letters, digits, white space and numbers
/// are those of ASCII, whatever the locale.
class TAVIX_API CStdString {
public:
    CStdString() = default;
    CStdString(const char *text);
    CStdString(CString text);
    CStdString(int number);
    CStdString(long number);
    /// The fewest digits that read back as exactly this number.
    CStdString(double number);
    CStdString(const CStdString &) = default;
    CStdString(CStdString &&) noexcept = default;
    CStdString &operator=(const CStdString &) = default;
    CStdString &operator=(CStdString &&) noexcept = default;
    virtual ~CStdString();

    /// printf's formats; the empty text on an error.
    __attribute__((format(printf, 1, 2))) static CStdString Format(const char *format, ...);

    const CString &ToString() const { return m_text; }
    operator const CString &() const { return m_text; }

    friend bool operator==(const CStdString &left, const CStdString &right) {
        return left.m_text == right.m_text;
    }
    friend bool operator==(const CStdString &left, const CString &right) {
        return left.m_text == right;
    }
    friend bool operator==(const CStdString &left, const char *right) {
        return left.m_text == right;
    }

    // Numbers: the one at the start of the text, white space before it skipped; 0 when there is
    // none. Numbers beyond the type's range give the nearest in it.

    int ToInt() const;
    long ToLong() const;
    double ToDouble() const;
    /// The same number as ToInt, not a truth test: "2" gives 2, "true" gives 0.
    int ToBOOL() const { return ToInt(); }
    /// With "," between groups of three characters, counted back from the first "." or the end. A
    /// group that begins with a comma gets none; elsewhere commas count as digits, and so does a
    /// sign: "-123456" gives "-,123,456". A text that begins with "." is returned unchanged.
    CString ToCurrencyString() const;

    // Tests: 1 or 0.

    int IsEqualNoCase(const char *other) const;
    /// Whether the first count characters of both are equal.
    int IsEqualNoCase(const char *other, int count) const;
    /// Whether the last count characters of this text are the other text.
    int IsEqualReservedNoCase(const char *other, int count) const;
    int IsNumeric() const;     ///< 1 for "0" to "9" only; also for the empty text.
    int IsAlphabetics() const; ///< 1 for "A" to "Z" and "a" to "z" only; also for the empty text.

    /// Removes white space at both ends.
    CStdString &TrimAll();

    /// Appends the pieces between the characters that are one of the delimiters, empty ones
    /// included: "a,,b" gives "a", "" and "b". Without delimiters the text is one piece. An empty
    /// text appends nothing and returns 0; else the number of elements that the target then has.
    int Split(const char *delimiters, CStringArray &target) const;
    int Split(const char *delimiters, CVariantArray &target) const;

    // Paths. The separator is "\" where the text holds one, else "/". A file name's extension
    // stands behind its last "."; dots at the start belong to the name.

    CString GetPath() const;     ///< Before the last separator; the whole text when there is none.
    CString GetFileName() const; ///< Behind the last separator; the whole text when there is none.
    CString GetFileNameNoExt() const;
    CString GetExt() const; ///< Without ".".
    /// The text with "." and the extension behind it unless it has that already, in any case.
    CString GetAddExt(const char *extension) const;
    CString ToUnixPath() const;    ///< Every "\" becomes "/".
    CString ToWindowsPath() const; ///< Every "/" becomes "\".
    CString URLEncode() const;     ///< As CStdlib::URLEncode.
    CString URLDecode() const;     ///< As CStdlib::URLDecode.

    // Token strings, as CStdlib's functions of these names. Setting and removing change the text.

    CString GetTokenValue(const char *key) const;
    CStdString &SetTokenValue(const char *key, const char *value);
    CStdString &RemoveTokenValue(const char *key);

    /// Both do nothing and return 1.
    int Zip();
    int UnZip();

private:
    CString m_text;
};
