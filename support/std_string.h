/// CStdString: a string with conversions, path, token and splitting helpers.
#pragma once

#include "TAVIX20/platform/cstring.h"
#include "TAVIX20/platform/export.h"

class CStringArray;
class CVariantArray;

/// Holds one CString. Null text counts as the empty text. Letters and digits are those of ASCII,
/// whatever the locale.
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

    const CString &ToString() const { return m_text; }
    operator const CString &() const { return m_text; }

    friend bool operator==(const CStdString &left, const CStdString &right) {
        return left.m_text == right.m_text;
    }
    friend bool operator==(const CStdString &left, const char *right) {
        return left.m_text == right;
    }

    /// The number at the start of the text, white space before it skipped; 0 when there is none.
    /// Numbers beyond the type's range give the nearest in it.
    int ToInt() const;
    long ToLong() const;
    double ToDouble() const;
    /// The same number as ToInt, not a truth test: "2" gives 2, "true" gives 0.
    int ToBOOL() const { return ToInt(); }

private:
    CString m_text;
};
